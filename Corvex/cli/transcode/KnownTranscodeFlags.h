#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include <Corvex/cli/CLISanitizationOptions.h>

namespace corvex::inline v0 {

/// The flags by which the keys of a transcode's argument vector are recognised, in the order of their families.
[[nodiscard]] std::span<const std::string_view> knownTranscodeFlags() noexcept;

inline constexpr std::size_t knownTranscodeFlagCount = 95;

/// The known flags in ascending order of their bytes, as an argument lookup has them.
[[nodiscard]] const std::array<std::string_view, knownTranscodeFlagCount>& sortedKnownTranscodeFlags() noexcept;

/// What is known of a key from its test form (lower-cased, trimmed, beginning with "-").
struct RecognizedKey {
    static constexpr std::uint8_t noFlag = 255;

    /// Which of the sorted known flags it is letter for letter.
    std::uint8_t sortedIndex = noFlag;
    bool isKnown = false;           ///< A known flag occurs in it, anywhere, without regard to case.
    bool isInput = false;           ///< Begins with "-in".
    bool isPreset = false;          ///< Begins with "-preset".
    bool keepsCaseOfValue = false;  ///< Its value is a path or free text.

    /// How parsing cleans the value.
    [[nodiscard]] CLISanitizationOptions valueOptions() const noexcept {
        return keepsCaseOfValue ? CLISanitizationOptions::trimWhiteSpace
                                : CLISanitizationOptions::lowercase | CLISanitizationOptions::trimWhiteSpace;
    }
};

/// The facts of a known flag that `word` is letter for letter, or none. Costs one or two comparisons.
[[nodiscard]] const RecognizedKey* findKnownTranscodeFlag(std::string_view word) noexcept;

/// The facts of any key: first as above, then by a search for a known flag within it.
[[nodiscard]] RecognizedKey recognizeTranscodeKey(std::string_view testForm);

}  // namespace corvex::inline v0

#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include <Corvex/cli/CLISanitizationOptions.h>

namespace corvex::inline v0 {

/// The flags by which the keys of a transcode's argument vector are recognised, in the order of their families.
[[nodiscard]] std::span<const std::string_view> knownTranscodeFlags() noexcept;

/// What is known of a key from its test form (lower-cased, trimmed, beginning with "-").
struct RecognizedKey {
    bool isKnown = false;           ///< A known flag occurs in it, anywhere, without regard to case.
    bool isInput = false;           ///< Begins with "-in".
    bool isPreset = false;          ///< Begins with "-preset".
    bool keepsCaseOfValue = false;  ///< Its value is a path or free text.

    [[nodiscard]] CLISanitizationOptions valueOptions() const noexcept {
        return keepsCaseOfValue ? CLISanitizationOptions::trimWhiteSpace
                                : CLISanitizationOptions::lowercase | CLISanitizationOptions::trimWhiteSpace;
    }
};

/// Most keys are a known flag letter for letter and cost one probe of a table; only others are searched for one.
[[nodiscard]] RecognizedKey recognizeTranscodeKey(std::string_view testForm);

}  // namespace corvex::inline v0

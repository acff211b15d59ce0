#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include <Corvex/platform/CaseTable.h>
#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

class Number;

/// The platform's audio quality levels, by the numbers under which audio services know them: 0 to 127, in steps of 32.
enum class AVAudioQuality : std::int32_t { min = 0, low = 0x20, medium = 0x40, high = 0x60, max = 0x7F };

/// How carefully audio is encoded ("-aqual"), from least data to most. For coded formats alone, and an alternative to a
/// bit rate: formats without loss have nothing to choose.
enum class TranscodeAudioQuality : std::uint8_t { min, low, medium, high, max };

/// A row of the table: the platform's level, too. Raw values are the words of the command line.
struct TranscodeAudioQualityCase : Case<TranscodeAudioQuality> {
    AVAudioQuality avEquivalent;
};

template <>
inline constexpr auto caseTable<TranscodeAudioQuality> = std::to_array<TranscodeAudioQualityCase>({
    // Words of people and of the command line are the same here.
    {{TranscodeAudioQuality::min, "min", "min"}, AVAudioQuality::min},
    {{TranscodeAudioQuality::low, "low", "low"}, AVAudioQuality::low},
    {{TranscodeAudioQuality::medium, "medium", "medium"}, AVAudioQuality::medium},
    {{TranscodeAudioQuality::high, "high", "high"}, AVAudioQuality::high},
    {{TranscodeAudioQuality::max, "max", "max"}, AVAudioQuality::max},
});
static_assert(isComplete<TranscodeAudioQuality>(caseTable<TranscodeAudioQuality>));

/// The platform's level, for hosts that encode with its services.
[[nodiscard]] constexpr AVAudioQuality avEquivalent(TranscodeAudioQuality quality) noexcept {
    return caseOf(quality).avEquivalent;
}

/// The case number, from 0, of the quality that the text names, as an object; none for any other text.
[[nodiscard]] CORVEX_EXPORT std::optional<Number> audioQualityNumber(std::string_view text) noexcept;

}  // namespace corvex::inline v0

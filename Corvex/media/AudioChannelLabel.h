#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include <Corvex/platform/CaseTable.h>
#include <Corvex/platform/Text.h>

namespace corvex::inline v0 {

/// What one channel of audio is for. Raw values are the short names of SMPTE ST 2067-8.
enum class AudioChannelLabel : std::uint8_t {
    left,
    right,
    center,
    lowFrequencyEffects,
    leftSurround,
    rightSurround,
    leftSideSurround,
    rightSideSurround,
    leftRearSurround,
    rightRearSurround,
    leftCenter,
    rightCenter,
    centerSurround,
    hearingImpaired,
    visuallyImpairedNarrative,
    leftTotal,
    rightTotal,
    leftSurroundTotal,
    rightSurroundTotal,
    surround,
    mono,
    secondMono,
};

template <>
inline constexpr auto caseTable<AudioChannelLabel> = std::to_array<Case<AudioChannelLabel>>({
    {AudioChannelLabel::left, "L", "Left"},
    {AudioChannelLabel::right, "R", "Right"},
    {AudioChannelLabel::center, "C", "Center"},
    {AudioChannelLabel::lowFrequencyEffects, "LFE", "Low-frequency effects"},
    {AudioChannelLabel::leftSurround, "Ls", "Left surround"},
    {AudioChannelLabel::rightSurround, "Rs", "Right surround"},
    {AudioChannelLabel::leftSideSurround, "Lss", "Left side surround"},
    {AudioChannelLabel::rightSideSurround, "Rss", "Right side surround"},
    {AudioChannelLabel::leftRearSurround, "Lrs", "Left rear surround"},
    {AudioChannelLabel::rightRearSurround, "Rrs", "Right rear surround"},
    {AudioChannelLabel::leftCenter, "Lc", "Left center"},
    {AudioChannelLabel::rightCenter, "Rc", "Right center"},
    {AudioChannelLabel::centerSurround, "Cs", "Center surround"},
    {AudioChannelLabel::hearingImpaired, "HI", "Hearing impaired"},
    {AudioChannelLabel::visuallyImpairedNarrative, "VIN", "Visually impaired narrative"},
    {AudioChannelLabel::leftTotal, "Lt", "Left total"},
    {AudioChannelLabel::rightTotal, "Rt", "Right total"},
    {AudioChannelLabel::leftSurroundTotal, "Lst", "Left surround total"},
    {AudioChannelLabel::rightSurroundTotal, "Rst", "Right surround total"},
    {AudioChannelLabel::surround, "S", "Surround"},
    {AudioChannelLabel::mono, "M1", "Mono one"},
    {AudioChannelLabel::secondMono, "M2", "Mono two"},
});
static_assert(isComplete<AudioChannelLabel>(caseTable<AudioChannelLabel>));

/// The label of a short name in any case (parsing an argument vector lower-cases them), or none.
[[nodiscard]] inline std::optional<AudioChannelLabel> audioChannelLabel(std::string_view shortName) {
    for (const auto& row : caseTable<AudioChannelLabel>) {
        if (equalsIgnoringCase(row.rawValue, shortName)) return row.value;
    }
    return std::nullopt;
}

}  // namespace corvex::inline v0

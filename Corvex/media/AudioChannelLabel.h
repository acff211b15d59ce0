#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include <Corvex/platform/CaseTable.h>
#include <Corvex/platform/Text.h>

namespace corvex::inline v0 {

/// What one channel of audio is for. Raw values are the short names of SMPTE ST 2067-8, in which lists of channels
/// ("-acl_bitmap") are written.
enum class AudioChannelLabel : std::uint8_t {
    left,
    right,
    center,
    /// The ".1" of a layout: bass effects, of limited bandwidth.
    lowFrequencyEffects,
    /// The surround pair of 5.1: beside and behind the listener at once.
    leftSurround,
    rightSurround,
    /// 7.1 tells apart what 5.1 has as one pair: the side pair here,
    leftSideSurround,
    rightSideSurround,
    /// and the pair behind the listener.
    leftRearSurround,
    rightRearSurround,
    /// Behind a cinema screen between left and centre, as SDDS has it; its counterpart is next.
    leftCenter,
    rightCenter,
    /// One channel behind the listener.
    centerSurround,
    /// Dialogue emphasised, to mix in on its own.
    hearingImpaired,
    /// A narrator who describes the picture.
    visuallyImpairedNarrative,
    /// Four channels matrixed into a stereo pair; a decoder gets them back. The pair plays as it is, too.
    leftTotal,
    rightTotal,
    /// The same for the surround pair: it carries a rear channel as well.
    leftSurroundTotal,
    rightSurroundTotal,
    /// The one surround channel of four-channel film sound (left, centre, right, surround).
    surround,
    /// The only channel, or the first of two independent ones.
    mono,
    /// The second of two independent channels, as of two languages.
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

/// The label of a short name in any case (parsing an argument vector lower-cases them), or none. O(labels).
[[nodiscard]] inline std::optional<AudioChannelLabel> audioChannelLabel(std::string_view shortName) {
    for (const auto& row : caseTable<AudioChannelLabel>) {
        if (equalsIgnoringCase(row.rawValue, shortName)) return row.value;
    }
    return std::nullopt;
}

}  // namespace corvex::inline v0

#pragma once

#include <array>

#include <Corvex/exported/CliFlag.h>
#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// Flags of the timecode (SMPTE ST 12-1) that a transcode writes as a track or burns into the picture. At most one of
/// match, creation and custom is meant; the first of them in this order counts.
class OAVTranscodeTimecodeArgumentFlag : public TypedString<OAVTranscodeTimecodeArgumentFlag> {
public:
    using TypedString::TypedString;

    [[nodiscard]] constexpr std::string_view cliFlag() const noexcept { return rawValue(); }
    /// False exactly for the flags that are switches; true for any other text, known or not.
    [[nodiscard]] constexpr bool acceptsArguments() const noexcept;
};

/// A switch: write a timecode track.
inline constexpr OAVTranscodeTimecodeArgumentFlag OAVTimecodeAddTrackFlag{"-tc_track"};
/// A switch: draw each picture's timecode into it.
inline constexpr OAVTranscodeTimecodeArgumentFlag OAVTimecodeAddBurnFlag{"-tc_burn"};
/// Height of the burn-in's font in pixels.
inline constexpr OAVTranscodeTimecodeArgumentFlag OAVTimecodeBurnFontSize{"-tc_burn_size"};
/// Its colour: red, green and blue as three decimals, 0 to 1.
inline constexpr OAVTranscodeTimecodeArgumentFlag OAVTimecodeBurnFontRGB{"-tc_burn_font_rgb"};
/// The colour of the box behind it, in the same form.
inline constexpr OAVTranscodeTimecodeArgumentFlag OAVTimecodeBurnBoxRGB{"-tc_burn_box_rgb"};
/// A switch: start where the source's timecode does.
inline constexpr OAVTranscodeTimecodeArgumentFlag OAVTimecodeMatchSourceFlag{"-tc_match"};
/// A switch: start at the time of day at which the source was made.
inline constexpr OAVTranscodeTimecodeArgumentFlag OAVTimecodeFromCreationDateFlag{"-tc_creation"};
/// The label to start at, as 01:00:00:00, or 01:00:00;00 for drop frame.
inline constexpr OAVTranscodeTimecodeArgumentFlag OAVTimecodeCustomFlag{"-tc_custom"};
/// Frames a second that the timecode counts.
inline constexpr OAVTranscodeTimecodeArgumentFlag OAVTimecodeFrameRateFlag{"-tc_rate"};
/// A switch: drop-frame counting; outranks the next one.
inline constexpr OAVTranscodeTimecodeArgumentFlag OAVTimecodeIsDropFlag{"-tc_drop"};
/// A switch: every label counts.
inline constexpr OAVTranscodeTimecodeArgumentFlag OAVTimecodeIsNonDropFlag{"-tc_non_drop"};
/// A switch: never drop-frame counting where the source or the rate would ask for it.
inline constexpr OAVTranscodeTimecodeArgumentFlag OAVTimecodeBypassNTSCDropFlag{"-tc_no_ntsc"};

/// An OAVTranscodeArgumentOverlayAnchorValue. Deliberately not in allCases; an argument vector recognises it, because
/// it contains "-tc_burn".
inline constexpr OAVTranscodeTimecodeArgumentFlag OAVTimecodeBurnAnchorFlag{"-tc_burn_anchor"};

/// The known flags in their fixed order.
template <>
inline constexpr std::array knownValues<OAVTranscodeTimecodeArgumentFlag>{
    OAVTimecodeAddTrackFlag,         OAVTimecodeAddBurnFlag,   OAVTimecodeBurnFontSize,
    OAVTimecodeBurnFontRGB,          OAVTimecodeBurnBoxRGB,    OAVTimecodeMatchSourceFlag,
    OAVTimecodeFromCreationDateFlag, OAVTimecodeCustomFlag,    OAVTimecodeFrameRateFlag,
    OAVTimecodeIsDropFlag,           OAVTimecodeIsNonDropFlag, OAVTimecodeBypassNTSCDropFlag,
};

constexpr bool OAVTranscodeTimecodeArgumentFlag::acceptsArguments() const noexcept {
    return !(*this == OAVTimecodeAddTrackFlag || *this == OAVTimecodeAddBurnFlag ||
             *this == OAVTimecodeMatchSourceFlag || *this == OAVTimecodeFromCreationDateFlag ||
             *this == OAVTimecodeIsDropFlag || *this == OAVTimecodeIsNonDropFlag ||
             *this == OAVTimecodeBypassNTSCDropFlag);
}

static_assert(CliFlag<OAVTranscodeTimecodeArgumentFlag>);

}  // namespace corvex::inline v0

#pragma once

#include <array>
#include <span>

#include <Corvex/exported/CliFlag.h>
#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// Flags of the timecode that a transcode writes or burns in.
class OAVTranscodeTimecodeArgumentFlag : public TypedString<OAVTranscodeTimecodeArgumentFlag> {
public:
    using TypedString::TypedString;

    /// The known flags in their fixed order.
    [[nodiscard]] static constexpr std::span<const OAVTranscodeTimecodeArgumentFlag> allCases() noexcept;
    [[nodiscard]] constexpr std::string_view cliFlag() const noexcept { return rawValue(); }
    /// False exactly for the flags that are switches; true for any other text, known or not.
    [[nodiscard]] constexpr bool acceptsArguments() const noexcept;
};

inline constexpr OAVTranscodeTimecodeArgumentFlag OAVTimecodeAddTrackFlag{"-tc_track"};
inline constexpr OAVTranscodeTimecodeArgumentFlag OAVTimecodeAddBurnFlag{"-tc_burn"};
inline constexpr OAVTranscodeTimecodeArgumentFlag OAVTimecodeBurnFontSize{"-tc_burn_size"};
inline constexpr OAVTranscodeTimecodeArgumentFlag OAVTimecodeBurnFontRGB{"-tc_burn_font_rgb"};
inline constexpr OAVTranscodeTimecodeArgumentFlag OAVTimecodeBurnBoxRGB{"-tc_burn_box_rgb"};
inline constexpr OAVTranscodeTimecodeArgumentFlag OAVTimecodeMatchSourceFlag{"-tc_match"};
inline constexpr OAVTranscodeTimecodeArgumentFlag OAVTimecodeFromCreationDateFlag{"-tc_creation"};
inline constexpr OAVTranscodeTimecodeArgumentFlag OAVTimecodeCustomFlag{"-tc_custom"};
inline constexpr OAVTranscodeTimecodeArgumentFlag OAVTimecodeFrameRateFlag{"-tc_rate"};
inline constexpr OAVTranscodeTimecodeArgumentFlag OAVTimecodeIsDropFlag{"-tc_drop"};
inline constexpr OAVTranscodeTimecodeArgumentFlag OAVTimecodeIsNonDropFlag{"-tc_non_drop"};
inline constexpr OAVTranscodeTimecodeArgumentFlag OAVTimecodeBypassNTSCDropFlag{"-tc_no_ntsc"};

/// Deliberately not in allCases; an argument vector recognises it, because it contains "-tc_burn".
inline constexpr OAVTranscodeTimecodeArgumentFlag OAVTimecodeBurnAnchorFlag{"-tc_burn_anchor"};

inline constexpr std::array allTranscodeTimecodeArgumentFlags{
    OAVTimecodeAddTrackFlag,         OAVTimecodeAddBurnFlag,   OAVTimecodeBurnFontSize,
    OAVTimecodeBurnFontRGB,          OAVTimecodeBurnBoxRGB,    OAVTimecodeMatchSourceFlag,
    OAVTimecodeFromCreationDateFlag, OAVTimecodeCustomFlag,    OAVTimecodeFrameRateFlag,
    OAVTimecodeIsDropFlag,           OAVTimecodeIsNonDropFlag, OAVTimecodeBypassNTSCDropFlag,
};

constexpr std::span<const OAVTranscodeTimecodeArgumentFlag> OAVTranscodeTimecodeArgumentFlag::allCases() noexcept {
    return allTranscodeTimecodeArgumentFlags;
}

constexpr bool OAVTranscodeTimecodeArgumentFlag::acceptsArguments() const noexcept {
    return !(*this == OAVTimecodeAddTrackFlag || *this == OAVTimecodeAddBurnFlag ||
             *this == OAVTimecodeMatchSourceFlag || *this == OAVTimecodeFromCreationDateFlag ||
             *this == OAVTimecodeIsDropFlag || *this == OAVTimecodeIsNonDropFlag ||
             *this == OAVTimecodeBypassNTSCDropFlag);
}

static_assert(CliFlag<OAVTranscodeTimecodeArgumentFlag>);

}  // namespace corvex::inline v0

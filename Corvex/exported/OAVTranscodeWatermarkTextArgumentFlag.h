#pragma once

#include <array>

#include <Corvex/exported/CliFlag.h>
#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// Flags of the text that is drawn over every picture. Font and colours are given as for the timecode burn-in.
class OAVTranscodeWatermarkTextArgumentFlag : public TypedString<OAVTranscodeWatermarkTextArgumentFlag> {
public:
    using TypedString::TypedString;

    [[nodiscard]] constexpr std::string_view cliFlag() const noexcept { return rawValue(); }
    /// False exactly for the flags that are switches; true for any other text, known or not.
    [[nodiscard]] constexpr bool acceptsArguments() const noexcept;
};

/// A switch: draw the text.
inline constexpr OAVTranscodeWatermarkTextArgumentFlag OAVWatermarkTextAddBurnFlag{"-wmt_burn"};
/// The text; its case is kept.
inline constexpr OAVTranscodeWatermarkTextArgumentFlag OAVWatermarkTextBurnTextFlag{"-wmt_text"};
/// Height of the font in pixels.
inline constexpr OAVTranscodeWatermarkTextArgumentFlag OAVWatermarkTextBurnFontSizeFlag{"-wmt_size"};
/// An OAVTranscodeArgumentOverlayAnchorValue.
inline constexpr OAVTranscodeWatermarkTextArgumentFlag OAVWatermarkTextBurnAnchorFlag{"-wmt_anchor"};
/// Red, green and blue as three decimals, 0 to 1.
inline constexpr OAVTranscodeWatermarkTextArgumentFlag OAVWatermarkTextBurnFontRGBFlag{"-wmt_font_rgb"};
/// The colour of the box behind the text, in the same form.
inline constexpr OAVTranscodeWatermarkTextArgumentFlag OAVWatermarkTextBurnBoxRGBFlag{"-wmt_box_rgb"};

/// The known flags in their fixed order.
template <>
inline constexpr std::array knownValues<OAVTranscodeWatermarkTextArgumentFlag>{
    OAVWatermarkTextAddBurnFlag,    OAVWatermarkTextBurnTextFlag,    OAVWatermarkTextBurnFontSizeFlag,
    OAVWatermarkTextBurnAnchorFlag, OAVWatermarkTextBurnFontRGBFlag, OAVWatermarkTextBurnBoxRGBFlag,
};

constexpr bool OAVTranscodeWatermarkTextArgumentFlag::acceptsArguments() const noexcept {
    return !(*this == OAVWatermarkTextAddBurnFlag);
}

static_assert(CliFlag<OAVTranscodeWatermarkTextArgumentFlag>);

}  // namespace corvex::inline v0

#pragma once

#include <array>
#include <span>

#include <Corvex/exported/CliFlag.h>
#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// Flags of the text watermark.
class OAVTranscodeWatermarkTextArgumentFlag : public TypedString<OAVTranscodeWatermarkTextArgumentFlag> {
public:
    using TypedString::TypedString;

    /// The known flags in their fixed order.
    [[nodiscard]] static constexpr std::span<const OAVTranscodeWatermarkTextArgumentFlag> allCases() noexcept;
    [[nodiscard]] constexpr std::string_view cliFlag() const noexcept { return rawValue(); }
    /// False exactly for the flags that are switches; true for any other text, known or not.
    [[nodiscard]] constexpr bool acceptsArguments() const noexcept;
};

inline constexpr OAVTranscodeWatermarkTextArgumentFlag OAVWatermarkTextAddBurnFlag{"-wmt_burn"};
inline constexpr OAVTranscodeWatermarkTextArgumentFlag OAVWatermarkTextBurnTextFlag{"-wmt_text"};
inline constexpr OAVTranscodeWatermarkTextArgumentFlag OAVWatermarkTextBurnFontSizeFlag{"-wmt_size"};
inline constexpr OAVTranscodeWatermarkTextArgumentFlag OAVWatermarkTextBurnAnchorFlag{"-wmt_anchor"};
inline constexpr OAVTranscodeWatermarkTextArgumentFlag OAVWatermarkTextBurnFontRGBFlag{"-wmt_font_rgb"};
inline constexpr OAVTranscodeWatermarkTextArgumentFlag OAVWatermarkTextBurnBoxRGBFlag{"-wmt_box_rgb"};

inline constexpr std::array allTranscodeWatermarkTextArgumentFlags{
    OAVWatermarkTextAddBurnFlag,    OAVWatermarkTextBurnTextFlag,    OAVWatermarkTextBurnFontSizeFlag,
    OAVWatermarkTextBurnAnchorFlag, OAVWatermarkTextBurnFontRGBFlag, OAVWatermarkTextBurnBoxRGBFlag,
};

constexpr std::span<const OAVTranscodeWatermarkTextArgumentFlag>
OAVTranscodeWatermarkTextArgumentFlag::allCases() noexcept {
    return allTranscodeWatermarkTextArgumentFlags;
}

constexpr bool OAVTranscodeWatermarkTextArgumentFlag::acceptsArguments() const noexcept {
    return !(*this == OAVWatermarkTextAddBurnFlag);
}

static_assert(CliFlag<OAVTranscodeWatermarkTextArgumentFlag>);

}  // namespace corvex::inline v0

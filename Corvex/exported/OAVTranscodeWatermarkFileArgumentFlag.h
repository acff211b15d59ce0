#pragma once

#include <array>
#include <span>

#include <Corvex/exported/CliFlag.h>
#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// Flags of the image that is laid over every picture, with its transparency; without a path there is none, and the
/// other two have no meaning.
class OAVTranscodeWatermarkFileArgumentFlag : public TypedString<OAVTranscodeWatermarkFileArgumentFlag> {
public:
    using TypedString::TypedString;

    /// The known flags in their fixed order.
    [[nodiscard]] static constexpr std::span<const OAVTranscodeWatermarkFileArgumentFlag> allCases() noexcept;
    [[nodiscard]] constexpr std::string_view cliFlag() const noexcept { return rawValue(); }
    /// Always true: every flag of the family takes a value.
    [[nodiscard]] constexpr bool acceptsArguments() const noexcept;
};

/// An OAVTranscodeArgumentOverlayAnchorValue.
inline constexpr OAVTranscodeWatermarkFileArgumentFlag OAVWatermarkFileBurnAnchorFlag{"-wmf_anchor"};
/// Path of the image. The one path whose case parsing does not keep.
inline constexpr OAVTranscodeWatermarkFileArgumentFlag OAVWatermarkFileBurnFilePathFlag{"-wmf_path"};
/// Factor on the image's own size, a decimal above 0.
inline constexpr OAVTranscodeWatermarkFileArgumentFlag OAVWatermarkFileBurnScaleFlag{"-wmf_scale"};

inline constexpr std::array allTranscodeWatermarkFileArgumentFlags{
    OAVWatermarkFileBurnAnchorFlag,
    OAVWatermarkFileBurnFilePathFlag,
    OAVWatermarkFileBurnScaleFlag,
};

constexpr std::span<const OAVTranscodeWatermarkFileArgumentFlag>
OAVTranscodeWatermarkFileArgumentFlag::allCases() noexcept {
    return allTranscodeWatermarkFileArgumentFlags;
}

constexpr bool OAVTranscodeWatermarkFileArgumentFlag::acceptsArguments() const noexcept { return true; }

static_assert(CliFlag<OAVTranscodeWatermarkFileArgumentFlag>);

}  // namespace corvex::inline v0

#pragma once

#include <array>

#include <Corvex/exported/CliFlag.h>
#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// Flags of the image that is laid over every picture, with its transparency; without a path there is none, and the
/// other two have no meaning.
class OAVTranscodeWatermarkFileArgumentFlag : public TypedString<OAVTranscodeWatermarkFileArgumentFlag> {
public:
    using TypedString::TypedString;

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

/// The known flags in their fixed order.
template <>
inline constexpr std::array knownValues<OAVTranscodeWatermarkFileArgumentFlag>{
    OAVWatermarkFileBurnAnchorFlag,
    OAVWatermarkFileBurnFilePathFlag,
    OAVWatermarkFileBurnScaleFlag,
};

constexpr bool OAVTranscodeWatermarkFileArgumentFlag::acceptsArguments() const noexcept { return true; }

static_assert(CliFlag<OAVTranscodeWatermarkFileArgumentFlag>);

}  // namespace corvex::inline v0

#pragma once

#include <array>
#include <span>

#include <Corvex/exported/CliFlag.h>
#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// Flags of the video that a transcode writes.
class OAVTranscodeVideoArgumentFlag : public TypedString<OAVTranscodeVideoArgumentFlag> {
public:
    using TypedString::TypedString;

    /// The known flags in their fixed order.
    [[nodiscard]] static constexpr std::span<const OAVTranscodeVideoArgumentFlag> allCases() noexcept;
    [[nodiscard]] constexpr std::string_view cliFlag() const noexcept { return rawValue(); }
    /// False exactly for the flags that are switches; true for any other text, known or not.
    [[nodiscard]] constexpr bool acceptsArguments() const noexcept;
};

inline constexpr OAVTranscodeVideoArgumentFlag OAVNoVideoFlag{"-vn"};
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoFormatFlag{"-vcodec"};
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoFrameRateFlag{"-vr"};
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoDimensionsFlag{"-dims"};
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoAspectScalingFlag{"-aspect_scaling"};
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoAspectCropAnchorFlag{"-crop_anchor"};
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoBitRateFlag{"-vbr"};
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoBitDepthFlag{"-vbd"};
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoPreserveLogEncodingFlag{"-preserve_log"};
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoColorSpaceFlag{"-c_space"};
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoColorMatrixFlag{"-c_matrix"};
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoColorTransferFunctionFlag{"-c_transfer"};
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoKeyFramesFlag{"-key_frames"};
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoGPUDecodingFlag{"-gpu_decoding"};
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoGPUTransformFlag{"-gpu_trans"};
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoGPUEncodingFlag{"-gpu_encoding"};
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoProfileFlag{"-vprofile"};
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoAdditionalDecodeOptionsFlag{"-additional_decode_options"};
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoMaxFrames{"-mf"};
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoFrameCapacityFlag{"-v_frame_cap"};
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoMaxVideoFrameMemory{"-max_v_frame_mem"};
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoUnboundedFrameCapacityFlag{"-v_nocap"};
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoColorRangeFlag{"-v_colrange"};
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoREDPremiumDecodeFlag{"-red_premium"};
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoDecodeEngineFlag{"-v_decoder"};

inline constexpr std::array allTranscodeVideoArgumentFlags{
    OAVNoVideoFlag,
    OAVVideoFormatFlag,
    OAVVideoFrameRateFlag,
    OAVVideoDimensionsFlag,
    OAVVideoAspectScalingFlag,
    OAVVideoAspectCropAnchorFlag,
    OAVVideoBitRateFlag,
    OAVVideoBitDepthFlag,
    OAVVideoPreserveLogEncodingFlag,
    OAVVideoColorSpaceFlag,
    OAVVideoColorMatrixFlag,
    OAVVideoColorTransferFunctionFlag,
    OAVVideoKeyFramesFlag,
    OAVVideoGPUDecodingFlag,
    OAVVideoGPUTransformFlag,
    OAVVideoGPUEncodingFlag,
    OAVVideoProfileFlag,
    OAVVideoAdditionalDecodeOptionsFlag,
    OAVVideoMaxFrames,
    OAVVideoFrameCapacityFlag,
    OAVVideoMaxVideoFrameMemory,
    OAVVideoUnboundedFrameCapacityFlag,
    OAVVideoColorRangeFlag,
    OAVVideoREDPremiumDecodeFlag,
    OAVVideoDecodeEngineFlag,
};

constexpr std::span<const OAVTranscodeVideoArgumentFlag> OAVTranscodeVideoArgumentFlag::allCases() noexcept {
    return allTranscodeVideoArgumentFlags;
}

constexpr bool OAVTranscodeVideoArgumentFlag::acceptsArguments() const noexcept {
    return !(*this == OAVNoVideoFlag || *this == OAVVideoGPUEncodingFlag || *this == OAVVideoGPUDecodingFlag ||
             *this == OAVVideoUnboundedFrameCapacityFlag);
}

static_assert(CliFlag<OAVTranscodeVideoArgumentFlag>);

}  // namespace corvex::inline v0

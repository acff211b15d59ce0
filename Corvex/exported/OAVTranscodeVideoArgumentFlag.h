#pragma once

#include <array>

#include <Corvex/exported/CliFlag.h>
#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// Flags of the video that a transcode writes. A number that cannot be read counts as absent in TranscodeCliArguments.
class OAVTranscodeVideoArgumentFlag : public TypedString<OAVTranscodeVideoArgumentFlag> {
public:
    using TypedString::TypedString;

    [[nodiscard]] constexpr std::string_view cliFlag() const noexcept { return rawValue(); }
    /// False exactly for the flags that are switches; true for any other text, known or not.
    [[nodiscard]] constexpr bool acceptsArguments() const noexcept;
};

/// A switch: no video.
inline constexpr OAVTranscodeVideoArgumentFlag OAVNoVideoFlag{"-vn"};
/// An OAVTranscodeArgumentVideoCodecValue.
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoFormatFlag{"-vcodec"};
/// Frames a second, a decimal.
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoFrameRateFlag{"-vr"};
/// WIDTHxHEIGHT in pixels, as 1920x1080.
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoDimensionsFlag{"-dims"};
/// An OAVTranscodeArgumentAspectRatioValue; counts beside "-dims" only.
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoAspectScalingFlag{"-aspect_scaling"};
/// An OAVTranscodeArgumentOverlayAnchorValue: the part that "-aspect_scaling crop" keeps.
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoAspectCropAnchorFlag{"-crop_anchor"};
/// Megabits (10^6) a second, a decimal.
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoBitRateFlag{"-vbr"};
/// Bits of a component.
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoBitDepthFlag{"-vbd"};
/// Keep a camera's logarithmic encoding instead of converting it for display. Set with any value, even "false".
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoPreserveLogEncodingFlag{"-preserve_log"};
/// An OAVTranscodeArgumentColorSpaceValue.
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoColorSpaceFlag{"-c_space"};
/// An OAVTranscodeArgumentColorMatrixValue, in place of the colour space's own.
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoColorMatrixFlag{"-c_matrix"};
/// An OAVTranscodeArgumentColorTransferFunctionValue, in place of the colour space's own.
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoColorTransferFunctionFlag{"-c_transfer"};
/// Frames from one key frame to the next.
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoKeyFramesFlag{"-key_frames"};
/// A switch: decode on a GPU.
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoGPUDecodingFlag{"-gpu_decoding"};
/// The devices that scale and convert pictures: a list of registry numbers or an OAVGpuPlatformValue. Unlike its two
/// siblings it takes a value.
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoGPUTransformFlag{"-gpu_trans"};
/// A switch: encode on a GPU.
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoGPUEncodingFlag{"-gpu_encoding"};
/// A profile of the codec, by the codec's own name for it.
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoProfileFlag{"-vprofile"};
/// Options for the decoder, key=value:key=value (see parseDictionary); their case is kept.
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoAdditionalDecodeOptionsFlag{"-additional_decode_options"};
/// Frames after which the output ends.
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoMaxFrames{"-mf"};
/// Pictures in flight at most, from decoder to encoder.
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoFrameCapacityFlag{"-v_frame_cap"};
/// Bytes of pictures in flight at most.
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoMaxVideoFrameMemory{"-max_v_frame_mem"};
/// A switch: any number of pictures in flight; outranks "-v_frame_cap".
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoUnboundedFrameCapacityFlag{"-v_nocap"};
/// "f" for full, "v" for video range (see OrvanePixelColorRange).
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoColorRangeFlag{"-v_colrange"};
/// Decode RED footage in full quality. Set with any value.
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoREDPremiumDecodeFlag{"-red_premium"};
/// An OAVUnifiedCodecDecoderValue.
inline constexpr OAVTranscodeVideoArgumentFlag OAVVideoDecodeEngineFlag{"-v_decoder"};

/// The known flags in their fixed order.
template <>
inline constexpr std::array knownValues<OAVTranscodeVideoArgumentFlag>{
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

constexpr bool OAVTranscodeVideoArgumentFlag::acceptsArguments() const noexcept {
    return !(*this == OAVNoVideoFlag || *this == OAVVideoGPUEncodingFlag || *this == OAVVideoGPUDecodingFlag ||
             *this == OAVVideoUnboundedFrameCapacityFlag);
}

static_assert(CliFlag<OAVTranscodeVideoArgumentFlag>);

}  // namespace corvex::inline v0

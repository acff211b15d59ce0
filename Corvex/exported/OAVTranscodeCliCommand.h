#pragma once

#include <array>

#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// A command that asks the transcoder for information instead of a transcode. Written like a flag, without a value; the
/// answer goes to standard output, and nothing is transcoded.
class OAVTranscodeCliCommand : public TypedString<OAVTranscodeCliCommand> {
public:
    using TypedString::TypedString;

    [[nodiscard]] constexpr std::string_view cliFlag() const noexcept { return rawValue(); }
};

/// Lists the flags.
inline constexpr OAVTranscodeCliCommand OAVCliHelpFlag{"-h"};
/// Values of "-vcodec" and "-acodec".
inline constexpr OAVTranscodeCliCommand OAVCliCodecsFlag{"-codecs"};
/// Values of "-file_format" with their extensions.
inline constexpr OAVTranscodeCliCommand OAVCliFormatsFlag{"-formats"};
inline constexpr OAVTranscodeCliCommand OAVCliVersionFlag{"-version"};
/// Licences of what the transcoder uses.
inline constexpr OAVTranscodeCliCommand OAVCliAcknowledgementFlag{"-acknowledge"};
/// Values of "-preset" and what they stand for.
inline constexpr OAVTranscodeCliCommand OAVCliPresetsFlag{"-presets"};
/// Values of "-aspect_scaling".
inline constexpr OAVTranscodeCliCommand OAVCliAspectRatioScalingsFlag{"-aspect_scalings"};
/// Values of "-crop_anchor".
inline constexpr OAVTranscodeCliCommand OAVCliCropAnchorsFlag{"-crop_anchors"};
/// Values of "-c_space".
inline constexpr OAVTranscodeCliCommand OAVCliColorSpacesFlag{"-color_spaces"};
/// Values of "-acl".
inline constexpr OAVTranscodeCliCommand OAVCliAudioChannelLayoutsFlag{"-audio_channel_layouts"};
/// Channel labels for "-acl_bitmap".
inline constexpr OAVTranscodeCliCommand OAVCliAudioChannelBitmapsFlag{"-audio_bitmap_values"};
/// Values of "-tc_burn_anchor", which this differs from by one letter.
inline constexpr OAVTranscodeCliCommand OAVCliTimecodeBurnAnchorsFlag{"-tc_burn_anchors"};
/// Devices for "-gpu_trans" with their numbers.
inline constexpr OAVTranscodeCliCommand OAVCliGpuDevicesFlag{"-gpu_devices"};
/// Values of "-c_matrix".
inline constexpr OAVTranscodeCliCommand OAVCliVideoColorMatriciesFlag{"-color_matrix"};
/// Values of "-c_transfer".
inline constexpr OAVTranscodeCliCommand OAVCliVideoColorTransferFunctionsFlag{"-transfer_func"};

/// Values of "-wmf_anchor". Deliberately not in allCases: in an argument vector it is reported as an unknown flag.
inline constexpr OAVTranscodeCliCommand OAVCliWatermarkFileBurnAnchorsFlag{"-wmf_burn_anchors"};

/// The commands by which an argument vector is recognised, in their fixed order.
template <>
inline constexpr std::array knownValues<OAVTranscodeCliCommand>{
    OAVCliHelpFlag,
    OAVCliCodecsFlag,
    OAVCliFormatsFlag,
    OAVCliVersionFlag,
    OAVCliAcknowledgementFlag,
    OAVCliPresetsFlag,
    OAVCliAspectRatioScalingsFlag,
    OAVCliCropAnchorsFlag,
    OAVCliColorSpacesFlag,
    OAVCliAudioChannelLayoutsFlag,
    OAVCliAudioChannelBitmapsFlag,
    OAVCliTimecodeBurnAnchorsFlag,
    OAVCliGpuDevicesFlag,
    OAVCliVideoColorMatriciesFlag,
    OAVCliVideoColorTransferFunctionsFlag,
};

}  // namespace corvex::inline v0

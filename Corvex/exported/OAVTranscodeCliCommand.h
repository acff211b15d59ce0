#pragma once

#include <array>
#include <span>

#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// A command that asks the transcoder for information instead of a transcode. Written like a flag, without a value.
class OAVTranscodeCliCommand : public TypedString<OAVTranscodeCliCommand> {
public:
    using TypedString::TypedString;

    /// The commands by which an argument vector is recognised, in their fixed order.
    [[nodiscard]] static constexpr std::span<const OAVTranscodeCliCommand> allCases() noexcept;
    [[nodiscard]] constexpr std::string_view cliFlag() const noexcept { return rawValue(); }
};

inline constexpr OAVTranscodeCliCommand OAVCliHelpFlag{"-h"};
inline constexpr OAVTranscodeCliCommand OAVCliCodecsFlag{"-codecs"};
inline constexpr OAVTranscodeCliCommand OAVCliFormatsFlag{"-formats"};
inline constexpr OAVTranscodeCliCommand OAVCliVersionFlag{"-version"};
inline constexpr OAVTranscodeCliCommand OAVCliAcknowledgementFlag{"-acknowledge"};
inline constexpr OAVTranscodeCliCommand OAVCliPresetsFlag{"-presets"};
inline constexpr OAVTranscodeCliCommand OAVCliAspectRatioScalingsFlag{"-aspect_scalings"};
inline constexpr OAVTranscodeCliCommand OAVCliCropAnchorsFlag{"-crop_anchors"};
inline constexpr OAVTranscodeCliCommand OAVCliColorSpacesFlag{"-color_spaces"};
inline constexpr OAVTranscodeCliCommand OAVCliAudioChannelLayoutsFlag{"-audio_channel_layouts"};
inline constexpr OAVTranscodeCliCommand OAVCliAudioChannelBitmapsFlag{"-audio_bitmap_values"};
inline constexpr OAVTranscodeCliCommand OAVCliTimecodeBurnAnchorsFlag{"-tc_burn_anchors"};
inline constexpr OAVTranscodeCliCommand OAVCliGpuDevicesFlag{"-gpu_devices"};
inline constexpr OAVTranscodeCliCommand OAVCliVideoColorMatriciesFlag{"-color_matrix"};
inline constexpr OAVTranscodeCliCommand OAVCliVideoColorTransferFunctionsFlag{"-transfer_func"};

/// Deliberately not in allCases: in an argument vector it is reported as an unknown flag.
inline constexpr OAVTranscodeCliCommand OAVCliWatermarkFileBurnAnchorsFlag{"-wmf_burn_anchors"};

inline constexpr std::array allTranscodeCliCommands{
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

constexpr std::span<const OAVTranscodeCliCommand> OAVTranscodeCliCommand::allCases() noexcept {
    return allTranscodeCliCommands;
}

}  // namespace corvex::inline v0

#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include <Corvex/cli/transcode/AnchorOption.h>
#include <Corvex/cli/transcode/TimecodeSource.h>
#include <Corvex/cli/transcode/TranscodeAudioQuality.h>
#include <Corvex/color/Color.h>
#include <Corvex/color/OrvanePixelColorRange.h>
#include <Corvex/color/OrvaneVideoColorSpace.h>
#include <Corvex/exported/OAVTranscodeArgumentAspectRatioValue.h>
#include <Corvex/exported/OAVTranscodeArgumentAudioChannelLayoutValue.h>
#include <Corvex/exported/OAVTranscodeArgumentAudioFormatValue.h>
#include <Corvex/exported/OAVTranscodeArgumentOverlayAnchorValue.h>
#include <Corvex/exported/OAVTranscodeArgumentVideoCodecValue.h>
#include <Corvex/media/PictureSize.h>
#include <Corvex/timing/DropFrameState.h>

namespace corvex::inline v0 {

// What an application's panels hold of a job, to be copied into its arguments by TranscodeCliArguments::update….
// Only the fields that are present are copied; a switch that is present and false removes its flag. Units are those of
// the accessors of the same name. Plain values.

/// Sound.
struct TranscodeAudioDetail {
    std::optional<OAVTranscodeArgumentAudioFormatValue> audioFormat;
    std::optional<std::int64_t> audioBitRate;
    std::optional<std::int64_t> sampleRate;
    std::optional<std::int64_t> audioBitsPerChannel;
    std::optional<TranscodeAudioQuality> audioQuality;
    std::optional<OAVTranscodeArgumentAudioChannelLayoutValue> channelLayout;
    std::optional<std::int64_t> channelLayoutTag;
    std::optional<std::string> audioLanguageCode;
    std::optional<bool> audioOutputIsDiscrete;
    std::optional<bool> audioOutputChannelsMatchSource;
    TranscodeAudioDetail() {}  // NOLINT(modernize-use-equals-default): keeps it from being an aggregate
};

/// Pictures.
struct TranscodeVideoDetail {
    std::optional<OAVTranscodeArgumentVideoCodecValue> videoFormat;
    std::optional<PictureSize> videoDimensions;
    std::optional<OAVTranscodeArgumentAspectRatioValue> aspectScaling;
    std::optional<VideoCropAnchor> videoCropAnchor;
    std::optional<float> videoFrameRate;
    std::optional<float> videoBitRate;
    std::optional<std::int64_t> videoBitDepth;
    std::optional<std::int64_t> keyFrames;
    std::optional<std::string> videoProfile;
    std::optional<OrvaneVideoColorSpace> colorSpace;
    std::optional<OrvanePixelColorRange> colorRange;
    std::optional<bool> preserveLogEncoding;
    TranscodeVideoDetail() {}  // NOLINT(modernize-use-equals-default)
};

/// The timecode track and the burnt-in timecode.
struct TranscodeTimecodeDetail {
    std::optional<bool> addTimecodeTrack;
    std::optional<bool> addTimecodeBurn;
    std::optional<TimecodeSource> timecodeSource;
    std::optional<std::string> timecode;  ///< Of the source `custom`.
    std::optional<float> timecodeFrameRate;
    std::optional<DropFrameState> timecodeDropFrameState;
    std::optional<TimecodeBurnAnchor> timecodeBurnAnchor;
    std::optional<std::int64_t> timecodeBurnFontSize;
    std::optional<Color> timecodeBurnFontColor;
    std::optional<Color> timecodeBurnBoxColor;
    TranscodeTimecodeDetail() {}  // NOLINT(modernize-use-equals-default)
};

/// The image over the picture.
struct TranscodeWatermarkImageDetail {
    std::optional<std::string> watermarkFilePath;
    std::optional<WatermarkBurnAnchor> watermarkFileAnchor;
    std::optional<double> watermarkFileScale;
    TranscodeWatermarkImageDetail() {}  // NOLINT(modernize-use-equals-default)
};

/// The text over the picture.
struct TranscodeWatermarkTextDetail {
    std::optional<bool> addWatermarkText;
    std::optional<std::string> watermarkText;
    std::optional<std::int64_t> watermarkTextBurnFontSize;
    std::optional<OAVTranscodeArgumentOverlayAnchorValue> watermarkTextAnchor;
    std::optional<Color> watermarkTextFontColor;
    std::optional<Color> watermarkTextBoxColor;
    TranscodeWatermarkTextDetail() {}  // NOLINT(modernize-use-equals-default)
};

}  // namespace corvex::inline v0

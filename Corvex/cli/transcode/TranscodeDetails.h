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

/// Sound. Rates are in bits and in samples a second.
struct TranscodeAudioDetail {
    std::optional<OAVTranscodeArgumentAudioFormatValue> audioFormat;
    std::optional<std::int64_t> audioBitRate;
    std::optional<std::int64_t> sampleRate;
    /// Of a sample, without loss.
    std::optional<std::int64_t> audioBitsPerChannel;
    std::optional<TranscodeAudioQuality> audioQuality;
    std::optional<OAVTranscodeArgumentAudioChannelLayoutValue> channelLayout;
    /// A Core Audio layout tag; beside a layout the worker refuses it.
    std::optional<std::int64_t> channelLayoutTag;
    /// ISO 639-2, three letters.
    std::optional<std::string> audioLanguageCode;
    std::optional<bool> audioOutputIsDiscrete;
    std::optional<bool> audioOutputChannelsMatchSource;
    TranscodeAudioDetail() {}  // NOLINT(modernize-use-equals-default): keeps it from being an aggregate
};

/// Pictures. The frame rate is in frames, the bit rate in megabits a second, the size in pixels.
struct TranscodeVideoDetail {
    std::optional<OAVTranscodeArgumentVideoCodecValue> videoFormat;
    /// Pixels.
    std::optional<PictureSize> videoDimensions;
    std::optional<OAVTranscodeArgumentAspectRatioValue> aspectScaling;
    std::optional<VideoCropAnchor> videoCropAnchor;
    std::optional<float> videoFrameRate;
    std::optional<float> videoBitRate;
    /// Of a component.
    std::optional<std::int64_t> videoBitDepth;
    /// From one to the next, in frames.
    std::optional<std::int64_t> keyFrames;
    std::optional<std::string> videoProfile;
    /// One without a word of the command line (the custom ones, for example) removes the flag.
    std::optional<OrvaneVideoColorSpace> colorSpace;
    std::optional<OrvanePixelColorRange> colorRange;
    std::optional<bool> preserveLogEncoding;
    TranscodeVideoDetail() {}  // NOLINT(modernize-use-equals-default)
};

/// The timecode track and the burnt-in timecode. Sizes are of the font, in pixels; colours are converted to sRGB.
struct TranscodeTimecodeDetail {
    std::optional<bool> addTimecodeTrack;
    std::optional<bool> addTimecodeBurn;
    /// Of the three flags one is left. Taken after `timecode`, which `custom` keeps.
    std::optional<TimecodeSource> timecodeSource;
    std::optional<std::string> timecode;  ///< Of the source `custom`.
    std::optional<float> timecodeFrameRate;
    /// `unknown` removes both flags.
    std::optional<DropFrameState> timecodeDropFrameState;
    /// Of the burnt-in timecode alone; a track has no place.
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
    /// A factor on the image's size; not checked here.
    std::optional<double> watermarkFileScale;
    TranscodeWatermarkImageDetail() {}  // NOLINT(modernize-use-equals-default)
};

/// The text over the picture. Sizes are of the font, in pixels; colours are converted to sRGB.
struct TranscodeWatermarkTextDetail {
    /// Without a text the worker refuses it.
    std::optional<bool> addWatermarkText;
    std::optional<std::string> watermarkText;
    std::optional<std::int64_t> watermarkTextBurnFontSize;
    std::optional<OAVTranscodeArgumentOverlayAnchorValue> watermarkTextAnchor;
    std::optional<Color> watermarkTextFontColor;
    std::optional<Color> watermarkTextBoxColor;
    TranscodeWatermarkTextDetail() {}  // NOLINT(modernize-use-equals-default)
};

}  // namespace corvex::inline v0

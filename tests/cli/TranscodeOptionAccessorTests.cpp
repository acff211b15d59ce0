// Every typed option writes the text of its flag and reads it back.

#include <filesystem>
#include <locale>
#include <map>
#include <tuple>

#include <gtest/gtest.h>

#include <Corvex/cli/transcode/TranscodeCliArguments.h>
#include <Corvex/cli/transcode/TranscodeDetails.h>
#include <Corvex/color/OrvanePixelTransferFunction.h>
#include <Corvex/color/OrvaneVideoColorMatrix.h>
#include <Corvex/media/AudioChannelLabel.h>
#include <Corvex/platform/Number.h>
#include <Corvex/timing/TimecodeComponents.h>

namespace corvex::transcodeOptionAccessorTests {
namespace {

using Options = TranscodeCliArguments;

/// The setter stores exactly `text` under `flag` and nothing else; the getter reads it; none removes the flag. Rendered
/// and parsed by a worker the option is the same, unless its text is one that parsing lower-cases or trims.
template <class Getter, class Setter, class Value>
void expectOption(const char* flag, const char* text, Getter getter, Setter setter, const Value& value) {
    SCOPED_TRACE(flag);
    Options options;
    EXPECT_EQ((options.*getter)(), std::nullopt);
    (options.*setter)(value);
    EXPECT_EQ(options.flagValueLookup(), (ArgumentLookup{{flag, text}}));
    EXPECT_EQ((options.*getter)(), value);
    const Options parsed(options.commandLineArguments());
    if (parsed.argumentFlagValue(flag) == text || std::string_view(flag).starts_with("-c_")) {
        EXPECT_EQ((parsed.*getter)(), value);
    }
    (options.*setter)(std::nullopt);
    EXPECT_EQ(options.flagValueLookup(), ArgumentLookup());
}

/// A field of a detail record writes exactly `text` under `flag`; a record without it leaves that as it is.
template <class Detail, class Field>
void expectCopied(const char* flag, const char* text, std::optional<Field> Detail::*field, const auto& value) {
    Options options;
    Detail detail;
    detail.*field = value;
    options.update(detail);
    options.update(Detail());
    EXPECT_EQ(options.flagValueLookup(), (ArgumentLookup{{flag, text}})) << flag;
    if constexpr (std::is_same_v<Field, bool>) {
        detail.*field = false;
        options.update(detail);
        EXPECT_EQ(options.flagValueLookup(), ArgumentLookup()) << flag;
    }
}

#define EXPECT_OPTION(flag, text, get, set, ...) expectOption(flag, text, &Options::get, &Options::set, __VA_ARGS__)
/// Of an option that a detail record has under the same name.
#define EXPECT_DETAIL(detail, flag, text, get, set, ...) \
    EXPECT_OPTION(flag, text, get, set, __VA_ARGS__);    \
    expectCopied(flag, text, &Transcode##detail##Detail::get, __VA_ARGS__)

TEST(TranscodeOptionAccessors, texts) {
    EXPECT_OPTION("-out", " /A ", outputFile, setOutputFile, " /A ");
    EXPECT_OPTION("-progress_file", "/P", progressFile, setProgressFile, "/P");
    EXPECT_OPTION("-progress_prefix", "Job", progressOutputPrefix, setProgressOutputPrefix, "Job");
    EXPECT_OPTION("-work_dir", "/W", workDirectory, setWorkDirectory, "/W");
    EXPECT_OPTION("-lang_code", "DE", languageCode, setLanguageCode, "DE");
    EXPECT_OPTION("-file_format", "wav", outputFileFormat, setOutputFileFormat, OAVWaveFileFormat);
    EXPECT_DETAIL(Video, "-vprofile", "High 10", videoProfile, setVideoProfile, "High 10");
    EXPECT_OPTION("-v_decoder", "ffmpeg", videoDecodeEngineValue, setVideoDecodeEngineValue, "ffmpeg");
    EXPECT_OPTION("-a_decoder", "smdk", audioDecodeEngineValue, setAudioDecodeEngineValue, "smdk");
    EXPECT_DETAIL(Audio, "-alang_code", "de-CH", audioLanguageCode, setAudioLanguageCode, "de-CH");
    EXPECT_DETAIL(Timecode, "-tc_custom", "", timecode, setTimecode, "");
    EXPECT_DETAIL(WatermarkImage, "-wmf_path", "/Logo.png", watermarkFilePath, setWatermarkFilePath, "/Logo.png");
    EXPECT_DETAIL(WatermarkText, "-wmt_text", " Not FINAL ", watermarkText, setWatermarkText, " Not FINAL ");
    EXPECT_OPTION("-clut", "/Look 1.cube", lutFile, setLutFile, std::filesystem::path("/Look 1.cube"));
}

TEST(TranscodeOptionAccessors, choices) {
    EXPECT_DETAIL(Video, "-vcodec", "Any Codec", videoFormat, setVideoFormat,
                  OAVTranscodeArgumentVideoCodecValue("Any Codec"));
    EXPECT_DETAIL(Video, "-aspect_scaling", "letterbox", aspectScaling, setAspectScaling, OAVLetterboxAspect);
    EXPECT_DETAIL(Video, "-crop_anchor", "tr", videoCropAnchor, setVideoCropAnchor, VideoCropAnchor(OAVAnchorTopRight));
    EXPECT_DETAIL(Audio, "-acodec", "apple_lossless", audioFormat, setAudioFormat, OAVAppleLosslessAudioFormatValue);
    EXPECT_DETAIL(Audio, "-acl", "hex", channelLayout, setChannelLayout, OAVHexagonalAudioLayout);
    EXPECT_DETAIL(Timecode, "-tc_burn_anchor", "c", timecodeBurnAnchor, setTimecodeBurnAnchor,
                  TimecodeBurnAnchor(OAVAnchorCenter));
    EXPECT_DETAIL(WatermarkImage, "-wmf_anchor", "cr", watermarkFileAnchor, setWatermarkFileAnchor,
                  WatermarkBurnAnchor(OAVAnchorCenterRight));
    EXPECT_DETAIL(WatermarkText, "-wmt_anchor", "c", watermarkTextAnchor, setWatermarkTextAnchor, OAVAnchorCenter);
    EXPECT_DETAIL(Video, "-c_space", "sRGB", colorSpace, setColorSpace, OrvaneVideoColorSpace::sRGB);
    EXPECT_OPTION("-c_matrix", "cm_rec_604_4", colorMatrix, setColorMatrix, OrvaneVideoColorMatrix::rec601);
    EXPECT_OPTION("-c_transfer", "tf_smpte_240M_1995", colorTransferFunction, setColorTransferFunction,
                  OrvanePixelTransferFunction::smpte240M);
    EXPECT_DETAIL(Video, "-v_colrange", "v", colorRange, setColorRange, OrvanePixelColorRange::video);
    EXPECT_DETAIL(Audio, "-aqual", "medium", audioQuality, setAudioQuality, TranscodeAudioQuality::medium);
}

TEST(TranscodeOptionAccessors, numbers) {
    EXPECT_DETAIL(Video, "-vr", "23.976", videoFrameRate, setVideoFrameRate, 23.976F);
    EXPECT_DETAIL(Video, "-vbr", "0.1", videoBitRate, setVideoBitRate, 0.1F);
    EXPECT_OPTION("-vscale", "0.25", explicitVideoScaling, setExplicitVideoScaling, 0.25F);
    EXPECT_DETAIL(Timecode, "-tc_rate", "29.97", timecodeFrameRate, setTimecodeFrameRate, 29.97F);
    EXPECT_DETAIL(WatermarkImage, "-wmf_scale", "1.5", watermarkFileScale, setWatermarkFileScale, 1.5);
    EXPECT_DETAIL(Video, "-vbd", "10", videoBitDepth, setVideoBitDepth, 10);
    EXPECT_DETAIL(Video, "-key_frames", "250", keyFrames, setKeyFrames, 250);
    EXPECT_OPTION("-mf", "9223372036854775807", maxFrames, setMaxFrames, INT64_MAX);
    EXPECT_OPTION("-max_v_frame_mem", "-1", maxVideoFrameMemory, setMaxVideoFrameMemory, -1);
    EXPECT_DETAIL(Audio, "-abr", "256000", audioBitRate, setAudioBitRate, 256000);
    EXPECT_DETAIL(Audio, "-asr", "48000", sampleRate, setSampleRate, 48000);
    EXPECT_DETAIL(Audio, "-abpc", "24", audioBitsPerChannel, setAudioBitsPerChannel, 24);
    EXPECT_DETAIL(Audio, "-acl_tag", "-65536", channelLayoutTag, setChannelLayoutTag, -65536);
    EXPECT_DETAIL(Timecode, "-tc_burn_size", "36", timecodeBurnFontSize, setTimecodeBurnFontSize, 36);
    EXPECT_DETAIL(WatermarkText, "-wmt_size", "0", watermarkTextBurnFontSize, setWatermarkTextBurnFontSize, 0);
}

TEST(TranscodeOptionAccessors, structuredValues) {
    EXPECT_DETAIL(Video, "-dims", "1920x1080.5", videoDimensions, setVideoDimensions, PictureSize(1920, 1080.5));
    EXPECT_OPTION("-additional_decode_options", "a=1:b=", additionalDecodeOptions, setAdditionalDecodeOptions,
                  std::map<std::string, std::string>{{"b", ""}, {"a", "1"}});
    EXPECT_OPTION("-gpu_trans", "[4294968296 0", gpuTransformationDeviceIDs, setGpuTransformationDeviceIDs,
                  std::vector<std::uint64_t>{4294968296, 0});
    using enum AudioChannelLabel;
    EXPECT_OPTION("-acl_bitmap", "[L R C LFE Ls Rs", channelLayoutBitmap, setChannelLayoutBitmap,
                  std::vector{left, right, center, lowFrequencyEffects, leftSurround, rightSurround});
    const Color color = Color::sRGB(0.1, 0, 1);
    EXPECT_DETAIL(Timecode, "-tc_burn_font_rgb", "0.1 0 1", timecodeBurnFontColor, setTimecodeBurnFontColor, color);
    EXPECT_DETAIL(Timecode, "-tc_burn_box_rgb", "0.1 0 1", timecodeBurnBoxColor, setTimecodeBurnBoxColor, color);
    EXPECT_DETAIL(WatermarkText, "-wmt_font_rgb", "0.1 0 1", watermarkTextFontColor, setWatermarkTextFontColor, color);
    EXPECT_DETAIL(WatermarkText, "-wmt_box_rgb", "0.1 0 1", watermarkTextBoxColor, setWatermarkTextBoxColor, color);
}

TEST(TranscodeOptionAccessors, switchesAreOnWithAnyValue) {
    const std::tuple<const char*, bool (Options::*)() const, void (Options::*)(bool)> rows[] = {
        {"-overwrite", &Options::shouldOverwrite, &Options::setShouldOverwrite},
        {"-legacy-pipeline", &Options::useLegacyPipeline, &Options::setUseLegacyPipeline},
        {"-web", &Options::prepareForWeb, &Options::setPrepareForWeb},
        {"-gpu_decoding", &Options::gpuDecode, &Options::setGpuDecode},
        {"-gpu_encoding", &Options::gpuEncode, &Options::setGpuEncode},
        {"-preserve_log", &Options::preserveLogEncoding, &Options::setPreserveLogEncoding},
        {"-v_nocap", &Options::unboundVideoFrameCapacity, &Options::setUnboundVideoFrameCapacity},
        {"-red_premium", &Options::useREDPremiumDecode, &Options::setUseREDPremiumDecode},
        {"-adiscrete", &Options::audioOutputIsDiscrete, &Options::setAudioOutputIsDiscrete},
        {"-a_ch_match", &Options::audioOutputChannelsMatchSource, &Options::setAudioOutputChannelsMatchSource},
        {"-tc_track", &Options::addTimecodeTrack, &Options::setAddTimecodeTrack},
        {"-tc_burn", &Options::addTimecodeBurn, &Options::setAddTimecodeBurn},
        {"-tc_no_ntsc", &Options::bypassNTSCDrop, &Options::setBypassNTSCDrop},
        {"-wmt_burn", &Options::addWatermarkText, &Options::setAddWatermarkText},
    };
    for (const auto& [flag, get, set] : rows) {
        SCOPED_TRACE(flag);
        Options options;
        EXPECT_FALSE((options.*get)());
        (options.*set)(true);
        EXPECT_EQ(options.flagValueLookup(), (ArgumentLookup{{flag, ""}}));
        EXPECT_TRUE((options.*get)());
        (options.*set)(false);
        EXPECT_EQ(options.flagValueLookup(), ArgumentLookup());
        options.setArgumentFlagValue("false", flag);
        EXPECT_TRUE((options.*get)());
    }
    expectCopied("-preserve_log", "", &TranscodeVideoDetail::preserveLogEncoding, true);
    expectCopied("-adiscrete", "", &TranscodeAudioDetail::audioOutputIsDiscrete, true);
    expectCopied("-a_ch_match", "", &TranscodeAudioDetail::audioOutputChannelsMatchSource, true);
    expectCopied("-tc_track", "", &TranscodeTimecodeDetail::addTimecodeTrack, true);
    expectCopied("-tc_burn", "", &TranscodeTimecodeDetail::addTimecodeBurn, true);
    expectCopied("-wmt_burn", "", &TranscodeWatermarkTextDetail::addWatermarkText, true);
}

TEST(TranscodeOptionAccessors, aTimecodesSourceIsCopiedAfterItsText) {
    expectCopied("-tc_non_drop", "", &TranscodeTimecodeDetail::timecodeDropFrameState, DropFrameState::nonDrop);
    TranscodeTimecodeDetail detail;
    detail.timecode = "10:00:00:00";
    detail.timecodeSource = TimecodeSource::creationDate;  // which leaves no text
    Options options;
    options.update(detail);
    EXPECT_EQ(options.flagValueLookup(), (ArgumentLookup{{"-tc_creation", ""}}));
}

TEST(TranscodeOptionAccessors, textsThatAreNoValueReadAsNone) {
    const std::tuple<const char*, const char*, bool (*)(const Options&)> rows[] = {
        {"-aqual", "High", [](auto& a) { return !a.audioQuality(); }},
        {"-vbr", "abc", [](auto& a) { return !a.videoBitRate() && !a.videoBitRateAsBitsPerSecond(); }},
        {"-vbr", "1e35", [](auto& a) { return !a.videoBitRateAsBitsPerSecond(); }},
        {"-mf", "9223372036854775808", [](auto& a) { return !a.maxFrames(); }},
        {"-wmf_scale", "0", [](auto& a) { return !a.watermarkFileScale(); }},
        {"-tc_burn_size", "big", [](auto& a) { return !a.timecodeBurnFontSizeNumber(); }},
        {"-dims", "1920", [](auto& a) { return !a.videoDimensions() && !a.dimensionsSizeValue(); }},
    };
    for (const auto& [flag, text, isAbsent] : rows) {
        Options options;
        options.setArgumentFlagValue(text, flag);
        EXPECT_TRUE(isAbsent(options)) << flag << " " << text;
    }
}

TEST(TranscodeOptionAccessors, otherFormsOfAValue) {
    Options options;
    options.setArgumentFlagValue("2.5", "-vbr");
    EXPECT_EQ(options.videoBitRateAsBitsPerSecond(), 2'500'000.0F);
    options.setTimecodeBurnFontSize(-3);
    EXPECT_EQ(options.timecodeBurnFontSizeNumber().value().int64Value(), -3);
    options.setVideoDimensions(PictureSize(640, 360));
    EXPECT_EQ(options.dimensionsSizeValue().value().sizeValue(), PictureSize(640, 360));
    EXPECT_EQ(audioQualityNumber("max").value().int64Value(), 4);
    EXPECT_EQ(audioQualityNumber("MAX"), std::nullopt);
}

TEST(TranscodeOptionAccessors, choicesThatTheCommandLineCannotNameRemoveTheFlag) {
    Options options;
    options.setFlagValueLookup({{"-c_space", "rec_709"}, {"-c_matrix", "cm_rec_709_2"}, {"-c_transfer", "tf_pq"}});
    options.setColorSpace(OrvaneVideoColorSpace::p3D65);
    options.setColorMatrix(OrvaneVideoColorMatrix::none);
    options.setColorTransferFunction(OrvanePixelTransferFunction::gamma);
    EXPECT_EQ(options.flagValueLookup(), ArgumentLookup());
}

/// Writes 1.234,5.
class CommaPunctuation : public std::numpunct<char> {
    [[nodiscard]] char do_decimal_point() const override { return ','; }
    [[nodiscard]] char do_thousands_sep() const override { return '.'; }
    [[nodiscard]] std::string do_grouping() const override { return "\3"; }
};

TEST(TranscodeOptionAccessors, theProcessLocaleDoesNotMatter) {
    const std::locale previous = std::locale::global(std::locale(std::locale(), new CommaPunctuation));
    EXPECT_OPTION("-asr", "48000", sampleRate, setSampleRate, 48000);
    EXPECT_OPTION("-wmf_scale", "1234.5", watermarkFileScale, setWatermarkFileScale, 1234.5);
    Options options;
    options.setTimecodeSource(TimecodeComponents(1000, 2, 3, 4, DropFrameState::drop));
    EXPECT_EQ(options.flagValueLookup(), (ArgumentLookup{{"-tc_custom", "1000:02:03;04"}}));
    std::locale::global(previous);
}

}  // namespace
}  // namespace corvex::transcodeOptionAccessorTests

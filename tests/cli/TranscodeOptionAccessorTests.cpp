// Every typed option writes the text of its flag and reads it back.

#include <filesystem>
#include <limits>
#include <optional>
#include <string>

#include <gtest/gtest.h>

#include <Corvex/cli/transcode/TranscodeCliArguments.h>
#include <Corvex/color/OrvanePixelTransferFunction.h>
#include <Corvex/color/OrvaneVideoColorMatrix.h>
#include <Corvex/exported/OAVUnifiedCodecDecoderValue.h>
#include <Corvex/media/AudioChannelLabel.h>
#include <Corvex/platform/Number.h>

namespace corvex::transcodeOptionAccessorTests {
namespace {

using Arguments = TranscodeCliArguments;

/// The setter stores exactly `text` under `flag` and nothing else; the getter reads it; none removes the flag. Rendered
/// and parsed by a worker the option is the same, unless its text is one that parsing lower-cases or trims.
template <class Getter, class Setter, class Value>
void expectOption(const char* flag, const char* text, Getter getter, Setter setter, const Value& value) {
    SCOPED_TRACE(flag);
    Arguments arguments;
    EXPECT_EQ((arguments.*getter)(), std::nullopt);
    (arguments.*setter)(value);
    EXPECT_EQ(arguments.flagValueLookup(), (ArgumentLookup{{flag, text}}));
    EXPECT_EQ((arguments.*getter)(), value);
    const Arguments parsed(arguments.commandLineArguments());
    if (parsed.argumentFlagValue(flag) == text || std::string_view(flag).starts_with("-c_")) {
        EXPECT_EQ((parsed.*getter)(), value);
    }
    (arguments.*setter)(std::nullopt);
    EXPECT_EQ(arguments.flagValueLookup(), ArgumentLookup());
}

TEST(TranscodeOptionAccessors, texts) {
    expectOption("-out", " /A ", &Arguments::outputFile, &Arguments::setOutputFile, " /A ");
    expectOption("-progress_file", "/P", &Arguments::progressFile, &Arguments::setProgressFile, "/P");
    expectOption("-progress_prefix", "Job", &Arguments::progressOutputPrefix, &Arguments::setProgressOutputPrefix,
                 "Job");
    expectOption("-work_dir", "/W", &Arguments::workDirectory, &Arguments::setWorkDirectory, "/W");
    expectOption("-lang_code", "DE", &Arguments::languageCode, &Arguments::setLanguageCode, "DE");
    expectOption("-file_format", "XYZ", &Arguments::outputFileFormat, &Arguments::setOutputFileFormat,
                 OAVTranscodeArgumentFileFormatValue("XYZ"));
    expectOption("-vprofile", "High 10", &Arguments::videoProfile, &Arguments::setVideoProfile, "High 10");
    expectOption("-v_decoder", "ffmpeg", &Arguments::videoDecodeEngineValue, &Arguments::setVideoDecodeEngineValue,
                 OAVUnifiedCodecDecoderFFmpeg.rawValue());
    expectOption("-a_decoder", "smdk", &Arguments::audioDecodeEngineValue, &Arguments::setAudioDecodeEngineValue,
                 OAVUnifiedCodecDecoderSonySMDK.rawValue());
    expectOption("-alang_code", "de-CH", &Arguments::audioLanguageCode, &Arguments::setAudioLanguageCode, "de-CH");
    expectOption("-tc_custom", "", &Arguments::timecode, &Arguments::setTimecode, "");
    expectOption("-wmf_path", "/Logo.png", &Arguments::watermarkFilePath, &Arguments::setWatermarkFilePath,
                 "/Logo.png");
    expectOption("-wmt_text", " Not FINAL ", &Arguments::watermarkText, &Arguments::setWatermarkText, " Not FINAL ");
    expectOption("-clut", "/Luts/Look 1.cube", &Arguments::lutFile, &Arguments::setLutFile,
                 std::filesystem::path("/Luts/Look 1.cube"));
}

TEST(TranscodeOptionAccessors, openFamilies) {
    expectOption("-vcodec", "prores422hq", &Arguments::videoFormat, &Arguments::setVideoFormat, OAVProRes422HQ);
    expectOption("-vcodec", "Any Codec", &Arguments::videoFormat, &Arguments::setVideoFormat,
                 OAVTranscodeArgumentVideoCodecValue("Any Codec"));
    expectOption("-aspect_scaling", "letterbox", &Arguments::aspectScaling, &Arguments::setAspectScaling,
                 OAVLetterboxAspect);
    expectOption("-crop_anchor", "tr", &Arguments::videoCropAnchor, &Arguments::setVideoCropAnchor,
                 VideoCropAnchor(OAVAnchorTopRight));
    expectOption("-acodec", "apple_lossless", &Arguments::audioFormat, &Arguments::setAudioFormat,
                 OAVAppleLosslessAudioFormatValue);
    expectOption("-acl", "hex", &Arguments::channelLayout, &Arguments::setChannelLayout, OAVHexagonalAudioLayout);
    expectOption("-tc_burn_anchor", "bl", &Arguments::timecodeBurnAnchor, &Arguments::setTimecodeBurnAnchor,
                 TimecodeBurnAnchor(OAVAnchorBottomLeft));
    expectOption("-wmf_anchor", "cr", &Arguments::watermarkFileAnchor, &Arguments::setWatermarkFileAnchor,
                 WatermarkBurnAnchor(OAVAnchorCenterRight));
    expectOption("-wmt_anchor", "c", &Arguments::watermarkTextAnchor, &Arguments::setWatermarkTextAnchor,
                 OAVAnchorCenter);
}

TEST(TranscodeOptionAccessors, numbers) {
    expectOption("-vr", "23.976", &Arguments::videoFrameRate, &Arguments::setVideoFrameRate, 23.976F);
    expectOption("-vbr", "0.1", &Arguments::videoBitRate, &Arguments::setVideoBitRate, 0.1F);
    expectOption("-vscale", "0.25", &Arguments::explicitVideoScaling, &Arguments::setExplicitVideoScaling, 0.25F);
    expectOption("-tc_rate", "29.97", &Arguments::timecodeFrameRate, &Arguments::setTimecodeFrameRate, 29.97F);
    expectOption("-wmf_scale", "1.5", &Arguments::watermarkFileScale, &Arguments::setWatermarkFileScale, 1.5);
    expectOption("-vbd", "10", &Arguments::videoBitDepth, &Arguments::setVideoBitDepth, 10);
    expectOption("-key_frames", "250", &Arguments::keyFrames, &Arguments::setKeyFrames, 250);
    expectOption("-mf", "9223372036854775807", &Arguments::maxFrames, &Arguments::setMaxFrames,
                 std::numeric_limits<std::int64_t>::max());
    expectOption("-max_v_frame_mem", "-9223372036854775808", &Arguments::maxVideoFrameMemory,
                 &Arguments::setMaxVideoFrameMemory, std::numeric_limits<std::int64_t>::min());
    expectOption("-abr", "256000", &Arguments::audioBitRate, &Arguments::setAudioBitRate, 256000);
    expectOption("-asr", "48000", &Arguments::sampleRate, &Arguments::setSampleRate, 48000);
    expectOption("-abpc", "24", &Arguments::audioBitsPerChannel, &Arguments::setAudioBitsPerChannel, 24);
    expectOption("-acl_tag", "-65536", &Arguments::channelLayoutTag, &Arguments::setChannelLayoutTag, -65536);
    expectOption("-tc_burn_size", "36", &Arguments::timecodeBurnFontSize, &Arguments::setTimecodeBurnFontSize, 36);
    expectOption("-wmt_size", "0", &Arguments::watermarkTextBurnFontSize, &Arguments::setWatermarkTextBurnFontSize, 0);
}

TEST(TranscodeOptionAccessors, closedChoices) {
    expectOption("-c_space", "sRGB", &Arguments::colorSpace, &Arguments::setColorSpace, OrvaneVideoColorSpace::sRGB);
    expectOption("-c_matrix", "cm_rec_604_4", &Arguments::colorMatrix, &Arguments::setColorMatrix,
                 OrvaneVideoColorMatrix::rec601);
    expectOption("-c_transfer", "tf_smpte_240M_1995", &Arguments::colorTransferFunction,
                 &Arguments::setColorTransferFunction, OrvanePixelTransferFunction::smpte240M);
    expectOption("-v_colrange", "v", &Arguments::colorRange, &Arguments::setColorRange, OrvanePixelColorRange::video);
    expectOption("-aqual", "medium", &Arguments::audioQuality, &Arguments::setAudioQuality,
                 TranscodeAudioQuality::medium);
}

TEST(TranscodeOptionAccessors, structuredValues) {
    expectOption("-dims", "1920x1080.5", &Arguments::videoDimensions, &Arguments::setVideoDimensions,
                 PictureSize(1920, 1080.5));
    expectOption("-additional_decode_options", "a=1:b=", &Arguments::additionalDecodeOptions,
                 &Arguments::setAdditionalDecodeOptions, std::map<std::string, std::string>{{"b", ""}, {"a", "1"}});
    expectOption("-gpu_trans", "[4294968296 0", &Arguments::gpuTransformationDeviceIDs,
                 &Arguments::setGpuTransformationDeviceIDs, std::vector<std::uint64_t>{4294968296, 0});
    expectOption("-acl_bitmap", "[L R C LFE Ls Rs", &Arguments::channelLayoutBitmap, &Arguments::setChannelLayoutBitmap,
                 std::vector{AudioChannelLabel::left, AudioChannelLabel::right, AudioChannelLabel::center,
                             AudioChannelLabel::lowFrequencyEffects, AudioChannelLabel::leftSurround,
                             AudioChannelLabel::rightSurround});
    const Color color = Color::sRGB(0.1, 0, 1);
    expectOption("-tc_burn_font_rgb", "0.1 0 1", &Arguments::timecodeBurnFontColor,
                 &Arguments::setTimecodeBurnFontColor, color);
    expectOption("-tc_burn_box_rgb", "0.1 0 1", &Arguments::timecodeBurnBoxColor, &Arguments::setTimecodeBurnBoxColor,
                 color);
    expectOption("-wmt_font_rgb", "0.1 0 1", &Arguments::watermarkTextFontColor, &Arguments::setWatermarkTextFontColor,
                 color);
    expectOption("-wmt_box_rgb", "0.1 0 1", &Arguments::watermarkTextBoxColor, &Arguments::setWatermarkTextBoxColor,
                 color);
}

TEST(TranscodeOptionAccessors, switchesAreOnWithAnyValue) {
    struct SwitchRow {
        const char* flag;
        bool (Arguments::*get)() const;
        void (Arguments::*set)(bool);
    };
    const SwitchRow rows[] = {
        {"-overwrite", &Arguments::shouldOverwrite, &Arguments::setShouldOverwrite},
        {"-legacy-pipeline", &Arguments::useLegacyPipeline, &Arguments::setUseLegacyPipeline},
        {"-web", &Arguments::prepareForWeb, &Arguments::setPrepareForWeb},
        {"-gpu_decoding", &Arguments::gpuDecode, &Arguments::setGpuDecode},
        {"-gpu_encoding", &Arguments::gpuEncode, &Arguments::setGpuEncode},
        {"-preserve_log", &Arguments::preserveLogEncoding, &Arguments::setPreserveLogEncoding},
        {"-v_nocap", &Arguments::unboundVideoFrameCapacity, &Arguments::setUnboundVideoFrameCapacity},
        {"-red_premium", &Arguments::useREDPremiumDecode, &Arguments::setUseREDPremiumDecode},
        {"-adiscrete", &Arguments::audioOutputIsDiscrete, &Arguments::setAudioOutputIsDiscrete},
        {"-a_ch_match", &Arguments::audioOutputChannelsMatchSource, &Arguments::setAudioOutputChannelsMatchSource},
        {"-tc_track", &Arguments::addTimecodeTrack, &Arguments::setAddTimecodeTrack},
        {"-tc_burn", &Arguments::addTimecodeBurn, &Arguments::setAddTimecodeBurn},
        {"-tc_no_ntsc", &Arguments::bypassNTSCDrop, &Arguments::setBypassNTSCDrop},
        {"-wmt_burn", &Arguments::addWatermarkText, &Arguments::setAddWatermarkText},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.flag);
        Arguments arguments;
        EXPECT_FALSE((arguments.*row.get)());
        (arguments.*row.set)(true);
        EXPECT_EQ(arguments.flagValueLookup(), (ArgumentLookup{{row.flag, ""}}));
        EXPECT_TRUE((arguments.*row.get)());
        (arguments.*row.set)(false);
        EXPECT_EQ(arguments.flagValueLookup(), ArgumentLookup());
        arguments.setArgumentFlagValue("false", row.flag);
        EXPECT_TRUE((arguments.*row.get)());
    }
}

TEST(TranscodeOptionAccessors, textsThatAreNoValueReadAsNone) {
    struct UnreadableRow {
        const char* flag;
        const char* text;
        bool (*isAbsent)(const Arguments&);
    };
    const UnreadableRow rows[] = {
        {"-c_space", "rec709", [](const Arguments& a) { return !a.colorSpace(); }},
        {"-c_matrix", "cm_rec_601", [](const Arguments& a) { return !a.colorMatrix(); }},
        {"-c_transfer", "tf_gamma", [](const Arguments& a) { return !a.colorTransferFunction(); }},
        {"-v_colrange", "full", [](const Arguments& a) { return !a.colorRange(); }},
        {"-aqual", "best", [](const Arguments& a) { return !a.audioQuality(); }},
        {"-aqual", "High", [](const Arguments& a) { return !a.audioQuality(); }},
        {"-vbr", "abc", [](const Arguments& a) { return !a.videoBitRate() && !a.videoBitRateAsBitsPerSecond(); }},
        {"-vbr", "1e35", [](const Arguments& a) { return !a.videoBitRateAsBitsPerSecond(); }},
        {"-vr", "30000/1001", [](const Arguments& a) { return !a.videoFrameRate(); }},
        {"-mf", "9223372036854775808", [](const Arguments& a) { return !a.maxFrames(); }},
        {"-wmf_scale", "0", [](const Arguments& a) { return !a.watermarkFileScale(); }},
        {"-tc_burn_size", "big", [](const Arguments& a) { return !a.timecodeBurnFontSizeNumber(); }},
    };
    for (const auto& row : rows) {
        Arguments arguments;
        arguments.setArgumentFlagValue(row.text, row.flag);
        EXPECT_TRUE(row.isAbsent(arguments)) << row.flag << " " << row.text;
    }
}

TEST(TranscodeOptionAccessors, signsAndObjects) {
    Arguments arguments;
    arguments.setArgumentFlagValue("+007", "-vbd");
    EXPECT_EQ(arguments.videoBitDepth(), 7);
    arguments.setArgumentFlagValue("+.5e1", "-vr");
    EXPECT_EQ(arguments.videoFrameRate(), 5.0F);
    arguments.setArgumentFlagValue("2.5", "-vbr");
    EXPECT_EQ(arguments.videoBitRateAsBitsPerSecond(), 2'500'000.0F);
    arguments.setTimecodeBurnFontSize(-3);
    EXPECT_EQ(arguments.timecodeBurnFontSizeNumber().value().int64Value(), -3);
    EXPECT_EQ(arguments.dimensionsSizeValue(), std::nullopt);
    arguments.setVideoDimensions(PictureSize(640, 360));
    EXPECT_EQ(arguments.dimensionsSizeValue().value().sizeValue(), PictureSize(640, 360));
    EXPECT_EQ(audioQualityNumber("max").value().int64Value(), 4);
    EXPECT_EQ(audioQualityNumber("MAX"), std::nullopt);
}

TEST(TranscodeOptionAccessors, choicesThatTheCommandLineCannotNameRemoveTheFlag) {
    Arguments arguments;
    arguments.setColorSpace(OrvaneVideoColorSpace::rec709);
    arguments.setColorMatrix(OrvaneVideoColorMatrix::rec709);
    arguments.setColorTransferFunction(OrvanePixelTransferFunction::pq);
    arguments.setColorSpace(OrvaneVideoColorSpace::p3D65);
    arguments.setColorMatrix(OrvaneVideoColorMatrix::none);
    arguments.setColorTransferFunction(OrvanePixelTransferFunction::gamma);
    EXPECT_EQ(arguments.flagValueLookup(), ArgumentLookup());
}

}  // namespace
}  // namespace corvex::transcodeOptionAccessorTests

// The options that look at more than one flag, or whose text has a form of its own.

#include <limits>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <Corvex/cli/transcode/GpuDevice.h>
#include <Corvex/cli/transcode/TranscodeCliArguments.h>
#include <Corvex/cli/transcode/TranscodeDetails.h>
#include <Corvex/cli/transcode/optionDictionary.h>
#include <Corvex/media/AudioChannelLabel.h>
#include <Corvex/platform/Log.h>
#include <Corvex/timing/TimecodeComponents.h>

namespace corvex::transcodeOptionRuleTests {
namespace {

using Arguments = TranscodeCliArguments;
using Words = std::vector<std::string>;

Arguments holding(ArgumentLookup lookup) {
    Arguments arguments;
    arguments.setFlagValueLookup(std::move(lookup));
    return arguments;
}

struct ResolutionRow {
    const char* name;
    ArgumentLookup lookup;
    std::optional<VideoDimensions> expected;
};

TEST(TranscodeOptionRules, explicitResolutionIsDecidedSideBySide) {
    const ResolutionRow rows[] = {
        {"nothing", {}, std::nullopt},
        {"dimsRoundedDown", {{"-dims", "1921.9x1080.2"}}, VideoDimensions(1921, 1080)},
        {"pixels", {{"-ovw", "1280"}, {"-ovh", "720.9"}}, VideoDimensions(1280, 720)},
        {"oneSideIsMissing", {{"-ovw", "1280"}}, std::nullopt},
        {"justAboveThreshold", {{"-ovw", "16.5"}, {"-ovh", "17"}}, VideoDimensions(16, 17)},
        {"factorNeedsDims", {{"-ovw", "16"}, {"-ovh", "720"}}, std::nullopt},
        {"factorAtThreshold", {{"-dims", "100x50"}, {"-ovw", "16"}}, VideoDimensions(1600, 50)},
        {"pixelsOnOneSide", {{"-dims", "1920x1080"}, {"-ovh", "640"}}, VideoDimensions(1920, 640)},
        {"scale", {{"-dims", "1921x1081"}, {"-vscale", "0.5"}}, VideoDimensions(960, 540)},
        {"scaleAlone", {{"-vscale", "0.5"}}, std::nullopt},
        {"sideBeforeScale", {{"-dims", "1920x1080"}, {"-ovw", "0.25"}, {"-vscale", "0.5"}}, VideoDimensions(480, 540)},
        {"scaleDoesNotReachPixels",
         {{"-dims", "1920x1080"}, {"-ovw", "640"}, {"-vscale", "2"}},
         VideoDimensions(640, 2160)},
        {"scaleAtThreshold", {{"-dims", "100x50"}, {"-vscale", "16.0"}}, VideoDimensions(1600, 800)},
        {"scaleAboveThreshold", {{"-dims", "100x50"}, {"-vscale", "16.1"}}, VideoDimensions(100, 50)},
        {"unusableSides",
         {{"-dims", "100x50"}, {"-ovw", "0"}, {"-ovh", "wide"}, {"-vscale", "2"}},
         VideoDimensions(200, 100)},
        {"negativeSide", {{"-dims", "100x50"}, {"-ovw", "-20"}}, VideoDimensions(100, 50)},
        {"belowOne", {{"-dims", "1x50"}, {"-ovw", "0.9"}}, std::nullopt},
        {"negativeDims", {{"-dims", "-100x50"}}, std::nullopt},
        {"limited", {{"-dims", "3e9x10"}, {"-ovw", "1"}}, VideoDimensions(2147483647, 10)},
        {"unreadableDims", {{"-dims", "hd"}, {"-ovw", "1280"}, {"-ovh", "720"}}, VideoDimensions(1280, 720)},
    };
    for (const auto& row : rows) EXPECT_EQ(holding(row.lookup).explicitOutputResolution(), row.expected) << row.name;
}

TEST(TranscodeOptionRules, explicitResolutionSetterLeavesOneFlag) {
    const ArgumentLookup all{{"-dims", "1x1"}, {"-ovw", "2"}, {"-ovh", "3"}, {"-vscale", "4"}, {"-vr", "25"}};
    Arguments arguments = holding(all);
    arguments.setExplicitOutputResolution(VideoDimensions(1280, 721));
    EXPECT_EQ(arguments.flagValueLookup(), (ArgumentLookup{{"-dims", "1280x721"}, {"-vr", "25"}}));
    arguments = holding(all);
    arguments.setExplicitOutputResolution(std::nullopt);
    EXPECT_EQ(arguments.flagValueLookup(), (ArgumentLookup{{"-vr", "25"}}));
}

TEST(TranscodeOptionRules, scaleOfAKnownInputIsMadeEven) {
    struct OutputRow {
        const char* name;
        ArgumentLookup lookup;
        std::optional<PictureSize> input;
        std::optional<VideoDimensions> expected;
    };
    const OutputRow rows[] = {
        {"one", {{"-vscale", "1"}}, PictureSize(1921, 1081), VideoDimensions(1922, 1082)},
        {"winsOverPixels",
         {{"-vscale", "2"}, {"-dims", "9x9"}, {"-ovw", "99"}},
         PictureSize(10, 20),
         VideoDimensions(20, 40)},
        {"beyondThreshold", {{"-vscale", "20"}}, PictureSize(10, 20), VideoDimensions(200, 400)},
        {"singlePrecisionBelowSeven", {{"-vscale", "0.7"}}, PictureSize(10, 10), VideoDimensions(6, 6)},
        {"tiny", {{"-vscale", "0.001"}}, PictureSize(100, 1500), VideoDimensions(0, 2)},
        {"negative", {{"-vscale", "-1"}}, PictureSize(100, 100), VideoDimensions(0, 0)},
        {"huge", {{"-vscale", "1e30"}}, PictureSize(100, 0), VideoDimensions(2147483647, 0)},
        {"unknownInput", {{"-vscale", "0.5"}, {"-dims", "102x51"}}, std::nullopt, VideoDimensions(51, 25)},
        {"noScale", {{"-dims", "101x51"}}, PictureSize(1920, 1080), VideoDimensions(101, 51)},
        {"unreadableScale", {{"-vscale", "x"}, {"-dims", "101x51"}}, PictureSize(1920, 1080), VideoDimensions(101, 51)},
        {"nothing", {}, PictureSize(1920, 1080), std::nullopt},
    };
    for (const auto& row : rows) EXPECT_EQ(holding(row.lookup).outputResolution(row.input), row.expected) << row.name;
}

TEST(TranscodeOptionRules, frameCapacity) {
    constexpr std::uint64_t unbounded = std::numeric_limits<std::uint64_t>::max();
    EXPECT_GE(Arguments::defaultVideoFrameCapacity(), 1U);
    const std::uint64_t processors = Arguments::defaultVideoFrameCapacity();
    Arguments::setDefaultVideoFrameCapacity(77);
    struct CapacityRow {
        const char* name;
        ArgumentLookup lookup;
        std::uint64_t expected;
    };
    const CapacityRow rows[] = {
        {"default", {}, 77},
        {"number", {{"-v_frame_cap", "4"}}, 4},
        {"largest", {{"-v_frame_cap", "18446744073709551615"}}, unbounded},
        {"tooLarge", {{"-v_frame_cap", "18446744073709551616"}}, 77},
        {"minus", {{"-v_frame_cap", "-4"}}, 77},
        {"noCapWins", {{"-v_nocap", ""}, {"-v_frame_cap", "4"}}, unbounded},
    };
    for (const auto& row : rows) EXPECT_EQ(holding(row.lookup).videoFrameCapacity(), row.expected) << row.name;
    Arguments::setDefaultVideoFrameCapacity(processors);
    Arguments arguments = holding({{"-v_nocap", ""}});  // which would outrank the number
    arguments.setVideoFrameCapacity(12);
    EXPECT_EQ(arguments.flagValueLookup(), (ArgumentLookup{{"-v_frame_cap", "12"}}));
}

using Dictionary = std::map<std::string, std::string>;

TEST(TranscodeOptionRules, decodeOptionsTextIsRead) {
    const std::pair<const char*, Dictionary> rows[] = {{"", {}},
                                                       {"b=2:a=1", {{"a", "1"}, {"b", "2"}}},
                                                       {"a", {{"a", ""}}},
                                                       {"a=1:a=2", {{"a", "2"}}},
                                                       {"=1:a=2", {{"a", "2"}}},
                                                       {":a=1::", {{"a", "1"}}},
                                                       {"a=b=c", {{"a", "b=c"}}},
                                                       {R"(a\=b=c\:d)", {{"a=b", "c:d"}}},
                                                       {R"(a\\=\\)", {{"a\\", "\\"}}},
                                                       {R"(\a=\n)", {{"a", "n"}}},
                                                       {R"(a=1\)", {{"a", "1\\"}}},
                                                       {R"(\-x=1)", {{"-x", "1"}}},
                                                       {"Key Two= Value ", {{"Key Two", " Value "}}}};
    for (const auto& [text, expected] : rows) EXPECT_EQ(parseDictionary(text), expected) << text;
    EXPECT_EQ(Arguments().additionalDecodeOptions(), std::nullopt);
    EXPECT_EQ(Arguments(Words{"-additional_decode_options", "Gamma=X:"}).additionalDecodeOptions(),
              (Dictionary{{"Gamma", "X"}}));
}

TEST(TranscodeOptionRules, decodeOptionsTextSurvivesAnArgumentVector) {
    const std::pair<Dictionary, const char*> rows[] = {{{}, ""},
                                                       {{{"b", ""}, {"a", "1"}}, "a=1:b="},
                                                       {{{"a=b", "c:d\\"}}, R"(a\=b=c\:d\\)"},
                                                       {{{"-x", "-y"}}, R"(\-x=-y)"},
                                                       {{{" -x", "y"}}, R"(\ -x=y)"},
                                                       {{{"\u00A0k", "v"}}, "\\\u00A0k=v"},
                                                       {{{"k", "v "}}, "k=v :"},
                                                       {{{"k", "\n"}}, "k=\n:"}};
    for (const auto& [dictionary, text] : rows) {
        Arguments arguments;
        arguments.setAdditionalDecodeOptions(dictionary);
        EXPECT_EQ(arguments.argumentFlagValue("-additional_decode_options"), text);
        EXPECT_EQ(Arguments(arguments.commandLineArguments()).additionalDecodeOptions(), dictionary) << text;
    }
}

class Device final : public GpuDevice {
public:
    explicit Device(std::uint64_t number) : number_(number) {}
    [[nodiscard]] std::uint64_t registryID() const noexcept override { return number_; }

private:
    std::uint64_t number_;
};

TEST(TranscodeOptionRules, transformationDevices) {
    using Numbers = std::optional<std::vector<std::uint64_t>>;
    const std::pair<const char*, Numbers> rows[] = {
        {"[7 18446744073709551615", Numbers{{7, 18446744073709551615U}}},
        {"metal 7 18446744073709551616 -1 +8", Numbers{{7, 8}}},
        {"", std::nullopt},
    };
    for (const auto& [text, expected] : rows) {
        EXPECT_EQ(holding({{"-gpu_trans", text}}).gpuTransformationDeviceIDs(), expected) << text;
    }
    Arguments arguments = holding({{"-gpu_trans", "metal 7 8"}});
    EXPECT_EQ(arguments.gpuTransformationDevice(), nullptr);
    setGpuDeviceProvider([](std::uint64_t number) { return number == 7 ? std::make_shared<Device>(7) : nullptr; });
    const auto device = arguments.gpuTransformationDevice();
    EXPECT_TRUE(device != nullptr && device->registryID() == 7);
    arguments.setArgumentFlagValue("8 7", "-gpu_trans");
    EXPECT_EQ(arguments.gpuTransformationDevice(), nullptr) << "only the first counts";
    setGpuDeviceProvider({});
    arguments.setGpuTransformationDeviceIDs(std::vector<std::uint64_t>());
    EXPECT_FALSE(arguments.hasArgumentFlag("-gpu_trans"));
}

TEST(TranscodeOptionRules, channelsOfLayouts) {
    const std::pair<const char*, std::optional<std::int64_t>> rows[] = {
        {"mono", 1}, {"stereo", 2}, {"quad", 4}, {"pent", 5}, {"hex", 6},     {"oct", 8},
        {"6", 6},    {"-2", -2},    {"", {}},    {"7.1", {}}, {"Stereo", {}},
    };
    for (const auto& [text, expected] : rows) EXPECT_EQ(holding({{"-acl", text}}).outputChannels(), expected) << text;
    EXPECT_EQ(Arguments().outputChannels(), std::nullopt);
    EXPECT_EQ(Arguments(Words{"-acl", "HEX", "-aqual", "HIGH"}).outputChannels(), 6);
    EXPECT_EQ(Arguments(Words{"-acl", "HEX", "-aqual", "HIGH"}).audioQuality(), TranscodeAudioQuality::high);
}

TEST(TranscodeOptionRules, channelLabels) {
    using Labels = std::optional<std::vector<AudioChannelLabel>>;
    const std::pair<const char*, Labels> rows[] = {
        {"[l r", Labels{{AudioChannelLabel::left, AudioChannelLabel::right}}},
        {"LSS m1", Labels{{AudioChannelLabel::leftSideSurround, AudioChannelLabel::mono}}},
        {"l x", std::nullopt},
        {"", std::nullopt},
    };
    for (const auto& [text, expected] : rows) {
        EXPECT_EQ(holding({{"-acl_bitmap", text}}).channelLayoutBitmap(), expected) << text;
    }
    Arguments arguments = holding({{"-acl_bitmap", "l"}});
    arguments.setChannelLayoutBitmap(std::vector<AudioChannelLabel>());
    EXPECT_EQ(arguments.flagValueLookup(), ArgumentLookup());
}

TEST(TranscodeOptionRules, ignoredTracksByFile) {
    Arguments arguments = holding({{"-ac_omit", "[3 1 3"},
                                   {"-ac_omit_0", "7"},
                                   {"-ac_omit_10", "0 x -1 5"},
                                   {"-ac_omit_2", "4"},
                                   {"-ac_omit_x", "1"},
                                   {"-ac_omit2", "1"},
                                   {"-ac_omit_3", "none"}});
    std::vector<std::pair<std::uint64_t, std::vector<std::uint64_t>>> calls;
    arguments.enumerateIgnoredAudioFileTracks(
        [&](std::uint64_t file, const std::vector<std::uint64_t>& tracks) { calls.emplace_back(file, tracks); });
    EXPECT_EQ(calls, (decltype(calls){{0, {1, 3, 7}}, {2, {4}}, {10, {0, 5}}}));

    arguments.setIgnoredAudioTracks(0, {2, 10});
    EXPECT_FALSE(arguments.hasArgumentFlag("-ac_omit"));
    EXPECT_EQ(arguments.argumentFlagValue("-ac_omit_0"), "[2 10");
    arguments.setIgnoredAudioTracks(0, {});
    EXPECT_FALSE(arguments.hasArgumentFlag("-ac_omit_0"));
    EXPECT_TRUE(arguments.hasArgumentFlag("-ac_omit_x"));
}

TEST(TranscodeOptionRules, timecodeSourceIsTheFirstFlagOfThree) {
    const std::pair<ArgumentLookup, TimecodeSource> rows[] = {
        {{}, TimecodeSource::match},
        {{{"-tc_match", ""}}, TimecodeSource::match},
        {{{"-tc_creation", "no"}}, TimecodeSource::creationDate},
        {{{"-tc_custom", ""}}, TimecodeSource::custom},
        {{{"-tc_custom", ""}, {"-tc_creation", ""}}, TimecodeSource::creationDate},
        {{{"-tc_custom", ""}, {"-tc_creation", ""}, {"-tc_match", ""}}, TimecodeSource::match},
    };
    for (const auto& [lookup, expected] : rows) {
        EXPECT_EQ(holding(lookup).timecodeSource(), expected) << testing::PrintToString(lookup);
    }
}

TEST(TranscodeOptionRules, timecodeSourceSetterLeavesOneFlagOfThree) {
    const ArgumentLookup before{{"-tc_match", ""}, {"-tc_creation", ""}, {"-tc_custom", "01:00:00;02"}};
    Arguments arguments = holding(before);
    arguments.setTimecodeSource(TimecodeSource::creationDate);
    EXPECT_EQ(arguments.flagValueLookup(), (ArgumentLookup{{"-tc_creation", ""}}));
    arguments.setTimecodeSource(TimecodeSource::custom);
    EXPECT_EQ(arguments.flagValueLookup(), (ArgumentLookup{{"-tc_custom", "00:00:00:00"}}));
    arguments = holding(before);
    arguments.setTimecodeSource(TimecodeSource::custom);
    EXPECT_EQ(arguments.flagValueLookup(), (ArgumentLookup{{"-tc_custom", "01:00:00;02"}}));
    arguments = holding(before);
    arguments.setTimecodeSource(TimecodeComponents(10, 2, 3, 4, DropFrameState::nonDrop));
    EXPECT_EQ(arguments.flagValueLookup(), (ArgumentLookup{{"-tc_custom", "10:02:03:04"}}));
    EXPECT_EQ(arguments.timecode(), "10:02:03:04");
}

TEST(TranscodeOptionRules, dropFrameState) {
    const std::pair<ArgumentLookup, DropFrameState> rows[] = {
        {{}, DropFrameState::unknown},
        {{{"-tc_drop", "x"}, {"-tc_non_drop", ""}, {"-tc_custom", "01:00:00:00"}}, DropFrameState::drop},
        {{{"-tc_non_drop", ""}, {"-tc_custom", "01:00:00;00"}}, DropFrameState::nonDrop},
        {{{"-tc_custom", "01:00:00;00"}}, DropFrameState::drop},
        {{{"-tc_custom", "01:00:00:00"}}, DropFrameState::nonDrop},
        {{{"-tc_custom", "1:00:00;00"}}, DropFrameState::unknown},
        {{{"-tc_custom", "01:61:00;00"}}, DropFrameState::unknown},
    };
    for (const auto& [lookup, expected] : rows) {
        EXPECT_EQ(holding(lookup).timecodeDropFrameState(), expected) << testing::PrintToString(lookup);
    }
    const std::pair<DropFrameState, ArgumentLookup> written[] = {
        {DropFrameState::drop, {{"-tc_custom", "01:00:00:00"}, {"-tc_drop", ""}}},
        {DropFrameState::nonDrop, {{"-tc_custom", "01:00:00:00"}, {"-tc_non_drop", ""}}},
        {DropFrameState::unknown, {{"-tc_custom", "01:00:00:00"}}},
    };
    for (const auto& [state, expected] : written) {
        Arguments arguments = holding({{"-tc_custom", "01:00:00:00"}, {"-tc_drop", ""}, {"-tc_non_drop", ""}});
        arguments.setTimecodeDropFrameState(state);
        EXPECT_EQ(arguments.flagValueLookup(), expected);
    }
}

TEST(TranscodeOptionRules, includeTimecode) {
    struct IncludeRow {
        ArgumentLookup before;
        bool includes;
        ArgumentLookup afterTrue;
    };
    const IncludeRow rows[] = {
        {{}, false, {{"-tc_track", ""}}},
        {{{"-tc_track", ""}}, true, {{"-tc_track", ""}}},
        {{{"-tc_burn", ""}}, true, {{"-tc_burn", ""}}},
        {{{"-tc_burn", ""}, {"-tc_track", ""}}, true, {{"-tc_burn", ""}, {"-tc_track", ""}}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.before));
        Arguments arguments = holding(row.before);
        EXPECT_EQ(arguments.includeTimecode(), row.includes);
        arguments.setIncludeTimecode(true);
        EXPECT_EQ(arguments.flagValueLookup(), row.afterTrue);
        arguments.setIncludeTimecode(false);
        EXPECT_EQ(arguments.flagValueLookup(), ArgumentLookup());
    }
}

TEST(TranscodeOptionRules, colorsAreRead) {
    const std::pair<const char*, std::optional<Color>> rows[] = {
        {"0.25 0.5 1", Color::sRGB(0.25, 0.5, 1)},
        {"[0.25, 0.5, 1.0", Color::sRGB(0.25, 0.5, 1)},
    };
    for (const auto& [text, expected] : rows) {
        EXPECT_EQ(holding({{"-tc_burn_font_rgb", text}}).timecodeBurnFontColor(), expected) << text;
    }
    for (const char* text : {"1 1 1.0000001", "-0.1 0 0", "0.25 0.5", "0.25 0.5 1 1", "0.25 0.5 1]", "red", ""}) {
        EXPECT_EQ(holding({{"-tc_burn_font_rgb", text}}).timecodeBurnFontColor(), std::nullopt) << text;
    }
}

TEST(TranscodeOptionRules, colorsAreWrittenInSRGB) {
    const std::pair<Color, const char*> rows[] = {
        {Color::sRGB(0.1, 1.0 / 3, 1), "0.1 0.33333334 1"},
        {Color::sRGB(-0.0, 2, -1), "0 1 0"},
        {Color::gray(0.5), "0.5 0.5 0.5"},
        {Color(ColorModel::displayP3, 1, 0, 0), "1 0 0"},
        {Color::sRGB(1e-7, 0, 0), "0.0000001 0 0"},
    };
    Arguments arguments;
    for (const auto& [color, text] : rows) {
        arguments.setWatermarkTextBoxColor(color);
        EXPECT_EQ(arguments.argumentFlagValue("-wmt_box_rgb"), text);
    }
    std::vector<std::string> lines;
    setLogSink([&lines](LogLevel, std::string_view line) { lines.emplace_back(line); });
    arguments.setWatermarkTextFontColor(Color());
    setLogSink({});
    EXPECT_EQ(lines, (Words{"CVX_TCLIA_USS-Could not get rgb components for color"}));
    EXPECT_FALSE(arguments.hasArgumentFlag("-wmt_font_rgb"));
}

TEST(TranscodeOptionRules, videoAndAudioDetailsCopyOnlyWhatTheyHave) {
    const ArgumentLookup before{{"-vbd", "8"}, {"-asr", "44100"}, {"-adiscrete", ""}, {"-preserve_log", ""}};
    Arguments arguments = holding(before);
    arguments.update(TranscodeVideoDetail());
    arguments.update(TranscodeAudioDetail());
    EXPECT_EQ(arguments.flagValueLookup(), before);

    TranscodeVideoDetail video;
    video.videoFormat = OAVHevcCodec;
    video.videoDimensions = PictureSize(1280, 720);
    video.aspectScaling = OAVCropAspect;
    video.videoCropAnchor = VideoCropAnchor(OAVAnchorCenter);
    video.videoFrameRate = 25.0F;
    video.videoBitRate = 3.5F;
    video.videoBitDepth = 10;
    video.keyFrames = 50;
    video.videoProfile = "main10";
    video.colorSpace = OrvaneVideoColorSpace::rec2020PQ;
    video.colorRange = OrvanePixelColorRange::full;
    video.preserveLogEncoding = false;
    arguments.update(video);
    TranscodeAudioDetail audio;
    audio.audioFormat = OAVAacAudioFormatValue;
    audio.audioBitRate = 192000;
    audio.audioBitsPerChannel = 16;
    audio.audioQuality = TranscodeAudioQuality::max;
    audio.channelLayout = OAVStereoAudioLayout;
    audio.channelLayoutTag = 6619138;
    audio.audioLanguageCode = "fr";
    audio.audioOutputIsDiscrete = false;
    audio.audioOutputChannelsMatchSource = true;
    arguments.update(audio);
    EXPECT_EQ(arguments.description(),
              "TranscodeCliArguments: -a_ch_match \"\" -abpc 16 -abr 192000 -acl stereo -acl_tag 6619138 -acodec aac "
              "-alang_code fr -aqual max -aspect_scaling crop -asr 44100 -c_space rec_2020_pq -crop_anchor c "
              "-dims 1280x720 -key_frames 50 -v_colrange f -vbd 10 -vbr 3.5 -vcodec h265 -vprofile main10 -vr 25");
}

TEST(TranscodeOptionRules, timecodeAndWatermarkDetailsCopyOnlyWhatTheyHave) {
    const ArgumentLookup before{{"-tc_match", ""}, {"-tc_non_drop", ""}, {"-wmf_scale", "2"}, {"-wmt_burn", ""}};
    Arguments arguments = holding(before);
    arguments.update(TranscodeTimecodeDetail());
    arguments.update(TranscodeWatermarkImageDetail());
    arguments.update(TranscodeWatermarkTextDetail());
    EXPECT_EQ(arguments.flagValueLookup(), before);

    TranscodeTimecodeDetail timecode;
    timecode.addTimecodeTrack = true;
    timecode.addTimecodeBurn = true;
    timecode.timecodeSource = TimecodeSource::custom;
    timecode.timecode = "10:00:00:00";
    timecode.timecodeFrameRate = 24.0F;
    timecode.timecodeDropFrameState = DropFrameState::drop;
    timecode.timecodeBurnAnchor = TimecodeBurnAnchor(OAVAnchorTopLeft);
    timecode.timecodeBurnFontSize = 20;
    timecode.timecodeBurnFontColor = Color::sRGB(1, 1, 0);
    timecode.timecodeBurnBoxColor = Color::gray(0);
    arguments.update(timecode);
    TranscodeWatermarkImageDetail image;
    image.watermarkFilePath = "/Logo.PNG";
    image.watermarkFileAnchor = WatermarkBurnAnchor(OAVAnchorBottomRight);
    arguments.update(image);
    TranscodeWatermarkTextDetail text;
    text.addWatermarkText = false;
    text.watermarkText = "Draft";
    text.watermarkTextBurnFontSize = 12;
    text.watermarkTextAnchor = OAVAnchorBottomCenter;
    text.watermarkTextFontColor = Color::gray(1);
    text.watermarkTextBoxColor = Color::sRGB(0, 0, 0.5);
    arguments.update(text);
    EXPECT_EQ(arguments.description(),
              "TranscodeCliArguments: -tc_burn \"\" -tc_burn_anchor tl -tc_burn_box_rgb 0 0 0 -tc_burn_font_rgb 1 1 0 "
              "-tc_burn_size 20 -tc_custom 10:00:00:00 -tc_drop \"\" -tc_rate 24 -tc_track \"\" -wmf_anchor br "
              "-wmf_path /Logo.PNG -wmf_scale 2 -wmt_anchor bc -wmt_box_rgb 0 0 0.5 -wmt_font_rgb 1 1 1 -wmt_size 12 "
              "-wmt_text Draft");
}

}  // namespace
}  // namespace corvex::transcodeOptionRuleTests

// The options that look at more than one flag, or whose text has a form of its own.

#include <map>
#include <tuple>

#include <gtest/gtest.h>

#include <Corvex/cli/transcode/GpuDevice.h>
#include <Corvex/cli/transcode/TranscodeCliArguments.h>
#include <Corvex/cli/transcode/optionDictionary.h>
#include <Corvex/exported/OrvaneUTType.h>
#include <Corvex/media/AudioChannelLabel.h>
#include <Corvex/timing/TimecodeComponents.h>
#include <tests/LoggedBy.h>

#include "CliTexts.h"

namespace corvex::transcodeOptionRuleTests {
namespace {

using Arguments = TranscodeCliArguments;
using Size = VideoDimensions;

Arguments holding(ArgumentLookup lookup) {
    Arguments arguments;
    arguments.setFlagValueLookup(std::move(lookup));
    return arguments;
}
Arguments holding(const char* lookup) { return holding(entries(lookup)); }

TEST(TranscodeOptionRules, explicitResolutionIsDecidedSideBySide) {
    const std::tuple<const char*, const char*, std::optional<Size>> rows[] = {
        {"dimsRoundedDown", "-dims=1921.9x1080.2", Size(1921, 1080)},
        {"justAboveThreshold", "-ovw=16.5|-ovh=17", Size(16, 17)},
        {"factorNeedsDims", "-ovw=1280|-ovh=16", std::nullopt},
        {"factorAtThreshold", "-dims=100x50|-ovw=16", Size(1600, 50)},
        {"sideBeforeScale", "-dims=1920x1080|-ovw=0.25|-vscale=0.5", Size(480, 540)},
        {"scaleDoesNotReachPixels", "-dims=1920x1080|-ovw=640|-vscale=2", Size(640, 2160)},
        {"scaleAtThreshold", "-dims=100x50|-vscale=16.0", Size(1600, 800)},
        {"scaleAboveThreshold", "-dims=100x50|-vscale=16.1", Size(100, 50)},
        {"unusableSides", "-dims=100x50|-ovw=0|-ovh=wide|-vscale=2", Size(200, 100)},
        {"belowOne", "-dims=1x50|-ovw=0.9", std::nullopt},
        {"limited", "-dims=3e9x10|-ovw=1", Size(2147483647, 10)},
    };
    for (const auto& [name, lookup, expected] : rows) {
        EXPECT_EQ(holding(lookup).explicitOutputResolution(), expected) << name;
    }
}

TEST(TranscodeOptionRules, scaleOfAKnownInputIsMadeEven) {
    const std::tuple<const char*, const char*, std::optional<PictureSize>, std::optional<Size>> rows[] = {
        {"one", "-vscale=1", PictureSize(1921, 1081), Size(1922, 1082)},
        {"winsOverPixels", "-vscale=20|-dims=9x9|-ovw=99", PictureSize(10, 20), Size(200, 400)},
        {"singlePrecisionBelowSeven", "-vscale=0.7", PictureSize(10, 10), Size(6, 6)},
        {"tiny", "-vscale=0.001", PictureSize(100, 1500), Size(0, 2)},
        {"negative", "-vscale=-1", PictureSize(100, 100), Size(0, 0)},
        {"huge", "-vscale=1e30", PictureSize(100, 0), Size(2147483647, 0)},
        {"unknownInput", "-vscale=0.5|-dims=102x51", std::nullopt, Size(51, 25)},
        {"noScale", "-dims=101x51", PictureSize(1920, 1080), Size(101, 51)},
    };
    for (const auto& [name, lookup, input, expected] : rows) {
        EXPECT_EQ(holding(lookup).outputResolution(input), expected) << name;
    }
}

const std::set<std::uint64_t> tracks{2, 10};

/// Setters that write one of several flags: what they leave of the flags before.
TEST(TranscodeOptionRules, settersLeaveOneOfTheirFlags) {
    constexpr const char *sizes = "-dims=1x1|-ovw=2|-ovh=3|-vscale=4|-vr=25", *source = "-tc_match=|-tc_creation=",
                         *labelled = "-tc_match=|-tc_creation=|-tc_custom=01:00:00;02",
                         *states = "-tc_custom=1|-tc_drop=|-tc_non_drop=";
    const std::tuple<const char*, void (*)(Arguments&), const char*> rows[] = {
        {sizes, [](auto& a) { a.setExplicitOutputResolution(Size(1280, 721)); }, "-dims=1280x721|-vr=25"},
        {sizes, [](auto& a) { a.setExplicitOutputResolution(std::nullopt); }, "-vr=25"},
        {"-v_nocap=", [](auto& a) { a.setVideoFrameCapacity(12); }, "-v_frame_cap=12"},  // it would outrank the number
        {labelled, [](auto& a) { a.setTimecodeSource(TimecodeSource::creationDate); }, "-tc_creation="},
        {labelled, [](auto& a) { a.setTimecodeSource(TimecodeSource::custom); }, "-tc_custom=01:00:00;02"},
        {source, [](auto& a) { a.setTimecodeSource(TimecodeSource::custom); }, "-tc_custom=00:00:00:00"},
        {labelled, [](auto& a) { a.setTimecodeSource(TimecodeComponents(10, 2, 3, 4, DropFrameState::nonDrop)); },
         "-tc_custom=10:02:03:04"},
        {states, [](auto& a) { a.setTimecodeDropFrameState(DropFrameState::drop); }, "-tc_custom=1|-tc_drop="},
        {states, [](auto& a) { a.setTimecodeDropFrameState(DropFrameState::nonDrop); }, "-tc_custom=1|-tc_non_drop="},
        {states, [](auto& a) { a.setTimecodeDropFrameState(DropFrameState::unknown); }, "-tc_custom=1"},
        {"", [](auto& a) { a.setIncludeTimecode(true); }, "-tc_track="},
        {"-tc_burn=", [](auto& a) { a.setIncludeTimecode(true); }, "-tc_burn="},
        {"-tc_burn=|-tc_track=", [](auto& a) { a.setIncludeTimecode(false); }, ""},
        {"-acl_bitmap=l", [](auto& a) { a.setChannelLayoutBitmap(std::vector<AudioChannelLabel>()); }, ""},
        {"-gpu_trans=7", [](auto& a) { a.setGpuTransformationDeviceIDs(std::vector<std::uint64_t>()); }, ""},
        {"-ac_omit=1|-ac_omit_x=1", [](auto& a) { a.setIgnoredAudioTracks(0, tracks); },
         "-ac_omit_0=[2 10|-ac_omit_x=1"},
        {"-ac_omit_0=[2|-ac_omit_x=1", [](auto& a) { a.setIgnoredAudioTracks(0, {}); }, "-ac_omit_x=1"},
    };
    for (const auto& [before, set, after] : rows) {
        Arguments arguments = holding(before);
        set(arguments);
        EXPECT_EQ(arguments.flagValueLookup(), entries(after)) << before << " before, expected " << after;
    }
}

TEST(TranscodeOptionRules, frameCapacity) {
    const std::uint64_t processors = Arguments::defaultVideoFrameCapacity();
    EXPECT_GE(processors, 1U);
    Arguments::setDefaultVideoFrameCapacity(77);
    const std::pair<const char*, std::uint64_t> rows[] = {
        {"", 77},
        {"-v_frame_cap=4", 4},
        {"-v_frame_cap=18446744073709551616", 77},
        {"-v_frame_cap=-4", 77},
        {"-v_nocap=|-v_frame_cap=4", UINT64_MAX},
    };
    for (const auto& [lookup, expected] : rows) EXPECT_EQ(holding(lookup).videoFrameCapacity(), expected) << lookup;
    Arguments::setDefaultVideoFrameCapacity(processors);
}

using Dictionary = std::map<std::string, std::string>;

TEST(TranscodeOptionRules, decodeOptionsAreReadFromAnyText) {
    const std::pair<const char*, Dictionary> rows[] = {
        {"a", {{"a", ""}}},
        {"a=1:a=2", {{"a", "2"}}},
        {"=1:a=2", {{"a", "2"}}},
        {"a=b=c", {{"a", "b=c"}}},
        {R"(\a=\n)", {{"a", "n"}}},
        {R"(a=1\)", {{"a", "1\\"}}},
        {"Key Two= Value ", {{"Key Two", " Value "}}},
    };
    for (const auto& [text, expected] : rows) EXPECT_EQ(parseDictionary(text), expected) << text;
    // These survive an argument vector.
    const std::pair<Dictionary, const char*> written[] = {
        {{}, ""},
        {{{"-x", "-y"}}, R"(\-x=-y)"},
        {{{"\u00A0k", "v"}}, "\\\u00A0k=v"},
        {{{"k", "v "}}, "k=v :"},
        {{{"k\\", "\\"}, {"k=", ":"}}, R"(k\==\::k\\=\\)"},
        {{{"k\xFF", "\xFF-vn"}}, "k\xFF=\xFF-vn"},
    };
    for (const auto& [dictionary, text] : written) {
        Arguments arguments;
        arguments.setAdditionalDecodeOptions(dictionary);
        EXPECT_EQ(arguments.argumentFlagValue("-additional_decode_options"), text);
        EXPECT_EQ(Arguments(arguments.commandLineArguments()).additionalDecodeOptions(), dictionary) << text;
    }
}

struct Device final : GpuDevice {
    [[nodiscard]] std::uint64_t registryID() const noexcept override { return 7; }
};

TEST(TranscodeOptionRules, transformationDevices) {
    using Numbers = std::vector<std::uint64_t>;
    const std::pair<const char*, std::optional<Numbers>> rows[] = {
        {"[7 18446744073709551615", Numbers{7, 18446744073709551615U}},
        {"metal 7 18446744073709551616 -1 +8", Numbers{7, 8}},
        {"", std::nullopt},
    };
    for (const auto& [text, expected] : rows) {
        EXPECT_EQ(holding({{"-gpu_trans", text}}).gpuTransformationDeviceIDs(), expected) << text;
    }
    setGpuDeviceProvider([](std::uint64_t number) { return number == 7 ? std::make_shared<Device>() : nullptr; });
    EXPECT_NE(holding("-gpu_trans=metal 7 8").gpuTransformationDevice(), nullptr);
    EXPECT_EQ(holding("-gpu_trans=8 7").gpuTransformationDevice(), nullptr) << "only the first counts";
    setGpuDeviceProvider({});
}

TEST(TranscodeOptionRules, channels) {
    const std::pair<const char*, std::optional<std::int64_t>> rows[] = {
        {"mono", 1}, {"stereo", 2}, {"quad", 4}, {"pent", 5}, {"hex", 6},     {"oct", 8},
        {"6", 6},    {"-2", -2},    {"", {}},    {"7.1", {}}, {"Stereo", {}},
    };
    for (const auto& [text, expected] : rows) EXPECT_EQ(holding({{"-acl", text}}).outputChannels(), expected) << text;
    using Labels = std::vector<AudioChannelLabel>;
    const std::pair<const char*, std::optional<Labels>> labelRows[] = {
        {"[LSS m1", Labels{AudioChannelLabel::leftSideSurround, AudioChannelLabel::mono}},
        {"l x", std::nullopt},
        {"", std::nullopt},
    };
    for (const auto& [text, expected] : labelRows) {
        EXPECT_EQ(holding({{"-acl_bitmap", text}}).channelLayoutBitmap(), expected) << text;
    }
}

TEST(TranscodeOptionRules, ignoredTracksByFile) {
    const Arguments arguments = holding(
        "-ac_omit=[3 1 3|-ac_omit_0=7|-ac_omit_10=0 x -1 5|-ac_omit_2=4|-ac_omit_x=1|-ac_omit2=1|-ac_omit_3=none");
    std::vector<std::pair<std::uint64_t, std::vector<std::uint64_t>>> calls;
    arguments.enumerateIgnoredAudioFileTracks(
        [&](std::uint64_t file, const std::vector<std::uint64_t>& tracks) { calls.emplace_back(file, tracks); });
    EXPECT_EQ(calls, (decltype(calls){{0, {1, 3, 7}}, {2, {4}}, {10, {0, 5}}}));
}

TEST(TranscodeOptionRules, timecodeIsDecidedByTheFirstOfItsFlags) {
    using Source = TimecodeSource;
    constexpr auto drop = DropFrameState::drop, nonDrop = DropFrameState::nonDrop, unknown = DropFrameState::unknown;
    const std::tuple<const char*, Source, DropFrameState, bool> rows[] = {
        {"", Source::match, unknown, false},
        {"-tc_creation=no|-tc_track=", Source::creationDate, unknown, true},
        {"-tc_custom=|-tc_creation=|-tc_burn=", Source::creationDate, unknown, true},
        {"-tc_custom=|-tc_creation=|-tc_match=", Source::match, unknown, false},
        {"-tc_drop=x|-tc_non_drop=|-tc_custom=01:00:00:00", Source::custom, drop, false},
        {"-tc_non_drop=|-tc_custom=01:00:00;00", Source::custom, nonDrop, false},
        {"-tc_custom=01:00:00;00", Source::custom, drop, false},
        {"-tc_custom=01:00:00:00", Source::custom, nonDrop, false},
        {"-tc_custom=1:00:00;00", Source::custom, unknown, false},
    };
    for (const auto& [lookup, source, state, isIncluded] : rows) {
        const Arguments arguments = holding(lookup);
        EXPECT_EQ(arguments.timecodeSource(), source) << lookup;
        EXPECT_EQ(arguments.timecodeDropFrameState(), state) << lookup;
        EXPECT_EQ(arguments.includeTimecode(), isIncluded) << lookup;
    }
}

TEST(TranscodeOptionRules, colors) {
    for (const char* text : {"0.25 0.5 1", "[0.25, 0.5, 1.0"}) {
        EXPECT_EQ(holding({{"-tc_burn_font_rgb", text}}).timecodeBurnFontColor(), Color::sRGB(0.25, 0.5, 1)) << text;
    }
    for (const char* text : {"1 1 1.0000001", "-0.1 0 0", "0.25 0.5", "0.25 0.5 1 1", "0.25 0.5 1]"}) {
        EXPECT_EQ(holding({{"-tc_burn_font_rgb", text}}).timecodeBurnFontColor(), std::nullopt) << text;
    }
    const std::pair<Color, const char*> written[] = {
        {Color::sRGB(0.1, 1.0 / 3, 1), "0.1 0.33333334 1"},
        {Color::sRGB(-0.0, 2, -1), "0 1 0"},
        {Color::gray(0.5), "0.5 0.5 0.5"},
        {Color::sRGB(1e-7, 0, 0), "0.0000001 0 0"},
    };
    Arguments arguments;
    for (const auto& [color, text] : written) {
        arguments.setWatermarkTextBoxColor(color);
        EXPECT_EQ(arguments.argumentFlagValue("-wmt_box_rgb"), text);
    }
    EXPECT_EQ(test::loggedBy([&] { arguments.setWatermarkTextFontColor(Color()); }),
              (Words{"CVX_TCLIA_USS-Could not get rgb components for color"}));
    EXPECT_FALSE(arguments.hasArgumentFlag("-wmt_font_rgb"));
}

/// "2: a b | 7: c" for the groups of the inputs, "none" for none.
std::string groupsOf(const Arguments& arguments) {
    std::string text;
    arguments.enumerateInputFileGroups([&](std::span<const std::string> paths, std::int64_t number) {
        text += (text.empty() ? "" : " | ") + std::to_string(number) + ":";
        for (const auto& path : paths) text += " " + path;
    });
    return arguments.inputFileGroups() ? text : "none";
}

TEST(TranscodeOptionRules, inputsAreGroupedByTheirNumbers) {
    constexpr const char* ignored =
        "-in_1=|-in_1_2_3=|-in__2=|-in_1_=|-in_a_1=|-in_1_1.0=|-in_1_ 1=|-in3=|-i_1_1=|-in_9223372036854775808_1=";
    const std::tuple<const char*, const char*, const char*, std::optional<Words>> rows[] = {
        {"none", "-out=a", "none", std::nullopt},
        {"emptyPlainCounts", "-in=|-in_0_0=/B", "0: ", Words{""}},
        {"numbersNotTexts", "-in_10_0=a|-in_9_10=b|-in_9_9=c|-in_-1_+2=d|-in_-1_-2=e", "-1: e d | 9: c b | 10: a",
         Words{"e", "d", "c", "b", "a"}},
        {"ignored", ignored, "none", std::nullopt},
        {"anyPrefix", "-input_4_5=a|-inX_4_4=b", "4: b a", Words{"b", "a"}},
        {"samePlaceTwice", "-in_0_1=a|-in_0_01=b", "0: b a", Words{"b", "a"}},
        {"samePathTwice", "-in_0_0=a|-in_1_0=a", "0: a | 1: a", Words{"a"}},
    };
    for (const auto& [name, lookup, groups, files] : rows) {
        const Arguments arguments = holding(lookup);
        EXPECT_EQ(groupsOf(arguments), groups) << name;
        EXPECT_EQ(arguments.inputFiles(), files) << name;
        EXPECT_EQ(arguments.firstInputFile(), files ? std::optional(files->front()) : std::nullopt) << name;
    }
}

TEST(TranscodeOptionRules, inputSetterReplacesWhatTheGettersRead) {
    constexpr const char* before = "-in=a|-in_7_7=b|-input_1_1=c|-in3=d|-in_x_1=e|-vn=";
    const ArgumentLookup kept = entries("-in3=d|-in_x_1=e|-vn=");
    Arguments arguments = holding(before);
    arguments.setInputFiles(std::nullopt);
    EXPECT_EQ(arguments.flagValueLookup(), kept);
    Words files;
    for (int i = 0; i < 12; ++i) files.push_back("/File " + std::to_string(i));
    arguments = holding(before);
    arguments.setInputFiles(files);
    EXPECT_EQ(arguments.inputFiles(), files);  // in their order, although "-in_0_10" sorts before "-in_0_2"
    EXPECT_EQ(arguments.flagValueLookup().size(), kept.size() + files.size());
    EXPECT_EQ(Arguments(arguments.commandLineArguments()).inputFiles(), files);
}

TEST(TranscodeOptionRules, explicitTypeLivesUnderABareKey) {
    Arguments arguments(Words{"-ftype", "public.mpeg-4"});
    EXPECT_EQ(arguments.explicitOutputFileType(), std::nullopt);
    arguments.setExplicitOutputFileType(OrvaneUTType::mpeg4Movie);
    EXPECT_EQ(arguments.commandLineArguments(), pieces("-ftype|public.mpeg-4|ftype|public.mpeg-4"));
    EXPECT_EQ(arguments.explicitOutputFileType(), OrvaneUTType::mpeg4Movie);
    arguments.setArgumentFlagValue("public.MPEG-4", "ftype");
    EXPECT_EQ(arguments.explicitOutputFileType(), std::nullopt);
    arguments.setExplicitOutputFileType(std::nullopt);
    EXPECT_FALSE(arguments.hasArgumentFlag("ftype"));
}

}  // namespace
}  // namespace corvex::transcodeOptionRuleTests

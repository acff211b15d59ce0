#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <limits>
#include <nlohmann/json.hpp>
#include <tuple>
#include <utility>
#include <vector>

#include <Corvex/platform/Json.h>
#include <Corvex/timing/SmpteTime.h>
#include <Corvex/timing/TimecodeFrame.h>
#include <Corvex/timing/fileTimecode.h>
#include <tests/TemporaryDirectory.h>
#include <tests/Thrown.h>

namespace corvex::timecodeTests {
namespace {

constexpr std::int64_t lowest = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t highest = std::numeric_limits<std::int64_t>::max();
constexpr auto drop = DropFrameState::drop;
constexpr auto nonDrop = DropFrameState::nonDrop;
constexpr auto unknown = DropFrameState::unknown;
constexpr MediaRational ntsc30(30000, 1001);

// Parsing and counting also work while compiling.
static_assert(TimecodeFrame(*TimecodeComponents::fromTimecode("00:01:00;02"), ntsc30).frameNumber() == 1800);

/// The next label by the rule of SMPTE ST 12-1 itself: a minute begins `dropped` labels later, but not every tenth.
void advance(TimecodeComponents& label, std::int64_t perSecond, std::int64_t dropped) {
    if (++label.frames < perSecond) return;
    label.frames = 0;
    if (++label.seconds < 60) return;
    label.seconds = 0;
    if (++label.minutes == 60) {
        label.minutes = 0;
        ++label.hours;
    }
    if (label.minutes % 10 != 0) label.frames = dropped;
}

/// Every frame of 24 hours: the label is the next one by the rule, and its number is the frame again.
void expectDropFrameDay(std::int64_t perSecond, std::int64_t dropped, std::int64_t hours, bool withText) {
    const MediaRational rate(perSecond * 1000, 1001);
    TimecodeComponents expected(0, 0, 0, 0, drop);
    const std::int64_t frames = hours * 6 * (perSecond * 600 - 9 * dropped);
    for (std::int64_t frame = 0; frame < frames; ++frame) {
        const auto label = TimecodeComponents::timecodeComponents(frame, perSecond, true);
        ASSERT_EQ(label, expected) << frame << ": " << label.timecodeString();
        ASSERT_EQ(TimecodeFrame(label, rate).frameNumber(), frame);
        const bool isRead = !withText || TimecodeComponents::fromTimecode(label.timecodeString()) == label;
        ASSERT_TRUE(isRead) << frame;
        advance(expected, perSecond, dropped);
    }
    EXPECT_EQ(expected.hours, hours);
    EXPECT_EQ(expected.frames, 0);
}

TEST(DropFrame, everyFrameOfADayHasItsLabelAt29_97) { expectDropFrameDay(30, 2, 24, true); }
TEST(DropFrame, everyFrameOfADayHasItsLabelAt59_94) { expectDropFrameDay(60, 4, 24, false); }
TEST(DropFrame, everyFrameOfADayHasItsLabelAt119_88) { expectDropFrameDay(120, 8, 24, false); }
TEST(DropFrame, everyFrameHasItsLabelAtARateWithoutConstants) { expectDropFrameDay(90, 6, 2, false); }

TEST(Timecode, framesBecomeLabels) {
    constexpr std::tuple<std::int64_t, std::int64_t, bool, const char*> rows[] = {
        {1440, 24, true, "00:01:00;02"},        // the factor gives 2 at 24
        {30 * 86400, 30, true, "00:00:00;00"},  // the nominal day, not the shorter one
        {-1, 30, true, "24:01:26;13"},          {lowest, 60, true, "15:45:26;36"},
        {highest, 30, true, "16:31:59;21"},     {86400 * 24, 24, false, "24:00:00:00"},  // without drop there is no day
        {-10, 25, false, "00:00:00:00"},        {107999, 30, false, "00:59:59:29"},
        {1234567, 1000, false, "00:20:34:567"}, {highest, 30, false, "85401592933840:31:00:07"},
        {100, -30, false, "00:00:0-3:10"}};
    for (const auto& [frame, fps, isDrop, expected] : rows) {
        EXPECT_EQ(TimecodeComponents::timecodeComponents(frame, fps, isDrop).timecodeString(), expected) << frame;
    }
}

TEST(TimecodeFrame, numbersLabels) {
    const std::tuple<TimecodeComponents, MediaRational, std::int64_t, std::int64_t> rows[] = {
        {{0, 1, 0, 2, drop}, ntsc30, 1800, 1802},
        {{0, 1, 0, 2, nonDrop}, ntsc30, 1802, 1802},
        {{0, 1, 0, 0, drop}, ntsc30, 1798, 1800},
        {{0, 1, 0, 0, drop}, {30, 1}, 1800, 1800},
        {{0, -10, 0, 0, drop}, ntsc30, -17982, -18000},
        {{24, 0, 0, 0, nonDrop}, {24000, 1001}, 2073600, 2073600},
        {{0, 1, 0, 3, drop}, {-1, 2}, 3, 3}};
    for (const auto& [label, rate, number, actual] : rows) {
        const TimecodeFrame frame(label, rate);
        EXPECT_EQ(frame.frameNumber(), number) << label.timecodeString();
        EXPECT_EQ(frame.actualFrameNumber(), actual) << label.timecodeString();
    }
    EXPECT_EQ(TimecodeFrame({}, {-59, 2}).frameQuanta(), 30U);
}

TEST(TimecodeFrame, addsFramesAndResetsItsOptions) {
    const std::tuple<const char*, TimecodeComponents, MediaRational, bool, std::int64_t, TimecodeComponents> rows[] = {
        {"over a minute", {0, 0, 59, 29, drop}, ntsc30, true, 1, {0, 1, 0, 2, drop}},
        {"below zero", {0, 0, 0, 0, drop}, ntsc30, true, -1, {24, 1, 26, 13, drop}},
        {"unknown becomes drop", {0, 0, 59, 29, unknown}, ntsc30, true, 1, {0, 1, 0, 2, drop}},
        {"non-drop below zero", {0, 0, 0, 0, nonDrop}, ntsc30, true, -31, {0, 0, -1, -1, nonDrop}},
        {"not compliant, checked", {0, 0, 59, 24, drop}, {25, 1}, true, 1, {0, 1, 0, 0, unknown}},
        {"not compliant, unchecked", {0, 0, 59, 24, drop}, {25, 1}, false, 1, {0, 1, 0, 2, drop}}};
    TimecodeFormatOptions options;
    options.formatType = TimecodeFormatType::counter64;
    for (const auto& [name, label, rate, isChecked, count, expected] : rows) {
        options.ensureValidDropFrameRates = isChecked;
        const TimecodeFrame sum = TimecodeFrame(label, rate, options).addingFrames(count);
        EXPECT_EQ(sum.components(), expected) << name << ": " << sum.components().timecodeString();
        EXPECT_EQ(sum.formatOptions(), TimecodeFormatOptions()) << name;
    }
    const TimecodeFrame same = TimecodeFrame({9, 99, 0, 0, drop}, ntsc30, options).addingFrames(0);
    EXPECT_EQ(same.formatOptions(), options);
    EXPECT_EQ(same.components().minutes, 99);
}

TEST(TimecodeFrame, knowsItsMediaTimesAndItsFormat) {
    TimecodeFormatOptions options;
    options.formatType = TimecodeFormatType::timecode64;
    const TimecodeFrame frame({0, 1, 0, 2, drop}, ntsc30, options);
    EXPECT_EQ(frame.sampleTimingInfo(), (SampleTimingInfo{{1001, 30000}, {1800 * 1001, 30000}, {}}));
    EXPECT_EQ(frame.presentationTimeStamp().timeScale(), 30000) << "not reduced";
    EXPECT_EQ(TimecodeFrame({0, 0, 0, 1, nonDrop}, {-25, 1}).presentationTimeStamp(), MediaTime(-1, 25));
    EXPECT_EQ(frame.formatDescription(), TimecodeFormatDescription(TimecodeFormatType::timecode64, {1001, 30000}, 30,
                                                                   TimecodeFormatDescription::dropFrameFlag));
}

TEST(Timecode, isPrintedWithALeadingZero) {
    const std::pair<TimecodeComponents, std::string_view> rows[] = {
        {TimecodeComponents::defaultDropFrameTimecodeComponents, TimecodeComponents::defaultDropFrameTimecode},
        {TimecodeComponents::defaultNonDropTimecodeComponents, TimecodeComponents::defaultNonDropTimecode},
        {{24, 0, 0, 9, unknown}, "24:00:00:09"},
        {{-5, 100, -10, 9, nonDrop}, "0-5:100:0-10:09"},
        {{lowest, lowest, highest, lowest, drop},
         "0-9223372036854775808:0-9223372036854775808:9223372036854775807;0-9223372036854775808"}};
    for (const auto& [label, expected] : rows) EXPECT_EQ(label.timecodeString(), expected);
    EXPECT_TRUE(TimecodeComponents(0, 0, 0, 0, drop).hasDefaultComponents());
    EXPECT_FALSE(TimecodeComponents(0, 0, 0, -1, drop).hasDefaultComponents());
}

TEST(Timecode, isParsedStrictlyOrLeniently) {
    const std::tuple<const char*, bool, const char*> rows[] = {
        {"01:60:60:04", true, "01:60:60:04"},        {"01;02:03:04", true, "01:02:03;04"},
        {"00:61:00:00", false, "00:61:00:00"},       {"123:00:00;0123", true, "123:00:00;123"},
        {"1:2:3;4", false, "01:02:03;04"},           {":::", false, "00:00:00:00"},
        {"01:02:03:04:05", false, "01:02:03:04"},    {"-1:+2:03:04", false, "0-1:02:03:04"},
        {"01:02:03.04", false, "01:02:00:00"},       {"9223372036854775808:00:00:00", false, "00:00:00:00"},
        {"0\xC2\xB2:00:00:0", false, "00:00:00:00"}, {"01:02<03:04", false, "01:00:04:00"}};
    for (const auto& [text, isStrict, expected] : rows) {
        const auto lenient = TimecodeComponents::sanitizedTimecode(text);
        EXPECT_EQ(lenient.timecodeString(), expected) << text;
        EXPECT_EQ(TimecodeComponents::fromTimecode(text), isStrict ? std::optional(lenient) : std::nullopt) << text;
    }
    EXPECT_EQ(TimecodeComponents::fromTimecode("9223372036854775807:00:00:00").value().hours, highest);
}

TEST(Timecode, formChecksAreAskedForOneByOne) {
    constexpr std::tuple<const char*, bool, bool, bool> rows[] = {
        {"1:2:3:4", false, true, true},     {"1:2:3:4", true, true, false},   {"01:99:03:04", true, false, true},
        {"01:99:03:04", true, true, false}, {"1:99:3:4", false, false, true}, {"1:2::4", false, false, false},
        {"1:2:3", false, false, false},     {"-1:2:3:4", false, false, false}};
    for (const auto& [text, length, bounds, expected] : rows) {
        int calls = 0;
        EXPECT_EQ(TimecodeComponents::timecodeHasProperForm(text, {length, bounds}, [&](auto&) { ++calls; }), expected)
            << text;
        EXPECT_EQ(calls, expected ? 1 : 0) << text;
    }
}

TEST(Timecode, decomposesIntoTheFieldsThatCanBeRead) {
    EXPECT_EQ(TimecodeComponents::decomposeTimecodeString("1:x:;+4"), (DecomposedTimecode{1, {}, {}, 4, drop}));
    EXPECT_EQ(TimecodeComponents::decomposeTimecodeString("1:2"), (DecomposedTimecode{1, 2, {}, {}, nonDrop}));
}

TEST(Timecode, followsAnSmpteTime) {
    constexpr std::tuple<std::uint32_t, std::optional<std::uint32_t>, DropFrameState> rows[] = {
        {0, {}, nonDrop}, {1, {}, nonDrop}, {2, {}, drop},    {3, {}, nonDrop}, {4, {}, nonDrop}, {5, {}, drop},
        {6, {}, nonDrop}, {7, {}, nonDrop}, {8, {}, unknown}, {0, 2, nonDrop},  {99, 3, drop},    {2, 0, drop}};
    for (const auto& [type, flags, expected] : rows) {
        SmpteTime time;
        time.type = type;
        time.hours = -1;
        time.frames = 32767;
        EXPECT_EQ(TimecodeComponents(time, flags), TimecodeComponents(-1, 0, 0, 32767, expected)) << type;
    }
}

TEST(Timecode, codesItsFields) {
    const TimecodeComponents label(1, 2, 3, -4, drop);
    const std::string text = R"({"hours":1,"minutes":2,"seconds":3,"frames":-4,"dropFrameState":{"drop":{}}})";
    EXPECT_EQ(Json(label).dump(), text);
    EXPECT_EQ(Json::parse(text).get<TimecodeComponents>(), label);
    EXPECT_EQ(nlohmann::json(label).get<TimecodeComponents>(), label);
    EXPECT_EQ(nlohmann::json(DropFrameState::drop).get<DropFrameState>(), DropFrameState::drop);
    EXPECT_THROW(static_cast<void>(Json::parse(R"({"hours":1})").get<TimecodeComponents>()), DecodingError);
    EXPECT_THROW(static_cast<void>(Json::parse(R"({"hours":"1"})").get<TimecodeComponents>()), DecodingError);
    EXPECT_THROW(static_cast<void>(Json::parse(R"({"dropped":{}})").get<DropFrameState>()), DecodingError);
}

TEST(Timecode, readsTheTimeOfDayOfAFile) {
    const test::TemporaryDirectory directory;
    const auto file = directory.path() / "file";
    std::ofstream(file).put('x');
    setenv("TZ", "UTC-2", 1);  // two hours east of Greenwich
    tzset();
    const timespec times[2] = {{0, 0}, {86400 + 3725, 999999999}};
    ASSERT_EQ(utimensat(AT_FDCWD, file.c_str(), times, 0), 0);
    EXPECT_EQ(modificationDateTimecodeComponents(file), TimecodeComponents(3, 2, 5, 0, nonDrop));
    unsetenv("TZ");
    tzset();
    // A file system without creation dates has no answer; any other answers with a time of day.
    const auto created = creationDateTimecodeComponents(file);
    EXPECT_TRUE(!created || (created->hours < 24 && created->dropFrameState == nonDrop));
    std::filesystem::remove(file);
    EXPECT_EQ(modificationDateTimecodeComponents(file), std::nullopt);
}

TEST(TimecodeDeathTest, overflowAndZeroRatesStopTheProcess) {
    using Components = TimecodeComponents;
    constexpr Components last(highest, 0, 0, 0, drop), one(0, 0, 0, 1, nonDrop);
    const auto frame = [](const Components& label, std::int64_t value, std::int64_t scale) {
        return TimecodeFrame(label, MediaRational(value, scale));
    };
    EXPECT_DEATH((void)Components::timecodeComponents(1, 0, false), "not 0");
    EXPECT_DEATH((void)Components::dropFrameComponents(1, 0), "division by zero");
    EXPECT_DEATH((void)Components::dropFrameComponents(1, highest / 86400 + 1), "overflowed");
    EXPECT_DEATH((void)frame(last, 30000, 1001).frameNumber(), "overflowed");
    EXPECT_DEATH((void)frame(one, 25, 1).addingFrames(highest), "overflowed");
    EXPECT_DEATH((void)frame(one, 0, 1).addingFrames(1), "division by zero");
    EXPECT_DEATH((void)frame({}, 4294967296, 1), "conversion lost");
    EXPECT_DEATH((void)frame({}, 0, 1).frameDuration(), "must not be 0");
}

TEST(MediaTime, isEqualByValueAndInvalidOnlyToInvalid) {
    EXPECT_EQ(MediaTime(1001, 30000), MediaTime(2002, 60000));
    EXPECT_EQ(MediaTime(1, -25), MediaTime(-1, 25));
    EXPECT_NE(MediaTime(INT64_MAX, 2), MediaTime(INT64_MAX, 3));
    EXPECT_NE(MediaTime(0, 1), MediaTime());
    EXPECT_EQ(MediaTime(), MediaTime());
    EXPECT_EQ(MediaTime(1, 4).seconds(), 0.25);
    EXPECT_DEATH(MediaTime(INT64_MIN, -1), "overflowed");
}

using Case = TimecodeFormatError::Case;

std::optional<TimecodeFormatError> errorOf(const auto& run) { return test::thrownBy<TimecodeFormatError>(run); }

TEST(TimecodeFormatDescription, rendersToBytesAndBack) {
    const TimecodeFormatDescription description(TimecodeFormatType::timecode32, {1001, 30000}, 30, 3);
    const TimecodeFormatDescription::SampleDescription expected{
        0, 0, 0, 34, 't', 'm', 'c', 'd', 0, 0, 0,    0,    0, 0, 0, 1,  // size, format, reserved, data reference
        0, 0, 0, 0,  0,   0,   0,   3,   0, 0, 0x75, 0x30, 0, 0, 3, 0xE9, 30, 0};
    EXPECT_EQ(description.sampleDescription(), expected);
    EXPECT_EQ(TimecodeFormatDescription::fromSampleDescription(expected), description);
    std::vector<std::uint8_t> longer(expected.begin(), expected.end());  // with a name behind it
    longer.resize(46);
    longer[3] = 46;
    EXPECT_EQ(TimecodeFormatDescription::fromSampleDescription(longer), description);
}

TEST(TimecodeFormatDescription, refusesWhatCannotBeDescribed) {
    using Description = TimecodeFormatDescription;
    constexpr auto type = TimecodeFormatType::counter32;
    const std::tuple<const char*, MediaTime, std::uint32_t, Case, std::int64_t> rows[] = {
        {"invalid", {}, 30, Case::frameDuration, 0},
        {"zero", {0, 30}, 30, Case::frameDuration, 0},
        {"long", {1LL << 31U, 30}, 30, Case::frameDuration, 1LL << 31U},
        {"fine scale", {1, 1LL << 31U}, 30, Case::frameDuration, 1LL << 31U},
        {"no quanta", {1, 30}, 0, Case::frameQuanta, 0},
        {"too many quanta for the bytes", {1, 256}, 256, Case::frameQuanta, 256}};
    for (const auto& [name, duration, quanta, which, offender] : rows) {
        EXPECT_EQ(errorOf([&] { return Description(type, duration, quanta, 0).sampleDescription(); }),
                  TimecodeFormatError(which, offender))
            << name;
    }
}

TEST(TimecodeFormatDescription, refusesBytesThatDescribeNone) {
    const auto good = TimecodeFormatDescription(TimecodeFormatType::timecode32, {1, 25}, 25, 0).sampleDescription();
    constexpr std::tuple<std::size_t, std::uint8_t, Case, std::int64_t> rows[] = {
        {3, 35, Case::length, 35},          {3, 33, Case::length, 33},
        {0, 255, Case::length, 0xFF000022}, {4, 'x', Case::formatType, 0x786D6364},
        {27, 0, Case::frameDuration, 0},    {28, 255, Case::frameDuration, 0xFF000001},
        {32, 0, Case::frameQuanta, 0}};
    for (const auto& [at, byte, which, offender] : rows) {
        auto bytes = good;
        bytes.at(at) = byte;
        EXPECT_EQ(errorOf([&] { return TimecodeFormatDescription::fromSampleDescription(bytes); }),
                  TimecodeFormatError(which, offender))
            << at;
    }
    EXPECT_EQ(errorOf([&] { return TimecodeFormatDescription::fromSampleDescription(std::span(good).first(33)); }),
              TimecodeFormatError(Case::length, 33));
}

}  // namespace
}  // namespace corvex::timecodeTests

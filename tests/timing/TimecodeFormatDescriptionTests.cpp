#include <gtest/gtest.h>

#include <tuple>
#include <vector>

#include <Corvex/timing/TimecodeFrame.h>
#include <tests/Thrown.h>

namespace corvex::timecodeFormatDescriptionTests {
namespace {

using Case = TimecodeFormatError::Case;
constexpr MediaTime ntscDuration(1001, 30000);

std::optional<TimecodeFormatError> errorOf(const auto& run) { return test::thrownBy<TimecodeFormatError>(run); }

TEST(MediaTime, isEqualByValueAndInvalidOnlyToInvalid) {
    EXPECT_EQ(MediaTime(1001, 30000), MediaTime(2002, 60000));
    EXPECT_EQ(MediaTime(1, -25), MediaTime(-1, 25));
    EXPECT_NE(MediaTime(INT64_MAX, 2), MediaTime(INT64_MAX, 3));
    EXPECT_NE(MediaTime(0, 1), MediaTime());
    EXPECT_EQ(MediaTime(), MediaTime());
    EXPECT_EQ(MediaTime(1, 4).seconds(), 0.25);
    EXPECT_DEATH(MediaTime(INT64_MIN, -1), "overflowed");
}

TEST(TimecodeFormatDescription, comesFromAFrame) {
    TimecodeFormatOptions options;
    options.formatType = TimecodeFormatType::timecode64;
    const TimecodeFrame frame({1, 0, 0, 0, DropFrameState::drop}, {30000, 1001}, options);
    const TimecodeFormatDescription expected(TimecodeFormatType::timecode64, ntscDuration, 30,
                                             TimecodeFormatDescription::dropFrameFlag);
    EXPECT_EQ(frame.formatDescription(), expected);
    EXPECT_FALSE(TimecodeFrame({}, {25, 1}).timecodeFormatDescription().isDropFrame());
}

TEST(TimecodeFormatDescription, rendersToBytesAndBack) {
    const TimecodeFormatDescription description(TimecodeFormatType::timecode32, ntscDuration, 30, 3);
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
    const auto good =
        TimecodeFormatDescription(TimecodeFormatType::timecode32, ntscDuration, 30, 0).sampleDescription();
    constexpr std::tuple<std::size_t, std::uint8_t, Case, std::int64_t> rows[] = {
        {3, 35, Case::length, 35},          {3, 33, Case::length, 33},
        {0, 255, Case::length, 0xFF000022}, {4, 'x', Case::formatType, 0x786D6364},
        {32, 0, Case::frameQuanta, 0},      {28, 255, Case::frameDuration, 0xFF0003E9}};
    for (const auto& [at, byte, which, offender] : rows) {
        auto bytes = good;
        bytes.at(at) = byte;
        EXPECT_EQ(errorOf([&] { return TimecodeFormatDescription::fromSampleDescription(bytes); }),
                  TimecodeFormatError(which, offender))
            << at;
    }
    auto scaleless = good;
    scaleless[26] = scaleless[27] = 0;
    EXPECT_EQ(errorOf([&] { return TimecodeFormatDescription::fromSampleDescription(scaleless); }),
              TimecodeFormatError(Case::frameDuration, 0));
    EXPECT_EQ(errorOf([&] { return TimecodeFormatDescription::fromSampleDescription(std::span(good).first(33)); }),
              TimecodeFormatError(Case::length, 33));
}

}  // namespace
}  // namespace corvex::timecodeFormatDescriptionTests

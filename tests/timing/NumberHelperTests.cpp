#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <cmath>
#include <limits>
#include <tuple>
#include <vector>

#include <Corvex/timing/ClosedRange.h>
#include <Corvex/timing/DispatchTime.h>
#include <Corvex/timing/FloatingPointComparator.h>
#include <Corvex/timing/IntegerUtility.h>
#include <Corvex/timing/NumberUtility.h>
#include <Corvex/timing/Sequences.h>
#include <Corvex/timing/durationText.h>
#include <tests/LoggedBy.h>

namespace corvex::numberHelperTests {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
const double nan = std::nan("");

TEST(FloatingPointComparator, allowsForTheLargerMagnitudeButAtLeastOne) {
    const std::tuple<const char*, double, std::optional<double>, std::optional<double>, bool> rows[] = {
        {"relative", 1000, 1000.5, 0.001, true},      {"floor of 1", 0.1, 0.2, 0.05, false},
        {"inclusive", 0.5, 0.75, 0.25, true},         {"exact differs", 1, 1 + 1e-15, std::nullopt, false},
        {"NaN exact", nan, nan, std::nullopt, false}, {"NaN tolerant", nan, nan, 0, true},
        {"infinity and 1", infinity, 1, 0.1, true},   {"infinity and itself", infinity, infinity, 0.1, false}};
    for (const auto& [name, a, b, tolerance, areEqual] : rows) {
        EXPECT_EQ(FloatingPointComparator::valuesEqual(a, b, tolerance), areEqual) << name;
    }
    const std::array<double, 2> pair{1, 2}, near{1, 2.05};
    using Span = std::span<const double>;
    EXPECT_TRUE(FloatingPointComparator::arraysEqual<double>(pair, near, 0.1));
    EXPECT_FALSE(FloatingPointComparator::arraysEqual<double>(pair, Span(near).first(1), 0.1));
    EXPECT_TRUE(FloatingPointComparator::arraysEqual<double>(Span(), Span(), std::nullopt));
    EXPECT_FALSE(FloatingPointComparator::bitwiseEqual(0.0, -0.0));
    EXPECT_TRUE(FloatingPointComparator::bitwiseEqual(nan, nan));
    EXPECT_TRUE(isApproximatelyZero(-1e-9) && !isApproximatelyZero(1.1e-9) && isApproximatelyZero(0.5F, 0.5F));
    EXPECT_TRUE(valueIsEqual(1.0, 1.0 + 1e-10) && !valueIsEqual(1.0, 1.1));
}

TEST(NumberUtility, ceilingPowerOfTwoIsLimitedOnRequest) {
    constexpr std::tuple<std::uint64_t, bool, std::uint64_t> rows[] = {
        {0, false, 1}, {100, true, 64}, {100, false, 128}, {33, true, 64}, {1ULL << 63U, false, 1ULL << 63U}};
    for (const auto& [value, isLimited, expected] : rows)
        EXPECT_EQ(NumberUtility::ceilingPowerOfTwo(value, isLimited), expected);
    EXPECT_DEATH(static_cast<void>(NumberUtility::ceilingPowerOfTwo((1ULL << 63U) + 1, true)), "power of two");
}

TEST(NumberUtility, splitsSecondsTruncating) {
    EXPECT_EQ(NumberUtility::secondsToHoursMinutesSeconds(-3725), (NumberUtility::HoursMinutesSeconds{-1, -2, -5}));
    EXPECT_EQ(NumberUtility::secondsToStandardDurationText(363725), "101:02:05");
    EXPECT_EQ(NumberUtility::secondsToStandardDurationText(-5), "00:00:-05");
}

TEST(Integers, incrementAndClipInPlace) {
    std::int64_t value = 5;
    EXPECT_EQ(postIncrement(value), 5);
    EXPECT_EQ(preIncrement(value), 7);
    clipTo(value, {0, 3});
    EXPECT_EQ(value, 3);
    EXPECT_EQ(clippedTo(-9, {-1, 3}), -1);
    EXPECT_DEATH(ClosedRange(2, 1), "end before");
    value = std::numeric_limits<std::int64_t>::max();
    EXPECT_DEATH(preIncrement(value), "overflowed");
}

TEST(Sequences, haveAnAverageAndAMiddle) {
    const std::vector<float> values{1, 2, 6};
    EXPECT_EQ(average(values), 3.0F);
    EXPECT_EQ(average({}), 0.0F);
    const std::array<int, 4> even{1, 2, 3, 4};
    EXPECT_EQ(middle(std::span<const int>(even)), 3);
    EXPECT_EQ(middle(std::span<const int>()), std::nullopt);
    constexpr double most = std::numeric_limits<double>::max();
    EXPECT_EQ(middle(ClosedRange(most, most)), most);
}

TEST(DispatchTime, saturatesAtBothEnds) {
    constexpr std::uint64_t never = std::numeric_limits<std::uint64_t>::max();
    constexpr std::tuple<std::uint64_t, std::int64_t, std::uint64_t> rows[] = {
        {5, 2, 2000000005}, {never - 5, 1, never}, {0, 18446744074, never}, {2000000005, -2, 5},
        {5, -1, 0},         {never, INT64_MIN, 0}};
    for (const auto& [start, seconds, expected] : rows) {
        EXPECT_EQ(DispatchTime(start).safeAddSeconds(seconds), DispatchTime(expected)) << seconds;
    }
    EXPECT_LE(DispatchTime(1), DispatchTime::now());
}

TEST(DurationText, truncatesAndLosesNothing) {
    using enum TimeIntervalFormat;
    const std::tuple<double, TimeIntervalFormat, const char*> rows[] = {
        {3725.9, longForm, "1:02:05"}, {3725.9, shortForm, "62:05"}, {59.999, longForm, "0:00:59"},
        {0, shortForm, "0:00"},        {-65, shortForm, "-1:-5"},    {nan, longForm, ""},
        {-infinity, shortForm, ""},    {0x1p63, longForm, ""}};
    const auto lines = test::loggedBy([&] {
        for (const auto& [seconds, format, expected] : rows) EXPECT_EQ(formatted(seconds, format), expected) << seconds;
    });
    EXPECT_EQ(lines, std::vector<std::string>(3, "Extra seconds were ignored during TimeInterval string formatting"));
}

TEST(DurationText, elapsedTimeHasHundredths) {
    using namespace std::chrono_literals;
    const std::chrono::system_clock::time_point start{};
    EXPECT_EQ(calculateElapsedTime(start, start + 3725s + 678ms, false), "01:02:05");
    EXPECT_EQ(calculateElapsedTime(start, start + 3725s + 678ms, true), "01:02:05.67");
    EXPECT_EQ(calculateElapsedTime(start, start - 1500ms, true), "00:00:-1.-50");
}

}  // namespace
}  // namespace corvex::numberHelperTests

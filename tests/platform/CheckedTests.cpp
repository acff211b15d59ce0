#include <Corvex/platform/Checked.h>

#include <cstdint>
#include <limits>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include <Corvex/platform/Log.h>

namespace corvex::checkedTests {
namespace {

constexpr auto lowest = std::numeric_limits<std::int64_t>::min();
constexpr auto highest = std::numeric_limits<std::int64_t>::max();

TEST(Checked, resultsThatFitAreExact) {
    static_assert(checkedAdd(highest - 1, std::int64_t{1}) == highest);
    static_assert(checkedSubtract(lowest + 1, std::int64_t{1}) == lowest);
    static_assert(checkedMultiply(lowest / 2, std::int64_t{2}) == lowest);
    static_assert(checkedNegate(highest) == lowest + 1);
    static_assert(checkedDivide(std::int64_t{-7}, std::int64_t{2}) == -3);
    static_assert(checkedRemainder(std::int64_t{-7}, std::int64_t{2}) == -1);
    static_assert(checkedCast<std::uint8_t>(255) == 255);
    // At run time, since the machine's own division traps here.
    volatile std::int64_t divisor = -1;
    EXPECT_EQ(checkedRemainder(lowest, std::int64_t{divisor}), 0);
}

TEST(CheckedDeathTest, resultsThatDoNotFitStopTheProcessWithTheirPlace) {
    const std::pair<const char*, void (*)()> rows[] = {
        {"addition overflowed", [] { static_cast<void>(checkedAdd(std::uint8_t{255}, std::uint8_t{1})); }},
        {"subtraction overflowed", [] { static_cast<void>(checkedSubtract(0U, 1U)); }},
        {"multiplication overflowed", [] { static_cast<void>(checkedMultiply(lowest, std::int64_t{-1})); }},
        {"overflowed", [] { static_cast<void>(checkedMagnitude(lowest)); }},
        {"overflowed", [] { static_cast<void>(checkedDivide(lowest, std::int64_t{-1})); }},
        {"division by zero", [] { static_cast<void>(checkedDivide(1U, 0U)); }},
        {"division by zero", [] { static_cast<void>(checkedRemainder(1, 0)); }},
        {"lost the value", [] { static_cast<void>(checkedCast<std::uint32_t>(-1)); }},
        {"a promise", [] { require(false, "a promise"); }},
    };
    for (const auto& [message, stop] : rows)
        EXPECT_DEATH(stop(), "CVX_PLF_FATAL-.*CheckedTests.cpp:[0-9]+: .*" + std::string(message));
}

TEST(CheckedDeathTest, faultsAreHeardWhateverTheirLengthAndFromWithinASink) {
    EXPECT_DEATH(fatalError(std::string(5000, 'x')), "CVX_PLF_FATAL-.*xxxx");
    EXPECT_DEATH(
        {
            setLogSink([](LogLevel, std::string_view) { fatalError("inside the sink"); });
            logError("CVX_TST_LINE-any");
        },
        "inside the sink");
}

}  // namespace
}  // namespace corvex::checkedTests

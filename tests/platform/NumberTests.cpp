#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include <Corvex/platform/DoubleText.h>
#include <Corvex/platform/Number.h>
#include <Corvex/platform/Rounding.h>

namespace corvex::numberTests {
namespace {

constexpr std::int64_t highest = std::numeric_limits<std::int64_t>::max();
constexpr double infinity = std::numeric_limits<double>::infinity();

TEST(DoubleText, defaultIsTheShortestThatReadsBack) {
    struct Row {
        double value;
        const char* expected;
    };
    const Row rows[] = {{-1, "-1.0"},
                        {23.976, "23.976"},
                        {1e-5, "1e-05"},
                        {0.0001, "0.0001"},
                        {0, "0.0"},
                        {-0.0, "-0.0"},
                        {0x1p53, "9.007199254740992e+15"},
                        {0x1p53 - 1, "9007199254740991.0"},
                        {infinity, "inf"},
                        {std::nan(""), "nan"}};
    for (const auto& row : rows) EXPECT_EQ(defaultText(row.value), row.expected);
}

TEST(DoubleText, roundsHalvesOfTheBinaryValueToEven) {
    struct Row {
        double value;
        int maximumFraction, minimumInteger;
        const char* expected;
    };
    const Row rows[] = {{1.5, 0, 1, "2"},      {2.5, 0, 1, "2"},           {0.125, 2, 1, "0.12"}, {0.375, 2, 1, "0.38"},
                        {1.50, 3, 3, "001.5"}, {-7, 2, 2, "-07"},          {0.5, 1, 0, ".5"},     {0, 1, 0, "0"},
                        {-0.25, 2, 0, "-.25"}, {1234567, 2, 1, "1234567"}, {100, -1, 1, "100"},   {infinity, 2, 1, ""}};
    for (const auto& row : rows) {
        const std::string text = trimmingFractionZeros(row.value, row.maximumFraction, row.minimumInteger);
        EXPECT_EQ(text, row.expected) << row.value;
    }
    EXPECT_EQ(std::stod(trimmingFractionZeros(1e300, 0, 1)), 1e300);
    EXPECT_EQ(std::stod(trimmingFractionZeros(5e-324, 2000, 1)), 5e-324);
    EXPECT_EQ(fixedText(2.8, 2), "2.80");
    EXPECT_EQ(fixedText(-0.125, 2), "-0.12");
}

TEST(Rounding, halvesGoAwayFromZeroAndWholeNumbersStay) {
    struct Row {
        double value, down, up, half;
    };
    constexpr Row rows[] = {{2.5, 2, 3, 3},
                            {-2.5, -3, -2, -3},
                            {0.49999999999999994, 0, 1, 0},
                            {-0.5, -1, 0, -1},
                            {0x1p52 + 1, 0x1p52 + 1, 0x1p52 + 1, 0x1p52 + 1},
                            {-1e300, -1e300, -1e300, -1e300},
                            {4503599627370495.5, 0x1p52 - 1, 0x1p52, 0x1p52}};
    for (const auto& row : rows) {
        EXPECT_EQ(roundedDown(row.value), row.down);
        EXPECT_EQ(roundedUp(row.value), row.up);
        EXPECT_EQ(roundedHalfAway(row.value), row.half);
    }
}

TEST(Number, findsPowersOfTwo) {
    struct Row {
        std::int64_t value;
        std::optional<std::uint64_t> bit, floor, ceiling;
    };
    constexpr std::uint64_t top = 1ULL << 62U;
    const Row rows[] = {{0, {}, {}, {}},
                        {-4, {}, {}, {}},
                        {1, 0, 1, 1},
                        {3, 1, 2, 4},
                        {7, 2, 4, 8},
                        {8, 3, 8, 8},
                        {1LL << 62U, 62, top, top},
                        {(1LL << 62U) + 1, 62, top, {}},
                        {highest, 62, top, {}}};
    for (const auto& row : rows) {
        EXPECT_EQ(Number::littleEndianHighBit(row.value), row.bit) << row.value;
        EXPECT_EQ(Number::powerOfTwoFloor(row.value), row.floor) << row.value;
        EXPECT_EQ(Number::powerOfTwoCeiling(row.value), row.ceiling) << row.value;
    }
    EXPECT_TRUE(Number(8).isPowerOfTwo() && Number(0.0 + 4).isPowerOfTwo() && cfEquivalent(true).isPowerOfTwo());
    EXPECT_FALSE(Number(0).isPowerOfTwo() || Number(0.5).isPowerOfTwo() || Number(-2).isPowerOfTwo());
    EXPECT_EQ(Number::forcedToEven(7, false), 6);
    EXPECT_EQ(Number::forcedToEven(-7, true), -6);
    EXPECT_EQ(Number::forcedToEven(8, true), 8);
    EXPECT_DEATH(static_cast<void>(Number::forcedToEven(highest, true)), "overflowed");
}

TEST(Number, isEqualByValueWhateverItsKind) {
    struct Row {
        const char* name;
        Number a, b;
        bool areEqual;
    };
    const Row rows[] = {
        {"kinds", Number(1), Number(1.0), true},           {"truth", Number(true), Number(1), true},
        {"fraction", Number(1.5), Number(1), false},       {"zeros", Number(-0.0), Number(false), true},
        {"exact", Number(highest), Number(0x1p63), false}, {"beyond", Number(1e300), Number(1e300), true}};
    for (const auto& row : rows) {
        EXPECT_EQ(row.a.isEqual(row.b), row.areEqual) << row.name;
        if (row.areEqual) {
            EXPECT_EQ(row.a.hash(), row.b.hash()) << row.name;
        }
    }
    EXPECT_EQ(&cfEquivalent(false), &cfEquivalent(false));
    EXPECT_FALSE(cfEquivalent(false).boolValue());
    EXPECT_EQ(Number(1e300).int64Value(), highest);
    EXPECT_EQ(Number(-2.9).int64Value(), -2);
    EXPECT_EQ(Number(2.5).description() + Number(7).description(), "2.57");
}

}  // namespace
}  // namespace corvex::numberTests

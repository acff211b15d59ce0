#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>

#include <Corvex/platform/DoubleText.h>
#include <Corvex/platform/Number.h>
#include <Corvex/platform/NumberText.h>
#include <Corvex/platform/Rounding.h>

namespace corvex::numberTests {
namespace {

using namespace std::string_view_literals;

constexpr std::int64_t highest = std::numeric_limits<std::int64_t>::max();
constexpr double infinity = std::numeric_limits<double>::infinity();

TEST(DoubleText, defaultIsTheShortestThatReadsBack) {
    const std::pair<double, const char*> rows[] = {
        {-1, "-1.0"},   {23.976, "23.976"}, {1e-5, "1e-05"},    {0x1p53, "9.007199254740992e+15"},
        {-0.0, "-0.0"}, {infinity, "inf"},  {0.0001, "0.0001"}, {0x1p53 - 1, "9007199254740991.0"}};
    for (const auto& [value, expected] : rows) EXPECT_EQ(defaultText(value), expected);
}

TEST(DoubleText, roundsHalvesOfTheBinaryValueToEven) {
    const std::tuple<double, int, int, const char*> rows[] = {
        {1.5, 0, 1, "2"},      {2.5, 0, 1, "2"},           {0.125, 2, 1, "0.12"}, {0.375, 2, 1, "0.38"},
        {1.50, 3, 3, "001.5"}, {-7, 2, 2, "-07"},          {0.5, 1, 0, ".5"},     {0, 1, 0, "0"},
        {-0.25, 2, 0, "-.25"}, {1234567, 2, 1, "1234567"}, {100, -1, 1, "100"},   {infinity, 2, 1, ""}};
    for (const auto& [value, maximumFraction, minimumInteger, expected] : rows) {
        const std::string text = trimmingFractionZeros(value, maximumFraction, minimumInteger);
        EXPECT_EQ(text, expected) << value;
    }
    EXPECT_EQ(std::stod(trimmingFractionZeros(1e300, 0, 1)), 1e300);
    EXPECT_EQ(std::stod(trimmingFractionZeros(5e-324, 2000, 1)), 5e-324);
    EXPECT_EQ(fixedText(2.8, 2), "2.80");
    EXPECT_EQ(fixedText(-0.125, 2), "-0.12");
}

TEST(Rounding, halvesGoAwayFromZeroAndWholeNumbersStay) {
    constexpr std::tuple<double, double, double, double> rows[] = {{2.5, 2, 3, 3},
                                                                   {-2.5, -3, -2, -3},
                                                                   {0.49999999999999994, 0, 1, 0},
                                                                   {-1e300, -1e300, -1e300, -1e300},
                                                                   {4503599627370495.5, 0x1p52 - 1, 0x1p52, 0x1p52}};
    for (const auto& [value, down, up, half] : rows) {
        EXPECT_EQ(roundedDown(value), down);
        EXPECT_EQ(roundedUp(value), up);
        EXPECT_EQ(roundedHalfAway(value), half);
    }
}

TEST(Number, findsPowersOfTwo) {
    constexpr std::uint64_t top = 1ULL << 62U;
    using Power = std::optional<std::uint64_t>;
    const std::tuple<std::int64_t, Power, Power, Power> rows[] = {
        {0, {}, {}, {}}, {-4, {}, {}, {}},    {1, 0, 1, 1},          {7, 2, 4, 8},
        {8, 3, 8, 8},    {top, 62, top, top}, {top + 1, 62, top, {}}};
    for (const auto& [value, bit, floor, ceiling] : rows) {
        EXPECT_EQ(Number::littleEndianHighBit(value), bit) << value;
        EXPECT_EQ(Number::powerOfTwoFloor(value), floor) << value;
        EXPECT_EQ(Number::powerOfTwoCeiling(value), ceiling) << value;
    }
    EXPECT_TRUE(Number(8).isPowerOfTwo() && Number(0.0 + 4).isPowerOfTwo() && cfEquivalent(true).isPowerOfTwo());
    EXPECT_FALSE(Number(0).isPowerOfTwo() || Number(0.5).isPowerOfTwo() || Number(-2).isPowerOfTwo());
    EXPECT_EQ(Number::forcedToEven(7, false), 6);
    EXPECT_EQ(Number::forcedToEven(-7, true), -6);
    EXPECT_EQ(Number::forcedToEven(8, true), 8);
    EXPECT_DEATH(static_cast<void>(Number::forcedToEven(highest, true)), "overflowed");
}

TEST(Number, isEqualByValueWhateverItsKind) {
    const std::tuple<const char*, Number, Number, bool> rows[] = {
        {"kinds", Number(1), Number(1.0), true},           {"truth", Number(true), Number(1), true},
        {"fraction", Number(1.5), Number(1), false},       {"zeros", Number(-0.0), Number(false), true},
        {"exact", Number(highest), Number(0x1p63), false}, {"beyond", Number(1e300), Number(1e300), true}};
    for (const auto& [name, a, b, areEqual] : rows) {
        EXPECT_EQ(a.isEqual(b), areEqual) << name;
        if (areEqual) {
            EXPECT_EQ(a.hash(), b.hash()) << name;
        }
    }
    EXPECT_FALSE(cfEquivalent(false).boolValue());
    EXPECT_EQ(Number(1e300).int64Value(), highest);
    EXPECT_EQ(Number(-2.9).int64Value(), -2);
    EXPECT_EQ(Number(2.5).description() + Number(7).description(), "2.57");
}

TEST(NumberText, integersAreWholeTextsInRange) {
    const std::pair<std::string_view, std::int64_t> rows[] = {{"+7", 7},
                                                              {"9223372036854775807", INT64_MAX},
                                                              {"-9223372036854775808", INT64_MIN},
                                                              {"-000000000000000000001", -1}};
    for (const auto& [text, expected] : rows) EXPECT_EQ(parseInteger<std::int64_t>(text), expected) << text;
    for (const std::string_view text : {"9223372036854775808"sv, "-9223372036854775809"sv, ""sv, "+"sv, "-"sv, "+-1"sv,
                                        " 1"sv, "1 "sv, "1.0"sv, "0x10"sv, "1e3"sv, "1\0"sv, "٣"sv}) {
        EXPECT_EQ(parseInteger<std::int64_t>(text), std::nullopt) << text;
    }
    EXPECT_EQ(parseInteger<std::int8_t>("128"), std::nullopt);
    EXPECT_EQ(parseInteger<std::uint64_t>("18446744073709551615"), UINT64_MAX);
    EXPECT_EQ(parseInteger<std::uint64_t>("-1"), std::nullopt);
    EXPECT_EQ(parseInteger<std::int64_t>("-1", SignRule::plusOnly), std::nullopt);
    EXPECT_EQ(parseInteger<std::int64_t>("+1", SignRule::plusOnly), 1);
}

TEST(NumberText, decimalsAreWholeTextsRoundedOnce) {
    const std::pair<std::string_view, double> rows[] = {
        {"+2.5", 2.5},   {"0.000001e-99999999999999999999", 0.0},
        {"-.5", -0.5},   {"0e99999999999999999999", 0.0},
        {"5.", 5.0},     {"100000000000000000000e-400", 0.0},
        {"1E+2", 100.0}, {"9007199254740993", 9007199254740992.0}};  // the last is halfway: to even
    for (const auto& [text, expected] : rows) EXPECT_EQ(parseFloat<double>(text), expected) << text;
    for (const std::string_view text :
         {"1.8e308"sv, "-1e99999999999999999999"sv, ""sv, "."sv, "-"sv, "e5"sv, "1e"sv, "1e+"sv, "+-1"sv, "--1"sv,
          "1..2"sv, "1,5"sv, " 1"sv, "1 "sv, "0x1p3"sv, "inf"sv, "-nan"sv, "1f"sv, "1\0"sv}) {
        EXPECT_EQ(parseFloat<double>(text), std::nullopt) << text;
    }
    EXPECT_TRUE(std::signbit(parseFloat<double>("-1e-400").value_or(1.0)));
    EXPECT_EQ(parseFloat<float>("3.5e38"), std::nullopt);
    // Just above the middle of two floats; by way of a double it would be the middle, and round down.
    EXPECT_EQ(parseFloat<float>("1.00000005960464477540"), std::nextafter(1.0F, 2.0F));
}

TEST(NumberText, shortestTextIsPositional) {
    constexpr std::pair<double, std::string_view> rows[] = {
        {1.0, "1"},   {0.25, "0.25"},      {-1920.0, "-1920"},
        {0.1, "0.1"}, {1e-7, "0.0000001"}, {1e22, "10000000000000000000000"},
    };
    for (const auto& [value, expected] : rows) EXPECT_EQ(shortestText(value), expected);
    EXPECT_EQ(shortestText(0.1F), "0.1");
    for (const double value : {5e-324, 1.7976931348623157e308}) {
        EXPECT_EQ(parseFloat<double>(shortestText(value)), value);
    }
    EXPECT_DEATH(static_cast<void>(shortestText(std::nan(""))), "finite");
}

}  // namespace
}  // namespace corvex::numberTests

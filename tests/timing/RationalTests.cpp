#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>
#include <tuple>
#include <utility>

#include <Corvex/platform/Json.h>
#include <Corvex/timing/CGFloatRational.h>
#include <Corvex/timing/MathematicalError.h>
#include <Corvex/timing/MediaRational.h>
#include <Corvex/timing/NumericRational.h>
#include <tests/Thrown.h>

namespace corvex::rationalTests {
namespace {

constexpr std::int64_t lowest = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t highest = std::numeric_limits<std::int64_t>::max();
constexpr double infinity = std::numeric_limits<double>::infinity();

/// Whether the pairs are the same, not merely equal in value.
bool isPair(const NumericRational& value, std::int64_t numerator, std::int64_t denominator) {
    return value.numerator() == numerator && value.denominator() == denominator;
}
bool isPair(const MediaRational& value, std::int64_t timeValue, std::int64_t timeScale) {
    return value.timeValue() == timeValue && value.timeScale() == timeScale;
}

TEST(Gcd, carriesTheSignOfEuclidsTruncatingRemainders) {
    constexpr std::tuple<std::int64_t, std::int64_t, std::int64_t> rows[] = {
        {12, 18, 6}, {7, 0, 7}, {0, 7, 7}, {-7, 0, -7}, {-4, 6, 2}, {4, -6, -2}, {-2, 4, -2}, {lowest, 6, -2}};
    for (const auto& [a, b, expected] : rows) EXPECT_EQ(gcd(a, b), expected) << a << ", " << b;
    // That of magnitudes is absent where the type cannot hold it.
    EXPECT_EQ(safeBinaryIntGCD<std::int64_t>(lowest, 0), std::nullopt);
    EXPECT_EQ(safeBinaryIntGCD<std::int8_t>(-128, -128), std::nullopt);
    EXPECT_EQ(safeBinaryIntGCD<std::int8_t>(-128, 96), 32);
    EXPECT_EQ(safeBinaryIntGCD<std::uint64_t>(1ULL << 63U, 0), 1ULL << 63U);
    EXPECT_TRUE((safeBinaryIntGCD<Int128>(Int128{6} << 90U, Int128{-4} << 90U) == Int128{2} << 90U));
}

TEST(NumericRational, multipliesAndDividesInLowestTermsWhereTheDivisorIsPositive) {
    const std::tuple<const char*, NumericRational, std::int64_t, std::int64_t> rows[] = {
        {"reduced", NumericRational(2, 3) * NumericRational(3, 4), 1, 2},
        {"quotient", NumericRational(2, 4) / NumericRational(1, 2), 1, 1},
        {"undefined stays unreduced", NumericRational(1, 2) / NumericRational(0, 3), 3, 0},
        {"negative divisor stays unreduced", NumericRational(-2, 1) * NumericRational(1, 4), -2, 4},
        {"negative numerator over a positive divisor", NumericRational(-4, 1) * NumericRational(1, 6), -2, 3}};
    for (const auto& [name, result, numerator, denominator] : rows)
        EXPECT_TRUE(isPair(result, numerator, denominator)) << name;
}

TEST(NumericRational, isEqualByItsReducedValueAndHashesAlike) {
    const std::tuple<NumericRational, NumericRational, bool> rows[] = {
        {{1, 2}, {2, 4}, true},  {{1, 0}, {-7, 0}, true},   {{0, 0}, {0, 1}, false},
        {{0, 5}, {0, -3}, true}, {{-2, 4}, {-1, 2}, false}, {{1, -2}, {-1, 2}, false}};
    for (const auto& [a, b, areEqual] : rows) {
        EXPECT_EQ(a == b, areEqual) << a.numerator() << "/" << a.denominator();
        if (!areEqual) continue;
        EXPECT_EQ(std::hash<NumericRational>{}(a), std::hash<NumericRational>{}(b)) << a.denominator();
    }
}

TEST(NumericRational, comesFromSizesReciprocalsAndDoubles) {
    const std::tuple<const char*, NumericRational, std::int64_t, std::int64_t> rows[] = {
        {"size truncates", NumericRational::fromSize(1920.9, -1080.9), 1920, -1080},
        {"reciprocal", NumericRational::reciprocalOf(0), 1, 0},
        {"convergent", NumericRational::fromDouble(29.97, 0.01), 989, 33},
        {"never the first convergent", NumericRational::fromDouble(1.25, 10), 5, 4},
        {"negative", NumericRational::fromDouble(-0.75, 1e-9), -3, 4},
        {"exact fraction with epsilon 0", NumericRational::fromDouble(0.5, 0), 0, 0}};
    for (const auto& [name, value, numerator, denominator] : rows) {
        EXPECT_TRUE(isPair(value, numerator, denominator)) << name;
    }
}

TEST(NumericRational, dividesAsFloatingPointOrSaysThatItCannot) {
    EXPECT_EQ(NumericRational(1, 4).quotient(), 0.25);
    EXPECT_EQ(test::thrownBy<MathematicalError>([] { return NumericRational(1, 0).quotient(); }),
              MathematicalError(MathematicalError::Case::divideByZero));
    EXPECT_EQ(NumericRational(3, 4).safeDivision({3, 2}), 0.5);
    EXPECT_EQ(NumericRational(0, 4).safeDivision({3, 2}), 0.0);
    EXPECT_EQ(NumericRational(3, 4).safeDivision({0, 2}), std::nullopt);
    EXPECT_EQ(reduced(NumericRational(-4, 6)), std::pair(std::int64_t{-2}, std::int64_t{3}));
    EXPECT_EQ(reduced(NumericRational(lowest, 0)), std::pair(lowest, std::int64_t{0}));
}

TEST(NumericRational, codesItsTwoFields) {
    EXPECT_EQ(Json(NumericRational(2, -4)).dump(), R"({"numerator":2,"denominator":-4})");
    EXPECT_EQ(nlohmann::json(NumericRational(2, -4)).get<NumericRational>(), NumericRational(2, -4));
    const auto decoded = Json::parse(R"({"denominator":-4,"numerator":2})").get<NumericRational>();
    EXPECT_TRUE(isPair(decoded, 2, -4));
    for (const char* text : {R"({"numerator":2})", R"({"numerator":2,"denominator":1.5})", "7",
                             R"({"numerator":18446744073709551615,"denominator":1})"}) {
        EXPECT_THROW(static_cast<void>(Json::parse(text).get<NumericRational>()), DecodingError) << text;
    }
}

TEST(CGFloatRational, multipliesAndDividesWithoutReducing) {
    const CGFloatRational product = CGFloatRational(2, 4) * CGFloatRational(2, 1);
    EXPECT_EQ(std::pair(product.numerator(), product.denominator()), std::pair(4.0, 4.0));
    const CGFloatRational quotient = CGFloatRational(1, 2) / CGFloatRational(3, 5);
    EXPECT_EQ(std::pair(quotient.numerator(), quotient.denominator()), std::pair(5.0, 6.0));
    EXPECT_EQ(CGFloatRational(1, 2).safeQuotient({1, 4}), 2.0);
    EXPECT_EQ(CGFloatRational(1, 2).safeQuotient({0, 4}), std::nullopt);
}

TEST(MediaRational, fromRawValueTakesWholeNumbersAndNtscRates) {
    constexpr std::tuple<double, std::int64_t, std::int64_t> rows[] = {
        {30, 30, 1},         {29.97, 30000, 1001}, {2.5, 3000, 1001},
        {-2.5, -3000, 1001}, {0.3, 0, 1001},       {-0x1.fffffffffffffp62, -9223372036854774784, 1}};
    for (const auto& [value, timeValue, timeScale] : rows) {
        EXPECT_TRUE(isPair(MediaRational::fromRawValue(value).value(), timeValue, timeScale)) << value;
    }
    for (const double value : {0.0, std::nan(""), infinity, -infinity, 0x1p63}) {
        EXPECT_FALSE(MediaRational::fromRawValue(value)) << value;
    }
    EXPECT_EQ(MediaRational::make(1, 0), std::nullopt);
    EXPECT_TRUE(isPair(*MediaRational::make(2, -4), 2, -4));
}

TEST(MediaRational, approximateStopsAtTheToleranceOrTheDenominator) {
    constexpr std::tuple<double, std::int64_t, double, std::int64_t, std::int64_t> rows[] = {
        {0.5, 1, 0, 0, 1},       {0.5, 2, 0, 1, 2},
        {0.5, 2, 0.5, 0, 1},     {29.97002997, 1001, 1e-9, 30000, 1001},
        {5e-324, 10, 0.1, 0, 1}, {29.97002997, 300, 0, 8002, 267},
        {25, 1, 0, 25, 1}};
    for (const auto& [value, maxDenominator, tolerance, timeValue, timeScale] : rows) {
        const auto found = MediaRational::approximate(value, maxDenominator, tolerance);
        EXPECT_TRUE(found && isPair(*found, timeValue, timeScale)) << value;
    }
    for (const double value : {0.0, -1.0, infinity, std::nan("")}) {
        EXPECT_FALSE(MediaRational::approximate(value, 10, 0.1)) << value;
    }
    EXPECT_FALSE(MediaRational::approximate(0.5, 0, 0.1));
}

TEST(MediaRational, reducedKeepsSignsWhereTheyAre) {
    const std::tuple<MediaRational, std::int64_t, std::int64_t> rows[] = {
        {{0, 7}, 0, 1}, {{2, -4}, 1, -2}, {{lowest, lowest}, lowest, lowest}, {{3, lowest}, 3, lowest}};
    for (const auto& [value, timeValue, timeScale] : rows)
        EXPECT_TRUE(isPair(value.reduced(), timeValue, timeScale)) << timeValue;
    EXPECT_TRUE(isPair(MediaRational(48000, 2002).quantizedRepresentation(), 24000, 1001));
    EXPECT_TRUE(isPair(MediaRational(50, 4).quantizedRepresentation(), 50, 4));
    EXPECT_TRUE(isPair(*MediaRational(30000, 1001).inverse(), 1001, 30000));
    EXPECT_EQ(MediaRational(0, 5).inverse(), std::nullopt);
}

TEST(MediaRational, dropFrameCompliantRatesRoundUpToThirties) {
    constexpr std::tuple<std::int64_t, std::int64_t, bool> rows[] = {
        {30000, 1001, true}, {24000, 1001, false}, {30, 1, false}, {59, 2, true},
        {-1, 2, true},       {1, 2, false},        {0, 1, false},  {-30000, 1001, false}};
    for (const auto& [timeValue, timeScale, isCompliant] : rows) {
        EXPECT_EQ(MediaRational(timeValue, timeScale).isNTSCDropFrameCompliant(), isCompliant)
            << timeValue << "/" << timeScale;
    }
}

TEST(MediaRational, isItsValueInTextEqualityAndHash) {
    EXPECT_NE(MediaRational(24000, 1001), MediaRational(24, 1));
    EXPECT_EQ(std::hash<MediaRational>{}({0, 5}), std::hash<MediaRational>{}({0, -5}));
    EXPECT_EQ(MediaRational(28, 10).fStopDescription(), "f/2.80");
    EXPECT_EQ(MediaRational(24000, 1001).roundedDecimalString(), "23.98");
    EXPECT_EQ(MediaRational(5, 2).quantizedValue(), 3);
    EXPECT_EQ(MediaRational(-5, 2).quantizedValue(), -3);
    EXPECT_TRUE(!MediaRational(1, 1).equals({3, 2}, 0.5) && MediaRational(1, 1).equals({3, 2}, 0.51));
}

TEST(MediaRational, codesItsRawValueAndComesBackAsARate) {
    const auto recoded = [](const MediaRational& value) {
        return Json::parse(Json(value).dump()).get<MediaRational>();
    };
    EXPECT_TRUE(isPair(recoded({24000, 1001}), 24000, 1001));
    EXPECT_TRUE(isPair(recoded({25, 2}), 13000, 1001));
    for (const char* text : {"0", "-9223372036854775808.0", "1e300", "\"25\"", "null"}) {
        EXPECT_THROW(static_cast<void>(Json::parse(text).get<MediaRational>()), DecodingError) << text;
    }
}

TEST(RationalDeathTest, overflowAndNumbersBeyond64BitsStopTheProcess) {
    using Numeric = NumericRational;
    EXPECT_DEATH((void)(Numeric(highest, 1) * Numeric(2, 1)), "multiplication overflowed");
    EXPECT_DEATH((void)gcd(lowest, -1), "subtraction overflowed");
    EXPECT_DEATH((void)Numeric::fromSize(infinity, 1), "does not fit");
    EXPECT_DEATH((void)MediaRational::fromRawValue(-0x1p63), "does not fit");
    EXPECT_DEATH((void)MediaRational::approximate(1e300, 10, 0), "does not fit");
    EXPECT_DEATH((void)MediaRational(highest, 1).quantizedValue(), "does not fit");
    EXPECT_DEATH((void)MediaRational(1, 0), "must not be 0");
}

}  // namespace
}  // namespace corvex::rationalTests

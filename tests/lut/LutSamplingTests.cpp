#include <cmath>
#include <cstdint>
#include <limits>
#include <tuple>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <Corvex/lut/BitDepth.h>

#include "LutFiles.h"

namespace corvex::lutSamplingTests {
namespace {

const TrilinearLutInterpolator trilinear;

std::vector<LutValueTriplet> grays(std::initializer_list<double> values) {
    std::vector<LutValueTriplet> entries;
    for (const double value : values) entries.push_back({value, value, value});
    return entries;
}

RGB<double> gray(double value) { return {value, value, value}; }

TEST(LutCube, facesAreCubeRootsToTheNearestAndHoldTheFileOrder) {
    const std::pair<std::size_t, std::size_t> rows[] = {{0, 0},     {1, 1},      {3, 1},      {4, 2},      {8, 2},
                                                        {4913, 17}, {30000, 31}, {35937, 33}, {274625, 65}};
    for (const auto& [count, face] : rows) {
        EXPECT_EQ(LutCube(std::vector<LutValueTriplet>(count), 0, 1).faceSize(), face) << count;
    }
    const LutCube cube(grays({0, 1, 2, 3, 4, 5, 6, 7}), 0, 7);
    EXPECT_EQ(trilinear.interpolate(cube, {7, 0, 0}), gray(4));  // red's index is the slowest
    EXPECT_EQ(trilinear.interpolate(cube, {0, 7, 0}), gray(2));
}

TEST(LutCube, shortCubesEndInWhiteAndLongOnesKeepTheirSurplusOutside) {
    const LutCube padded(std::vector<LutValueTriplet>(35000), 0, 0.75);
    EXPECT_EQ(padded.lattice().size(), 35937U);
    EXPECT_EQ(padded.orderedEntries().size(), 35000U);
    EXPECT_EQ(padded.lattice()[34999], (LutValueTriplet{0, 0, 0}));
    for (const auto& entry : padded.lattice().subspan(35000)) ASSERT_EQ(entry, (LutValueTriplet{0.75, 0.75, 0.75}));
    const auto surplus = LutCube::computingBounds(grays({1, 2, 3, 4, 5, 6, 7, 8, 99}));
    EXPECT_EQ(surplus.lattice().size(), 8U);
    EXPECT_EQ(surplus.orderedEntries().size(), 9U);
    EXPECT_EQ(surplus.highValue(), 8);
    EXPECT_EQ(surplus.lowValue(), 1);
    EXPECT_EQ(LutCube::computingBounds(grays({-1, 3, 2, 0, 1})).lattice()[7].first, 3);
    EXPECT_EQ(LutCube::computingBounds({}).highValue(), 0);
}

TEST(TrilinearLutInterpolator, locatesAndBlendsAsStated) {
    const LutCube alongBlue(grays({0, 1, 0, 1, 0, 1, 0, 1}), 0, 1);
    const LutCube alongRed(grays({0, 0, 0, 0, 1, 1, 1, 1}), 0, 1);
    const LutCube above(grays({2, 2, 2, 2, 4, 4, 4, 4}), 2, 4);
    const LutCube below(grays({-1, -1, -1, -1, 1, 1, 1, 1}), -1, 1);
    const LutCube point(grays({0.5}), 0, 1);
    const std::tuple<const char*, const LutCube&, RGB<double>, double> rows[] = {
        {"greenWeighsAlongBlue", alongBlue, {0, 0.25, 0.75}, 0.25},
        {"highValue", alongRed, {1, 0, 0}, 1},
        {"aboveTheHighValue", alongRed, {1e300, 0, 0}, 1},
        {"infinite", alongRed, {std::numeric_limits<double>::infinity(), 0, 0}, 1},
        {"belowTheLowValue", alongRed, {-5, 0, 0}, 0},
        {"clampedUpBeforeTheDivision", above, {0, 3, 3}, 3},
        {"dividedByTheHighValueAlone", above, {3, 3, 3}, 3.5},
        {"negativePositionsExtrapolate", below, {-1, 0, 0}, -3},
        {"onePoint", point, {0.3, 0.7, 2}, 0.5},
    };
    for (const auto& [name, cube, input, expected] : rows)
        EXPECT_EQ(trilinear.interpolate(cube, input), gray(expected)) << name;
}

TEST(TrilinearLutInterpolatorDeathTest, positionsThatAreNoNumbersStopTheProcess) {
    const LutCube black(grays({0, 0, 0, 0, 0, 0, 0, 0}), 0, 0);
    const LutCube cube(grays({0, 0, 0, 0, 1, 1, 1, 1}), 0, 1);
    const LutCube tiny(grays({-1e300, 0, 0, 0, 0, 0, 0, 1e-300}), -1e300, 1e-300);
    EXPECT_DEATH((void)trilinear.interpolate(black, gray(0)), "does not fit into 64 bits");
    EXPECT_DEATH((void)trilinear.interpolate(cube, {std::nan(""), 0, 0}), "does not fit into 64 bits");
    EXPECT_DEATH((void)trilinear.interpolate(tiny, gray(-1e300)), "does not fit into 64 bits");
    EXPECT_DEATH((void)trilinear.interpolate(LutCube({}, 0, 1), gray(0)), "empty cube");
}

TEST(BitDepth, depthsChangeByShiftingAndReadingsAreChecked) {
    constexpr std::uint64_t most = UINT64_MAX;
    const std::tuple<std::uint64_t, std::int64_t, std::int64_t, std::uint64_t> rows[] = {
        {1023, 10, 12, 4092}, {4092, 12, 10, 1023},    {4095, 12, 10, 1023}, {7, 0, 12, 7},
        {7, 12, 0, 7},        {7, -3, 12, 7},          {7, 9, 9, 7},         {1, 1, 64, std::uint64_t{1} << 63U},
        {2, 1, 64, most},     {1, 1, INT64_MAX, most}, {0, 1, INT64_MAX, 0}, {most, INT64_MAX, 1, 0},
        {most, 64, 1, 1},     {most, 65, 1, 0}};
    for (const auto& [value, from, to, expected] : rows) {
        EXPECT_EQ(normalizedUnsignedInteger(value, from, to), expected) << from << ' ' << to;
    }
    EXPECT_EQ(largestCodeValue(63), std::uint64_t{INT64_MAX});
    EXPECT_EQ(largestCodeValue(64), 0U);
    EXPECT_EQ(checkedUnsignedInteger(-0.999), 0U);
    EXPECT_EQ(checkedUnsignedInteger(18446744073709549568.0), 18446744073709549568U);
}

TEST(BitDepthDeathTest, readingsThatDoNotFitStopTheProcess) {
    for (const double value : {-1.0, 18446744073709551616.0, std::nan(""), 1e300}) {
        EXPECT_DEATH((void)checkedUnsignedInteger(value), "does not fit into an unsigned integer") << value;
    }
}

/// One sample of a gray, as its red component.
struct SampleRow {
    const char* name;
    std::uint64_t input;
    std::int64_t inputDepth, outputDepth;
    AnswerDepth answer;
    std::uint64_t expected;
};

void expectSamples(const RGBSampleConverter& converter, std::span<const SampleRow> rows) {
    for (const auto& row : rows) {
        const RGB<std::uint64_t> input{row.input, row.input, row.input};
        const RGB<std::uint64_t> expected{row.expected, row.expected, row.expected};
        EXPECT_EQ(converter.sample(input, row.inputDepth, row.outputDepth, row.answer), expected) << row.name;
    }
}

TEST(SampleConverter, cubesConvertDepths) {
    constexpr auto output = AnswerDepth::output, input = AnswerDepth::input;
    const auto interpolator = std::make_shared<TrilinearLutInterpolator>();
    const Integer3DSampleConverter integer(LutCube(grays({0, 0, 0, 0, 0, 0, 0, 1023}), 0, 1023), interpolator, 10);
    const SampleRow integerRows[] = {
        {"ownDepth", 1023, 10, 8, input, 1023},
        {"narrowedInput", 4092, 12, 10, output, 1023},
        {"answerInInput", 4092, 12, 10, input, 4092},
        {"narrowedAnswer", 1023, 10, 8, output, 255},
        {"fullScaleIsNotStretched", 255, 8, 8, input, 253},  // 1020^3 / 1023^2, then / 4
        {"noDepth", 1023, 0, 0, input, 1023},
    };
    expectSamples(integer, integerRows);
    const NormalizedFloatingPoint3DSampleConverter floating(LutCube(grays({0, 0, 0, 0, 1, 1, 1, 1}), 0, 1),
                                                            interpolator);
    const SampleRow floatingRows[] = {
        {"fullScaleIsStretched", 255, 8, 10, output, 1023},
        {"truncated", 100, 8, 10, output, 401},
        {"answerInInput", 100, 8, 10, input, 100},
        {"noInputDepth", 9, 0, 10, output, 0},
        {"noOutputDepth", 9, 8, 0, output, 0},
        {"depthTooLarge", 9, 64, 8, output, 0},
        {"largestDepth", 1, 1, 63, output, std::uint64_t{1} << 63U},
    };
    expectSamples(floating, floatingRows);
}

TEST(SampleConverter, tablesAnswerTheirEntries) {
    constexpr auto output = AnswerDepth::output, input = AnswerDepth::input;
    std::vector<LutValueTriplet> squares, ramp;
    for (int i = 0; i < 256; ++i) squares.push_back({i * 4.0 + 0.9, i * 4.0, i * 4.0});
    for (const double value : {0.0, 0.5, 0.5, 1.0}) ramp.push_back({value, value, value});
    const OneDimensionsUnsignedIntegerConverter integer(squares, 10);
    const SampleRow integerRows[] = {
        {"own", 3, 8, 10, output, 12},
        {"narrowedInput", 1023, 10, 10, output, 1020},
        {"widenedInput", 1, 1, 10, output, 512},
        {"beyondTheTable", 9999, 8, 10, output, 1020},
        {"answerInInput", 255, 8, 10, input, 255},
    };
    expectSamples(integer, integerRows);
    EXPECT_EQ(integer.lutBitDepth(), 8);
    EXPECT_EQ(integer.maxInputColor(), 255U);
    EXPECT_EQ(integer.highValue(), 1020.9);
    const OneDimensionFloatingPointConverter floating(ramp, 0, 1);
    const SampleRow floatingRows[] = {
        {"first", 0, 8, 8, output, 0},
        {"last", 255, 8, 16, output, 65535},
        {"between", 1, 1, 8, output, 255},
        {"blended", 51, 8, 10, output, 306},  // 0.2 * 3 = 0.6 of the way to 0.5; 0.3 * 1023, truncated
        {"beyondFullScale", 999, 8, 8, output, 255},
        {"noDepth", 5, 0, 8, output, 0},
    };
    expectSamples(floating, floatingRows);
}

TEST(OneDimensionConverter, bitDepthsAreFloorsOfLogarithms) {
    const std::pair<std::size_t, std::int64_t> rows[] = {{1, 0}, {2, 1}, {3, 1}, {1023, 9}, {1024, 10}, {4096, 12}};
    for (const auto& [count, depth] : rows) {
        const OneDimensionFloatingPointConverter converter(std::vector<LutValueTriplet>(count), 0, 1);
        EXPECT_EQ(converter.lutBitDepth(), depth) << count;
    }
}

}  // namespace
}  // namespace corvex::lutSamplingTests

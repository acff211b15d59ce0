#include <cmath>
#include <cstdint>
#include <tuple>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <Corvex/lut/BitDepth.h>
#include <Corvex/lut/ParsedLutFile.h>

namespace corvex::lutSamplingTests {
namespace {

using Entries = std::vector<LutValueTriplet>;

Entries grays(std::initializer_list<double> values) {
    Entries entries;
    for (const double value : values) entries.push_back({value, value, value});
    return entries;
}

// What cubes give is compared with files of the field in LutFieldFileTests.cpp, bit for bit at many depths.
TEST(LutCube, facesAreCubeRootsToTheNearest) {
    const std::pair<std::size_t, std::size_t> rows[] = {{0, 0}, {3, 1}, {4, 2}, {30000, 31}, {274625, 65}};
    for (const auto& [count, face] : rows) EXPECT_EQ(LutCube(Entries(count), 0, 1).faceSize(), face) << count;
}

TEST(LutCube, shortCubesEndInWhiteAndLongOnesKeepTheirSurplusOutside) {
    const LutCube padded(Entries(35000), 0, 0.75);
    EXPECT_EQ(padded.lattice().size(), 35937U);
    EXPECT_EQ(padded.orderedEntries().size(), 35000U);
    EXPECT_EQ(padded.lattice()[34999], (LutValueTriplet{0, 0, 0}));
    for (const auto& entry : padded.lattice().subspan(35000)) ASSERT_EQ(entry, (LutValueTriplet{0.75, 0.75, 0.75}));
    const auto surplus = LutCube::computingBounds(grays({2, 1, 3, 4, 5, 6, 8, 7, 99}));
    EXPECT_EQ(surplus.lattice().size(), 8U);
    EXPECT_EQ(surplus.orderedEntries().size(), 9U);
    EXPECT_EQ(std::pair(surplus.lowValue(), surplus.highValue()), std::pair(1.0, 8.0));
    EXPECT_EQ(LutCube::computingBounds({}).highValue(), 0);
}

TEST(LutSamplingDeathTest, numbersThatDoNotFitStopTheProcess) {
    const TrilinearLutInterpolator trilinear;
    const LutCube black(Entries(8), 0, 0), cube(Entries(8), 0, 1);
    EXPECT_DEATH((void)trilinear.interpolate(black, {0, 0, 0}), "does not fit into 64 bits");
    EXPECT_DEATH((void)trilinear.interpolate(cube, {std::nan(""), 0, 0}), "does not fit into 64 bits");
    EXPECT_DEATH((void)trilinear.interpolate(LutCube({}, 0, 1), {0, 0, 0}), "empty cube");
    for (const double value : {-1.0, 18446744073709551616.0, std::nan("")}) {
        EXPECT_DEATH((void)checkedUnsignedInteger(value), "does not fit into an unsigned integer") << value;
    }
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

TEST(SampleConverter, tablesAnswerTheirEntries) {
    constexpr auto output = AnswerDepth::output, input = AnswerDepth::input;
    Entries squares;
    for (int i = 0; i < 256; ++i) squares.push_back({i * 4.0 + 0.9, i * 4.0, i * 4.0});
    const OneDimensionsUnsignedIntegerConverter integer(squares, 10);
    const OneDimensionFloatingPointConverter floating(grays({0, 0.5, 0.5, 1}), 0, 1);
    const std::tuple<const char*, const RGBSampleConverter&, std::uint64_t, std::int64_t, std::int64_t, AnswerDepth,
                     std::uint64_t>
        rows[] = {
            {"own", integer, 3, 8, 10, output, 12},
            {"narrowedInput", integer, 1023, 10, 10, output, 1020},
            {"widenedInput", integer, 1, 1, 10, output, 512},
            {"beyondTheTable", integer, 9999, 8, 10, output, 1020},
            {"answerInInput", integer, 255, 8, 10, input, 255},
            {"last", floating, 255, 8, 16, output, 65535},
            {"blended", floating, 51, 8, 10, output, 306},  // 0.2 * 3 = 0.6 of the way to 0.5; 0.3 * 1023, truncated
            {"beyondFullScale", floating, 999, 8, 8, output, 255},
            {"noDepth", floating, 5, 0, 8, output, 0},
        };
    for (const auto& [name, converter, in, inputDepth, outputDepth, answer, expected] : rows) {
        EXPECT_EQ(converter.sample({in, in, in}, inputDepth, outputDepth, answer),
                  (RGB<std::uint64_t>{expected, expected, expected}))
            << name;
    }
    EXPECT_EQ(integer.maxInputColor(), 255U);
    EXPECT_EQ(integer.highValue(), 1020.9);
    // Depths are floors of logarithms.
    EXPECT_EQ(OneDimensionFloatingPointConverter(Entries(1023), 0, 1).lutBitDepth(), 9);
    EXPECT_EQ(OneDimensionFloatingPointConverter(Entries(1024), 0, 1).lutBitDepth(), 10);
}

}  // namespace
}  // namespace corvex::lutSamplingTests

#include <Corvex/color/Color.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace corvex::colorTests {
namespace {

using Bytes = std::array<std::uint8_t, 4>;

TEST(Color, hexadecimalTextIsReadOrRefused) {
    const std::pair<const char*, Bytes> rows[] = {{"#80ff00", {128, 255, 0, 255}},
                                                  {"80Ff0040", {128, 255, 0, 64}},
                                                  {"#1aF", {0x11, 0xAA, 0xFF, 255}},
                                                  {"1AF8", {0x11, 0xAA, 0xFF, 0x88}}};
    for (const auto& [text, expected] : rows) EXPECT_EQ(hexTo8BitRGBA(text), expected) << text;
    for (const char* text :
         {"", "#", "12", "12345", "123456789", "##12345", "12345g", "12345G", "12345/", "12345:", "１２３"}) {
        EXPECT_EQ(hexTo8BitRGBA(text), std::nullopt) << text;
    }
    EXPECT_EQ(Color::fromHex("80FF0040")->toHex(true), "80FF0040");
    EXPECT_EQ(Color::fromHex("12345"), std::nullopt);
    EXPECT_EQ(hexTo8BitFloatingPointRGBA("FF003300"), (std::array{1.0F, 0.0F, 0.2F, 0.0F}));
    EXPECT_EQ(hexTo8BitFloatingPointRGBA("FF00330"), std::nullopt);
}

TEST(Color, hexadecimalTextIsRoundedHalfAwayFromZeroAndLimited) {
    EXPECT_EQ(Color::sRGB(0.5, 0, 1).hexValue(), "8000FF");  // 127.5 goes up
    EXPECT_EQ(Color::sRGB(0.499, 1.5 / 255, 2.4 / 255).hexValue(), "7F0202");
    EXPECT_EQ(Color::sRGB(-0.5, 2, std::nan(""), std::numeric_limits<double>::infinity()).toHex(true), "00FF00FF");
    EXPECT_EQ(Color::gray(0.2, 0.4).toHex(true), "33333366");
    EXPECT_EQ(Color().toHex(true), std::nullopt);
    EXPECT_EQ(Color().hexValue(), std::nullopt);
}

// Expected values: the defining equations of IEC 61966-2-1, and for Display P3 the primaries of SMPTE EG 432-1, worked
// out in exact fractions apart from this code.
TEST(Color, conversionToSRGB) {
    const std::tuple<const char*, Color, std::array<float, 3>> rows[] = {
        {"grayTakesItsFirst", Color(ColorModel::genericGray, 0.3, 0.9, 0.1), {0.3F, 0.3F, 0.3F}},
        {"linear", Color(ColorModel::linearSRGB, 0.21404114, 1, 0), {0.5F, 1, 0}},
        {"linearToe", Color(ColorModel::linearSRGB, 0.0031308, 0.0025, -1), {0.04045F, 0.0323F, 0}},
        {"p3Grey", Color(ColorModel::displayP3, 0.5, 0.5, 0.5), {0.5F, 0.5F, 0.5F}},
        {"p3RedIsOutside", Color(ColorModel::displayP3, 1, 0, 0), {1, 0, 0}},
        {"p3Inside", Color(ColorModel::displayP3, 0.6, 0.4, 0.3), {0.634503F, 0.388660F, 0.280019F}},
    };
    for (const auto& [name, color, expected] : rows) {
        SCOPED_TRACE(name);
        const auto rgba = color.toRGBA();
        ASSERT_TRUE(rgba.has_value());
        for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR((*rgba)[i], expected[i], 2e-6) << i;
        EXPECT_EQ(color.toRGB(true), std::vector<float>(rgba->begin(), rgba->end()));
        EXPECT_EQ(color.toRGB(false), std::vector<float>(rgba->begin(), rgba->begin() + 3));
    }
    EXPECT_TRUE(Color().toRGB(true).empty());
}

TEST(Color, isDarkBelowHalfOfTheLuma) {
    const std::tuple<const char*, Color, bool> rows[] = {
        {"midGrey", Color::sRGB(0.5, 0.5, 0.5), false},
        {"justBelowMidGrey", Color::gray(0.4999999), true},
        {"red", Color::sRGB(1, 0, 0), true},
        {"green", Color::sRGB(0, 1, 0), false},
        {"alphaDoesNotCount", Color::sRGB(1, 1, 1, 0), false},
        {"linearGreyIsLight", Color(ColorModel::linearSRGB, 0.22, 0.22, 0.22), false},
        {"withoutComponents", Color(), false},
    };
    for (const auto& [name, color, isDark] : rows) EXPECT_EQ(color.isDark(), isDark) << name;
}

TEST(Color, lists) {
    EXPECT_EQ(Color::rainbow().size(), 7U);
    std::mt19937 generator(7);
    const auto colors = Color::tenRandomSystemColors(generator);
    std::set<std::string> different;
    for (const auto& color : colors) different.insert(color.hexValue().value());
    EXPECT_EQ(colors.size(), 10U);
    EXPECT_EQ(different.size(), 10U);
    EXPECT_NE(Color::tenRandomSystemColors(generator), colors);
}

}  // namespace
}  // namespace corvex::colorTests

#include <Corvex/platform/NumberText.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

using namespace std::string_view_literals;

namespace corvex::numberTextTests {
namespace {

TEST(NumberText, integersAreWholeTextsInRange) {
    struct Row {
        std::string_view text;
        std::optional<std::int64_t> expected;
    };
    const Row rows[] = {{"0", 0},
                        {"+7", 7},
                        {"-07", -7},
                        {"9223372036854775807", INT64_MAX},
                        {"-9223372036854775808", INT64_MIN},
                        {"00000000000000000000000000001", 1}};
    for (const auto& row : rows) EXPECT_EQ(parseInteger<std::int64_t>(row.text), row.expected) << row.text;
    for (const std::string_view text : {"9223372036854775808"sv, "-9223372036854775809"sv, ""sv, "+"sv, "-"sv, "+-1"sv,
                                        " 1"sv, "1 "sv, "1.0"sv, "0x10"sv, "1e3"sv, "1\0"sv, "٣"sv}) {
        EXPECT_EQ(parseInteger<std::int64_t>(text), std::nullopt) << text;
    }
}

TEST(NumberText, integersRespectTheirTypeAndSignRule) {
    EXPECT_EQ(parseInteger<std::int8_t>("-128"), -128);
    EXPECT_EQ(parseInteger<std::int8_t>("128"), std::nullopt);
    EXPECT_EQ(parseInteger<std::uint64_t>("18446744073709551615"), UINT64_MAX);
    EXPECT_EQ(parseInteger<std::uint64_t>("18446744073709551616"), std::nullopt);
    EXPECT_EQ(parseInteger<std::uint64_t>("-1"), std::nullopt);
    EXPECT_EQ(parseInteger<std::int64_t>("-1", SignRule::plusOnly), std::nullopt);
    EXPECT_EQ(parseInteger<std::int64_t>("+1", SignRule::plusOnly), 1);
}

TEST(NumberText, decimalsAreWholeTextsRoundedOnce) {
    struct Row {
        std::string_view text;
        std::optional<double> expected;
    };
    const Row rows[] = {
        {"3", 3.0},
        {"+2.5", 2.5},
        {"-.5", -0.5},
        {"5.", 5.0},
        {"1E+2", 100.0},
        {"1.e-2", 0.01},
        {"23.976", 23.976},
        {"9007199254740993", 9007199254740992.0},  // halfway: to even
        {"1.7976931348623157e308", std::numeric_limits<double>::max()},
        {"4.9e-324", std::numeric_limits<double>::denorm_min()},
        {"1e-400", 0.0},
        {"0.000001e-99999999999999999999", 0.0},
        {"0e99999999999999999999", 0.0},
        {"100000000000000000000e-400", 0.0},
    };
    for (const auto& row : rows) EXPECT_EQ(parseFloat<double>(row.text), row.expected) << row.text;
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
    struct Row {
        double value;
        std::string_view expected;
    };
    constexpr Row rows[] = {
        {1.0, "1"},   {0.25, "0.25"},      {-1920.0, "-1920"},
        {0.1, "0.1"}, {1e-7, "0.0000001"}, {1e22, "10000000000000000000000"},
    };
    for (const auto& row : rows) EXPECT_EQ(shortestText(row.value), row.expected);
    EXPECT_EQ(shortestText(0.1F), "0.1");
    for (const double value : {5e-324, 1.7976931348623157e308, 1.0 / 3.0, 123456.789}) {
        EXPECT_EQ(parseFloat<double>(shortestText(value)), value);
    }
    EXPECT_DEATH(static_cast<void>(shortestText(std::nan(""))), "finite");
}

}  // namespace
}  // namespace corvex::numberTextTests

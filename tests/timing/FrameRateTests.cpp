#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <tuple>
#include <utility>
#include <vector>

#include <Corvex/platform/Json.h>
#include <Corvex/platform/Localization.h>
#include <Corvex/timing/DeprecatedVideoFrameRate.h>
#include <Corvex/timing/FrameRate.h>
#include <Corvex/timing/FrameRateError.h>
#include <Corvex/timing/VideoFrameRate.h>
#include <tests/LoggedBy.h>
#include <tests/Places.h>
#include <tests/Thrown.h>

namespace corvex::frameRateTests {
namespace {

using Common = CommonVideoFrameRate;

TEST(CommonVideoFrameRate, isFoundByItsExactValue) {
    constexpr std::int64_t odd = (1LL << 58U) + 1;  // equal only once reduced
    const std::tuple<std::int64_t, std::int64_t, std::optional<Common>> rows[] = {
        {2400000, 100100, Common::fps23_976}, {-25, -1, Common::fps25}, {24 * odd, odd, Common::fps24},
        {24001, 1001, std::nullopt},          {1001, 1, std::nullopt},  {-24, 1, std::nullopt}};
    for (const auto& [timeValue, timeScale, expected] : rows) {
        EXPECT_EQ(definedFrameRate({timeValue, timeScale}), expected) << timeValue << "/" << timeScale;
    }
    for (const Common rate : allCases<Common>) EXPECT_EQ(definedFrameRate(rational(rate)), rate) << rawValue(rate);
}

TEST(CommonVideoFrameRate, closestPrefersTheEarlierOfTwo) {
    // From far off, all distances round to the same double.
    const std::tuple<double, double, std::optional<Common>> rows[] = {
        {29.985, 1, Common::fps29_97},     {24.5, 0.4, {}}, {25, 0, Common::fps25},  {-24, 100, {}},
        {1e300, 1e301, Common::fps23_976}, {24, NAN, {}},   {INFINITY, INFINITY, {}}};
    for (const auto& [value, tolerance, expected] : rows)
        EXPECT_EQ(closestFrameRate(value, tolerance), expected) << value;
}

TEST(CommonVideoFrameRate, closestAgreesWithAWalkOverTheTable) {
    for (double value = 0.125; value < 1100; value += 0.125) {
        std::optional<Common> best;
        for (const Common rate : allCases<Common>) {
            const double distance = std::abs(rational(rate).rawValue() - value);
            if (!best || distance < std::abs(rational(*best).rawValue() - value)) best = rate;
        }
        ASSERT_EQ(closestFrameRate(value, 2000), best) << value;
    }
}

TEST(CommonVideoFrameRate, ntscRatesAreEightUntilTheHostSetsOthers) {
    const auto initial = ntscFrameRates();
    EXPECT_EQ(initial, (std::set{Common::fps23_976, Common::fps29_97, Common::fps47_952, Common::fps59_94,
                                 Common::fps119_88, Common::fps239_76, Common::fps479_52, Common::fps959_04}));
    setNtscFrameRates({Common::fps24});
    EXPECT_EQ(ntscFrameRates(), std::set{Common::fps24});
    setNtscFrameRates(initial);
}

TEST(VideoFrameRate, remembersItsCommonRateAndItsOwnPair) {
    const VideoFrameRate rate(48000, 2002);
    EXPECT_EQ(rate.commonValue(), Common::fps23_976);
    EXPECT_EQ(rate.rational().timeScale(), 2002);
    EXPECT_EQ(rate, VideoFrameRate(Common::fps23_976));
    EXPECT_EQ(std::hash<VideoFrameRate>{}(rate), std::hash<VideoFrameRate>{}(VideoFrameRate(24000, 1001)));
    EXPECT_FALSE(VideoFrameRate(24001, 1001).isCommon());
    EXPECT_EQ(rate.quanta(), 24);
    EXPECT_EQ(VideoFrameRate(59, 2).nominalFrameRate(), 30);
    EXPECT_FALSE(rate.isNTSCStyle() || VideoFrameRate(24024, 1001).isNTSCStyle());
    EXPECT_TRUE(VideoFrameRate(24000, 1001).isNTSCStyle());
}

TEST(VideoFrameRate, refusesAZeroScaleWithTheOffendingPair) {
    const auto error = test::thrownBy<FrameRateError>([] { return VideoFrameRate(24, 0); });
    EXPECT_EQ(error, FrameRateError::invalidRationalComponents(24, 0));
    EXPECT_NE(error, FrameRateError::invalidRationalComponents(25, 0));
    EXPECT_STREQ(error->what(), "no frame rate: 24/0");
    EXPECT_STREQ(FrameRateError::approximationFailure(0.1, 1e-9).what(), "no ratio within 1e-09 of the frame rate 0.1");
}

TEST(FrameRate, comesFromItsRawValueOrIsLoggedAsNone) {
    const std::pair<double, std::optional<FrameRate>> rows[] = {
        {-0.0, FrameRate::match},      {0.5, FrameRate::halfstep},
        {23.967, FrameRate::fps23_98}, {23.976, FrameRate::custom(23.976)},
        {60, FrameRate::fps60},        {-1, std::nullopt},
        {std::nan(""), std::nullopt}};
    const auto lines = test::loggedBy([&] {
        for (const auto& [value, expected] : rows) EXPECT_EQ(FrameRate::fromRawValue(value), expected) << value;
    });
    EXPECT_EQ(lines, (std::vector<std::string>{"Could not convert raw value to frame rate: -1.0",
                                               "Could not convert raw value to frame rate: nan"}));
    EXPECT_EQ(FrameRate::fps23_98.frameRateForProto(), 23.967);
}

TEST(FrameRate, describesItselfInTheLanguageOfTheProcess) {
    const std::tuple<FrameRate, const char*, const char*, const char*, const char*> rows[] = {
        {FrameRate::fps23_98, "23.97 fps", "23.97 fps", "23.97", "23.97 fps"},
        {FrameRate::match, "Match Source", "Match Source", "Match Source", "Wie Quelle"},
        {FrameRate::halfstep, "Half Step", "Half Step", "Half Step", "Halbe Bildrate"},
        {FrameRate::custom(12.5), "Custom: 12.5 fps", "Custom", "Custom: 12.5", "Eigene: 12.5 fps"},
        {FrameRate::custom(0), "Custom", "Custom", "Custom", "Eigene"}};
    for (const auto& [rate, description, picker, tag, german] : rows) {
        EXPECT_EQ(rate.description(), description);
        EXPECT_EQ(rate.pickerDescription(), picker) << description;
        EXPECT_EQ(rate.tag(), tag) << description;
    }
    if (!std::filesystem::exists(test::localeDirectory)) GTEST_SKIP() << "built without msgfmt";
    setLocalizationDirectory(test::localeDirectory);
    setenv("LANGUAGE", "de", 1);
    ASSERT_NE(std::setlocale(LC_MESSAGES, "C.UTF-8"), nullptr);
    for (const auto& row : rows) EXPECT_EQ(std::get<0>(row).description(), std::get<4>(row));
    unsetenv("LANGUAGE");
    std::setlocale(LC_MESSAGES, "C");
}

TEST(DeprecatedVideoFrameRate, followsTheNtscTimeScale) {
    using Rate = DeprecatedVideoFrameRate;
    using Choice = Rate::Choice;
    const Rate ntsc(Choice::ntsc30p), custom = Rate::custom({25000, 1000});
    EXPECT_EQ(ntsc.rawValue(), MediaRational(30000, 1001));
    EXPECT_FALSE(custom.hasNTSCTimeBase());
    Rate::setNtscTimeScale(1000);
    EXPECT_EQ(ntsc.rawValue(), MediaRational(30, 1));
    EXPECT_TRUE(ntsc.hasNTSCTimeBase() && custom.hasNTSCTimeBase());
    EXPECT_FALSE(Rate(Choice::p24).hasNTSCTimeBase());
    Rate::setNtscTimeScale(1001);
    EXPECT_EQ(Rate::fromRawValue({60000, 1001}), Rate(Choice::ntsc60p));
    EXPECT_EQ(Rate::fromRawValue({12, 1}), Rate::custom({24, 2}));
    for (const auto& rate : Rate::definedNTSCRates()) EXPECT_TRUE(rate.hasNTSCTimeBase());
    EXPECT_EQ(ntsc.formattedString() + Rate(Choice::pal25p).formattedString(), "29.9725");
    EXPECT_DEATH(Rate::setNtscTimeScale(0), "must not be 0");
}

TEST(DeprecatedVideoFrameRate, codesUnderItsOwnName) {
    using Rate = DeprecatedVideoFrameRate;
    EXPECT_EQ(Json(Rate(Rate::Choice::ntsc24p)).dump(), R"({"ntsc24p":{}})");
    EXPECT_EQ(Json(Rate::custom({12, 1})).dump(), R"({"custom":12.0})");
    EXPECT_EQ(nlohmann::json(Rate::custom({12, 1})).get<Rate>(), Rate::custom({12, 1}));
    EXPECT_EQ(Json::parse(R"({"p600":{}})").get<Rate>(), Rate(Rate::Choice::p600));
    EXPECT_EQ(Json::parse(R"({"custom":12.5})").get<Rate>().rawValue(), MediaRational(13000, 1001));
    for (const char* text : {R"({"p23":{}})", R"({"custom":0})", "{}", R"("p24")", R"({"p24":{},"p25":{}})"}) {
        EXPECT_THROW(static_cast<void>(Json::parse(text).get<Rate>()), DecodingError) << text;
    }
}

}  // namespace
}  // namespace corvex::frameRateTests

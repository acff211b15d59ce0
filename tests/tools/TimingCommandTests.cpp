#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include <tests/Places.h>
#include <tests/tools/Command.h>

namespace corvex::tool::test::timingCommandTests {
namespace {

using ::testing::HasSubstr;

struct Row {
    Words words;
    int exitStatus;
    const char* output;  ///< All of standard output, without the last newline.
    const char* error;   ///< A part of standard error.
};

void expectRows(std::initializer_list<Row> rows) {
    for (const Row& row : rows) {
        const CommandResult result = corvex(row.words);
        const std::string name = ::testing::PrintToString(row.words);
        EXPECT_EQ(result.exitStatus, row.exitStatus) << name << result.error;
        const std::string expected = row.output;
        EXPECT_EQ(result.output, expected.empty() ? expected : expected + "\n") << name;
        EXPECT_THAT(result.error, HasSubstr(row.error)) << name;
        EXPECT_LE(lineCount(result.error), 1U) << name;
    }
}

TEST(TimecodeCommand, readsNumbersAndAdds) {
    expectRows({
        {{"timecode", "parse", "01:02:03;04"}, 0, "01:02:03;04 drop frame", ""},
        {{"timecode", "parse", "1:2:3;4"}, 2, "", "'1:2:3;4' is no timecode"},
        {{"timecode", "parse", "1:2:3;4", "--lenient"}, 0, "01:02:03;04 drop frame", ""},
        {{"timecode", "number", "00:01:00;02", "--rate", "29.97"}, 0, "1800", ""},
        {{"timecode", "number", "00:01:00;02", "--rate", "25"}, 0, "1502", "note"},
        {{"timecode", "number", "9223372036854775807:00:00:00", "--rate", "25"}, 2, "", "beyond 64 bits"},
        {{"timecode", "at", "1800", "--rate", "30000/1001", "--drop"}, 0, "00:01:00;02", ""},
        {{"timecode", "number", "00:01:00;01", "--rate", "29.97"}, 0, "1799", "have no label 00:01:00;01"},
        {{"timecode", "number", "01:00:00:25", "--rate", "25"}, 0, "90025", "have no label 01:00:00:25"},
        {{"timecode", "number", "30:59:59:24", "--rate", "25"}, 0, "2789999", ""},
        {{"timecode", "at", "-1", "--rate", "fps29_97", "--drop"}, 2, "", "'-1' lies before"},
        {{"timecode", "at", "90000", "--rate", "25"}, 0, "01:00:00:00", ""},
        {{"timecode", "at", "9223372036854775808", "--rate", "25"}, 2, "", "'9223372036854775808'"},
        {{"timecode", "at", "1", "--rate", "4294967295"}, 0, "00:00:00:01", ""},
        {{"timecode", "at", "1", "--rate", "8589934591/2"}, 2, "", "at most 4294967295, not '8589934591/2'"},
        {{"timecode", "add", "00:01:00;02", "-1", "--rate", "29.97"}, 0, "00:00:59;29", ""},
        {{"timecode", "add", "00:00:00:04", "--rate", "25", "--", "-4"}, 0, "00:00:00:00", ""},
        {{"timecode", "add", "00:00:00:04", "-5", "--rate", "25"}, 2, "", "'-5' frames from '00:00:00:04' lies before"},
        {{"timecode", "add", "00:00:00:01", "9223372036854775807", "--rate", "25"}, 2, "", "beyond 64 bits"},
        {{"timecode", "add", "00:00:00:01", "1.5", "--rate", "25"}, 2, "", "'1.5'"},
    });
}

TEST(RateCommand, findsAndExplainsRates) {
    expectRows({
        {{"rate", "closest", "29.985", "--tolerance", "1"}, 0, "fps29_97 30000/1001", ""},
        {{"rate", "closest", "24.5"}, 1, "", "no common rate"},
        {{"rate", "closest", "0"}, 2, "", "above 0"},
        {{"rate", "closest", "24", "--tolerance", "-1"}, 2, "", "negative"},
        {{"rate", "info", "-25"}, 2, "", "above 0"},
        {{"rate", "info", "24/0"}, 2, "", "above 0"},
        {{"rate", "info", "24,5"}, 2, "", "no frame rate"},
    });
}

TEST(RateCommand, takesRatesInEveryForm) {
    struct RateRow {
        const char* text;
        std::int64_t timeValue, timeScale;
        const char* name;
    };
    constexpr RateRow rows[] = {{"23.98", 24000, 1001, "fps23_976"},
                                {"48000/2002", 48000, 2002, "fps23_976"},
                                {"12.5", 25, 2, nullptr},
                                {"fps959_04", 960000, 1001, "fps959_04"},
                                {"24.000", 24, 1, "fps24"},
                                {"25", 25, 1, "fps25"}};
    for (const auto& row : rows) {
        const auto info = nlohmann::json::parse(corvex({"rate", "info", row.text, "--json"}).output);
        EXPECT_EQ(info["timeValue"], row.timeValue) << row.text;
        EXPECT_EQ(info["timeScale"], row.timeScale) << row.text;
        EXPECT_EQ(info["name"], row.name != nullptr ? nlohmann::json(row.name) : nlohmann::json()) << row.text;
    }
}

TEST(RateCommand, listsInTheUsersLanguage) {
    const auto list = nlohmann::json::parse(corvex({"rate", "list", "--json"}).output);
    EXPECT_EQ(list["rates"].size(), 36U);
    EXPECT_EQ(list["choices"][0]["description"], "Match Source");
    if (!std::filesystem::exists(corvex::test::localeDirectory)) GTEST_SKIP() << "built without msgfmt";
    const CommandResult german = run({"env", "LC_ALL=C.UTF-8", "LANGUAGE=de", corvex::test::toolPath, "rate", "list"});
    EXPECT_THAT(german.output, HasSubstr("Wie Quelle"));
}

TEST(TimecodeCommand, speaksJson) {
    const CommandResult label = corvex({"timecode", "at", "1800", "--rate", "29.97", "--drop", "--json"});
    const auto json = nlohmann::json::parse(label.output);
    EXPECT_EQ(json["timecode"], "00:01:00;02");
    EXPECT_EQ(json["components"]["frames"], 2);
    const CommandResult number = corvex({"timecode", "number", "00:01:00;02", "--rate", "29.97", "--json"});
    EXPECT_EQ(nlohmann::json::parse(number.output)["actualFrameNumber"], 1802);
}

}  // namespace
}  // namespace corvex::tool::test::timingCommandTests

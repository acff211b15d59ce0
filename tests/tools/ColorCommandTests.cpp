#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <tests/tools/Command.h>

namespace corvex::tool::test::colorCommandTests {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using Json = nlohmann::ordered_json;

Json jsonOf(const Words& words) {
    const CommandResult result = corvex(words);
    EXPECT_EQ(result.exitStatus, 0) << result.error;
    return Json::parse(result.output);
}

TEST(ColorCommand, listsTheFiveEnumerations) {
    const Json json = jsonOf({"color", "list", "--json"});
    std::vector<std::string> sizes;
    for (const auto& [kind, rows] : json.items()) sizes.push_back(kind + " " + std::to_string(rows.size()));
    EXPECT_THAT(sizes, ElementsAre("colorSpaces 13", "primaries 9", "transferFunctions 9", "matrices 7", "ranges 2"));
    EXPECT_EQ(json["matrices"][3], Json::parse(R"({"rawValue": 3, "caseName": "rec601", "displayName": "Rec. 601",
                                                   "cliValue": "cm_rec_604_4", "codePoint": 6})"));
    EXPECT_EQ(json["primaries"][8]["rawValue"], 10);
    EXPECT_EQ(json["primaries"][8]["codePoint"], nullptr);
    EXPECT_EQ(json["ranges"][1]["cliValue"], "v");

    const CommandResult text = corvex({"color", "list"});
    EXPECT_EQ(lineCount(text.output), 13U + 9 + 9 + 7 + 2 + 2 * 5);
    EXPECT_THAT(text.output, HasSubstr("Rec. 601 - EBU 3213        ebu_3213"));
}

TEST(ColorCommand, showsWhatAnyOfItsNamesStandsFor) {
    struct Row {
        const char* name;
        Words kinds;
    };
    const Row rows[] = {
        {"rec2020PQ", {"colorSpace"}},
        {"REC_2020_PQ", {"colorSpace"}},
        {"rec. 2020 pq", {"colorSpace"}},
        {"srgb", {"colorSpace", "transferFunction"}},
        {"Rec709", {"colorSpace", "primaries", "transferFunction", "matrix"}},
        {"cm_rec_604_4", {"matrix"}},
        {"F", {"range"}},
        {"none", {"matrix"}},
    };
    for (const Row& row : rows) {
        Words kinds;
        for (const Json& found : jsonOf({"color", "show", row.name, "--json"})) kinds.push_back(found["kind"]);
        EXPECT_EQ(kinds, row.kinds) << row.name;
    }
}

TEST(ColorCommand, showsSignalsAndCodePoints) {
    const Json cinema = jsonOf({"color", "show", "dciP3Cinema", "--json"})[0];
    EXPECT_EQ(cinema["signals"], Json::parse(R"([{"primaries": "dciP3", "transferFunction": "gamma", "matrix": null,
                                                  "gamma": 2.6}])"));
    EXPECT_EQ(cinema["defaultColorPrimaries"], "dciP3");
    EXPECT_EQ(cinema["flag"], nullptr);
    EXPECT_EQ(jsonOf({"color", "show", "custom8", "--json"})[0]["signals"], nullptr);
    EXPECT_EQ(jsonOf({"color", "show", "smpteC", "--json"})[0]["codePointsRead"], Json({6, 7}));
    EXPECT_THAT(corvex({"color", "show", "p3D65"}).output,
                HasSubstr("signal              primaries p3D65, transfer function rec709, matrix rec709\n"));
}

TEST(ColorCommand, unknownNamesAreOneClearLine) {
    const CommandResult result = corvex({"color", "show", "rec709x"});
    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(lineCount(result.error), 1U);
    EXPECT_THAT(result.error, HasSubstr("no colour is called 'rec709x'; known are rec2020, rec709, "));
    EXPECT_EQ(corvex({"color"}).exitStatus, 2);
    EXPECT_EQ(corvex({"color", "show"}).exitStatus, 2);
}

}  // namespace
}  // namespace corvex::tool::test::colorCommandTests

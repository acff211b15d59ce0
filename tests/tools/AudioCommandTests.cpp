#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include <tests/tools/Command.h>

namespace corvex::tool::test::audioCommandTests {
namespace {

using ::testing::HasSubstr;
using Json = nlohmann::ordered_json;

TEST(AudioCommand, listsTheFormats) {
    const Json json = Json::parse(corvex({"audio", "list", "--json"}).output);
    EXPECT_EQ(json.size(), 6U);
    EXPECT_EQ(json[2], Json::parse(R"({"name": "AAC", "cliValue": "aac", "code": "aac ", "codeNumber": 1633772320,
                                       "support": "fullyEncodable"})"));
    EXPECT_THAT(corvex({"audio", "list"}).output, HasSubstr("ima4  apple_ima4      IMA 4:1 ADPCM   can be passed"));
}

TEST(AudioCommand, answersWithTheReplacement) {
    struct Row {
        Words words;
        const char* output;
    };
    const Row rows[] = {
        {{"ac-3"}, "aac\n"},       {{"ac-3", "--lossless"}, "apple_lossless\n"},
        {{"aac"}, "aac\n"},        {{"0x6D730011"}, "lpcm\n"},
        {{"0x756c6177"}, "aac\n"}, {{"1234"}, "lpcm\n"},
    };
    for (const Row& row : rows) {
        Words words{"audio", "replacement"};
        words.insert(words.end(), row.words.begin(), row.words.end());
        EXPECT_EQ(corvex(words).output, row.output);
    }
    EXPECT_EQ(Json::parse(corvex({"audio", "replacement", "ulaw", "--json"}).output)["replacement"]["code"], "aac ");
}

TEST(AudioCommand, refusesWhatIsNoCode) {
    for (const char* code : {"", "aac  ", "lpcm1", "0x6d73001", "0x6d73001g", "0x6D7300110"}) {
        const CommandResult result = corvex({"audio", "replacement", code});
        EXPECT_EQ(result.exitStatus, 2) << code;
        EXPECT_THAT(result.error, HasSubstr("expected four characters")) << code;
    }
}

}  // namespace
}  // namespace corvex::tool::test::audioCommandTests

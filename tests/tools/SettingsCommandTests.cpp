#include <cstdlib>

#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include <Corvex/platform/UserDefaults.h>
#include <tests/tools/Command.h>

namespace corvex::tool::test::settingsCommandTests {
namespace {

using ::testing::HasSubstr;
using Json = nlohmann::ordered_json;

class SettingsCommand : public testing::Test {
protected:
    SettingsCommand() { setenv("CORVEX_SETTINGS_FILE", file_.c_str(), 1); }
    ~SettingsCommand() override { unsetenv("CORVEX_SETTINGS_FILE"); }

    static CommandResult settings(Words words) {
        words.insert(words.begin(), "settings");
        return corvex(words);
    }

    TemporaryDirectory directory_;
    const std::string file_ = directory_.path("settings.sqlite");
};

TEST_F(SettingsCommand, setsGetsAndForgets) {
    EXPECT_EQ(settings({"get", "kNumberOfReattemptsPerFailedTranscode"}).output, "1\n");
    EXPECT_EQ(settings({"set", "numberOfReattemptsPerFailedTranscode", "5"}).exitStatus, 0);
    EXPECT_EQ(settings({"set", "kUseGPUAcceleration", "true"}).exitStatus, 0);
    EXPECT_EQ(settings({"set", "note", "left for B-cam", "--type", "text"}).exitStatus, 0);
    EXPECT_EQ(settings({"get", "kNumberOfReattemptsPerFailedTranscode"}).output, "5\n");
    EXPECT_EQ(settings({"get", "useTranscodeGPUAcceleration", "--json"}).output, "true\n");
    EXPECT_EQ(settings({"get", "note"}).output, "left for B-cam\n");

    const Json json = Json::parse(settings({"list", "--json"}).output);
    EXPECT_EQ(json["file"], file_);
    ASSERT_EQ(json["settings"].size(), 6U);
    EXPECT_EQ(json["settings"][3], Json::parse(R"({"key": "kNumberOfReattemptsPerFailedTranscode", "type": "integer",
                                                   "value": 5, "stored": 5})"));
    EXPECT_EQ(json["settings"][4]["stored"], nullptr);
    EXPECT_EQ(json["settings"][5]["key"], "note");

    for (const char* key : {"kNumberOfReattemptsPerFailedTranscode", "note"}) {
        EXPECT_EQ(settings({"unset", key}).exitStatus, 0) << key;
    }
    EXPECT_EQ(settings({"unset", "kNumberOfReattemptsPerFailedTranscode"}).exitStatus, 0) << "it is forgotten already";
    EXPECT_EQ(settings({"get", "kNumberOfReattemptsPerFailedTranscode"}).output, "1\n");
}

TEST_F(SettingsCommand, listTellsWhatIsNotUsed) {
    EXPECT_EQ(corvex({"settings", "list"}).exitStatus, 0);
    EXPECT_EQ(directory_.entries(), Words{}) << "looking makes no file";
    // The tool itself stores no text under this key, but another application may.
    UserDefaults(file_).set("kExplicitNumberOfConcurrentTranscodes", std::string("four"));
    const CommandResult listed = settings({"list"});
    EXPECT_THAT(listed.output, HasSubstr("default; the stored text 'four' is not used"));
    EXPECT_EQ(listed.exitStatus, 0) << listed.error;
}

TEST_F(SettingsCommand, refusesWhatCannotBe) {
    struct Row {
        Words words;
        int exitStatus;
        const char* message;
    };
    const Row rows[] = {
        {{"set", "kUseGPUAcceleration", "1"}, 2, "'1': expected true or false"},
        {{"set", "kExplicitNumberOfConcurrentTranscodes", "0"}, 2, "'0': expected a number of the type integer from 1"},
        {{"set", "kNumberOfReattemptsPerFailedTranscode", "-1"}, 2, "from 0"},
        {{"set", "kExplicitNumberOfConcurrentTranscodes", "2.5"}, 2, "'2.5'"},
        {{"set", "kUseGPUAcceleration", "true", "--type", "text"}, 2, "is of the type boolean"},
        {{"set", "own", "1"}, 2, "'own': expected one of kUseGPUAcceleration, "},
        {{"set", "own", "1", "--type", "date"}, 2, "date"},
        {{"set", "own"}, 2, "VALUE"},
        {{"get", "own"}, 1, "nothing is stored under 'own'"},
        {{"unset", "own"}, 1, "nothing is stored under 'own'"},
        {{}, 2, "subcommand"},
    };
    for (const Row& row : rows) {
        const CommandResult result = settings(row.words);
        EXPECT_EQ(result.exitStatus, row.exitStatus) << row.message;
        EXPECT_EQ(lineCount(result.error), 1U);
        EXPECT_THAT(result.error, HasSubstr(row.message));
    }
    writeFile(file_, "no store of settings");
    for (const Words& words : {Words{"list"}, Words{"set", "kUseGPUAcceleration", "true"}}) {
        const CommandResult result = settings(words);
        EXPECT_EQ(result.exitStatus, 1);
        EXPECT_EQ(result.error, "corvex: settings '" + file_ + "': file is not a database\n");
        EXPECT_EQ(readFile(file_), "no store of settings");
    }
}

}  // namespace
}  // namespace corvex::tool::test::settingsCommandTests

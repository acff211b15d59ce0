#include <cstdlib>

#include <gmock/gmock.h>

#include <Corvex/platform/UserDefaults.h>
#include <tests/tools/Command.h>

namespace corvex::tool::test::settingsCommandTests {
namespace {

using ::testing::HasSubstr;
using Json = nlohmann::json;

class SettingsCommand : public RoomTest {
protected:
    SettingsCommand() { setenv("CORVEX_SETTINGS_FILE", file_.c_str(), 1); }
    ~SettingsCommand() override { unsetenv("CORVEX_SETTINGS_FILE"); }

    const std::string file_ = room.path("settings.sqlite");
};

TEST_F(SettingsCommand, setsGetsAndForgets) {
    const std::pair<const char*, const char*> rows[] = {
        // a command and its answer
        {"get kNumberOfReattemptsPerFailedTranscode", "1\n"},
        {"set numberOfReattemptsPerFailedTranscode 5", ""},
        {"set kUseGPUAcceleration true", ""},
        {"set note 'left for B-cam' --type text", ""},
        {"get kNumberOfReattemptsPerFailedTranscode", "5\n"},
        {"get useTranscodeGPUAcceleration --json", "true\n"},
        {"get note", "left for B-cam\n"},
    };
    for (const auto& [line, answer] : rows) EXPECT_EQ(answerTo(std::string("settings ") + line), answer) << line;
    const Json json = jsonAnswerTo("settings list");
    EXPECT_EQ(json["file"], file_);
    ASSERT_EQ(json["settings"].size(), 6U);
    EXPECT_EQ(json["settings"][3], Json::parse(R"({"key": "kNumberOfReattemptsPerFailedTranscode", "type": "integer",
                                                   "value": 5, "stored": 5})"));
    for (const char* key : {"kNumberOfReattemptsPerFailedTranscode", "note", "kNumberOfReattemptsPerFailedTranscode"}) {
        answerTo(std::string("settings unset ") + key);  // what is forgotten already, too
    }
    EXPECT_EQ(answerTo("settings get kNumberOfReattemptsPerFailedTranscode"), "1\n");
}

TEST_F(SettingsCommand, listTellsWhatIsNotUsed) {
    answerTo("settings list");
    EXPECT_EQ(room.entries(), Words{}) << "looking makes no file";
    // The tool itself stores no text under this key, but another application may.
    UserDefaults(file_).set("kExplicitNumberOfConcurrentTranscodes", std::string("four"));
    EXPECT_THAT(answerTo("settings list"), HasSubstr("default; the stored text 'four' is not used"));
}

TEST_F(SettingsCommand, refusesWhatCannotBe) {
    expectRefusals(
        {
            {"set kUseGPUAcceleration 1", 2, "'1': expected true or false"},
            {"set kExplicitNumberOfConcurrentTranscodes 0", 2, "'0': expected a number of the type integer from 1"},
            {"set kNumberOfReattemptsPerFailedTranscode -1", 2, "from 0"},
            {"set kUseGPUAcceleration true --type text", 2, "is of the type boolean"},
            {"set own 1", 2, "'own': expected one of kUseGPUAcceleration, "},
            {"get own", 1, "nothing is stored under 'own'"},
            {"unset own", 1, "nothing is stored under 'own'"},
        },
        "settings ");
    writeFile(file_, "no store of settings");
    const std::string problem = "corvex: settings '" + file_ + "': file is not a database\n";
    expectRefusals({{"settings list", 1, problem}, {"settings set kUseGPUAcceleration true", 1, problem}});
    EXPECT_EQ(readFile(file_), "no store of settings");
}

}  // namespace
}  // namespace corvex::tool::test::settingsCommandTests

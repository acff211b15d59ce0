#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include <Corvex/cli/transcode/TranscodeCliArguments.h>
#include <tests/tools/Command.h>

namespace corvex::tool::test::vocabularyCommandTests {
namespace {

using ::testing::Contains;
using ::testing::HasSubstr;
using Json = nlohmann::ordered_json;

TEST(VocabularyCommand, describesEveryFlagThatTheParserKnows) {
    const Json flags = Json::parse(corvex({"vocabulary", "--json"}).output);
    std::vector<std::string> names;
    for (const Json& flag : flags) {
        names.push_back(flag["flag"]);
        EXPECT_NE(flag["type"], "") << flag;
        EXPECT_NE(flag["meaning"], "") << flag;
        EXPECT_FALSE(flag["type"] == "choice" && flag["values"].empty()) << flag;
    }
    for (const std::string_view flag : TranscodeCliArguments::allKnownCommandFlags()) {
        EXPECT_THAT(names, Contains(std::string(flag)));
    }
    const char* rows[] = {
        R"({"flag": "-vbr", "command": "transcode", "group": "Video", "takesValue": true, "type": "number",
            "unit": "Mbit/s", "values": [], "meaning": "data rate of the video", "isCarriedOut": true})",
        R"({"flag": "-v_colrange", "command": "transcode", "group": "Video", "takesValue": true, "type": "choice",
            "unit": null, "values": ["f", "v"], "meaning": "full or video range", "isCarriedOut": true})",
        R"({"flag": "-a_decoder", "command": "transcode", "group": "Audio", "takesValue": true, "type": "choice",
            "unit": null, "values": ["av_found", "ffmpeg", "vt", "smdk"], "meaning": "decoder of the audio",
            "isCarriedOut": true})",
        R"({"flag": "-gpu_encoding", "command": "transcode", "group": "Video", "takesValue": false, "type": "switch",
            "unit": null, "values": [], "meaning": "encode on a GPU", "isCarriedOut": false})",
        R"({"flag": "-snapshotLocation", "command": "analyze", "group": "Pictures", "takesValue": true,
            "type": "list of numbers", "unit": null, "values": [], "meaning": "where in the clip, 0 to 1",
            "isCarriedOut": true})",
    };
    for (const char* row : rows) EXPECT_THAT(flags, Contains(Json::parse(row)));
}

TEST(VocabularyCommand, printsLinesThatATerminalHolds) {
    const std::string text = corvex({"vocabulary"}).output;
    EXPECT_THAT(text, HasSubstr("-vbr VALUE: number, Mbit/s\n"));
    std::size_t longest = 0;
    for (std::size_t at = 0, end = 0; (end = text.find('\n', at)) != std::string::npos; at = end + 1) {
        longest = std::max(longest, end - at);
    }
    EXPECT_LE(longest, 80U);
}

TEST(GenerateCommand, bashCompletesWordsByTheirPlace) {
    const TemporaryDirectory directory;
    ASSERT_EQ(corvex({"generate", directory.path()}).exitStatus, 0);
    writeFile(directory.path("look.cube"), "");
    const struct {
        const char* words;  ///< The last one is being written.
        const char* completions;
    } rows[] = {
        {"corvex v", "vocabulary"},
        {"corvex lut a", "apply"},
        {"corvex lut info --", "--help --json"},
        {"corvex transcode -vco", "-vcodec"},
        {"corvex transcode -in a.mov -vcodec prores4",
         "prores4444 prores4444xq prores422 prores422hq prores422lt "
         "prores422proxy"},
        {"corvex transcode -clut lo", "look.cube"},
        {"corvex transcode -in_0_0 lo", "look.cube"},
        {"corvex transcode -vbr 1", ""},
        {"corvex args -- -acod", "-acodec"},
        {"corvex analyze -deep", "-deepAnalysis"},
        {"corvex settings set note 1 --type b", "boolean"},
    };
    for (const auto& row : rows) {
        const std::string script = "cd \"$0\" && . bash-completion/completions/corvex; COMP_WORDS=(" +
                                   std::string(row.words) +
                                   "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _corvex; echo \"${COMPREPLY[*]}\"";
        EXPECT_EQ(run({"bash", "-c", script, directory.path()}).output, row.completions + std::string("\n"))
            << row.words;
    }
}

}  // namespace
}  // namespace corvex::tool::test::vocabularyCommandTests

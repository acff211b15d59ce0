#include <algorithm>
#include <filesystem>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <nlohmann/json.hpp>

#include <tests/Places.h>
#include <tests/tools/Command.h>

namespace corvex::tool::test::mediaCommandTests {
namespace {

using ::testing::HasSubstr;
using Json = nlohmann::ordered_json;
namespace fs = std::filesystem;

TEST(MediaCommand, listsTheVocabulary) {
    const Json containers = Json::parse(corvex({"media", "containers", "--json"}).output);
    EXPECT_EQ(containers.size(), 11U);
    EXPECT_EQ(containers[1], Json::parse(R"({"container": "HDE", "extensions": ["arx"]})"));
    EXPECT_EQ(containers[2]["extensions"], Json::array());
    const Json extensions = Json::parse(corvex({"media", "extensions", "--json"}).output);
    EXPECT_EQ(extensions.size(), 14U);
    EXPECT_EQ(extensions[2], Json::parse(R"({"extension": "mp4", "containers": ["MP4"]})"));
    EXPECT_THAT(corvex({"media", "containers"}).output, HasSubstr("QuickTime       mov\n"));
    EXPECT_EQ(corvex({"media", "makers"}).output.substr(0, 11), "ARRI\nAdobe\n");
}

/// A card with clips, folders that look like clips, and links.
class MediaFind : public testing::Test {
protected:
    MediaFind() {
        fs::create_directories(card_.path("CLIPS/take.mov"));
        for (const char* file : {"A001.MOV", "notes.txt", "sound.m4a", "CLIPS/B001.mxf", "CLIPS/take.mov/C001.mov"}) {
            writeFile(card_.path(file), "x");
        }
        fs::create_directory_symlink(card_.path(), card_.path("CLIPS/circle"));
        fs::create_symlink("../A001.MOV", card_.path("CLIPS/linked.mov"));
        fs::create_symlink("nowhere", card_.path("CLIPS/lost.mov"));
    }
    [[nodiscard]] CommandResult find(const Words& options) const {
        Words words{"media", "find", card_.path()};
        words.insert(words.end(), options.begin(), options.end());
        CommandResult result = corvex(words);
        for (std::string* text : {&result.output, &result.error}) {
            for (std::size_t at; (at = text->find(card_.path() + "/")) != std::string::npos;) {
                text->erase(at, card_.path().size() + 1);
            }
        }
        return result;
    }
    static Words sortedLines(const std::string& text) {
        Words lines;
        for (std::size_t at = 0; at < text.size(); at = text.find('\n', at) + 1) {
            lines.push_back(text.substr(at, text.find('\n', at) - at));
        }
        std::sort(lines.begin(), lines.end());
        return lines;
    }

    TemporaryDirectory card_;
};

TEST_F(MediaFind, printsFilesAndSaysWhatItLeavesOut) {
    struct Row {
        Words options, found;
        int skipped;
    };
    const Row rows[] = {
        {{}, {"A001.MOV", "sound.m4a"}, 0},
        {{"--ext", "mxf"}, {}, 0},
        {{"--deep", "--ext", "mxf"}, {"CLIPS/B001.mxf"}, 1},
        {{"--deep", "--ext", "MXF, .mov"},
         {"A001.MOV", "CLIPS/B001.mxf", "CLIPS/linked.mov", "CLIPS/take.mov/C001.mov"},
         2},
    };
    for (const Row& row : rows) {
        const CommandResult result = find(row.options);
        EXPECT_EQ(sortedLines(result.output), row.found);
        EXPECT_EQ(result.exitStatus, 0) << result.error;
        EXPECT_EQ(lineCount(result.error), row.skipped) << result.error;
    }
    EXPECT_EQ(sortedLines(find({"--deep"}).error),
              (Words{"corvex: skipped 'CLIPS/circle': a link to a folder is not followed",
                     "corvex: skipped 'CLIPS/lost.mov': the link leads to nothing: No such file or directory"}));
}

TEST_F(MediaFind, jsonIsOneObjectALine) {
    const CommandResult result = find({"--deep", "--ext", "mxf,m4a", "--json"});
    EXPECT_EQ(sortedLines(result.output), (Words{R"({"path":"CLIPS/B001.mxf","extension":"mxf","containers":["MXF"]})",
                                                 R"({"path":"sound.m4a","extension":"m4a","containers":[]})"}));
}

TEST_F(MediaFind, aFolderThatCannotBeReadIsAFailureAtTheEnd) {
    // Folders in folders until the path is longer than the system opens.
    int folder = open(card_.path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    for (int depth = 0; depth < 22; ++depth) {
        const std::string name(200, '0');
        ASSERT_EQ(mkdirat(folder, name.c_str(), 0700), 0);
        const int inner = openat(folder, name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        close(folder);
        folder = inner;
    }
    close(folder);
    const CommandResult result = find({"--deep", "--ext", "mxf"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(sortedLines(result.output), Words{"CLIPS/B001.mxf"});
    EXPECT_THAT(result.error, HasSubstr(": File name too long\n"));
}

TEST_F(MediaFind, refusesWhatItCannotUse) {
    struct Row {
        Words words;
        int exitStatus;
        const char* message;
    };
    const Row rows[] = {
        {{"media"}, 2, "subcommand"},
        {{"media", "find"}, 2, "DIR"},
        {{"media", "find", card_.path(), "--ext", "mov,"}, 2, "'mov,': expected extensions with commas"},
        {{"media", "find", card_.path(), "--ext", ""}, 2, "'': expected extensions"},
        {{"media", "find", card_.path("none")}, 1, "No such file or directory"},
        {{"media", "find", card_.path("A001.MOV")}, 1, "Not a directory"},
        {{"media", "makers", "extra"}, 2, "extra"},
    };
    for (const Row& row : rows) {
        const CommandResult result = corvex(row.words);
        EXPECT_EQ(result.exitStatus, row.exitStatus) << result.error;
        EXPECT_EQ(result.output, "");
        EXPECT_EQ(lineCount(result.error), 1U);
        EXPECT_THAT(result.error, HasSubstr(row.message));
    }
    const CommandResult gone =
        run({"sh", "-c", std::string("'") + corvex::test::toolPath + "' media find '" + card_.path() + "' >/dev/full"});
    EXPECT_EQ(gone.exitStatus, 1);
    EXPECT_EQ(gone.error, "corvex: cannot write to standard output\n");
}

}  // namespace
}  // namespace corvex::tool::test::mediaCommandTests

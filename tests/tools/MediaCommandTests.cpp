#include <algorithm>
#include <filesystem>
#include <sstream>

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <tests/tools/Command.h>

namespace corvex::tool::test::mediaCommandTests {
namespace {

using ::testing::HasSubstr;
namespace fs = std::filesystem;

Words sortedLines(const std::string& text) {
    std::istringstream stream(text);
    Words lines;
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    std::ranges::sort(lines);
    return lines;
}

/// A card with clips, folders that look like clips, and links.
class MediaFind : public RoomTest {
protected:
    MediaFind() {
        fs::create_directories("CLIPS/take.mov");
        for (const char* file : {"A001.MOV", "notes.txt", "sound.m4a", "CLIPS/B001.mxf", "CLIPS/take.mov/C001.mov"}) {
            writeFile(file, "x");
        }
        fs::create_directory_symlink(room.path(), "CLIPS/circle");
        fs::create_symlink("../A001.MOV", "CLIPS/linked.mov");
        fs::create_symlink("nowhere", "CLIPS/lost.mov");
    }
};

TEST_F(MediaFind, printsFilesAndSaysWhatItLeavesOut) {
    const std::string circle = "corvex: skipped './CLIPS/circle': a link to a folder is not followed";
    const std::string lost = "corvex: skipped './CLIPS/lost.mov': the link leads to nothing: No such file or directory";
    const std::tuple<std::string, Words, Words> rows[] = {
        {"", {"./A001.MOV", "./sound.m4a"}, {}},
        {"--deep --ext mxf", {"./CLIPS/B001.mxf"}, {circle}},
        {"--deep --ext 'MXF, .mov'",
         {"./A001.MOV", "./CLIPS/B001.mxf", "./CLIPS/linked.mov", "./CLIPS/take.mov/C001.mov"},
         {circle, lost}},
        {"--deep --ext mxf,m4a --json",  // one object a line
         {R"({"path":"./CLIPS/B001.mxf","extension":"mxf","containers":["MXF"]})",
          R"({"path":"./sound.m4a","extension":"m4a","containers":[]})"},
         {circle}},
    };
    for (const auto& [options, found, skipped] : rows) {
        const CommandResult result = corvex("media find . " + options);
        EXPECT_EQ(result.exitStatus, 0) << options;
        EXPECT_EQ(sortedLines(result.output), found) << options;
        EXPECT_EQ(sortedLines(result.error), skipped) << options;
    }
}

TEST_F(MediaFind, aFolderThatCannotBeReadIsAFailureAtTheEnd) {
    // Folders in folders until the path is longer than the system opens.
    for (int depth = 0; depth < 22; ++depth) {
        const std::string name(200, '0');
        ASSERT_EQ(mkdir(name.c_str(), 0700) | chdir(name.c_str()), 0);
    }
    fs::current_path(room.path());
    const CommandResult result = corvex("media find . --deep --ext mxf");
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(sortedLines(result.output), Words{"./CLIPS/B001.mxf"});
    EXPECT_THAT(result.error, HasSubstr(": File name too long\n"));
}

}  // namespace
}  // namespace corvex::tool::test::mediaCommandTests

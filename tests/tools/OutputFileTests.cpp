#include <tools/corvex/worker/OutputFile.h>

#include <filesystem>

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <tests/Thrown.h>
#include <tests/tools/Command.h>
#include <tools/corvex/ToolError.h>

namespace corvex::tool::test::outputFileTests {
namespace {

using corvex::test::thrownBy;
using ::testing::HasSubstr;
namespace fs = std::filesystem;

using OutputFiles = RoomTest;

TEST_F(OutputFiles, appearOnlyWhenTheyArePublished) {
    {
        OutputFile file(room.path("x.mov"), "", false), givenUp(room.path("up.mov"), "", false);
        writeFile(file.pathWhileWriting(), "bytes");
        EXPECT_EQ(room.entries(), Words{});
        file.publish();
    }
    EXPECT_EQ(room.entries(), Words{"x.mov"});
    EXPECT_EQ(readFile("x.mov"), "bytes");
}

TEST_F(OutputFiles, areNotPublishedOverWhatOthersPutThere) {
    for (const char* workDirectory : {"", "/dev/shm"}) {
        {
            OutputFile file(room.path("x.mov"), workDirectory, false);
            writeFile(file.pathWhileWriting(), "ours");
            writeFile("x.mov", "theirs");
            EXPECT_THAT(thrownBy<JobError>([&] { file.publish(); }).value().what(),
                        HasSubstr("exists; -overwrite would replace it"));
        }
        EXPECT_EQ(readFile("x.mov"), "theirs");
        EXPECT_EQ(room.entries(), Words{"x.mov"});
        fs::remove("x.mov");
    }
}

/// Also from another file system, in more than a buffer of the copy, and no multiple of it.
TEST_F(OutputFiles, replaceWhenAllowed) {
    const TemporaryDirectory work("/dev/shm");
    std::string bytes(300'000, ' ');
    for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>(i * 7 / 5);
    const std::string longName = std::string(251, 'n') + ".mov";
    for (const auto& [name, directory, exists] :
         {std::tuple(longName, std::string(), true), {longName, work.path(), true}, {"x.mov", work.path(), false}}) {
        SCOPED_TRACE(name.substr(0, 5) + directory);
        if (exists) writeFile(name, "old");
        OutputFile file(room.path(name), directory, exists);
        writeFile(file.pathWhileWriting(), bytes);
        EXPECT_EQ(readFile(name), exists ? "old" : "");
        file.publish();
        EXPECT_TRUE(readFile(name) == bytes);
        EXPECT_EQ(room.entries(), Words{name});
        EXPECT_EQ(work.entries(), Words{});
        fs::remove(name);
    }
}

TEST_F(OutputFiles, linksStayAndTheirEndsAreWritten) {
    const TemporaryDirectory other;
    writeFile(other.path("old.mov"), "old");
    fs::create_symlink(other.path("old.mov"), "there.mov");
    fs::create_symlink("there.mov", "over.mov");
    fs::create_symlink(other.path("new.mov"), "to nothing.mov");
    const Words links = room.entries();
    for (const auto& [link, end] : {std::pair("over.mov", "old.mov"), std::pair("to nothing.mov", "new.mov")}) {
        OutputFile file(room.path(link), "", true);
        writeFile(file.pathWhileWriting(), "bytes");
        file.publish();
        EXPECT_EQ(readFile(other.path(end)), "bytes");
        EXPECT_TRUE(fs::is_symlink(link));
    }
    EXPECT_EQ(room.entries(), links);
    EXPECT_EQ(other.entries(), (Words{"new.mov", "old.mov"}));
}

TEST_F(OutputFiles, placesThatCannotBeWrittenAreToldAtOnce) {
    writeFile("file.mov", "old");
    fs::create_directory("directory.mov");
    fs::create_symlink("/nonexistent/x", "dangling.mov");
    fs::create_symlink("round.mov", "round.mov");
    ASSERT_EQ(mkfifo("pipe.mov", 0600), 0);
    const std::tuple<const char*, std::string, bool, const char*> rows[] = {
        {"file.mov", "", false, "file.mov': the file exists"},
        {"dangling.mov", "", false, "dangling.mov': the file exists"},
        {"directory.mov", "", true, "directory.mov': it is a directory"},
        {"pipe.mov", "", true, "pipe.mov': it is no regular file"},
        {"round.mov", "", true, "round.mov': "},
        {"missing/x.mov", "", false, "missing/x.mov': No such file or directory"},
        {"x.mov", room.path("missing"), false, "missing': No such file or directory"},
        {"/proc/x.mov", "", false, "'/proc/x.mov': "},
    };
    const Words before = room.entries();
    for (const auto& [target, workDirectory, overwrites, problem] : rows) {
        const auto error = thrownBy<JobError>([&] { OutputFile(room.path() / target, workDirectory, overwrites); });
        EXPECT_THAT(error.value().what(), HasSubstr(problem));
    }
    EXPECT_EQ(room.entries(), before);
    EXPECT_EQ(readFile("file.mov"), "old");
}

TEST_F(OutputFiles, leftoversOfAnotherProcessAreFound) {
    const TemporaryDirectory work;
    for (const auto* place : {&std::as_const(room), &work}) {
        writeFile(place->path(".x.mov.123.part"), "half");
        writeFile(place->path(".x.mov.124.part"), "another job's");
    }
    OutputFile::removeLeftovers(room.path("x.mov"), work.path(), 123);
    EXPECT_EQ(room.entries(), Words{".x.mov.124.part"});
    EXPECT_EQ(work.entries(), Words{".x.mov.124.part"});
}

}  // namespace
}  // namespace corvex::tool::test::outputFileTests

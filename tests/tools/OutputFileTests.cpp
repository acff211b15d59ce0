#include <tools/corvex/worker/OutputFile.h>

#include <filesystem>

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <tests/tools/Command.h>
#include <tools/corvex/ToolError.h>

namespace corvex::tool::outputFileTests {
namespace {

using test::readFile;
using test::TemporaryDirectory;
using test::Words;
using test::writeFile;
using ::testing::HasSubstr;

std::string problemOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const JobError& error) {
        return error.what();
    }
    return "";
}

TEST(OutputFile, appearsOnlyWhenItIsPublished) {
    const TemporaryDirectory directory;
    const std::string target = directory.path("x.mov");
    {
        OutputFile file(target, "", false);
        writeFile(file.pathWhileWriting(), "bytes");
        EXPECT_EQ(directory.entries(), Words{});
        file.publish();
        EXPECT_EQ(directory.entries(), Words{"x.mov"});
    }
    EXPECT_EQ(readFile(target), "bytes");
    { const OutputFile given(directory.path("up.mov"), "", false); }
    EXPECT_EQ(directory.entries(), Words{"x.mov"});
}

TEST(OutputFile, whoeverTakesTheNameMeanwhileKeepsIt) {
    const TemporaryDirectory directory;
    const std::string target = directory.path("x.mov");
    for (const char* workDirectory : {"", "/dev/shm"}) {
        {
            OutputFile file(target, workDirectory, false);
            writeFile(file.pathWhileWriting(), "ours");
            writeFile(target, "theirs");
            EXPECT_THAT(problemOf([&] { file.publish(); }), HasSubstr("exists; -overwrite would replace it"));
        }
        EXPECT_EQ(readFile(target), "theirs");
        EXPECT_EQ(directory.entries(), Words{"x.mov"});
        std::filesystem::remove(target);
    }
}

TEST(OutputFile, replacesWhenAllowed) {
    const TemporaryDirectory directory;
    for (const std::string& name : {std::string("x.mov"), std::string(251, 'n') + ".mov"}) {
        SCOPED_TRACE(name.size());
        writeFile(directory.path(name), "old");
        OutputFile file(directory.path(name), "", true);
        writeFile(file.pathWhileWriting(), "new");
        EXPECT_EQ(readFile(directory.path(name)), "old");
        file.publish();
        EXPECT_EQ(readFile(directory.path(name)), "new");
        std::filesystem::remove(directory.path(name));
        EXPECT_EQ(directory.entries(), Words{});
    }
}

TEST(OutputFile, linksStayAndTheirEndsAreWritten) {
    const TemporaryDirectory directory;
    const TemporaryDirectory other;
    writeFile(other.path("old.mov"), "old");
    std::filesystem::create_symlink(other.path("old.mov"), directory.path("there.mov"));
    std::filesystem::create_symlink("there.mov", directory.path("over.mov"));
    std::filesystem::create_symlink(other.path("new.mov"), directory.path("to nothing.mov"));
    const Words links = directory.entries();
    for (const auto& [link, end] : {std::pair("over.mov", "old.mov"), std::pair("to nothing.mov", "new.mov")}) {
        OutputFile file(directory.path(link), "", true);
        writeFile(file.pathWhileWriting(), "bytes");
        file.publish();
        EXPECT_EQ(readFile(other.path(end)), "bytes");
        EXPECT_TRUE(std::filesystem::is_symlink(directory.path(link)));
    }
    EXPECT_EQ(directory.entries(), links);
    EXPECT_EQ(other.entries(), (Words{"new.mov", "old.mov"}));
    std::filesystem::create_symlink("round.mov", directory.path("round.mov"));
    EXPECT_NE(problemOf([&] { OutputFile(directory.path("round.mov"), "", true); }), "");
}

TEST(OutputFile, comesFromAnotherFileSystemWhole) {
    const TemporaryDirectory directory;
    const TemporaryDirectory work("/dev/shm");
    std::string bytes(300'000, ' ');  // more than a buffer of the copy, and no multiple of it
    for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>(i * 7 / 5);
    for (const bool overwrites : {false, true}) {
        if (overwrites) writeFile(directory.path("x.mov"), "old");
        OutputFile file(directory.path("x.mov"), work.path(), overwrites);
        writeFile(file.pathWhileWriting(), bytes);
        file.publish();
        EXPECT_TRUE(readFile(directory.path("x.mov")) == bytes);
        EXPECT_EQ(directory.entries(), Words{"x.mov"});
        EXPECT_EQ(work.entries(), Words{});
        std::filesystem::remove(directory.path("x.mov"));
    }
}

TEST(OutputFile, placesThatCannotBeWrittenAreToldAtOnce) {
    const TemporaryDirectory directory;
    writeFile(directory.path("file.mov"), "old");
    std::filesystem::create_directory(directory.path("directory.mov"));
    std::filesystem::create_symlink("/nonexistent/x", directory.path("dangling.mov"));
    ASSERT_EQ(mkfifo(directory.path("pipe.mov").c_str(), 0600), 0);
    struct Row {
        std::string target;
        std::string workDirectory;
        bool overwrites;
        std::string problem;
    };
    const Row rows[] = {
        {directory.path("file.mov"), "", false, "file.mov': the file exists"},
        {directory.path("dangling.mov"), "", false, "dangling.mov': the file exists"},
        {directory.path("directory.mov"), "", true, "directory.mov': it is a directory"},
        {directory.path("pipe.mov"), "", true, "pipe.mov': it is no regular file"},
        {directory.path("missing/x.mov"), "", false, "missing/x.mov': No such file or directory"},
        {directory.path("file.mov/x.mov"), "", false, "file.mov/x.mov': "},
        {directory.path("x.mov"), directory.path("missing"), false, "missing': No such file or directory"},
        {directory.path("x.mov"), directory.path("file.mov"), false, "file.mov': Not a directory"},
        {"/proc/x.mov", "", false, "'/proc/x.mov': "},
    };
    const Words before = directory.entries();
    for (const Row& row : rows) {
        EXPECT_THAT(problemOf([&] { OutputFile(row.target, row.workDirectory, row.overwrites); }),
                    HasSubstr(row.problem));
    }
    EXPECT_EQ(directory.entries(), before);
    EXPECT_EQ(readFile(directory.path("file.mov")), "old");
}

TEST(OutputFile, leftoversOfAnotherProcessAreFound) {
    const TemporaryDirectory directory;
    const TemporaryDirectory work;
    for (const TemporaryDirectory* place : {&directory, &work}) {
        writeFile(place->path(".x.mov.123.part"), "half");
        writeFile(place->path(".x.mov.124.part"), "another job's");
    }
    OutputFile::removeLeftovers(directory.path("x.mov"), work.path(), 123);
    EXPECT_EQ(directory.entries(), Words{".x.mov.124.part"});
    EXPECT_EQ(work.entries(), Words{".x.mov.124.part"});
}

}  // namespace
}  // namespace corvex::tool::outputFileTests

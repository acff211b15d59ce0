#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>
#include <sys/types.h>
#include <nlohmann/json.hpp>

#include <tests/TemporaryDirectory.h>

namespace corvex::tool::test {

using Words = std::vector<std::string>;

/// "-in @plain -out 'a b.mov'" as words: what stands between blanks or in quotes; "@plain" is the path of that clip.
Words wordsOf(const std::string& line);

/// How a command ended and what it said.
struct CommandResult {
    int exitStatus = -1;  ///< -1: a signal ended it.
    std::string output, error;
};

/// A running command. What it prints goes to files, so that it never waits for this process.
class Command {
public:
    /// `words`: the program, found in PATH, and its arguments. Standard input is empty.
    explicit Command(Words words);
    ~Command();  ///< Ends it with SIGKILL if nobody waited.

    [[nodiscard]] pid_t processIdentifier() const noexcept { return process_; }
    [[nodiscard]] std::string outputSoFar() const;
    CommandResult wait();

private:
    corvex::test::TemporaryDirectory directory_;
    const std::string output_ = directory_.path() / "output", error_ = directory_.path() / "error";
    pid_t process_ = -1;  ///< -1: it has been waited for.
};

CommandResult run(Words words);
/// The tool under test before the words of a line, which is read by wordsOf().
Words toolWords(const std::string& line);
CommandResult corvex(const std::string& line);
/// A program that must succeed, as ffmpeg: a failure is reported to GoogleTest. Gives its standard output.
std::string runOrFail(const Words& words);
/// The tool that must succeed.
std::string answerTo(const std::string& line);
/// The same with "--json" as its first option.
nlohmann::json jsonAnswerTo(const std::string& line);

/// A line that the tool refuses with an exit status, a part of the one line that says why, and no other output.
struct Refusal {
    std::string line;
    int exitStatus;
    std::string problem;
};
/// `prefix` stands before each line.
void expectRefusals(const std::vector<Refusal>& rows, const std::string& prefix = {});

/// Asks again and again until `holds`, for as long as a very slow machine may need. False: it never did.
bool eventually(const std::function<bool()>& holds);

/// The shared one, with what lies in it.
class TemporaryDirectory : public corvex::test::TemporaryDirectory {
public:
    using corvex::test::TemporaryDirectory::path;
    using corvex::test::TemporaryDirectory::TemporaryDirectory;
    [[nodiscard]] std::string path(const std::string& name) const { return path() / name; }
    [[nodiscard]] Words entries() const;  ///< Names, sorted.
};

/// A named pipe that never ends and never waits for a reader: who reads it is in its middle for as long as a test wants.
class SourcePipe {
public:
    explicit SourcePipe(const std::string& path, std::string_view bytes = {});
    SourcePipe(const SourcePipe&) = delete;
    SourcePipe& operator=(const SourcePipe&) = delete;
    ~SourcePipe();

private:
    int pipe_;
};

/// A test in a directory of its own, which is the current one meanwhile.
class RoomTest : public ::testing::Test {
protected:
    RoomTest() { std::filesystem::current_path(room.path()); }
    ~RoomTest() override { std::filesystem::current_path("/"); }

    TemporaryDirectory room;
};

std::string readFile(const std::string& path);
void writeFile(const std::string& path, std::string_view bytes);
std::size_t lineCount(std::string_view text);

}  // namespace corvex::tool::test

#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include <sys/types.h>

namespace corvex::tool::test {

using Words = std::vector<std::string>;

/// "-dims 9x9 -an" as words: what stands between blanks.
Words wordsOf(std::string_view text);

/// How a command ended and what it said.
struct CommandResult {
    int exitStatus = -1;
    int signal = 0;  ///< 0: it ended by itself.
    std::string output;
    std::string error;
};

/// A running command. What it prints goes to files, so that it never waits for this process.
class Command {
public:
    /// `words`: the program, found in PATH, and its arguments. Standard input is empty.
    explicit Command(Words words);
    ~Command();  ///< Ends it with SIGKILL if it still runs.
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;

    [[nodiscard]] pid_t processIdentifier() const noexcept { return process_; }
    [[nodiscard]] std::string outputSoFar() const;
    [[nodiscard]] bool hasEnded();
    CommandResult wait();

private:
    pid_t process_ = -1;
    bool isReaped_ = false;
    int status_ = 0;
    std::string output_, error_;  ///< The files.
};

CommandResult run(Words words);
/// The tool under test.
CommandResult corvex(Words words);
/// A program that must succeed, as ffmpeg: a failure is reported to GoogleTest. Gives its standard output.
std::string runOrFail(Words words);

/// Asks again and again until `holds`, for as long as a very slow machine may need. False: it never did.
bool eventually(const std::function<bool()>& holds);

/// A directory of its own under the system's for temporary files, removed with all it holds.
class TemporaryDirectory {
public:
    explicit TemporaryDirectory(const std::string& parent = {});
    ~TemporaryDirectory();
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
    [[nodiscard]] std::string path(const std::string& name) const { return path_ + "/" + name; }
    [[nodiscard]] const std::string& path() const noexcept { return path_; }
    /// Names of what lies in it, sorted.
    [[nodiscard]] Words entries() const;

private:
    std::string path_;
};

std::string readFile(const std::string& path);
void writeFile(const std::string& path, std::string_view bytes);
std::size_t lineCount(std::string_view text);

}  // namespace corvex::tool::test

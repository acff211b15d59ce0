#include <tests/Places.h>
#include <tests/tools/Command.h>
#include <tests/tools/Media.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <sstream>
#include <thread>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace corvex::tool::test {

Words wordsOf(const std::string& line) {
    std::istringstream stream(line);
    Words words;
    for (std::string word; stream >> std::quoted(word, '\'');) {
        words.push_back(word.starts_with('@') ? clip(word.substr(1)) : word);
    }
    return words;
}

Command::Command(Words words) {
    setenv("CORVEX_SETTINGS_FILE", "/dev/null/none", 0);  // what the user prefers is no part of a test
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, output_.c_str(), O_WRONLY | O_CREAT, 0600);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, error_.c_str(), O_WRONLY | O_CREAT, 0600);
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    EXPECT_EQ(posix_spawnp(&process_, arguments[0], &actions, nullptr, arguments.data(), environ), 0) << words[0];
    posix_spawn_file_actions_destroy(&actions);
}

Command::~Command() {
    if (process_ < 0) return;
    kill(process_, SIGKILL);
    (void)wait();
}

std::string Command::outputSoFar() const { return readFile(output_); }

CommandResult Command::wait() {
    int status = -1;
    if (process_ > 0) waitpid(process_, &status, 0);
    process_ = -1;
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, readFile(output_), readFile(error_)};
}

CommandResult run(Words words) { return Command(std::move(words)).wait(); }

Words toolWords(const std::string& line) { return wordsOf(corvex::test::toolPath + (" " + line)); }

CommandResult corvex(const std::string& line) { return run(toolWords(line)); }

std::string runOrFail(const Words& words) {
    const CommandResult result = run(words);
    EXPECT_EQ(result.exitStatus, 0) << ::testing::PrintToString(words) << "\n" << result.error;
    return result.output;
}

std::string answerTo(const std::string& line) { return runOrFail(toolWords(line)); }

nlohmann::json jsonAnswerTo(const std::string& line) {
    const std::size_t rest = std::min(line.find(" -"), line.size());
    return nlohmann::json::parse(answerTo(line.substr(0, rest) + " --json" + line.substr(rest)), nullptr, false);
}

void expectRefusals(const std::vector<Refusal>& rows, const std::string& prefix) {
    for (const Refusal& row : rows) {
        SCOPED_TRACE(prefix + row.line);
        const CommandResult result = corvex(prefix + row.line);
        EXPECT_EQ(result.exitStatus, row.exitStatus);
        EXPECT_THAT(result.error, ::testing::StartsWith("corvex: "));
        EXPECT_THAT(result.error, ::testing::HasSubstr(row.problem));
        EXPECT_EQ(lineCount(result.error), 1U) << result.error;
        // A job that fails in its middle has shown how far it is.
        EXPECT_TRUE(result.output.empty() || result.output.find(" %  ") != std::string::npos) << result.output;
    }
}

bool eventually(const std::function<bool()>& holds) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (!holds()) {
        if (std::chrono::steady_clock::now() > deadline) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return true;
}

Words TemporaryDirectory::entries() const {
    Words names;
    for (const auto& entry : std::filesystem::directory_iterator(path())) names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    return names;
}

SourcePipe::SourcePipe(const std::string& path, std::string_view bytes) {
    EXPECT_EQ(mkfifo(path.c_str(), 0600), 0);
    pipe_ = open(path.c_str(), O_RDWR | O_CLOEXEC);  // both ends
    fcntl(pipe_, F_SETPIPE_SZ, 1 << 20);
    EXPECT_EQ(write(pipe_, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
}

SourcePipe::~SourcePipe() { close(pipe_); }

std::string readFile(const std::string& path) {
    std::ostringstream bytes;
    bytes << std::ifstream(path, std::ios::binary).rdbuf();
    return bytes.str();
}

void writeFile(const std::string& path, std::string_view bytes) {
    std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

std::size_t lineCount(std::string_view text) {
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

}  // namespace corvex::tool::test

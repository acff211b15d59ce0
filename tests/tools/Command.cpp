#include <tests/Places.h>
#include <tests/tools/Command.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <thread>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace corvex::tool::test {

Words wordsOf(std::string_view text) {
    std::istringstream stream{std::string(text)};
    return {std::istream_iterator<std::string>(stream), std::istream_iterator<std::string>()};
}

Command::Command(Words words) {
    setenv("CORVEX_SETTINGS_FILE", "/dev/null/none", 0);  // what the user prefers is no part of a test
    static int number = 0;
    const std::string stem =
        ::testing::TempDir() + "corvex-command-" + std::to_string(getpid()) + "-" + std::to_string(number++);
    output_ = stem + ".out";
    error_ = stem + ".err";
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, output_.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, error_.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    const int problem = posix_spawnp(&process_, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (problem != 0) {
        ADD_FAILURE() << words[0] << ": " << std::strerror(problem);
        isReaped_ = true;
    }
}

Command::~Command() {
    if (!isReaped_) {
        kill(process_, SIGKILL);
        (void)wait();
    }
    unlink(output_.c_str());
    unlink(error_.c_str());
}

std::string Command::outputSoFar() const { return readFile(output_); }

bool Command::hasEnded() {
    if (!isReaped_ && waitpid(process_, &status_, WNOHANG) == process_) isReaped_ = true;
    return isReaped_;
}

CommandResult Command::wait() {
    while (!isReaped_) isReaped_ = waitpid(process_, &status_, 0) == process_ || errno != EINTR;
    CommandResult result;
    if (WIFSIGNALED(status_)) result.signal = WTERMSIG(status_);
    if (WIFEXITED(status_)) result.exitStatus = WEXITSTATUS(status_);
    result.output = readFile(output_);
    result.error = readFile(error_);
    return result;
}

CommandResult run(Words words) { return Command(std::move(words)).wait(); }

CommandResult corvex(Words words) {
    words.insert(words.begin(), corvex::test::toolPath);
    return run(std::move(words));
}

std::string runOrFail(Words words) {
    std::string shown;
    for (const std::string& word : words) shown += word + " ";
    const CommandResult result = run(std::move(words));
    EXPECT_EQ(result.exitStatus, 0) << shown << "\n" << result.error;
    return result.output;
}

bool eventually(const std::function<bool()>& holds) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (!holds()) {
        if (std::chrono::steady_clock::now() > deadline) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return true;
}

TemporaryDirectory::TemporaryDirectory(const std::string& parent) {
    path_ = (parent.empty() ? ::testing::TempDir() : parent + "/") + "corvex-test-XXXXXX";
    if (mkdtemp(path_.data()) == nullptr) ADD_FAILURE() << path_ << ": " << std::strerror(errno);
}

TemporaryDirectory::~TemporaryDirectory() { std::filesystem::remove_all(path_); }

Words TemporaryDirectory::entries() const {
    Words names;
    for (const auto& entry : std::filesystem::directory_iterator(path_)) names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    return names;
}

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

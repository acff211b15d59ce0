#include <tools/corvex/host/WorkerProcess.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <mutex>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <tools/corvex/ToolError.h>

namespace corvex::tool {
namespace {

/// The running workers; 0 is a free place.
std::array<std::atomic<pid_t>, WorkerProcess::mostAtOnce> running{};
std::atomic<bool> wasStopped{false};
static_assert(std::atomic<pid_t>::is_always_lock_free && std::atomic<bool>::is_always_lock_free);

void handOnToWorkers(int signal) {
    const int problem = errno;
    wasStopped.store(true);
    for (const auto& place : running) {
        if (const pid_t worker = place.load(); worker > 0) kill(worker, signal);
    }
    errno = problem;
}

void setSignalHandling(void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    sigemptyset(&action.sa_mask);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction before {};
        sigaction(signal, nullptr, &before);
        if (before.sa_handler != SIG_IGN) sigaction(signal, &action, nullptr);  // nohup stays nohup
    }
}

/// Signals are handed on from the first worker's start to the last one's end.
class SignalsToWorkers {
public:
    void add() {
        const std::lock_guard lock(mutex_);
        if (count_++ == 0) setSignalHandling(handOnToWorkers);
    }
    void remove() {
        const std::lock_guard lock(mutex_);
        if (--count_ == 0) setSignalHandling(SIG_DFL);
    }

private:
    std::mutex mutex_;
    int count_ = 0;
};
SignalsToWorkers signalsToWorkers;

void noteWorker(pid_t worker) {
    for (auto& place : running) {
        pid_t none = 0;
        if (place.compare_exchange_strong(none, worker)) return;
    }
}

void forgetWorker(pid_t worker) {
    for (auto& place : running) {
        pid_t own = worker;
        if (place.compare_exchange_strong(own, 0)) return;
    }
}

/// What a child's standard streams become. Both ends of the pipes are closed but for those that are taken.
class ChildStreams {
public:
    ChildStreams() {
        const bool hasInput = fcntl(STDIN_FILENO, F_GETFD) >= 0;  // a source may be /dev/stdin
        if (pipe2(output_.data(), O_CLOEXEC) != 0 || pipe2(error_.data(), O_CLOEXEC) != 0) {
            const int problem = errno;
            closeAll();
            throw JobError(std::string("cannot start the worker: ") + std::strerror(problem));
        }
        posix_spawn_file_actions_init(&actions_);
        if (!hasInput) posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_adddup2(&actions_, output_[1], STDOUT_FILENO);
        posix_spawn_file_actions_adddup2(&actions_, error_[1], STDERR_FILENO);
    }
    ~ChildStreams() {
        posix_spawn_file_actions_destroy(&actions_);
        closeAll();
    }
    ChildStreams(const ChildStreams&) = delete;
    ChildStreams& operator=(const ChildStreams&) = delete;

    [[nodiscard]] const posix_spawn_file_actions_t* actions() const noexcept { return &actions_; }
    [[nodiscard]] int takeOutput() noexcept { return std::exchange(output_[0], -1); }
    [[nodiscard]] int takeError() noexcept { return std::exchange(error_[0], -1); }

private:
    void closeAll() noexcept {
        for (const int end : {output_[0], output_[1], error_[0], error_[1]}) {
            if (end >= 0) close(end);
        }
    }

    std::array<int, 2> output_{-1, -1};
    std::array<int, 2> error_{-1, -1};
    posix_spawn_file_actions_t actions_{};
};

/// Gathers bytes and hands on whole lines.
class LineReader {
public:
    LineReader(int descriptor, const WorkerProcess::LineHandler& handler)
        : descriptor_(descriptor), handler_(handler) {}

    /// False when the other side has closed.
    bool readSome() {
        std::array<char, 4096> buffer{};
        const ssize_t count = read(descriptor_, buffer.data(), buffer.size());
        if (count < 0 && (errno == EINTR || errno == EAGAIN)) return true;
        if (count <= 0) {
            if (!pending_.empty()) handler_(pending_);
            return false;
        }
        pending_.append(buffer.data(), static_cast<std::size_t>(count));
        for (std::size_t end = pending_.find('\n'); end != std::string::npos; end = pending_.find('\n')) {
            handler_(std::string_view(pending_).substr(0, end));
            pending_.erase(0, end + 1);
        }
        return true;
    }

private:
    int descriptor_;
    const WorkerProcess::LineHandler& handler_;
    std::string pending_;
};

}  // namespace

WorkerProcess::WorkerProcess(const std::vector<std::string>& words) {
    const std::string self = std::filesystem::read_symlink("/proc/self/exe").string();
    std::vector<char*> arguments{const_cast<char*>(self.c_str())};
    for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);

    ChildStreams streams;
    // "/proc/self/exe" itself, so that the worker is this very build even if the file has been replaced meanwhile.
    const int result = posix_spawn(&pid_, "/proc/self/exe", streams.actions(), nullptr, arguments.data(), environ);
    if (result != 0) throw JobError("cannot start the worker '" + self + "': " + std::strerror(result));
    output_ = streams.takeOutput();
    error_ = streams.takeError();
    signalsToWorkers.add();
    noteWorker(pid_);
    if (wasStopped.load()) kill(pid_, SIGTERM);  // the signal came before it was noted
}

bool WorkerProcess::stopWasRequested() noexcept { return wasStopped.load(); }

WorkerProcess::~WorkerProcess() {
    if (pid_ > 0) forgetWorker(pid_);
    signalsToWorkers.remove();
    close(output_);
    close(error_);
    if (pid_ > 0) {  // nobody waited: an exception is on its way
        kill(pid_, SIGTERM);
        waitpid(pid_, nullptr, 0);
    }
}

WorkerEnd WorkerProcess::wait(const LineHandler& onOutputLine, const LineHandler& onErrorLine) {
    LineReader readers[] = {{output_, onOutputLine}, {error_, onErrorLine}};
    pollfd entries[] = {{output_, POLLIN, 0}, {error_, POLLIN, 0}};
    while (entries[0].fd >= 0 || entries[1].fd >= 0) {
        if (poll(entries, 2, -1) < 0) continue;  // a signal, which its handler has handed on
        for (std::size_t i = 0; i < 2; ++i) {
            if (entries[i].fd >= 0 && entries[i].revents != 0 && !readers[i].readSome()) entries[i].fd = -1;
        }
    }
    siginfo_t ended{};
    while (waitid(P_PID, static_cast<id_t>(pid_), &ended, WEXITED | WNOWAIT) < 0 && errno == EINTR) {}
    forgetWorker(pid_);  // while its number is still its own
    int status = 0;
    while (waitpid(pid_, &status, 0) < 0 && errno == EINTR) {}
    pid_ = -1;
    if (WIFSIGNALED(status)) return {0, WTERMSIG(status)};
    return {WEXITSTATUS(status), 0};
}

}  // namespace corvex::tool

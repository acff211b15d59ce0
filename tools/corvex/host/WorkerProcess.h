#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include <sys/types.h>

namespace corvex::tool {

/// How a worker ended: by its exit status, or by a signal.
struct WorkerEnd {
    int exitStatus = 0;
    int signal = 0;  ///< 0: it ended by itself.
};

/// A child that runs this same executable. Several may run at once, each waited for by a thread of its own.
class WorkerProcess {
public:
    static constexpr std::size_t mostAtOnce = 64;

    /// Starts it with `words` as its arguments and nothing to read. While any lives, SIGINT, SIGTERM and SIGHUP to this
    /// process, unless ignored, are handed to all of them as SIGTERM. Throws JobError.
    explicit WorkerProcess(const std::vector<std::string>& words);
    ~WorkerProcess();
    WorkerProcess(const WorkerProcess&) = delete;
    WorkerProcess& operator=(const WorkerProcess&) = delete;

    /// -1 after wait().
    [[nodiscard]] pid_t processIdentifier() const noexcept { return pid_; }

    /// Whether a signal has been handed on: nothing more is to be started.
    [[nodiscard]] static bool stopWasRequested() noexcept;

    using LineHandler = std::function<void(std::string_view line)>;
    /// Hands on each line of its standard output and standard error until both close, then waits for its end.
    WorkerEnd wait(const LineHandler& onOutputLine, const LineHandler& onErrorLine);

private:
    pid_t pid_ = -1;
    int output_ = -1;
    int error_ = -1;
};

}  // namespace corvex::tool

#include <tools/corvex/worker/StopRequest.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <string>
#include <thread>

#include <poll.h>
#include <unistd.h>

extern "C" {
#include <sys/pidfd.h>  // glibc 2.36 forgets to say so itself
}

#include <tools/corvex/ToolError.h>

namespace corvex::tool {
namespace {

std::atomic<StopReason> reason{StopReason::none};
std::atomic<int> stopSignal{0};
static_assert(std::atomic<int>::is_always_lock_free && std::atomic<StopReason>::is_always_lock_free);

void rememberSignal(int signal) {
    if (reason.load() != StopReason::none) return;
    stopSignal.store(signal);
    reason.store(StopReason::signal);
}

void watchParent(pid_t parentPid) {
    const int parent = pidfd_open(parentPid, 0);
    if (parent < 0) {
        throw JobError("-parentPid " + std::to_string(parentPid) + ": " + std::strerror(errno) +
                       "; expected the process that started this worker");
    }
    // Detached: it sleeps until the parent ends, or until this process does.
    std::thread([parent, worker = pthread_self()] {
        pollfd entry{parent, POLLIN, 0};
        while (poll(&entry, 1, -1) < 0 && errno == EINTR) {}
        reason.store(StopReason::parentGone);
        close(parent);
        // The worker may wait for bytes of a pipe that never come: a signal interrupts that, and one that arrives just
        // before the wait is not the last.
        for (;;) {
            pthread_kill(worker, SIGTERM);  // NOLINT(bugprone-bad-signal-to-kill-thread): it has a handler
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
        }
    }).detach();
}

}  // namespace

void watchForStopRequests(pid_t parentPid) {
    struct sigaction action {};
    action.sa_handler = rememberSignal;
    sigemptyset(&action.sa_mask);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction before {};
        sigaction(signal, nullptr, &before);
        if (before.sa_handler != SIG_IGN || signal == SIGTERM)
            sigaction(signal, &action, nullptr);  // nohup stays nohup
    }
    std::signal(SIGXFSZ, SIG_IGN);
    if (parentPid > 0) watchParent(parentPid);
}

StopReason stopReason() noexcept { return reason.load(std::memory_order_relaxed); }

void throwIfStopRequested() {
    switch (stopReason()) {
        case StopReason::none: return;
        case StopReason::signal:
            throw JobError(std::string("stopped by signal ") + std::to_string(stopSignal.load()) + " (" +
                           strsignal(stopSignal.load()) + ")");
        case StopReason::parentGone: throw JobError("stopped: the process that started this worker has ended");
    }
}

}  // namespace corvex::tool

#pragma once

#include <condition_variable>
#include <mutex>

#include <Corvex/platform/LeveledWorkQueue.h>

namespace corvex::inline v0 {
namespace detail {

/// The threads on which dispatch queues run their work unless they are given an executor. Their work may block, so there
/// are as many as it takes, up to a limit: one is added when work waits and no other thread is free, and ends when it has
/// had nothing to do for some seconds. What runs here sees the default executor as the current one.
class DispatchThreads final : public Executor {
public:
    /// Made on first use and never destroyed, as its threads may still work at exit.
    static DispatchThreads& shared();

    void post(WorkNode& node) noexcept override;

private:
    DispatchThreads() = default;
    void work() noexcept;
    /// Has another thread look at the queue, unless one is about to. Releases the lock.
    void wakeOne(std::unique_lock<std::mutex>& lock) noexcept;

    std::mutex mutex_;
    std::condition_variable changed_;
    LeveledWorkQueue queue_;
    unsigned threadCount_ = 0, sleepingCount_ = 0;
    bool isWaking_ = false;  ///< A thread has been woken or started and has not looked at the queue yet.
};

}  // namespace detail
}  // namespace corvex::inline v0

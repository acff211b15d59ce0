#pragma once

#include <atomic>

#include <oneapi/tbb/task_arena.h>

#include <Corvex/platform/ShortMutex.h>
#include <Corvex/platform/WorkQueue.h>

namespace corvex::inline v0 {

/// Runs work on the threads of a oneTBB arena, beside its own tasks. Work starts in the order in which it was posted.
/// The arena outlives this, and this all work posted to it; its end waits for posts that are still on their way out when
/// their work has already run. Costs nothing unless it is included; oneTBB is the host's to provide.
class TbbExecutor final : public Executor {
public:
    /// Of any concurrency; an arena of one runs the work one piece at a time.
    explicit TbbExecutor(oneapi::tbb::task_arena& arena) noexcept : arena_(arena) {}

    /// Waits for the few instructions that a post still needs on another thread.
    ~TbbExecutor() override {
        while (const int count = posting_.load(std::memory_order_acquire))
            posting_.wait(count, std::memory_order_acquire);
    }

    /// oneTBB allocates for each piece of work; where there is no memory left, the process ends.
    void post(WorkNode& node) noexcept override {
        posting_.fetch_add(1, std::memory_order_relaxed);
        {
            const ShortLock lock(mutex_);
            queue_.append(node);
        }
        arena_.enqueue([this] { runOldest(); });  // an arena promises no order, so its tasks only say how many to run
        if (posting_.fetch_sub(1, std::memory_order_release) == 1) posting_.notify_all();
    }

private:
    /// Each task of the arena runs one piece, not necessarily the one that it was enqueued with.
    void runOldest() noexcept {
        ShortLock lock(mutex_);
        WorkNode& node = *queue_.takeFirst();
        lock.unlock();
        ExecutorScope(*this).run(node);
    }

    oneapi::tbb::task_arena& arena_;
    ShortMutex mutex_;
    /// As much as the arena has tasks of this that have not begun.
    WorkQueue queue_;
    /// Posts that still touch this.
    std::atomic<int> posting_{0};
};

}  // namespace corvex::inline v0

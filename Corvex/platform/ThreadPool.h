#pragma once

#include <atomic>
#include <thread>
#include <vector>

#include <Corvex/platform/LeveledWorkQueue.h>
#include <Corvex/platform/ShortMutex.h>

namespace corvex::inline v0 {

/// Threads that share one queue for each priority: the highest goes first, each queue in order of arrival.
/// An idle pool uses no processor time. A thread that finds more work than its own wakes the next one.
class CORVEX_EXPORT ThreadPool final : public Executor {
public:
    /// 0 takes as many threads as there are processors. Fewer where the system gives no more; std::system_error if none.
    explicit ThreadPool(unsigned threadCount = 0);
    /// join().
    ~ThreadPool() override;

    void post(WorkNode& node) noexcept override;

    /// Runs what is posted, also what that posts, then ends the threads. Work that sleeps or waits elsewhere is not
    /// waited for, and posting later stops the process. Not from the pool's own threads.
    void join() noexcept;

    [[nodiscard]] unsigned threadCount() const noexcept { return static_cast<unsigned>(threads_.size()); }

private:
    void work() noexcept;
    bool claimWake() noexcept;

    ShortMutex mutex_;
    LeveledWorkQueue queue_;
    unsigned sleepingCount_ = 0;
    bool isWaking_ = false;  ///< A thread has been woken and has not looked at the queues yet; one at a time.
    bool isJoining_ = false, hasEnded_ = false;
    std::atomic<int> wakeCount_{0};  ///< What the threads sleep on; changed under the mutex.
    std::vector<std::thread> threads_;
};

}  // namespace corvex::inline v0

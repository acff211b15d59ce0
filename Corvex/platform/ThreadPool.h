#pragma once

#include <cstdint>

#include <Corvex/platform/Atomic.h>
#include <Corvex/platform/LeveledWorkQueue.h>
#include <Corvex/platform/SharedState.h>
#include <Corvex/platform/ShortMutex.h>

namespace corvex::inline v0 {

/// Threads that share one queue for each priority: the highest goes first, each queue in order of arrival.
/// An idle pool uses no processor time: a new thread looks for work for some 35 us, and then threads sleep until they are
/// woken. A thread that finds more work than its own wakes the next one.
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

    /// 0 once they have been joined.
    [[nodiscard]] unsigned threadCount() const noexcept { return threadCount_; }

private:
    static constexpr int fewestPauses = 64, mostPauses = 2048;  ///< Of about 27 ns.
    /// What a thread remembers of the work that it has done since it last stayed away.
    struct Stint {
        TimePoint start;
        std::uint32_t progress = 0;
        int remaining = 0;
        int pauses = mostPauses;
        bool isFirst = true;
    };

    void work() noexcept;
    void beginStint(Stint& stint) const noexcept;
    void sleep() noexcept;
    bool claimWake() noexcept;
    /// Takes the mutex again after a piece of work.
    void lockAfterWork(Stint& stint) noexcept;
    /// Where pieces of work are so short that sharing them costs more than it gains, because each and what it touches
    /// moves from one core to another, a thread stays away for longer and longer: as long as the others, the one that
    /// posts the work above all, get on faster without it. Whether they do it finds out now and then. Under the mutex.
    void stayAway(Stint& stint) noexcept;

    alignas(64) ShortMutex mutex_;  // on one line with most of what posting and taking touch
    std::uint32_t progress_ = 0;    ///< Pieces of work taken, and posted by threads of this pool.
    const void* home_ = nullptr;    ///< The thread of this pool that posted last.
    LeveledWorkQueue queue_;
    unsigned sleepingCount_ = 0;
    bool isWaking_ = false;  ///< A thread has been woken and has not looked at the queues yet; one at a time.
    bool isJoining_ = false, hasEnded_ = false;
    Atomic<int> wakeCount_{0};  ///< What the threads sleep on; changed under the mutex.
    struct Threads;
    Shared<Threads> threads_;
    unsigned threadCount_ = 0;
};

}  // namespace corvex::inline v0

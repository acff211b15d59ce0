#pragma once

#include <cstddef>

#include <Corvex/platform/ShortMutex.h>
#include <Corvex/platform/TimerHeap.h>
#include <Corvex/platform/WorkQueue.h>

namespace corvex::inline v0 {

/// Runs work only when told to, strictly in order of arrival, with a clock that moves only when told to: for tests, and
/// for hosts that poll. Posting from any thread; running from one at a time.
class CORVEX_EXPORT ManualExecutor final : public Executor {
public:
    ManualExecutor() noexcept = default;
    /// With work posted or sleeping stops the process.
    ~ManualExecutor() override;

    /// From any thread; wakes nobody, as nobody waits.
    void post(WorkNode& node) noexcept override;
    /// The clock begins at the epoch of TimePoint.
    [[nodiscard]] Timers& timers() const noexcept override { return clock_; }

    /// Runs the oldest piece of work, on this thread; false if there is none. Priorities do not count.
    bool runOne() noexcept;
    /// Runs until nothing is posted; gives the number of pieces that ran.
    std::size_t runAll() noexcept;
    /// Runs everything that becomes due until `duration` from now, each piece at its time; gives the number. The
    /// clock stops just before TimePoint::max(), which is never.
    std::size_t advance(std::chrono::nanoseconds duration) noexcept;

    [[nodiscard]] bool isIdle() const noexcept;  ///< Nothing is posted; work may be asleep.

private:
    class Clock final : public Timers {
    public:
        [[nodiscard]] TimePoint now() const noexcept override;
        void add(TimerNode& node, TimePoint time) noexcept override;
        bool cancel(TimerNode& node) noexcept override;
        [[nodiscard]] bool isEmpty() const noexcept;
        /// Moves to the earliest deadline up to `end` and posts what is due; if there is none, to `end` and false.
        bool moveTowards(TimePoint end) noexcept;

    private:
        mutable ShortMutex mutex_;
        TimerHeap heap_;
        TimePoint now_;
    };

    mutable Clock clock_;
    mutable ShortMutex mutex_;
    WorkQueue queue_;
};

}  // namespace corvex::inline v0

#pragma once

#include <condition_variable>
#include <mutex>

#include <Corvex/platform/TimerHeap.h>

namespace corvex::inline v0 {

/// Posts timer nodes to their executors when they are due, on the steady clock. One for the process, started with the
/// first timer and left running at exit; it sleeps until the earliest deadline.
/// Threads  Any. Adding a deadline that is not the earliest does not wake it.
class TimerThread final : public Timers {
public:
    static TimerThread& shared();  ///< Starts it at the first call.

    [[nodiscard]] TimePoint now() const noexcept override;
    void add(TimerNode& node, TimePoint time) noexcept override;
    bool cancel(TimerNode& node) noexcept override;

private:
    TimerThread() = default;
    /// Posts outside of the lock, many at a time and not all at once, so that sleepers do not wait long for it.
    [[noreturn]] void work() noexcept;

    std::mutex mutex_;
    std::condition_variable changed_;
    TimerHeap heap_;
    TimePoint wakeTime_ = TimePoint::min();  ///< Until when the thread sleeps; the past while it is awake.
};

}  // namespace corvex::inline v0

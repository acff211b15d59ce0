#pragma once

#include <Corvex/platform/TaskContext.h>

namespace corvex::inline v0 {

namespace detail {

/// `duration` in nanoseconds; the nearest end of their range (292 years) if it lies beyond.
template <class Count, class Period>
[[nodiscard]] constexpr std::chrono::nanoseconds saturatedNanoseconds(
    std::chrono::duration<Count, Period> duration) noexcept {
    using Wide = std::chrono::duration<long double, std::nano>;
    constexpr auto limit = std::chrono::nanoseconds::max();
    if (Wide(duration) >= Wide(limit)) return limit;
    if (Wide(duration) <= Wide(-limit)) return -limit;
    return std::chrono::duration_cast<std::chrono::nanoseconds>(duration);
}

}  // namespace detail

/// `start` + `duration`; never (TimePoint::max()) where the clock cannot count so far, and TimePoint::min() below its
/// range.
[[nodiscard]] constexpr TimePoint saturatedAdd(TimePoint start, std::chrono::nanoseconds duration) noexcept {
    std::int64_t sum{};
    const bool overflows = __builtin_add_overflow(start.time_since_epoch().count(), duration.count(), &sum);
    if (!overflows) return TimePoint(TimePoint::duration(sum));
    return duration.count() > 0 ? TimePoint::max() : TimePoint::min();
}

/// Suspends until a time of the current executor's clock. Throws CancellationError when the task is cancelled before,
/// at once where it is cancelled already. The timer lies in the coroutine's frame: sleeping allocates nothing and holds
/// no thread.
class CORVEX_EXPORT SleepAwaiter : public TimerNode {
public:
    /// Until a time, or for a while counted from the suspension. sleepFor() and sleepUntil() say it more shortly.
    explicit SleepAwaiter(TimePoint time) noexcept;
    explicit SleepAwaiter(std::chrono::nanoseconds duration) noexcept;
    ~SleepAwaiter();

    [[nodiscard]] bool await_ready() const noexcept { return false; }
    /// On whatever executor is current then.
    template <class Promise>
    void await_suspend(std::coroutine_handle<Promise> coroutine) noexcept {
        start(coroutine, contextOf(coroutine));
    }
    /// On the executor on which the coroutine was suspended.
    void await_resume();

private:
    /// Wakes the sleeper early.
    class CancelCallback : public CancellationCallback {
    public:
        explicit CancelCallback(SleepAwaiter& sleeper) noexcept;

    private:
        SleepAwaiter& sleeper_;
    };
    SleepAwaiter(TimePoint time, std::chrono::nanoseconds duration) noexcept;
    void start(std::coroutine_handle<> coroutine, const TaskContext& context) noexcept;

    std::coroutine_handle<> coroutine_;  ///< While asleep.
    const TaskContext* context_ = nullptr;
    Executor* home_ = nullptr;
    TimePoint time_;  ///< The earlier of this and `duration_` from the suspension.
    std::chrono::nanoseconds duration_;
    /// Armed while asleep.
    CancelCallback cancelCallback_;
};

/// Suspends for at least `duration`; one of 0 or less goes to the end of the executor's queue. Not a pause of the
/// thread: other work runs meanwhile.
template <class Count, class Period>
[[nodiscard]] SleepAwaiter sleepFor(std::chrono::duration<Count, Period> duration) noexcept {
    return SleepAwaiter(detail::saturatedNanoseconds(duration));
}
/// As sleepFor(); a time that is past goes to the end of the executor's queue.
[[nodiscard]] inline SleepAwaiter sleepUntil(TimePoint time) noexcept { return SleepAwaiter(time); }

}  // namespace corvex::inline v0

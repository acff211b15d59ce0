#pragma once

#include <cstdint>
#include <optional>

#include <Corvex/concurrency/TaskTimeoutLog.h>
#include <Corvex/platform/Atomic.h>
#include <Corvex/platform/Task.h>

namespace corvex::inline v0 {
namespace detail {

/// What a number of seconds is in nanoseconds; beyond what those can count, as many as they can.
[[nodiscard]] constexpr std::chrono::nanoseconds saturatedSeconds(std::uint64_t seconds) noexcept {
    constexpr std::int64_t nanosecondsPerSecond = 1'000'000'000;
    constexpr auto limit = std::chrono::nanoseconds::max();
    if (seconds > static_cast<std::uint64_t>(limit.count() / nanosecondsPerSecond)) return limit;
    return std::chrono::nanoseconds(static_cast<std::int64_t>(seconds) * nanosecondsPerSecond);
}

/// Runs an operation against a timer, awaited once by the coroutine in whose frame it lies. Whichever finishes first
/// asks the other to stop; the coroutine goes on when both have finished. Nothing is allocated. Destroying it while the
/// operation runs stops the process, as the operation still refers to it.
class CORVEX_EXPORT TimeoutRace final : public TaskCompletion {
public:
    /// `log` is referred to, not copied: it lives as long as this.
    TimeoutRace(std::uint64_t seconds, const std::optional<TaskTimeoutLog>& log) noexcept;
    ~TimeoutRace();
    TimeoutRace(const TimeoutRace&) = delete;
    TimeoutRace& operator=(const TimeoutRace&) = delete;

    /// `co_await race.run(task)`. Throws TimeoutError or CancellationError if the timer finished first.
    template <class T>
    class Awaiter {
    public:
        Awaiter(TimeoutRace& race, Task<T>&& operation) noexcept : race_(race), operation_(std::move(operation)) {}
        [[nodiscard]] bool await_ready() const noexcept { return false; }
        template <class Promise>
        void await_suspend(std::coroutine_handle<Promise> coroutine) noexcept {
            race_.waiter_.capture(coroutine);
            coroutine_ = operation_.release();
            race_.start(coroutine_.promise(), coroutine_, coroutine, contextOf(coroutine));
        }
        /// What the operation gives or throws, if it won.
        T await_resume() {
            const Task<T> frame(coroutine_);
            race_.finish();
            return std::move(coroutine_.promise().result()).value();
        }

    private:
        TimeoutRace& race_;
        Task<T> operation_;
        typename Task<T>::Handle coroutine_;
    };
    /// The task runs where the coroutine that awaits this runs, and sees a cancellation of its own, which that of the
    /// coroutine reaches.
    template <class T>
    [[nodiscard]] Awaiter<T> run(Task<T>&& operation) noexcept {
        return Awaiter<T>(*this, std::move(operation));
    }

    /// The operation has ended: ends the timer, unless that has won already.
    void taskFinished(TaskPromiseBase& promise) noexcept override;

private:
    /// Who ended first. With `timer` the awaiting coroutine gets TimeoutError, with `cancellation` CancellationError.
    enum class Winner : std::uint8_t { none, operation, timer, cancellation };
    /// The limit, as a piece of work of its own.
    struct Timer : TimerNode {
        /// Not armed yet.
        explicit Timer(TimeoutRace& owner) noexcept;
        TimeoutRace& race;
    };
    /// What a cancellation calls, and for which race.
    struct Callback : CancellationCallback {
        Callback(TimeoutRace& owner, Run function) noexcept : CancellationCallback(function), race(owner) {}
        TimeoutRace& race;
    };

    /// Starts both. `parent` is the coroutine that awaits.
    void start(TaskPromiseBase& operation, std::coroutine_handle<> coroutine, std::coroutine_handle<> parent,
               const TaskContext& context) noexcept;
    /// The time is over, or cancellation ended it early.
    void timerFinished() noexcept;
    /// True if the operation has not been suspended since it began: the timer is not going to run.
    bool takeTimerBeforeRest() noexcept;
    /// True if nobody has won yet.
    bool win(Winner winner) noexcept;
    /// Notes that so many of the two have finished; true if those were the last.
    bool arrive(int count) noexcept;
    /// Throws if the operation did not win. Nothing of the race is armed any more when it returns.
    void finish();

    const std::uint64_t seconds_;
    const std::optional<TaskTimeoutLog>& log_;
    Suspension waiter_;
    std::coroutine_handle<> parent_;
    /// Where the awaiting coroutine goes on.
    Executor* home_ = nullptr;
    Atomic<Winner> winner_{Winner::none};
    Atomic<int> unfinishedCount_{2};
    CancellationState cancellation_;
    TaskContext context_;
    Timer timer_;
    Callback timerStop_;   ///< Cancellation ends the timer early.
    Callback parentLink_;  ///< The parent's cancellation reaches both. Disarmed first.
};

}  // namespace detail
}  // namespace corvex::inline v0

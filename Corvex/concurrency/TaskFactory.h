#pragma once

#include <cstdint>
#include <optional>
#include <type_traits>
#include <utility>

#include <Corvex/concurrency/TaskControlArguments.h>
#include <Corvex/concurrency/TimeoutError.h>
#include <Corvex/concurrency/TimeoutRace.h>
#include <Corvex/platform/Log.h>
#include <Corvex/platform/Sleep.h>

namespace corvex::inline v0 {

/// Runs operations with a time limit, a bound on how many run at once, or both. An operation is called without
/// arguments and gives a Task; it lives until that has ended.
/// Units    Whole seconds of the executor's clock; more than 64 bits of nanoseconds (292 years) is never.
/// Errors   What the operation throws, TimeoutError, or CancellationError if the awaiting task is cancelled before
///          either.
/// Threads  An operation runs where the task that awaits it runs.
struct TaskFactory {
    /// The type of value that the operation's task gives.
    template <class Operation>
    using ResultOf = typename std::invoke_result_t<Operation&>::Value;

    /// What timeoutTask() gives: a callable whose task never gives a value.
    template <class T>
    class TimeoutTask {
    public:
        TimeoutTask(std::uint64_t seconds, std::optional<TaskTimeoutLog> log) noexcept
            : seconds_(seconds), log_(std::move(log)) {}
        /// Sleeps, logs if there is a log, and throws TimeoutError.
        [[nodiscard]] Task<std::optional<T>> operator()() const { return run(seconds_, log_); }

    private:
        static Task<std::optional<T>> run(std::uint64_t seconds, std::optional<TaskTimeoutLog> log) {
            co_await sleepFor(detail::saturatedSeconds(seconds));
            if (log) logError(log->prefix() + "- " + log->context());
            throw TimeoutError::timedOut(seconds);
            co_return std::nullopt;
        }

        std::uint64_t seconds_;
        std::optional<TaskTimeoutLog> log_;
    };
    /// A callable whose task sleeps so many seconds, writes the log line if there is a `log`, and throws TimeoutError. It
    /// throws CancellationError, without a line, if it is cancelled before.
    template <class T>
    [[nodiscard]] static TimeoutTask<T> timeoutTask(std::uint64_t seconds, std::optional<TaskTimeoutLog> log) {
        return TimeoutTask<T>(seconds, std::move(log));
    }

    /// Runs the operation. When the seconds are over it writes the log line if there is a `log`, asks the operation to
    /// stop, waits until it has ended, and throws TimeoutError. An operation that does not react to cancellation delays
    /// that. With 0 seconds an operation that ends without suspending is in time.
    template <class Operation>
    static Task<ResultOf<Operation>> withTimeout(std::uint64_t seconds, std::optional<TaskTimeoutLog> log,
                                                 Operation operation) {
        detail::TimeoutRace race(seconds, log);
        co_return co_await race.run(operation());
    }

    /// withTimeout() while a slot of the throttle is held, if there is one. The wait for the slot is outside the time
    /// limit; the slot is given back once, however the operation ends.
    template <class Operation>
    static Task<ResultOf<Operation>> withThrottledTimeout(std::optional<TaskSemaphore> throttle,
                                                          std::uint64_t operationTimeout,
                                                          std::optional<TaskTimeoutLog> log, Operation operation) {
        if (throttle) co_await throttle->wait();
        const HeldSlot slot(throttle ? &*throttle : nullptr);
        detail::TimeoutRace race(operationTimeout, log);
        co_return co_await race.run(operation());
    }

    /// withThrottledTimeout() with the throttle and the time limit of `controlArguments`, which are read in this call.
    /// Without any the operation runs as it is.
    template <class Operation>
    static Task<ResultOf<Operation>> withControlledArguments(const TaskControlArguments* controlArguments,
                                                             std::optional<TaskTimeoutLog> log, Operation operation) {
        if (!controlArguments) return runPlain(std::move(operation));
        return withThrottledTimeout(controlArguments->throttle(), controlArguments->operationTimeout(), std::move(log),
                                    std::move(operation));
    }

private:
    /// Gives the slot back at its end, also when the operation throws.
    class HeldSlot {
    public:
        explicit HeldSlot(const TaskSemaphore* semaphore) noexcept : semaphore_(semaphore) {}
        ~HeldSlot() {
            if (semaphore_) semaphore_->signal();
        }
        HeldSlot(const HeldSlot&) = delete;
        HeldSlot& operator=(const HeldSlot&) = delete;

    private:
        const TaskSemaphore* semaphore_;
    };

    template <class Operation>
    static Task<ResultOf<Operation>> runPlain(Operation operation) {
        co_return co_await operation();
    }
};

}  // namespace corvex::inline v0

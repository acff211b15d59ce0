#pragma once

#include <cstdint>

#include <Corvex/platform/Atomic.h>
#include <Corvex/platform/Waiter.h>

namespace corvex::inline v0 {

namespace detail {

/// What wait() gives: takes a slot without a lock if one is free and nobody waits.
class SemaphoreWaiter;

/// `count` is the number of slots taken or, while somebody waits, its complement: then every change takes the mutex.
class CORVEX_EXPORT SemaphoreState final : public SharedState {
public:
    explicit SemaphoreState(std::int64_t ownLimit) noexcept : limit(ownLimit) {}

    [[nodiscard]] bool tryTake() noexcept {
        std::int64_t taken = count_.load(MemoryOrder::relaxed);
        while (taken >= 0 && taken < limit)
            if (count_.compareExchange(taken, taken + 1, MemoryOrder::acquire, MemoryOrder::relaxed)) return true;
        return false;
    }
    /// Also true if there was nothing to give back.
    [[nodiscard]] bool tryGiveBack() noexcept {
        std::int64_t taken = count_.load(MemoryOrder::relaxed);
        while (taken > 0)
            if (count_.compareExchange(taken, taken - 1, MemoryOrder::release, MemoryOrder::relaxed)) return true;
        return taken == 0;
    }
    /// False if there is a slot after all.
    bool enqueue(SemaphoreWaiter& waiter) noexcept;
    /// False if nobody waits any more.
    bool handOver() noexcept;
    [[nodiscard]] std::int64_t taken() const noexcept {
        const std::int64_t count = count_.load(MemoryOrder::relaxed);
        return count < 0 ? ~count : count;
    }

    ShortMutex mutex;
    const std::int64_t limit;

private:
    Atomic<std::int64_t> count_{0};
    WaiterList<SemaphoreWaiter> waiters_;
};

class SemaphoreWaiter final : public Waiter<SemaphoreState> {
public:
    static constexpr const char* operation = "wait()";

    explicit SemaphoreWaiter(SemaphoreState& semaphore) noexcept : semaphore_(semaphore) {}
    [[nodiscard]] bool await_ready() const noexcept { return semaphore_.tryTake(); }
    template <class Promise>
    bool await_suspend(std::coroutine_handle<Promise> coroutine) noexcept {
        capture(coroutine);
        return semaphore_.enqueue(*this);
    }
    void await_resume() noexcept { leave(); }

private:
    friend SemaphoreState;
    SemaphoreState& semaphore_;
};

}  // namespace detail

/// Bounds how many tasks hold something at once; a task that has to wait is suspended. Copies are the same semaphore.
/// Order    Strictly first in, first out: a slot that is given back goes to the oldest waiter, which is posted.
/// Threads  Every function from any thread.
/// Use      Nothing gives a slot back by itself: signal() on every way out. Cancellation does not end a wait, only
///          signal() does. Waiters of a semaphore that nobody owns any more stay suspended.
/// Cost     Without waiters wait() and signal() are one atomic operation each; waiting allocates nothing.
class CORVEX_EXPORT TaskSemaphore {
public:
    /// With a limit of 0 or less every wait() suspends until a signal().
    explicit TaskSemaphore(std::int64_t limit);
    /// Limits beyond 2^63 - 1 count as that.
    [[nodiscard]] static TaskSemaphore withUnsignedLimit(std::uint64_t unsignedLimit);

    /// `co_await semaphore.wait()` takes a slot.
    [[nodiscard]] detail::SemaphoreWaiter wait() const noexcept { return detail::SemaphoreWaiter(*state_); }
    /// Gives a slot back. One too many does nothing: no credit is kept.
    void signal() const noexcept {
        while (!state_->tryGiveBack() && !state_->handOver()) continue;
    }

    /// As given; it never changes.
    [[nodiscard]] std::int64_t limit() const noexcept { return state_->limit; }
    /// The slots that are taken, at this moment.
    [[nodiscard]] std::int64_t activeTasks() const noexcept { return state_->taken(); }

    /// Whether both are the same semaphore.
    friend bool operator==(const TaskSemaphore&, const TaskSemaphore&) noexcept = default;

private:
    Shared<detail::SemaphoreState> state_;
};

}  // namespace corvex::inline v0

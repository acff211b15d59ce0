#pragma once

#include <cstdint>

#include <Corvex/platform/Waiter.h>

namespace corvex::inline v0 {

namespace detail {

class ClosableSemaphoreWaiter;

/// The slots and who waits for one.
class CORVEX_EXPORT ClosableSemaphoreState final : public SharedState {
public:
    explicit ClosableSemaphoreState(std::int64_t ownLimit) noexcept : limit(ownLimit) {}
    /// True if the waiter has to wait, else its payload says what came of it.
    bool take(ClosableSemaphoreWaiter& waiter) noexcept;
    void signal() noexcept;
    void close() noexcept;

    ShortMutex mutex;
    const std::int64_t limit;
    std::int64_t count = 0;
    bool isClosed = false;

private:
    WaiterList<ClosableSemaphoreWaiter> waiters_;
};

/// What wait() gives; its payload is whether a slot was taken.
class ClosableSemaphoreWaiter final : public Waiter<ClosableSemaphoreState, bool> {
public:
    static constexpr const char* operation = "wait()";

    explicit ClosableSemaphoreWaiter(ClosableSemaphoreState& semaphore) noexcept
        : Waiter(false), semaphore_(semaphore) {}
    [[nodiscard]] bool await_ready() const noexcept { return false; }
    template <class Promise>
    bool await_suspend(std::coroutine_handle<Promise> coroutine) noexcept {
        capture(coroutine);
        return semaphore_.take(*this);
    }
    [[nodiscard]] bool await_resume() noexcept {
        leave();
        return payload;
    }

private:
    friend ClosableSemaphoreState;
    ClosableSemaphoreState& semaphore_;
};

}  // namespace detail

/// A TaskSemaphore that can be closed, which frees all who wait. Copies are the same semaphore. For the end of a
/// pipeline: whoever gets false gives up without touching what the slots stand for.
/// Order    Strictly first in, first out; waiters are posted, also those that closing turns away.
/// Threads  Every function from any thread.
class CORVEX_EXPORT ClosableTaskSemaphore {
public:
    /// A negative limit stops the process. With a limit of 0 every wait() suspends until signal() or close().
    explicit ClosableTaskSemaphore(std::int64_t limit);
    /// Limits beyond 2^63 - 1 count as that.
    [[nodiscard]] static ClosableTaskSemaphore withUnsignedLimit(std::uint64_t unsignedLimit);

    /// `co_await semaphore.wait()`: true with a slot taken, false if the semaphore is closed, or becomes so meanwhile.
    [[nodiscard]] detail::ClosableSemaphoreWaiter wait() const noexcept {
        return detail::ClosableSemaphoreWaiter(*state_);
    }
    /// Gives a slot back. One too many does nothing, nor does any once it is closed.
    void signal() const noexcept { state_->signal(); }
    /// For good. What still holds a slot may go on, but is counted no more.
    void close() const noexcept { state_->close(); }

    /// How many slots there are; it never changes.
    [[nodiscard]] std::int64_t limit() const noexcept { return state_->limit; }
    /// The slots that are taken; 0 once it is closed.
    [[nodiscard]] std::int64_t activeTasks() const noexcept;
    [[nodiscard]] bool closed() const noexcept;  ///< Since close().

private:
    Shared<detail::ClosableSemaphoreState> state_;
};

}  // namespace corvex::inline v0

#pragma once

#include <cstdint>

#include <Corvex/platform/Waiter.h>

namespace corvex::inline v0 {

namespace detail {

class GroupWaiter;

/// The count, and who waits for it to fall to 0.
class CORVEX_EXPORT GroupState final : public SharedState {
public:
    void enter() noexcept;
    void leave() noexcept;
    /// False if there is nothing to wait for.
    bool enqueue(GroupWaiter& waiter) noexcept;

    ShortMutex mutex;

private:
    std::int64_t count_ = 0;
    WaiterList<GroupWaiter> waiters_;
};

/// What wait() gives; it may be awaited once.
class GroupWaiter final : public Waiter<GroupState> {
public:
    static constexpr const char* operation = "wait()";

    explicit GroupWaiter(GroupState& group) noexcept : group_(group) {}
    [[nodiscard]] bool await_ready() const noexcept { return false; }
    template <class Promise>
    bool await_suspend(std::coroutine_handle<Promise> coroutine) noexcept {
        capture(coroutine);
        return group_.enqueue(*this);
    }
    void await_resume() noexcept { leave(); }

private:
    friend GroupState;
    GroupState& group_;
};

}  // namespace detail

/// Counts work that has entered and not left yet, and lets tasks wait until all of it has left. Copies are the same
/// group. Leaving too often is not reported: the count goes below 0 and comes back by entering, which frees nobody.
/// Order    Waiters are posted in the order of their arrival when the count falls from 1 to 0.
/// Threads  Every function from any thread. A count beyond 64 bits stops the process.
class CORVEX_EXPORT AsyncTaskGroup {
public:
    AsyncTaskGroup() : state_(Shared<detail::GroupState>::make()) {}

    /// One more; never waits. Enter before the work is posted: if the work itself does, wait() may find the count at 0
    /// before it has begun.
    void enter() const noexcept { state_->enter(); }
    /// One less; the one that brings the count from 1 to 0 posts those that wait.
    void leave() const noexcept { state_->leave(); }
    /// `co_await group.wait()`; does not suspend while the count is 0.
    [[nodiscard]] detail::GroupWaiter wait() const noexcept { return detail::GroupWaiter(*state_); }

private:
    Shared<detail::GroupState> state_;
};

}  // namespace corvex::inline v0

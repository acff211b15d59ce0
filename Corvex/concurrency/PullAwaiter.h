#pragma once

#include <optional>
#include <utility>

#include <Corvex/concurrency/DataCoordinationError.h>
#include <Corvex/platform/Waiter.h>

namespace corvex::inline v0 {

namespace detail {

/// A consumer of a conduit whose `State::next(consumer)` says whether it has to wait. Else, or when it is posted, its
/// payload is the item or, at the end, empty. A `State::tryNext(consumer)` may give it an item before it is suspended.
template <class State>
class PullAwaiter final : public Waiter<State, std::optional<typename State::Supplied>> {
public:
    /// What a frame that is destroyed too late is said to wait in; see Waiter.
    static constexpr const char* operation = "next()";

    explicit PullAwaiter(State& conduit) noexcept : conduit_(conduit) {}
    /// The quick way, for conduits that have one: the coroutine is not suspended then.
    [[nodiscard]] bool await_ready() noexcept {
        if constexpr (requires { conduit_.tryNext(*this); }) return conduit_.tryNext(*this);
        return false;
    }
    /// False if the payload is there after all.
    template <class Promise>
    bool await_suspend(std::coroutine_handle<Promise> coroutine) noexcept {
        this->capture(coroutine);
        return conduit_.next(*this);
    }
    /// The item, or nothing at the end. Moved out: await it once.
    std::optional<typename State::Supplied> await_resume() noexcept {
        this->leave();
        return std::move(this->payload);
    }

private:
    /// The conduit writes the payload.
    friend State;
    State& conduit_;
};

/// A producer of a conduit that takes whatever comes: `State::add(value)` returns false if the conduit is closed. It
/// never suspends, and adds when it is awaited, not when it is made. It refers to the conduit: await it in the
/// expression that makes it, while a handle of the conduit lives.
template <class State>
class PushAwaiter {
public:
    /// Takes the value over; it is destroyed with the awaiter if the conduit refuses it.
    PushAwaiter(State& conduit, typename State::Consumed value) noexcept
        : conduit_(conduit), value_(std::move(value)) {}
    PushAwaiter(const PushAwaiter&) = delete;
    PushAwaiter& operator=(const PushAwaiter&) = delete;
    [[nodiscard]] bool await_ready() const noexcept { return true; }
    void await_suspend(std::coroutine_handle<>) const noexcept {}
    /// Adds; throws DataCoordinationError if the conduit is closed.
    void await_resume() {
        if (!conduit_.add(value_)) throw DataCoordinationError(DataCoordinationError::Case::addToClosedConduitError);
    }

private:
    State& conduit_;
    typename State::Consumed value_;
};

}  // namespace detail

}  // namespace corvex::inline v0

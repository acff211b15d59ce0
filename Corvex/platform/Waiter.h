#pragma once

#include <cstddef>
#include <type_traits>
#include <utility>

#include <Corvex/platform/Export.h>
#include <Corvex/platform/SharedState.h>
#include <Corvex/platform/ShortMutex.h>
#include <Corvex/platform/TaskContext.h>

namespace corvex::inline v0 {

class WaiterLinks;

namespace detail {

/// The part of WaiterList that does not depend on the waiters' type: a doubly linked list through the waiters. O(1)
/// each.
class WaiterChain {
public:
    WaiterChain() noexcept = default;
    WaiterChain(const WaiterChain&) = delete;
    WaiterChain& operator=(const WaiterChain&) = delete;

    [[nodiscard]] bool isEmpty() const noexcept { return first == nullptr; }
    /// At the end. The waiter is in no list.
    void append(WaiterLinks& waiter) noexcept;
    /// From anywhere in it. The waiter is in this one.
    void remove(WaiterLinks& waiter) noexcept;

    /// Null, or the oldest and the newest.
    WaiterLinks *first = nullptr, *last = nullptr;
    std::size_t count = 0;
};

}  // namespace detail

/// A suspended coroutine that is linked into a list of those that wait for the same thing, in at most one at a time.
class WaiterLinks : public Suspension {
private:
    friend detail::WaiterChain;
    template <class State, class Payload>
    friend class Waiter;
    template <class WaiterType>
    friend class WaiterList;

    [[nodiscard]] WaiterLinks* following() const noexcept { return static_cast<WaiterLinks*>(next); }
    /// Names the operation and what its caller did wrong.
    [[noreturn]] CORVEX_EXPORT void stopForLateDestruction() const noexcept;

    WaiterLinks* previous_ = nullptr;
    /// While linked.
    detail::WaiterChain* chain_ = nullptr;
    /// For the message below; part of the program.
    const char* operation_ = "";
};

inline void detail::WaiterChain::append(WaiterLinks& waiter) noexcept {
    waiter.chain_ = this;
    waiter.next = nullptr;
    waiter.previous_ = last;
    if (last) {
        last->next = &waiter;
    } else {
        first = &waiter;
    }
    last = &waiter;
    ++count;
}

inline void detail::WaiterChain::remove(WaiterLinks& waiter) noexcept {
    WaiterLinks* const following = waiter.following();
    if (waiter.previous_) {
        waiter.previous_->next = following;
    } else {
        first = following;
    }
    (following ? following->previous_ : last) = waiter.previous_;
    waiter.chain_ = nullptr;
    --count;
}

/// Waiters in order of arrival. Guarded by the mutex of the state that it belongs to. Allocates nothing, as the
/// waiters lie in their coroutines' frames.
template <class WaiterType>
class WaiterList {
public:
    [[nodiscard]] bool isEmpty() const noexcept { return chain_.isEmpty(); }
    [[nodiscard]] std::size_t count() const noexcept { return chain_.count; }
    /// The oldest waiter, nullptr if empty.
    [[nodiscard]] const WaiterType* first() const noexcept { return static_cast<const WaiterType*>(chain_.first); }
    /// At the end of the list; the waiter is in none. O(1).
    void append(WaiterType& waiter) noexcept { chain_.append(waiter); }
    /// The oldest waiter, nullptr if empty. Fill its payload under the lock, then post() it outside: from then on its
    /// frame may be gone.
    WaiterType* takeFirst() noexcept {
        WaiterLinks* const waiter = chain_.first;
        if (waiter) chain_.remove(*waiter);
        return static_cast<WaiterType*>(waiter);
    }
    /// Calls `isTaken(waiter)` for each, oldest first, and takes those for which it returns true, after which it calls
    /// `receive(waiter)`. O(n), under the lock: keep both short.
    template <class Filter, class Receiver>
    void takeWhere(Filter&& isTaken, Receiver&& receive) {
        for (WaiterLinks* waiter = chain_.first; waiter;) {
            WaiterLinks* const following = waiter->following();
            auto& candidate = static_cast<WaiterType&>(*waiter);
            if (isTaken(std::as_const(candidate))) {
                chain_.remove(*waiter);
                receive(candidate);
            }
            waiter = following;
        }
    }

private:
    detail::WaiterChain chain_;
};

/// Waiters that have been taken from their lists and wait for the lock to be released. So no executor, which is a
/// host's code, is entered under a lock of the library's.
class ReleasedWaiters {
public:
    ReleasedWaiters() noexcept = default;
    /// Posts them, oldest first: declare it before the lock.
    ~ReleasedWaiters() {
        while (first_) static_cast<Suspension*>(std::exchange(first_, first_->next))->post();
    }
    ReleasedWaiters(const ReleasedWaiters&) = delete;
    ReleasedWaiters& operator=(const ReleasedWaiters&) = delete;

    /// Behind those that are there. Under the lock or not: it is the caller's own list.
    void append(Suspension& waiter) noexcept {
        waiter.next = nullptr;
        (first_ ? last_->next : first_) = &waiter;
        last_ = &waiter;
    }

private:
    WorkNode *first_ = nullptr, *last_ = nullptr;
};

/// What no payload looks like.
struct NoPayload {};

/// The base of a primitive's awaiters: a waiter in the coroutine's frame. `State` derives from SharedState and has a
/// ShortMutex `mutex`; it is kept alive from suspension to resumption.
/// Use      In await_suspend() call capture(), then under the lock either find the thing there and return false, or
///          enqueue(). The other side takes the waiter under the lock, writes the payload and posts it outside.
///          await_resume() begins with leave().
/// Errors   Destroying the frame while it waits unlinks it; after its resumption has been posted, that stops the
///          process, in the name of the waiter type's `operation`.
template <class State, class Payload = NoPayload>
class Waiter : public WaiterLinks {
public:
    /// What the other side writes before it posts, under the lock; read it in await_resume().
    Payload payload;

protected:
    Waiter() noexcept(std::is_nothrow_default_constructible_v<Payload>) = default;
    explicit Waiter(Payload initial) noexcept : payload(std::move(initial)) {}
    ~Waiter() {
        if (state_) [[unlikely]]
            abandon();
    }

    /// In await_suspend() under the state's lock, after capture(). When the lock is released the frame may be gone:
    /// nothing of it may be touched then.
    template <class WaiterType>
    void enqueue(State& state, WaiterList<WaiterType>& list) noexcept {
        if constexpr (requires { WaiterType::operation; }) operation_ = WaiterType::operation;
        state_ = Shared<State>::retain(state);
        list.append(static_cast<WaiterType&>(*this));
    }
    /// First thing in await_resume(): true if the coroutine was suspended.
    bool leave() noexcept { return static_cast<bool>(std::exchange(state_, Shared<State>())); }

private:
    void abandon() noexcept {
        state_->mutex.lock();
        if (chain_ == nullptr) stopForLateDestruction();
        chain_->remove(*this);
        state_->mutex.unlock();
    }

    /// Owned only from suspension to resumption.
    Shared<State> state_;
};

}  // namespace corvex::inline v0

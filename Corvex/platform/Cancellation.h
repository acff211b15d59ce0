#pragma once

#include <Corvex/platform/Atomic.h>
#include <Corvex/platform/Error.h>
#include <Corvex/platform/Export.h>
#include <Corvex/platform/ShortMutex.h>

namespace corvex::inline v0 {

/// What a cancelled sleep, or a task that asks with checkCancellation(), throws. All are alike: they carry nothing.
class CORVEX_EXPORT CancellationError : public Error {
public:
    CancellationError();
    ~CancellationError() override;
    CancellationError(const CancellationError&) = default;
    CancellationError& operator=(const CancellationError&) = default;

    friend bool operator==(const CancellationError&, const CancellationError&) noexcept { return true; }
};

class CancellationState;

/// Runs a function when a state is cancelled, on the thread that cancels and outside every lock: keep it to a post.
/// Lies where its owner keeps it: arming allocates nothing. Destroying it waits until the function has returned, unless
/// that destroys it itself.
class CORVEX_EXPORT CancellationCallback {
public:
    using Run = void (*)(CancellationCallback& callback) noexcept;

    /// `function` is given this object, from which it finds what it belongs to; derive, or put the object into a
    /// member.
    explicit CancellationCallback(Run function) noexcept : run_(function) {}
    ~CancellationCallback() { disarm(); }
    CancellationCallback(const CancellationCallback&) = delete;
    CancellationCallback& operator=(const CancellationCallback&) = delete;

    /// Without a state, never runs. With one that is cancelled already, runs at once, inside this call. Armed once at a
    /// time; disarm() permits the next.
    void arm(CancellationState* state) noexcept {
        if (state) armOn(*state);
    }
    /// From here on the function does not run and is not running; waits for it if need be. A second call does nothing.
    void disarm() noexcept {
        if (state_) disarmFrom(*state_);
    }

private:
    friend CancellationState;
    void armOn(CancellationState& state) noexcept;
    void disarmFrom(CancellationState& state) noexcept;

    Run run_;
    CancellationState* state_ = nullptr;
    CancellationCallback *previous_ = nullptr, *next_ = nullptr;
};

/// Whether something is cancelled, once and for good. Any thread. Lives longer than the callbacks that are armed on it.
class CORVEX_EXPORT CancellationState {
public:
    CancellationState() noexcept = default;
    /// With a callback armed stops the process.
    ~CancellationState();
    CancellationState(const CancellationState&) = delete;
    CancellationState& operator=(const CancellationState&) = delete;

    [[nodiscard]] bool isCancelled() const noexcept { return isCancelled_.load(MemoryOrder::acquire); }
    /// Runs the callbacks in the order in which they were armed, on this thread. Nothing happens when it is cancelled
    /// already.
    void cancel() noexcept;

private:
    friend CancellationCallback;
    /// Takes the callback out of the list. Under the mutex.
    void unlink(CancellationCallback& callback) noexcept;

    ShortMutex mutex_;
    Atomic<bool> isCancelled_{false};
    CancellationCallback *first_ = nullptr, *last_ = nullptr;
    Atomic<CancellationCallback*> running_{nullptr};
    const void* runner_ = nullptr;  ///< The thread that runs `running_`.
};

}  // namespace corvex::inline v0

#pragma once

#include <Corvex/platform/Atomic.h>
#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

namespace detail {

/// Lets about so many times 30 ns pass without work, and says so to the core, so that its other thread runs on.
CORVEX_EXPORT void pauseBriefly(int count) noexcept;

}  // namespace detail

/// A mutex for critical sections of a few instructions: one word, spins briefly, then sleeps in the kernel. Not
/// recursive, and not fair: whoever comes first after an unlock has it. Releasing it is the last access to its memory,
/// so an object may be freed by whoever takes it next.
class ShortMutex {
public:
    ShortMutex() noexcept = default;
    ShortMutex(const ShortMutex&) = delete;
    ShortMutex& operator=(const ShortMutex&) = delete;

    /// Blocks until it is free. By the thread that holds it, it never returns.
    void lock() noexcept {
        if (!tryLock()) [[unlikely]]
            lockContended();
    }
    /// Takes it unless another thread holds it. Never blocks, and never fails while it is free.
    [[nodiscard]] bool tryLock() noexcept {
        int expected = isFree;
        return state_.compareExchange(expected, isTaken, MemoryOrder::acquire, MemoryOrder::relaxed);
    }
    /// By the thread that holds it. Wakes one that sleeps.
    void unlock() noexcept {
        if (state_.exchange(isFree, MemoryOrder::release) == isAwaited) [[unlikely]]
            wakeOne();
    }

private:
    /// A thread that sleeps has left `isAwaited`, so that an unlock without sleepers makes no system call.
    static constexpr int isFree = 0, isTaken = 1, isAwaited = 2;
    /// Spins, then sleeps until an unlock wakes it.
    CORVEX_EXPORT void lockContended() noexcept;
    /// One of those that sleep; the others stay asleep.
    CORVEX_EXPORT void wakeOne() noexcept;

    Atomic<int> state_{isFree};
};

/// Holds a ShortMutex, or what locks like one, until the end of the scope or unlock(): what std::unique_lock would do,
/// with less to carry.
template <class Mutex = ShortMutex>
class [[nodiscard]] ShortLock {
public:
    explicit ShortLock(Mutex& mutex) noexcept : mutex_(&mutex) { mutex.lock(); }  ///< Waits for the mutex.
    ~ShortLock() {
        if (isHeld_) mutex_->unlock();
    }
    ShortLock(const ShortLock&) = delete;
    ShortLock& operator=(const ShortLock&) = delete;

    /// Takes the mutex again, after unlock().
    void lock() noexcept {
        mutex_->lock();
        isHeld_ = true;
    }
    /// Before the end of the scope.
    void unlock() noexcept {
        isHeld_ = false;
        mutex_->unlock();
    }

private:
    Mutex* mutex_;
    bool isHeld_ = true;
};

}  // namespace corvex::inline v0

#include <Corvex/platform/ShortMutex.h>

namespace corvex::inline v0 {
namespace {

/// Tells the core that it spins, so that its other thread runs on.
inline void pauseBriefly() noexcept {
#if defined(__x86_64__) || defined(__i386__)
    __builtin_ia32_pause();
#elif defined(__aarch64__)
    asm volatile("yield");
#endif
}

constexpr int spinLimit = 100;  // about as long as sleeping and being woken would take at the least

}  // namespace

void ShortMutex::lockContended() noexcept {
    for (int i = 0; i < spinLimit; ++i) {
        int expected = isFree;
        if (state_.load(std::memory_order_relaxed) == isFree &&
            state_.compare_exchange_weak(expected, isTaken, std::memory_order_acquire, std::memory_order_relaxed))
            return;
        pauseBriefly();
    }
    while (state_.exchange(isAwaited, std::memory_order_acquire) != isFree)
        state_.wait(isAwaited, std::memory_order_relaxed);
}

void ShortMutex::wakeOne() noexcept { state_.notify_one(); }  // needs the address only

}  // namespace corvex::inline v0

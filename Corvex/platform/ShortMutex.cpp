#include <Corvex/platform/ShortMutex.h>

#include <algorithm>
#include <atomic>

namespace corvex::inline v0 {
namespace detail {

void pauseBriefly(int count) noexcept {
    for (int i = 0; i < count; ++i) {
#if defined(__x86_64__) || defined(__i386__)
        __builtin_ia32_pause();
#elif defined(__aarch64__)
        asm volatile("yield");
#endif
    }
}

}  // namespace detail

namespace {

// In pauses. Together about as long as sleeping and being woken takes.
constexpr int firstPause = 16, longestPause = 128, spinLimit = 4 * longestPause;

}  // namespace

/// Looks ever more rarely: each look takes the line of memory from the thread that works with what it guards, and who
/// gets it several times in turn has it all at hand.
void ShortMutex::lockContended() noexcept {
    for (int pause = firstPause, sum = 0; sum < spinLimit; sum += pause, pause = std::min(2 * pause, longestPause)) {
        detail::pauseBriefly(pause);
        if (state_.load(MemoryOrder::relaxed) == isFree && tryLock()) return;
    }
    while (state_.exchange(isAwaited, MemoryOrder::acquire) != isFree)
        std::atomic_ref(state_.value()).wait(isAwaited, std::memory_order_relaxed);
}

void ShortMutex::wakeOne() noexcept { std::atomic_ref(state_.value()).notify_one(); }  // needs the address only

}  // namespace corvex::inline v0

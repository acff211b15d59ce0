#include <Corvex/concurrency/TaskSemaphore.h>

#include <algorithm>
#include <limits>

namespace corvex::inline v0 {
namespace detail {

bool SemaphoreState::enqueue(SemaphoreWaiter& waiter) noexcept {
    const ShortLock lock(mutex);
    for (std::int64_t count = count_.load(MemoryOrder::relaxed);;) {
        if (count < 0 && !waiters_.isEmpty()) break;
        const std::int64_t taken = count < 0 ? ~count : count;  // the waiters of a negative count may all have gone
        const std::int64_t next = taken < limit ? taken + 1 : ~taken;
        if (!count_.compareExchange(count, next, MemoryOrder::acquire, MemoryOrder::relaxed)) continue;
        if (next >= 0) return false;
        break;
    }
    waiter.Waiter::enqueue(*this, waiters_);
    return true;
}

bool SemaphoreState::handOver() noexcept {
    ShortLock lock(mutex);
    const std::int64_t count = count_.load(MemoryOrder::relaxed);
    if (count >= 0) return false;
    SemaphoreWaiter* const waiter = waiters_.takeFirst();
    if (waiters_.isEmpty()) {  // the quick ways are open again; without a waiter all have gone
        const std::int64_t taken = ~count;
        count_.store(waiter || taken == 0 ? taken : taken - 1, MemoryOrder::release);
    }
    lock.unlock();
    if (waiter) waiter->post();
    return true;
}

}  // namespace detail

TaskSemaphore::TaskSemaphore(std::int64_t limit) : state_(Shared<detail::SemaphoreState>::make(limit)) {}

TaskSemaphore TaskSemaphore::withUnsignedLimit(std::uint64_t unsignedLimit) {
    constexpr auto highest = std::numeric_limits<std::int64_t>::max();
    return TaskSemaphore(static_cast<std::int64_t>(std::min<std::uint64_t>(unsignedLimit, highest)));
}

}  // namespace corvex::inline v0

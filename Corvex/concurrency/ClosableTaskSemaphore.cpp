#include <Corvex/concurrency/ClosableTaskSemaphore.h>

#include <algorithm>
#include <limits>

#include <Corvex/platform/Checked.h>

namespace corvex::inline v0 {
namespace detail {

bool ClosableSemaphoreState::take(ClosableSemaphoreWaiter& waiter) noexcept {
    const ShortLock lock(mutex);
    if (isClosed) return false;
    if (count < limit) {
        ++count;
        waiter.payload = true;
        return false;
    }
    waiter.enqueue(*this, waiters_);
    return true;
}

void ClosableSemaphoreState::signal() noexcept {
    ReleasedWaiters released;
    const ShortLock lock(mutex);
    if (isClosed) return;
    if (ClosableSemaphoreWaiter* const waiter = waiters_.takeFirst()) {
        waiter->payload = true;
        released.append(*waiter);
    } else if (count >= 1) {
        --count;
    }
}

void ClosableSemaphoreState::close() noexcept {
    ReleasedWaiters released;
    const ShortLock lock(mutex);
    isClosed = true;
    count = 0;
    while (ClosableSemaphoreWaiter* const waiter = waiters_.takeFirst()) released.append(*waiter);
}

}  // namespace detail

ClosableTaskSemaphore::ClosableTaskSemaphore(std::int64_t limit)
    : state_(Shared<detail::ClosableSemaphoreState>::make(limit)) {
    require(limit >= 0, "the limit of a closable semaphore must not be negative");
}

ClosableTaskSemaphore ClosableTaskSemaphore::withUnsignedLimit(std::uint64_t unsignedLimit) {
    constexpr auto highest = std::numeric_limits<std::int64_t>::max();
    return ClosableTaskSemaphore(static_cast<std::int64_t>(std::min<std::uint64_t>(unsignedLimit, highest)));
}

std::int64_t ClosableTaskSemaphore::activeTasks() const noexcept {
    const ShortLock lock(state_->mutex);
    return state_->count;
}

bool ClosableTaskSemaphore::closed() const noexcept {
    const ShortLock lock(state_->mutex);
    return state_->isClosed;
}

}  // namespace corvex::inline v0

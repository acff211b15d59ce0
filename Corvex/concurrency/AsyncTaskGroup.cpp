#include <Corvex/concurrency/AsyncTaskGroup.h>

#include <Corvex/platform/Checked.h>

namespace corvex::inline v0 {
namespace detail {

void GroupState::enter() noexcept {
    const ShortLock lock(mutex);
    count_ = checkedAdd<std::int64_t>(count_, 1);
}

void GroupState::leave() noexcept {
    ReleasedWaiters released;
    const ShortLock lock(mutex);
    const bool isLast = count_ == 1;
    count_ = checkedSubtract<std::int64_t>(count_, 1);
    if (!isLast) return;
    while (GroupWaiter* const waiter = waiters_.takeFirst()) released.append(*waiter);
}

bool GroupState::enqueue(GroupWaiter& waiter) noexcept {
    const ShortLock lock(mutex);
    if (count_ == 0) return false;
    waiter.enqueue(*this, waiters_);
    return true;
}

}  // namespace detail
}  // namespace corvex::inline v0

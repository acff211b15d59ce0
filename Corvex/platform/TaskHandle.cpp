#include <Corvex/platform/TaskHandle.h>

#include <atomic>

namespace corvex::inline v0 {
namespace detail {

TaskBlockBase::~TaskBlockBase() = default;

void TaskBlockBase::start(TaskPromiseBase& promise, std::coroutine_handle<> coroutine, Executor& executor) noexcept {
    self_ = Shared<TaskBlockBase>::retain(*this);
    promise.completeWith(coroutine, *this, context_);
    executor.post(promise);
}

void TaskBlockBase::waitSync() noexcept { std::atomic_ref(isFinished_.value()).wait(false, std::memory_order_acquire); }

bool TaskBlockBase::append(FinishWaiter& waiter) noexcept {
    const ShortLock lock(mutex);
    if (isFinished()) return false;
    waiter.enqueue(*this, waiters_);
    return true;
}

void TaskBlockBase::publish() noexcept {
    ReleasedWaiters released;
    {
        const ShortLock lock(mutex);
        isFinished_.store(true, MemoryOrder::release);
        while (FinishWaiter* waiter = waiters_.takeFirst()) released.append(*waiter);
    }
    std::atomic_ref(isFinished_.value()).notify_all();
}

}  // namespace detail
}  // namespace corvex::inline v0

#include <Corvex/platform/TaskHandle.h>

namespace corvex::inline v0 {
namespace detail {

TaskBlockBase::~TaskBlockBase() = default;

void TaskBlockBase::start(TaskPromiseBase& promise, std::coroutine_handle<> coroutine, Executor& executor) noexcept {
    self_ = Shared<TaskBlockBase>::retain(*this);
    promise.completeWith(coroutine, *this, context_);
    executor.post(promise);
}

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
        isFinished_.store(true, std::memory_order_release);
        while (FinishWaiter* waiter = waiters_.takeFirst()) released.append(*waiter);
    }
    isFinished_.notify_all();
}

}  // namespace detail
}  // namespace corvex::inline v0

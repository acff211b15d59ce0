#include <Corvex/platform/TaskGroup.h>

namespace corvex::inline v0::detail {

TaskGroupBase::Link::Link(TaskGroupBase& group) noexcept
    : CancellationCallback(
          [](CancellationCallback& callback) noexcept { static_cast<Link&>(callback).group_.cancelAll(); }),
      group_(group) {}

TaskGroupBase::TaskGroupBase(const TaskContext& parent) noexcept
    : context_{&cancellation_, parent.priority}, parentLink_(*this) {
    parentLink_.arm(parent.cancellation);
}

TaskGroupBase::~TaskGroupBase() { require(runningCount_ == 0, "a task group was destroyed while its children run"); }

void TaskGroupBase::start(TaskPromiseBase& promise, std::coroutine_handle<> coroutine) noexcept {
    promise.completeWith(coroutine, *this, context_);
    {
        const ShortLock lock(mutex_);
        ++runningCount_;
    }
    Executor::current().post(promise);
}

void TaskGroupBase::finishChild(TaskPromiseBase* kept) noexcept {
    ShortLock lock(mutex_);
    if (kept) {
        finished_.append(*kept);
    } else {
        ++emptyCount_;
    }
    --runningCount_;
    Suspension* const waiter = std::exchange(waiter_, nullptr);
    lock.unlock();  // without a waiter the group may be gone from here on
    if (waiter) waiter->post();
}

bool TaskGroupBase::append(Suspension& waiter) noexcept {
    const ShortLock lock(mutex_);
    if (!finished_.isEmpty() || emptyCount_ > 0 || runningCount_ == 0) return false;
    waiter_ = &waiter;
    return true;
}

TaskGroupBase::Finished TaskGroupBase::takeFinished() noexcept {
    const ShortLock lock(mutex_);
    WorkNode* const child = finished_.takeFirst();
    const bool isEmpty = !child && emptyCount_ > 0;
    if (isEmpty) --emptyCount_;
    return {static_cast<TaskPromiseBase*>(child), child || isEmpty};
}

}  // namespace corvex::inline v0::detail

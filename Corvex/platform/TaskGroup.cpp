#include <Corvex/platform/TaskGroup.h>

namespace corvex::inline v0 {
namespace detail {

TaskGroupBase::Link::Link(TaskGroupBase& group) noexcept
    : CancellationCallback(
          [](CancellationCallback& callback) noexcept { static_cast<Link&>(callback).group_.cancelAll(); }),
      group_(group) {}

TaskGroupBase::TaskGroupBase(const TaskContext& parent) noexcept
    : context_{&cancellation_, parent.priority}, parentLink_(*this) {
    parentLink_.arm(parent.cancellation);
}

TaskGroupBase::~TaskGroupBase() {
    require(running_.load(MemoryOrder::acquire) == 0, "a task group was destroyed while its children run");
}

void TaskGroupBase::start(TaskPromiseBase& promise, std::coroutine_handle<> coroutine) noexcept {
    promise.completeWith(coroutine, *this, context_);
    ++startedCount_;
    running_.fetchAdd(1, MemoryOrder::relaxed);
    Executor::current().post(promise);
}

void TaskGroupBase::finishChild(TaskPromiseBase* kept, bool hasFailed) noexcept {
    constexpr std::uint64_t lastOfAll = waitsForAll | 1U;
    std::uint64_t running = running_.load(MemoryOrder::acquire);
    while (!kept && (running & waitsForNext) == 0) {
        const std::uint64_t rest = running == lastOfAll ? 0 : running - 1;
        if (!running_.compareExchange(running, rest, MemoryOrder::acquireRelease, MemoryOrder::acquire)) continue;
        if (running == lastOfAll) waiter_->post();
        return;  // unless this was the last of all, the group may be gone
    }
    ShortLock lock(mutex_);
    if (kept) finished_.append(*kept);
    if (hasFailed) {  // before the others, since their errors may follow from it
        lock.unlock();
        cancelAll();
        lock.lock();
    }
    if (kept) ++listedCount_;
    Suspension* waiter = nullptr;
    std::uint64_t rest = 0;
    running = running_.load(MemoryOrder::acquire);
    do {
        rest = running - 1;
        const std::uint64_t count = rest & ~(waitsForNext | waitsForAll);
        const bool isAwaited = (running & waitsForNext) != 0 ? count == 0 || hasUntaken(count) : running == lastOfAll;
        waiter = isAwaited ? waiter_ : nullptr;
        if (isAwaited) rest = count;
    } while (!running_.compareExchange(running, rest, MemoryOrder::acquireRelease, MemoryOrder::acquire));
    lock.unlock();
    if (waiter) waiter->post();
}

bool TaskGroupBase::appendForNext(Suspension& waiter) noexcept {
    const ShortLock lock(mutex_);
    waiter_ = &waiter;
    std::uint64_t running = running_.load(MemoryOrder::acquire);
    do {
        if (running == 0 || hasUntaken(running)) return false;
    } while (
        !running_.compareExchange(running, running | waitsForNext, MemoryOrder::acquireRelease, MemoryOrder::acquire));
    return true;
}

bool TaskGroupBase::appendForAll(Suspension& waiter) noexcept {
    waiter_ = &waiter;
    std::uint64_t running = running_.load(MemoryOrder::acquire);
    do {
        if (running == 0) return false;
    } while (
        !running_.compareExchange(running, running | waitsForAll, MemoryOrder::acquireRelease, MemoryOrder::acquire));
    return true;
}

TaskGroupBase::Finished TaskGroupBase::takeFinished() noexcept {
    const ShortLock lock(mutex_);  // a child that has finished may still be releasing it
    WorkNode* const child = finished_.takeFirst();
    const bool isUnlisted = !child && hasUntaken(running_.load(MemoryOrder::acquire));
    if (isUnlisted) ++unlistedTakenCount_;
    return {static_cast<TaskPromiseBase*>(child), child || isUnlisted};
}

}  // namespace detail
}  // namespace corvex::inline v0

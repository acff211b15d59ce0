#include <Corvex/platform/ManualExecutor.h>

#include <algorithm>

#include <Corvex/platform/Checked.h>
#include <Corvex/platform/Sleep.h>

namespace corvex::inline v0 {

ManualExecutor::~ManualExecutor() {
    require(isIdle() && clock_.isEmpty(), "a manual executor was destroyed with work posted or sleeping");
}

void ManualExecutor::post(WorkNode& node) noexcept {
    const ShortLock lock(mutex_);
    queue_.append(node);
}

bool ManualExecutor::runOne() noexcept {
    ShortLock lock(mutex_);
    WorkNode* const node = queue_.takeFirst();
    lock.unlock();
    if (!node) return false;
    ExecutorScope(*this).run(*node);
    return true;
}

std::size_t ManualExecutor::runAll() noexcept {
    std::size_t count = 0;
    while (runOne()) ++count;
    return count;
}

std::size_t ManualExecutor::advance(std::chrono::nanoseconds duration) noexcept {
    const TimePoint end = std::min(saturatedAdd(now(), duration), TimePoint::max() - TimePoint::duration(1));
    std::size_t count = runAll();
    while (clock_.moveTowards(end)) count += runAll();
    return count;
}

bool ManualExecutor::isIdle() const noexcept {
    const ShortLock lock(mutex_);
    return queue_.isEmpty();
}

TimePoint ManualExecutor::Clock::now() const noexcept {
    const ShortLock lock(mutex_);
    return now_;
}

void ManualExecutor::Clock::add(TimerNode& node, TimePoint time) noexcept {
    ShortLock lock(mutex_);
    const bool isRefused = !heap_.add(node, time);
    if (!isRefused && (time > now_ || !heap_.cancel(node))) return;
    lock.unlock();
    node.executor->post(node);
}

bool ManualExecutor::Clock::cancel(TimerNode& node) noexcept {
    const ShortLock lock(mutex_);
    return heap_.cancel(node);
}

bool ManualExecutor::Clock::isEmpty() const noexcept {
    const ShortLock lock(mutex_);
    return heap_.earliest() == nullptr;
}

bool ManualExecutor::Clock::moveTowards(TimePoint end) noexcept {
    WorkQueue due;
    {
        const ShortLock lock(mutex_);
        const TimerNode* const earliest = heap_.earliest();
        const bool isReached = earliest && earliest->deadline <= end;
        now_ = isReached ? earliest->deadline : end;
        while (TimerNode* node = heap_.takeDue(now_)) due.append(*node);
    }
    if (due.isEmpty()) return false;
    while (WorkNode* node = due.takeFirst()) static_cast<TimerNode*>(node)->executor->post(*node);
    return true;
}

}  // namespace corvex::inline v0

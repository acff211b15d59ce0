#include <Corvex/platform/ThreadPool.h>

#include <algorithm>
#include <atomic>
#include <system_error>
#include <thread>
#include <vector>

#include <Corvex/platform/Checked.h>

namespace corvex::inline v0 {
namespace {

using Clock = std::chrono::steady_clock;

}  // namespace

struct ThreadPool::Threads : SharedState {
    std::vector<std::thread> all;
};

ThreadPool::ThreadPool(unsigned threadCount) {
    if (threadCount == 0) threadCount = std::max(1U, std::thread::hardware_concurrency());
    threads_ = Shared<Threads>::make();
    threads_->all.reserve(threadCount);
    for (; threadCount_ < threadCount; ++threadCount_) {
        try {
            threads_->all.emplace_back([this] { work(); });
        } catch (const std::system_error&) {
            if (threadCount_ == 0) throw;
            break;  // a pool of fewer threads does the same work
        }
    }
}

ThreadPool::~ThreadPool() { join(); }

void ThreadPool::post(WorkNode& node) noexcept {
    ShortLock lock(mutex_);
    require(!hasEnded_, "work posted to a joined thread pool");
    queue_.append(node);
    if (detail::threadState.executor == this) {
        home_ = &detail::threadState;
        ++progress_;
    }
    const bool isWaker = claimWake();
    lock.unlock();
    if (isWaker) std::atomic_ref(wakeCount_.value()).notify_one();
}

void ThreadPool::join() noexcept {
    if (threadCount_ == 0) return;
    require(!runsHere(), "a thread pool cannot be joined from its own threads");
    {
        const ShortLock lock(mutex_);
        isJoining_ = true;
        wakeCount_.fetchAdd(1, MemoryOrder::relaxed);
    }
    std::atomic_ref(wakeCount_.value()).notify_all();
    for (std::thread& thread : threads_->all) thread.join();
    threadCount_ = 0;
    const ShortLock lock(mutex_);
    hasEnded_ = true;
}

void ThreadPool::work() noexcept {
    // Most pools are made for work that comes at once, and waking a thread costs the one that posts that work 15 us.
    int looksLeft = 20;
    ExecutorScope scope(*this);
    Stint stint;
    mutex_.lock();
    beginStint(stint);
    for (;;) {
        if (WorkNode* const node = queue_.takeFirst()) {
            ++progress_;
            const bool isWaker = !queue_.isEmpty() && claimWake();
            mutex_.unlock();
            if (isWaker) std::atomic_ref(wakeCount_.value()).notify_one();
            scope.run(*node);
            lockAfterWork(stint);
        } else if (isJoining_) {
            return mutex_.unlock();  // what a thread still at work posts, it runs itself
        } else if (looksLeft-- > 0) {
            mutex_.unlock();
            detail::pauseBriefly(fewestPauses);
            mutex_.lock();
            beginStint(stint);
        } else {
            looksLeft = 0;
            sleep();
            beginStint(stint);
        }
    }
}

void ThreadPool::beginStint(Stint& stint) const noexcept {
    stint.start = Clock::now();
    stint.progress = progress_;
}

void ThreadPool::sleep() noexcept {
    ++sleepingCount_;
    const int seen = wakeCount_.load(MemoryOrder::relaxed);
    mutex_.unlock();
    std::atomic_ref(wakeCount_.value()).wait(seen, std::memory_order_relaxed);
    mutex_.lock();
    --sleepingCount_;
    isWaking_ = false;
}

void ThreadPool::lockAfterWork(Stint& stint) noexcept {
    const bool isFree = mutex_.tryLock();
    if (!isFree) mutex_.lock();
    if (home_ == &detail::threadState || queue_.isEmpty()) return;
    if (--stint.remaining <= 0 || !isFree) stayAway(stint);
}

void ThreadPool::stayAway(Stint& stint) noexcept {
    constexpr int stintLength = 64, clearProgress = 8;
    const TimePoint start = Clock::now();
    const std::uint32_t progress = progress_;
    mutex_.unlock();
    detail::pauseBriefly(stint.pauses);
    mutex_.lock();
    const TimePoint end = Clock::now();
    const std::int64_t progressHere = progress - stint.progress, progressAway = progress_ - progress;
    // At first there is too little to compare with.
    const bool isBetterAway =
        progressAway >= clearProgress &&
        (stint.isFirst || progressAway * (start - stint.start).count() > 2 * progressHere * (end - start).count());
    stint.isFirst = false;
    stint.pauses = isBetterAway ? std::min(2 * stint.pauses, mostPauses) : fewestPauses;
    stint.remaining = isBetterAway ? 1 : stintLength;
    stint.start = end;
    stint.progress = progress_;
}

bool ThreadPool::claimWake() noexcept {
    if (sleepingCount_ == 0 || isWaking_) return false;
    isWaking_ = true;
    wakeCount_.fetchAdd(1, MemoryOrder::relaxed);
    return true;
}

}  // namespace corvex::inline v0

#include <Corvex/platform/ThreadPool.h>

#include <algorithm>
#include <system_error>

#include <Corvex/platform/Checked.h>

namespace corvex::inline v0 {
ThreadPool::ThreadPool(unsigned threadCount) {
    if (threadCount == 0) threadCount = std::max(1U, std::thread::hardware_concurrency());
    threads_.reserve(threadCount);
    for (unsigned i = 0; i < threadCount; ++i) {
        try {
            threads_.emplace_back([this] { work(); });
        } catch (const std::system_error&) {
            if (threads_.empty()) throw;
            break;  // a pool of fewer threads does the same work
        }
    }
}

ThreadPool::~ThreadPool() { join(); }

void ThreadPool::post(WorkNode& node) noexcept {
    ShortLock lock(mutex_);
    require(!hasEnded_, "work posted to a joined thread pool");
    queue_.append(node);
    const bool isWaker = claimWake();
    lock.unlock();
    if (isWaker) wakeCount_.notify_one();
}

void ThreadPool::join() noexcept {
    if (threads_.empty()) return;
    require(!runsHere(), "a thread pool cannot be joined from its own threads");
    {
        const ShortLock lock(mutex_);
        isJoining_ = true;
        wakeCount_.fetch_add(1, std::memory_order_relaxed);
    }
    wakeCount_.notify_all();
    for (std::thread& thread : threads_) thread.join();
    threads_.clear();
    const ShortLock lock(mutex_);
    hasEnded_ = true;
}

void ThreadPool::work() noexcept {
    ExecutorScope scope(*this);
    ShortLock lock(mutex_);
    for (;;) {
        if (WorkNode* const node = queue_.takeFirst()) {
            const bool isWaker = !queue_.isEmpty() && claimWake();
            lock.unlock();
            if (isWaker) wakeCount_.notify_one();
            scope.run(*node);
            lock.lock();
        } else if (isJoining_) {
            return;  // what a thread still at work posts, it runs itself
        } else {
            ++sleepingCount_;
            const int seen = wakeCount_.load(std::memory_order_relaxed);
            lock.unlock();
            wakeCount_.wait(seen, std::memory_order_relaxed);
            lock.lock();
            --sleepingCount_;
            isWaking_ = false;
        }
    }
}

bool ThreadPool::claimWake() noexcept {
    if (sleepingCount_ == 0 || isWaking_) return false;
    isWaking_ = true;
    wakeCount_.fetch_add(1, std::memory_order_relaxed);
    return true;
}

}  // namespace corvex::inline v0

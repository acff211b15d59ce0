#include <Corvex/platform/internal/DispatchThreads.h>

#include <condition_variable>
#include <mutex>
#include <system_error>
#include <thread>

#include <Corvex/platform/Checked.h>
#include <Corvex/platform/LeveledWorkQueue.h>

namespace corvex::inline v0 {
namespace detail {
namespace {

constexpr unsigned highestThreadCount = 64;
constexpr std::chrono::seconds idleTime(5);

class DispatchThreads final : public Executor {
public:
    void post(WorkNode& node) noexcept override;

private:
    void work() noexcept;
    /// Has another thread look at the queue, unless one is about to. Releases the lock.
    void wakeOne(std::unique_lock<std::mutex>& lock) noexcept;

    std::mutex mutex_;
    std::condition_variable changed_;
    LeveledWorkQueue queue_;
    unsigned threadCount_ = 0, sleepingCount_ = 0;
    bool isWaking_ = false;  ///< A thread has been woken or started and has not looked at the queue yet.
};

void DispatchThreads::post(WorkNode& node) noexcept {
    std::unique_lock lock(mutex_);
    queue_.append(node);
    wakeOne(lock);
}

void DispatchThreads::wakeOne(std::unique_lock<std::mutex>& lock) noexcept {
    const bool isStarting = sleepingCount_ == 0;
    if (isWaking_ || (isStarting && threadCount_ == highestThreadCount)) {
        lock.unlock();
        return;
    }
    isWaking_ = true;
    if (isStarting) ++threadCount_;
    lock.unlock();
    if (!isStarting) {
        changed_.notify_one();
        return;
    }
    try {
        std::thread([this] { work(); }).detach();
    } catch (const std::system_error&) {
        lock.lock();
        isWaking_ = false;
        --threadCount_;
        require(threadCount_ > 0, "the system gives no thread for the work of dispatch queues");
        lock.unlock();  // the others do the same work, later
    }
}

void DispatchThreads::work() noexcept {
    std::unique_lock lock(mutex_);
    isWaking_ = false;
    for (;;) {
        while (WorkNode* const node = queue_.takeFirst()) {
            if (queue_.isEmpty()) {
                lock.unlock();
            } else {
                wakeOne(lock);
            }
            node->run(*node);
            lock.lock();
        }
        ++sleepingCount_;
        const bool isOver = changed_.wait_for(lock, idleTime) == std::cv_status::timeout;
        --sleepingCount_;
        isWaking_ = false;  // also when this thread ends: it may be the one that was woken, too late
        if (isOver && queue_.isEmpty()) break;
    }
    --threadCount_;
}

}  // namespace

Executor& dispatchThreads() {
    static auto& threads = *new DispatchThreads;  // never destroyed: work may go on while the process ends
    return threads;
}

}  // namespace detail
}  // namespace corvex::inline v0

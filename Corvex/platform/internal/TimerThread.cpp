#include <Corvex/platform/internal/TimerThread.h>

#include <condition_variable>
#include <mutex>
#include <thread>

#include <Corvex/platform/TimerHeap.h>
#include <Corvex/platform/WorkQueue.h>

namespace corvex::inline v0 {
namespace detail {
namespace {

constexpr int batchSize = 256;  // keeps sleepers from waiting long for the lock when very many are due

class TimerThread final : public Timers {
public:
    [[nodiscard]] TimePoint now() const noexcept override;
    void add(TimerNode& node, TimePoint time) noexcept override;
    bool cancel(TimerNode& node) noexcept override;

    /// Posts outside of the lock, many at a time and not all at once, so that sleepers do not wait long for it.
    [[noreturn]] void work() noexcept;

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    TimerHeap heap_;
    TimePoint wakeTime_ = TimePoint::min();  ///< Until when the thread sleeps; the past while it is awake.
};

TimePoint TimerThread::now() const noexcept { return std::chrono::steady_clock::now(); }

void TimerThread::add(TimerNode& node, TimePoint time) noexcept {
    std::unique_lock lock(mutex_);
    if (!heap_.add(node, time)) {
        lock.unlock();
        node.executor->post(node);
    } else if (time < wakeTime_) {
        wakeTime_ = time;
        lock.unlock();
        changed_.notify_one();
    }
}

bool TimerThread::cancel(TimerNode& node) noexcept {
    const std::lock_guard lock(mutex_);
    return heap_.cancel(node);
}

void TimerThread::work() noexcept {
    std::unique_lock lock(mutex_);
    for (;;) {
        WorkQueue due;
        const TimePoint now = std::chrono::steady_clock::now();
        for (int i = 0; i < batchSize; ++i) {
            TimerNode* const node = heap_.takeDue(now);
            if (!node) break;
            due.append(*node);
        }
        if (!due.isEmpty()) {
            lock.unlock();
            while (WorkNode* node = due.takeFirst()) static_cast<TimerNode*>(node)->executor->post(*node);
            lock.lock();
            continue;
        }
        const TimerNode* const earliest = heap_.earliest();
        wakeTime_ = earliest ? earliest->deadline : TimePoint::max();
        if (wakeTime_ == TimePoint::max()) {
            changed_.wait(lock);
        } else {
            changed_.wait_until(lock, wakeTime_);
        }
        wakeTime_ = TimePoint::min();
    }
}

}  // namespace

Timers& timerThread() {
    static TimerThread& timers = *[] {
        auto* const made = new TimerThread;  // never destroyed: sleepers may be waiting while the process ends
        std::thread([made] { made->work(); }).detach();
        return made;
    }();
    return timers;
}

}  // namespace detail
}  // namespace corvex::inline v0

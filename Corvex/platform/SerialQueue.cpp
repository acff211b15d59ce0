#include <Corvex/platform/SerialQueue.h>

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <utility>

#include <Corvex/platform/Checked.h>

namespace corvex::inline v0 {

struct SerialQueue::State {
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<std::function<void()>> waiting;
    std::thread thread;
    bool isEnding = false;

    void runAll() {
        std::unique_lock lock(mutex);
        for (;;) {
            changed.wait(lock, [this] { return isEnding || !waiting.empty(); });
            if (waiting.empty()) return;
            const auto work = std::exchange(waiting.front(), nullptr);
            waiting.pop_front();
            lock.unlock();
            work();
            lock.lock();
        }
    }
};

SerialQueue::SerialQueue(std::string label) : label_(std::move(label)), state_(std::make_unique<State>()) {}

SerialQueue::~SerialQueue() {
    {
        const std::lock_guard lock(state_->mutex);
        require(state_->thread.get_id() != std::this_thread::get_id(), "a serial queue was destroyed by its own work");
        state_->isEnding = true;
    }
    state_->changed.notify_one();
    if (state_->thread.joinable()) state_->thread.join();
}

void SerialQueue::async(std::function<void()> work) {
    {
        const std::lock_guard lock(state_->mutex);
        state_->waiting.push_back(std::move(work));
        if (!state_->thread.joinable()) state_->thread = std::thread([state = state_.get()] { state->runAll(); });
    }
    state_->changed.notify_one();
}

void SerialQueue::sync(const std::function<void()>& work) {
    std::mutex mutex;
    std::condition_variable changed;
    bool isDone = false;
    {
        const std::lock_guard lock(state_->mutex);
        require(state_->thread.get_id() != std::this_thread::get_id(), "work of a serial queue waited for the queue");
    }
    async([&] {
        work();
        const std::lock_guard lock(mutex);  // notifies under it: the waiter ends with the lock's release
        isDone = true;
        changed.notify_one();
    });
    std::unique_lock lock(mutex);
    changed.wait(lock, [&] { return isDone; });
}

}  // namespace corvex::inline v0

// A host with a main loop of its own: tasks work on the pool, and whatever concerns the user runs on the main thread.
#include <condition_variable>
#include <cstdio>
#include <mutex>

#include <Corvex/concurrency/MainActor.h>
#include <Corvex/concurrency/OrvaneBlockingFifoBuffer.h>
#include <Corvex/platform/TaskHandle.h>
#include <Corvex/platform/ThreadPool.h>
#include <Corvex/platform/WorkQueue.h>

namespace {

/// All that an executor needs: a queue that its thread takes work from.
class MainLoop final : public corvex::Executor {
public:
    void post(corvex::WorkNode& node) noexcept override {
        const std::lock_guard lock(mutex_);
        queue_.append(node);
        changed_.notify_one();
    }
    void runUntilQuit() {
        while (!isQuitting_) {
            std::unique_lock lock(mutex_);
            changed_.wait(lock, [this] { return !queue_.isEmpty(); });
            corvex::WorkNode& node = *queue_.takeFirst();
            lock.unlock();
            corvex::ExecutorScope(*this).run(node);
        }
    }
    void quit() noexcept { isQuitting_ = true; }  // on the main thread

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    corvex::WorkQueue queue_;
    bool isQuitting_ = false;
};

using Frames = corvex::OrvaneBlockingFifoBuffer<int>;

corvex::Task<> decode(Frames frames) {
    for (int frame = 1; frame <= 100; ++frame) co_await frames.add(frame);
    frames.close();
}

corvex::Task<int> showProgress(Frames frames) {
    int count = 0;
    while (const auto frame = co_await frames.next()) {
        ++count;
        auto show = [frame] {
            if (*frame % 25 == 0) std::printf("%d frames\n", *frame);
        };
        co_await corvex::MainActor::run(show);
    }
    co_return count;
}

}  // namespace

int main() {
    MainLoop loop;
    corvex::MainActor::setExecutor(loop);
    corvex::ThreadPool pool;
    const Frames frames(8);
    corvex::spawn(decode(frames), pool);
    const auto counted = corvex::spawn(showProgress(frames), pool);
    auto end = [](corvex::TaskHandle<int> handle, MainLoop& owner) -> corvex::Task<> {
        co_await handle.result();
        owner.quit();
    };
    corvex::spawn(end(counted, loop), loop);
    loop.runUntilQuit();
    return counted.waitSync()->value() == 100 ? 0 : 1;
}

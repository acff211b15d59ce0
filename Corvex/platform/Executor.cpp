#include <Corvex/platform/Executor.h>

#include <atomic>

#include <Corvex/platform/ThreadPool.h>
#include <Corvex/platform/internal/TimerThread.h>

namespace corvex::inline v0 {
namespace {

std::atomic<Executor*> hostExecutor{nullptr};

}  // namespace

namespace detail {

constinit thread_local ThreadState threadState;

void postThoseAtRest() noexcept {
    while (TimerNode* const timer = threadState.atRest) {
        threadState.atRest = static_cast<TimerNode*>(timer->next);
        timer->executor->post(*timer);
    }
}

void resumeInLoop(std::coroutine_handle<> coroutine, TimerNode* atRest) noexcept {
    ThreadState& thread = threadState;
    void* const outerNext = std::exchange(thread.next, nullptr);
    const void* const outerStarting = std::exchange(thread.starting, nullptr);
    const std::uintptr_t outerLowestFrame = std::exchange(thread.lowestFrame, frameAddress() - startingDepth);
    TimerNode* const outerAtRest = std::exchange(thread.atRest, atRest);
    for (void* next = coroutine.address(); next; next = std::exchange(thread.next, nullptr))
        std::coroutine_handle<>::from_address(next).resume();
    postThoseAtRest();
    thread.atRest = outerAtRest;
    thread.next = outerNext;
    thread.starting = outerStarting;
    thread.lowestFrame = outerLowestFrame;
}

}  // namespace detail

Timers::~Timers() = default;

Executor::~Executor() = default;

Timers& Executor::timers() const noexcept { return detail::timerThread(); }

bool Executor::runsHere() const noexcept {
    for (const ExecutorScope* scope = detail::threadState.scope; scope; scope = scope->outer())
        if (&scope->executor() == this) return true;
    return false;
}

Executor& Executor::current() noexcept {
    Executor* executor = detail::threadState.executor;
    return executor ? *executor : defaultExecutor();
}

Executor& defaultExecutor() {
    if (Executor* executor = hostExecutor.load(std::memory_order_acquire)) return *executor;
    static ThreadPool& pool = *new ThreadPool;  // never destroyed: its work may go on while the process ends
    return pool;
}

void setDefaultExecutor(Executor& executor) noexcept { hostExecutor.store(&executor, std::memory_order_release); }

}  // namespace corvex::inline v0

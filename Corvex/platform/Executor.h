#pragma once

#include <coroutine>
#include <cstdint>
#include <utility>

#include <Corvex/platform/ChronoCore.h>
#include <Corvex/platform/Export.h>
#include <Corvex/platform/TaskPriority.h>

namespace corvex::inline v0 {

class Executor;

/// A piece of work. It lies where its owner keeps it, usually in a coroutine frame, and must stay there until it runs;
/// queues link it through `next`, so posting allocates nothing. Once `run` is called the node belongs to its owner again.
struct WorkNode {
    using Run = void (*)(WorkNode& node) noexcept;

    WorkNode() noexcept = default;
    explicit WorkNode(Run function) noexcept : run(function) {}
    WorkNode(const WorkNode&) = delete;
    WorkNode& operator=(const WorkNode&) = delete;

    /// Called once for each post(), on a thread of the executor.
    Run run = nullptr;
    /// The queue's, from post() to `run`.
    WorkNode* next = nullptr;
    /// Read by executors that have a choice; set it before post().
    TaskPriority priority = TaskPriority::medium;
};

using TimePoint = std::chrono::steady_clock::time_point;

/// Work that is due at a time. Its further fields belong to the clock that holds it; like a WorkNode it stays where it
/// is until it has run or was cancelled.
struct TimerNode : WorkNode {
    enum class State : std::uint8_t { idle, waiting, refused, posted };
    using WorkNode::WorkNode;

    Executor* executor = nullptr;
    /// When it is due, and its place among those that are due at once.
    TimePoint deadline;
    std::uint64_t order = 0;
    TimerNode *firstChild = nullptr, *nextSibling = nullptr, *previous = nullptr;
    State state = State::idle;
};

/// A clock and what waits for it. Any thread. A host that has timers of its own derives from this.
class CORVEX_EXPORT Timers {
public:
    Timers() noexcept = default;
    virtual ~Timers();
    Timers(const Timers&) = delete;
    Timers& operator=(const Timers&) = delete;

    [[nodiscard]] virtual TimePoint now() const noexcept = 0;  ///< Of this clock.
    /// Posts the node to `node.executor` when its time has come, at once if it has been refused.
    virtual void add(TimerNode& node, TimePoint time) noexcept = 0;
    /// False: the node has been posted, or was never added; in the latter case the next add() posts it at once.
    virtual bool cancel(TimerNode& node) noexcept = 0;
};

/// Where work runs. A host implements post() alone: it queues the node and later runs it in an ExecutorScope.
/// Order    First in, first out for the work of one poster and one priority.
/// Threads  Every function from any thread. An executor outlives whatever is posted to it or suspended on it.
/// Errors   post() cannot fail: a node carries its own link, so that queues need no memory.
class CORVEX_EXPORT Executor {
public:
    Executor() noexcept = default;
    virtual ~Executor();
    Executor(const Executor&) = delete;
    Executor& operator=(const Executor&) = delete;

    /// Runs the node later, never inside this call.
    virtual void post(WorkNode& node) noexcept = 0;

    /// The clock of this executor's work. Unless overridden the steady clock, with the process's one timer thread.
    [[nodiscard]] virtual Timers& timers() const noexcept;
    [[nodiscard]] TimePoint now() const noexcept { return timers().now(); }
    /// Posts the node when its time has come; TimePoint::max() is never. A node is used for one postAt().
    void postAt(TimerNode& node, TimePoint time) noexcept {
        node.executor = this;
        timers().add(node, time);
    }
    /// True if the node was waiting: it is the caller's again and will not be posted. False if it has been posted
    /// already; or if postAt() is still to come, which will then post it at once.
    bool cancel(TimerNode& node) noexcept { return timers().cancel(node); }

    /// Whether the calling thread is running work of this executor, also from within work of another one that it
    /// called.
    [[nodiscard]] bool runsHere() const noexcept;

    /// The executor whose work the calling thread runs; on any other thread the default one.
    [[nodiscard]] static Executor& current() noexcept;
};

/// The executor of work for which nobody named one: a ThreadPool of as many threads as there are processors, made on
/// first use and left running at exit, unless a host sets its own before. The host's must live until the process ends.
[[nodiscard]] CORVEX_EXPORT Executor& defaultExecutor();
/// The executor that defaultExecutor() gives from now on; for a host's start-up, as work that is under way stays where
/// it is.
CORVEX_EXPORT void setDefaultExecutor(Executor& executor) noexcept;

class ExecutorScope;

namespace detail {

/// What a thread is doing. `next` is the coroutine to resume when the one that runs now returns to the loop; `starting` the
/// promise of the task that its awaiter is starting, null when that has ended.
struct ThreadState {
    ExecutorScope* scope = nullptr;
    Executor* executor = nullptr;
    void* next = nullptr;
    const void* starting = nullptr;
    std::uintptr_t lowestFrame = notLooping;  ///< How far down the stack tasks may be started.
    TimerNode* atRest = nullptr;  ///< Linked through `next`, newest first: the loop posts them when nothing goes on.

    static constexpr std::uintptr_t notLooping = UINTPTR_MAX;
};
[[gnu::tls_model("initial-exec")]] extern constinit CORVEX_EXPORT thread_local ThreadState threadState;

CORVEX_EXPORT void resumeInLoop(std::coroutine_handle<> coroutine, TimerNode* atRest = nullptr) noexcept;
CORVEX_EXPORT void postThoseAtRest() noexcept;

/// Goes on with another coroutine from within await_suspend(). The loop below resumes it, not the caller: compilers
/// make symmetric transfer a tail call only when they optimise, and stack use must not grow with a chain's length.
inline void transferTo(std::coroutine_handle<> coroutine) noexcept {
    ThreadState& thread = threadState;
    if (thread.lowestFrame != ThreadState::notLooping && thread.next == nullptr) [[likely]] {
        thread.next = coroutine.address();
    } else {
        resumeInLoop(coroutine);
    }
}

/// The same, and posts the timer as soon as nothing goes on from the coroutine, which waits then: unless it ended before, and
/// took the timer from `atRest`.
inline void transferTo(std::coroutine_handle<> coroutine, TimerNode& atRest) noexcept {
    ThreadState& thread = threadState;
    if (thread.lowestFrame != ThreadState::notLooping && thread.next == nullptr) [[likely]] {
        thread.next = coroutine.address();
        atRest.next = std::exchange(thread.atRest, &atRest);
    } else {
        resumeInLoop(coroutine, &atRest);
    }
}

[[gnu::always_inline]] inline std::uintptr_t frameAddress() noexcept {
    return reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
}

/// How deep tasks may lie on the stack that awaiters have started, counted from the loop.
inline constexpr std::uintptr_t startingDepth = 0x4000;

/// Starts a task from within its awaiter's await_suspend(), on top of it on the stack while that is not deep: most tasks
/// end without waiting, and then the awaiter need not be suspended at all. False if the task has ended.
#if defined(__clang__)  // keeps what an inlined await_suspend() has in hand in the awaiter's frame, which may be gone
[[gnu::noinline]]
#endif
inline bool
startWithin(std::coroutine_handle<> coroutine, const void* promise) noexcept {
    ThreadState& thread = threadState;
    if (frameAddress() < thread.lowestFrame) [[unlikely]] {
        transferTo(coroutine);
        return true;
    }
    const void* const outer = std::exchange(thread.starting, promise);
    coroutine.resume();  // unless the task has ended, it and its awaiter may be gone
    return std::exchange(thread.starting, outer) != nullptr;
}

}  // namespace detail

/// Makes the calling thread work for an executor: a loop's thread holds one and runs each node through it. Scopes nest.
class ExecutorScope {
public:
    explicit ExecutorScope(Executor& executor) noexcept
        : thread_(detail::threadState),
          executor_(executor),
          outer_(std::exchange(thread_.scope, this)),
          outerExecutor_(std::exchange(thread_.executor, &executor)),
          outerNext_(std::exchange(thread_.next, nullptr)),
          outerStarting_(std::exchange(thread_.starting, nullptr)),
          outerLowestFrame_(std::exchange(thread_.lowestFrame, detail::ThreadState::notLooping)),
          outerAtRest_(std::exchange(thread_.atRest, nullptr)) {}
    ~ExecutorScope() {
        thread_.scope = outer_;
        thread_.executor = outerExecutor_;
        thread_.next = outerNext_;
        thread_.starting = outerStarting_;
        thread_.lowestFrame = outerLowestFrame_;
        thread_.atRest = outerAtRest_;
    }
    ExecutorScope(const ExecutorScope&) = delete;
    ExecutorScope& operator=(const ExecutorScope&) = delete;

    /// Runs the node and then every coroutine that goes on from it, one after the other on this stack frame.
    void run(WorkNode& node) noexcept {
        thread_.lowestFrame = detail::frameAddress() - detail::startingDepth;
        node.run(node);
        while (void* next = std::exchange(thread_.next, nullptr)) std::coroutine_handle<>::from_address(next).resume();
        if (thread_.atRest) [[unlikely]]
            detail::postThoseAtRest();
        thread_.lowestFrame = detail::ThreadState::notLooping;
    }

    [[nodiscard]] const Executor& executor() const noexcept { return executor_; }
    [[nodiscard]] const ExecutorScope* outer() const noexcept { return outer_; }

private:
    detail::ThreadState& thread_;
    Executor& executor_;
    ExecutorScope* outer_;
    Executor* outerExecutor_;
    void* outerNext_;
    const void* outerStarting_;
    std::uintptr_t outerLowestFrame_;
    TimerNode* outerAtRest_;
};

}  // namespace corvex::inline v0

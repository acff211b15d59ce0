#pragma once

#include <concepts>
#include <coroutine>

#include <Corvex/platform/Cancellation.h>
#include <Corvex/platform/Executor.h>

namespace corvex::inline v0 {

/// What a task hands down to the tasks that it awaits: who may ask it to stop, and how urgent it is. Cancelling is a
/// request; a task that neither sleeps nor asks goes on.
struct TaskContext {
    CancellationState* cancellation = nullptr;  ///< None: never cancelled.
    TaskPriority priority = TaskPriority::medium;

    /// Any thread may make it true at any moment; from then on it stays so.
    [[nodiscard]] bool isCancelled() const noexcept { return cancellation && cancellation->isCancelled(); }
};

namespace detail {
/// Of tasks on their own and of coroutines of other types.
inline constexpr TaskContext rootContext;
}  // namespace detail

/// A coroutine type may offer its context to what it awaits; any other counts as never cancelled, of medium priority.
template <class Promise>
concept HasTaskContext = requires(const Promise& promise) {
    { promise.taskContext() } noexcept -> std::same_as<const TaskContext&>;
};

/// That of its promise, or the one of coroutines that have none.
template <class Promise>
[[nodiscard]] const TaskContext& contextOf(std::coroutine_handle<Promise> coroutine) noexcept {
    if constexpr (HasTaskContext<Promise>) {
        return coroutine.promise().taskContext();
    } else {
        return detail::rootContext;
    }
}

/// `co_await taskContext()` gives the context of the task that asks, which lives as long as the task. Never suspends. A
/// coroutine of another type gets that of a task on its own.
class ContextAwaiter {
public:
    [[nodiscard]] bool await_ready() const noexcept { return false; }
    template <class Promise>
    bool await_suspend(std::coroutine_handle<Promise> coroutine) noexcept {
        context_ = &contextOf(coroutine);
        return false;
    }
    [[nodiscard]] const TaskContext& await_resume() const noexcept { return *context_; }

private:
    const TaskContext* context_ = &detail::rootContext;
};
/// As ContextAwaiter says.
[[nodiscard]] inline ContextAwaiter taskContext() noexcept { return {}; }

/// `co_await checkCancellation()` throws CancellationError if the task that asks is cancelled. Never suspends, and
/// costs one load: put one into each long loop.
class CancellationCheck : public ContextAwaiter {
public:
    void await_resume() const {
        if (ContextAwaiter::await_resume().isCancelled()) throw CancellationError();
    }
};
/// As CancellationCheck says.
[[nodiscard]] inline CancellationCheck checkCancellation() noexcept { return {}; }

/// A suspended coroutine as a piece of work: goes on where it was suspended, with the priority of its task. The
/// building block of awaiters; it lies in the coroutine's frame.
class Suspension : public WorkNode {
public:
    Suspension() noexcept
        : WorkNode([](WorkNode& node) noexcept { static_cast<Suspension&>(node).coroutine_.resume(); }) {}

    /// For await_suspend(), before anyone else can see the node. Remembers the current executor.
    template <class Promise>
    void capture(std::coroutine_handle<Promise> coroutine) noexcept {
        captureOn(Executor::current(), coroutine, contextOf(coroutine).priority);
    }
    /// Has the coroutine resumed by its executor. The node may be gone when this returns.
    void post() noexcept { executor_->post(*this); }

    /// Where it goes on, once captured.
    [[nodiscard]] Executor& executor() const noexcept { return *executor_; }

protected:
    /// The same with what it would find out.
    void captureOn(Executor& executor, std::coroutine_handle<> coroutine, TaskPriority coroutinePriority) noexcept {
        coroutine_ = coroutine;
        priority = coroutinePriority;
        executor_ = &executor;
    }

private:
    std::coroutine_handle<> coroutine_;
    Executor* executor_ = nullptr;
};

/// `co_await resumeOn(executor)` goes on there; at once if that is where it runs. The caller of a task that ends
/// elsewhere goes on where it was. For a stretch on the main thread, or off it.
class HopAwaiter : private Suspension {
public:
    explicit HopAwaiter(Executor& executor) noexcept : target_(executor) {}
    [[nodiscard]] bool await_ready() const noexcept { return detail::threadState.executor == &target_; }
    template <class Promise>
    void await_suspend(std::coroutine_handle<Promise> coroutine) noexcept {
        captureOn(target_, coroutine, contextOf(coroutine).priority);
        post();
    }
    void await_resume() const noexcept {}

private:
    Executor& target_;
};
/// `co_await resumeOn(executor)` goes on there.
[[nodiscard]] inline HopAwaiter resumeOn(Executor& executor) noexcept { return HopAwaiter(executor); }

}  // namespace corvex::inline v0

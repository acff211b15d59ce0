#pragma once

#include <type_traits>
#include <utility>

#include <Corvex/platform/Checked.h>
#include <Corvex/platform/FrameCache.h>
#include <Corvex/platform/TaskContext.h>
#include <Corvex/platform/TaskResult.h>

namespace corvex::inline v0 {

class TaskPromiseBase;

/// Told when a task that nobody awaits has finished: a handle's block, or a group.
class TaskCompletion {
public:
    /// Called where the task ended, with nothing of it left to run; the frame may be destroyed in it.
    virtual void taskFinished(TaskPromiseBase& promise) noexcept = 0;

protected:
    ~TaskCompletion() = default;
};

/// The part of every task's promise that does not depend on its result. As a node it resumes `continuation_`.
class TaskPromiseBase : public WorkNode {
public:
    /// Ends the coroutine: its awaiter is next. What it hands over to may destroy the frame, so nothing of it is
    /// touched after finish().
    class FinalAwaiter {
    public:
        [[nodiscard]] bool await_ready() const noexcept { return false; }
        template <class Promise>
        void await_suspend(std::coroutine_handle<Promise> coroutine) const noexcept {
            coroutine.promise().finish();
        }
        void await_resume() const noexcept {}
    };

    /// As a piece of work the promise resumes whatever goes on next.
    TaskPromiseBase() noexcept
        : WorkNode([](WorkNode& node) noexcept { static_cast<TaskPromiseBase&>(node).continuation_.resume(); }) {}

    /// Frames are made and freed faster than anything else; see FrameCache.
    static void* operator new(std::size_t size) { return detail::FrameCache::allocate(size); }
    /// Back to the cache of the thread on which the frame ends, which need not be the one that made it.
    static void operator delete(void* memory, std::size_t size) noexcept { detail::FrameCache::release(memory, size); }

    /// A task does nothing until it is awaited or started.
    [[nodiscard]] std::suspend_always initial_suspend() const noexcept { return {}; }
    /// Suspended at its end: the result stays in the frame until whoever owns that has taken it.
    [[nodiscard]] FinalAwaiter final_suspend() const noexcept { return {}; }
    /// That of the task's awaiter, handle or group; before it starts the one of a task on its own.
    [[nodiscard]] const TaskContext& taskContext() const noexcept { return context_ ? *context_ : detail::rootContext; }

    /// Prepares the task to be run for a coroutine that awaits it, which then goes on where it runs now.
    void continueWith(std::coroutine_handle<> continuation, const TaskContext& context) noexcept {
        continuation_ = continuation;
        executor_ = detail::threadState.executor;
        context_ = &context;
    }
    /// Prepares the task to be posted as a piece of work of its own.
    void completeWith(std::coroutine_handle<> self, TaskCompletion& completion, const TaskContext& context) noexcept {
        continuation_ = self;
        completion_ = &completion;
        context_ = &context;
        priority = context.priority;
    }

private:
    /// Hands over to whoever waits: the awaiter that started it on its own stack, a completion, or a continuation,
    /// which is resumed in place where it lives on this executor and posted to its own where it does not.
    void finish() noexcept {
        if (detail::threadState.starting == this) {
            detail::threadState.starting = nullptr;
        } else if (completion_) {
            completion_->taskFinished(*this);
        } else if (executor_ == detail::threadState.executor) [[likely]] {
            detail::transferTo(continuation_);
        } else {
            priority = context_->priority;
            (executor_ ? *executor_ : defaultExecutor()).post(*this);
        }
    }

    /// The awaiter, or the task itself while it waits to be started.
    std::coroutine_handle<> continuation_;
    /// Where the awaiter ran when it began to wait.
    Executor* executor_ = nullptr;
    /// Instead of an awaiter.
    TaskCompletion* completion_ = nullptr;
    const TaskContext* context_ = nullptr;
};

/// The promise of a task that gives a value; that may be what a `co_return` gives converted.
template <class T>
class Task;

/// The promise of a task that gives a value.
template <class T>
class TaskPromise final : public TaskPromiseBase {
public:
    [[nodiscard]] Task<T> get_return_object() noexcept;
    /// Kept until the awaiter takes it; never copied.
    template <class U = T>
        requires std::is_constructible_v<T, U>
    void return_value(U&& value) {
        result_.setValue(std::forward<U>(value));
    }
    /// Kept in place of a value.
    void unhandled_exception() noexcept { result_.setError(std::current_exception()); }
    /// Valid once the task has finished, and as long as its frame.
    [[nodiscard]] TaskResult<T>& result() noexcept { return result_; }

private:
    TaskResult<T> result_;
};

/// The promise of a task that gives none.
template <>
class TaskPromise<void> final : public TaskPromiseBase {
public:
    [[nodiscard]] Task<void> get_return_object() noexcept;
    void return_void() const noexcept {}
    void unhandled_exception() noexcept { result_.setError(std::current_exception()); }
    [[nodiscard]] TaskResult<void>& result() noexcept { return result_; }

private:
    TaskResult<void> result_;
};

/// Work that is written as a coroutine and starts when it is awaited, once; or that spawn() or a TaskGroup starts.
/// An awaited task runs where its awaiter runs and inherits its cancellation and priority. When it has finished, the
/// awaiter goes on where it was: on the same thread, or posted to its executor if the task ended on another one.
/// Stack use does not depend on how long a chain of tasks is. Destroying a task that waits abandons it.
/// Lifetime A task that is made of a capturing lambda refers to that: keep the lambda as long as the task.
/// Errors   What the coroutine throws is kept and thrown where it is awaited.
template <class T = void>
class [[nodiscard]] Task {
public:
    static_assert(!std::is_reference_v<T>, "a task gives a value: return a pointer instead of a reference");
    using Value = T;
    using promise_type = TaskPromise<T>;
    using Handle = std::coroutine_handle<promise_type>;

    /// Owns the frame.
    explicit Task(Handle coroutine) noexcept : coroutine_(coroutine) {}
    Task(Task&& other) noexcept : coroutine_(other.release()) {}
    /// Destroys the frame that it had; a task that runs must not be assigned to.
    Task& operator=(Task&& other) noexcept {
        const Task old(std::exchange(coroutine_, other.release()));
        return *this;
    }
    ~Task() {
        if (coroutine_) coroutine_.destroy();
    }

    /// Starts the task where its awaiter runs, and gives its value or throws its error. The value is moved out.
    class Awaiter {
    public:
        explicit Awaiter(Handle coroutine) noexcept : coroutine_(coroutine) {}
        [[nodiscard]] bool await_ready() const noexcept { return false; }
        /// False if the task has ended already: then the awaiter was not suspended at all.
        template <class Promise>
        bool await_suspend(std::coroutine_handle<Promise> awaiting) const noexcept {
            TaskPromiseBase& promise = coroutine_.promise();
            promise.continueWith(awaiting, contextOf(awaiting));
            if constexpr (std::is_base_of_v<TaskPromiseBase, Promise>) {
                return detail::startWithin(coroutine_, &promise);
            } else {
                detail::transferTo(coroutine_);
                return true;
            }
        }
        /// Moves the value out, or throws what the task threw.
        T await_resume() const { return std::move(coroutine_.promise().result()).value(); }

    private:
        Handle coroutine_;
    };
    /// `co_await std::move(task)`, once; a moved-from task stops the process.
    [[nodiscard]] Awaiter operator co_await() && noexcept {
        require(static_cast<bool>(coroutine_), "a task was awaited that has been moved from");
        return Awaiter(coroutine_);
    }

    /// Gives up the frame: from now on the caller starts and destroys it.
    [[nodiscard]] Handle release() noexcept { return std::exchange(coroutine_, nullptr); }

private:
    Handle coroutine_;
};

template <class T>
Task<T> TaskPromise<T>::get_return_object() noexcept {
    return Task<T>(std::coroutine_handle<TaskPromise>::from_promise(*this));
}

inline Task<void> TaskPromise<void>::get_return_object() noexcept {
    return Task<void>(std::coroutine_handle<TaskPromise>::from_promise(*this));
}

}  // namespace corvex::inline v0

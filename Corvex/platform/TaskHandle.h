#pragma once

#include <Corvex/platform/Task.h>
#include <Corvex/platform/Waiter.h>

namespace corvex::inline v0 {

/// Where and how a task of its own runs. By default on the caller's executor, with medium priority. Either may be given
/// alone in its place.
class SpawnOptions {
public:
    SpawnOptions() noexcept : executor_(&Executor::current()) {}
    // NOLINTNEXTLINE(google-explicit-constructor,hicpp-explicit-conversions): spawn(task, executor) says it all
    SpawnOptions(Executor& executor, TaskPriority priority = TaskPriority::medium) noexcept
        : executor_(&executor), priority_(priority) {}
    // NOLINTNEXTLINE(google-explicit-constructor,hicpp-explicit-conversions): as above
    SpawnOptions(TaskPriority priority) noexcept : SpawnOptions(Executor::current(), priority) {}

    [[nodiscard]] Executor& executor() const noexcept { return *executor_; }
    [[nodiscard]] TaskPriority priority() const noexcept { return priority_; }

private:
    Executor* executor_;
    TaskPriority priority_ = TaskPriority::medium;
};

namespace detail {

/// What a spawned task and its handles share, whatever its result. The task holds itself while it runs.
class CORVEX_EXPORT TaskBlockBase : public SharedState, public TaskCompletion {
public:
    /// Waits until the task has finished. Keeps the block, so that a handle may go meanwhile.
    class FinishWaiter : public Waiter<TaskBlockBase> {
    public:
        /// What a frame that is destroyed too late is said to wait in; see Waiter.
        static constexpr const char* operation = "result()";

        explicit FinishWaiter(Shared<TaskBlockBase> block) noexcept : block_(std::move(block)) {}
        [[nodiscard]] bool await_ready() const noexcept { return block_->isFinished(); }
        template <class Promise>
        bool await_suspend(std::coroutine_handle<Promise> coroutine) noexcept {
            capture(coroutine);
            return block_->append(*this);
        }

    protected:
        Shared<TaskBlockBase> block_;

    private:
        friend TaskBlockBase;
    };

    explicit TaskBlockBase(TaskPriority priority) noexcept : context_{&cancellation_, priority} {}
    virtual ~TaskBlockBase();

    /// Posts the task, which holds the block from here on.
    void start(TaskPromiseBase& promise, std::coroutine_handle<> coroutine, Executor& executor) noexcept;
    /// Blocks the calling thread.
    void waitSync() noexcept;
    [[nodiscard]] bool isFinished() const noexcept { return isFinished_.load(MemoryOrder::acquire); }
    /// What the task, and whatever it awaits, sees in its context.
    [[nodiscard]] CancellationState& cancellation() noexcept { return cancellation_; }

    ShortMutex mutex;

protected:
    /// The result is there: wakes threads and posts waiters.
    void publish() noexcept;
    Shared<TaskBlockBase> self_;  ///< While the task runs.

private:
    /// False if the task has finished.
    bool append(FinishWaiter& waiter) noexcept;

    CancellationState cancellation_;
    const TaskContext context_;
    Atomic<bool> isFinished_{false};
    WaiterList<FinishWaiter> waiters_;
};

template <class T>
class TaskBlock final : public TaskBlockBase {
public:
    using TaskBlockBase::TaskBlockBase;

    /// Moves the result out of the frame and destroys that, before anybody hears of the end.
    void taskFinished(TaskPromiseBase& promise) noexcept override {
        const Shared<TaskBlockBase> keeper = std::move(self_);
        auto& finished = static_cast<TaskPromise<T>&>(promise);
        result = std::move(finished.result());
        Task<T>::Handle::from_promise(finished).destroy();
        publish();
    }

    TaskResult<T> result;
};

}  // namespace detail

/// A task that runs on its own. Copies refer to the same task; it goes on when nobody refers to it any more. What it
/// throws is kept in its result, and lost where nobody asks for that.
/// Threads  Every function from any thread.
template <class T = void>
class TaskHandle {
public:
    TaskHandle() noexcept = default;  ///< Refers to no task.
    explicit TaskHandle(Shared<detail::TaskBlock<T>> block) noexcept : block_(std::move(block)) {}

    /// Asks the task to stop. It does so where it sleeps or asks, and is finished only when it has returned.
    void cancel() const noexcept {
        if (block_) block_->cancellation().cancel();
    }
    /// Whether it was asked to stop, not whether it has.
    [[nodiscard]] bool isCancelled() const noexcept { return block_ && block_->cancellation().isCancelled(); }
    /// Whether it has returned or thrown; false of a handle that refers to no task.
    [[nodiscard]] bool isFinished() const noexcept { return block_ && block_->isFinished(); }

    /// What result() gives.
    class ResultAwaiter final : public detail::TaskBlockBase::FinishWaiter {
    public:
        using FinishWaiter::FinishWaiter;
        const TaskResult<T>& await_resume() noexcept {
            leave();
            return static_cast<detail::TaskBlock<T>&>(*block_).result;
        }
    };
    /// `co_await handle.result()` gives `const TaskResult<T>&`, which lives as long as a handle refers to the task.
    /// Several may wait, and are resumed in the order in which they began to, each on its executor. A handle that
    /// refers to no task stops the process.
    [[nodiscard]] ResultAwaiter result() const {
        require(static_cast<bool>(block_), "the result of a handle that refers to no task");
        return ResultAwaiter(Shared<detail::TaskBlockBase>::retain(*block_));
    }

    /// Blocks the thread until the task has finished; nothing if the handle refers to no task. For plain threads: on a
    /// thread that the task itself needs, it never returns. The second form takes the value out, for all handles.
    std::optional<TaskResult<T>> waitSync() const&
        requires(std::is_void_v<T> || std::is_copy_constructible_v<T>)
    {
        if (!block_) return std::nullopt;
        block_->waitSync();
        return block_->result;
    }
    /// The same, with the value moved out, for all handles.
    std::optional<TaskResult<T>> waitSync() && {
        if (!block_) return std::nullopt;
        block_->waitSync();
        return std::move(block_->result);
    }

private:
    Shared<detail::TaskBlock<T>> block_;
};

/// Starts a task of its own: it is posted, never run inside this call. Nobody's cancellation reaches it but its
/// handle's. Give it what it needs by value, as nobody need wait for it. Allocates one block beside the task's frame.
template <class T>
TaskHandle<T> spawn(Task<T> task, SpawnOptions options = {}) {
    auto block = Shared<detail::TaskBlock<T>>::make(options.priority());
    const auto coroutine = task.release();
    require(static_cast<bool>(coroutine), "a task was spawned that has been moved from");
    block->start(coroutine.promise(), coroutine, options.executor());
    return TaskHandle<T>(std::move(block));
}

}  // namespace corvex::inline v0

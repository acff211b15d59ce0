#pragma once

#include <cstdint>

#include <Corvex/platform/Atomic.h>
#include <Corvex/platform/Task.h>
#include <Corvex/platform/WorkQueue.h>

namespace corvex::inline v0 {

namespace detail {

/// What every group of child tasks does, whatever their result. Finished children wait until they are taken: those with
/// something to give in a list, the others as a number: those started, less those that run and those that were listed.
class CORVEX_EXPORT TaskGroupBase : public TaskCompletion {
public:
    explicit TaskGroupBase(const TaskContext& parent) noexcept;

    /// Asks every child to stop, also those that are added later. Does not wait.
    void cancelAll() noexcept { cancellation_.cancel(); }
    [[nodiscard]] bool isCancelled() const noexcept { return cancellation_.isCancelled(); }

protected:
    /// With children running stops the process.
    ~TaskGroupBase();

    /// Posts a child to the current executor.
    void start(TaskPromiseBase& promise, std::coroutine_handle<> coroutine) noexcept;
    /// `kept` is the finished child's promise, if anything is to be taken from it. One that failed asks the others to stop.
    void finishChild(TaskPromiseBase* kept, bool hasFailed) noexcept;
    /// Waits for the next child to finish. False if one has finished already, or there is none.
    bool appendForNext(Suspension& waiter) noexcept;
    /// Waits for all. False if none runs.
    bool appendForAll(Suspension& waiter) noexcept;
    /// Nobody will take what the children give.
    [[nodiscard]] bool isEnding() const noexcept { return (running_.load(MemoryOrder::relaxed) & waitsForAll) != 0; }
    /// One of the children that have ended, if any; `child` is null for one that left nothing to take.
    struct Finished {
        TaskPromiseBase* child;
        bool isAny;
    };
    /// Kept children come first, in the order in which they finished.
    Finished takeFinished() noexcept;

private:
    /// Passes the parent's cancellation on to the group.
    class Link : public CancellationCallback {
    public:
        explicit Link(TaskGroupBase& group) noexcept;

    private:
        TaskGroupBase& group_;
    };

    static constexpr std::uint64_t waitsForNext = std::uint64_t{1} << 63U, waitsForAll = std::uint64_t{1} << 62U;

    /// Whether a child has finished that nobody has taken. Under the mutex; by the body, or while that is suspended.
    [[nodiscard]] bool hasUntaken(std::uint64_t runningCount) const noexcept {
        return !finished_.isEmpty() || startedCount_ - runningCount - listedCount_ > unlistedTakenCount_;
    }

    /// How many children run, and what the body waits for. It takes the mutex to change while the body waits for the next
    /// one; so no child can still be about to wake the body when that goes on.
    Atomic<std::uint64_t> running_{0};
    std::uint64_t startedCount_ = 0, unlistedTakenCount_ = 0;  ///< The body's own.
    ShortMutex mutex_;
    std::uint64_t listedCount_ = 0;  ///< Of the children that do not run any more.
    /// Children that were kept, in the order in which they finished.
    WorkQueue finished_;
    /// The body, while it waits for what `running_` says.
    Suspension* waiter_ = nullptr;
    CancellationState cancellation_;
    TaskContext context_;
    Link parentLink_;  // last, so that it is disarmed before what it cancels is gone
};

}  // namespace detail

/// The child tasks of one withTaskGroup(). They run on the executor from which they are added. None outlives the call,
/// so that children may refer to the locals of whoever awaits it.
/// Errors   A child's error asks the other children to stop; next() or the end of the group throws it.
/// Threads  Only the body adds children and awaits next(). isCancelled() and cancelAll() from any thread.
/// Cost     Nothing is allocated but the children's own frames.
template <class T = void>
class TaskGroup final : public detail::TaskGroupBase {
public:
    using TaskGroupBase::TaskGroupBase;
    TaskGroup(const TaskGroup&) = delete;
    TaskGroup& operator=(const TaskGroup&) = delete;

    /// Posts the task as a child of the group. One that has been moved from stops the process. In a cancelled group it
    /// starts all the same and finds itself cancelled.
    void add(Task<T> task) {
        const auto coroutine = task.release();
        require(static_cast<bool>(coroutine), "a task was added to a group that has been moved from");
        start(coroutine.promise(), coroutine);
    }

    /// What next() gives.
    class NextAwaiter final : public Suspension {
    public:
        explicit NextAwaiter(TaskGroup& group) noexcept : group_(group) {}
        [[nodiscard]] bool await_ready() const noexcept { return false; }
        template <class Promise>
        bool await_suspend(std::coroutine_handle<Promise> coroutine) noexcept {
            capture(coroutine);
            return group_.appendForNext(*this);
        }
        auto await_resume() { return group_.takeNext(); }

    private:
        TaskGroup& group_;
    };
    /// `co_await group.next()` gives the result of the next child to finish, in the order in which they finish, as an
    /// optional; or throws its error. Nothing when no child is left. In a group of void, whether there was one.
    [[nodiscard]] NextAwaiter next() noexcept { return NextAwaiter(*this); }

    /// What end() gives.
    class EndAwaiter final : public Suspension {
    public:
        explicit EndAwaiter(TaskGroup& group) noexcept : group_(group) {}
        [[nodiscard]] bool await_ready() const noexcept { return false; }
        template <class Promise>
        bool await_suspend(std::coroutine_handle<Promise> coroutine) noexcept {
            capture(coroutine);
            return group_.appendForAll(*this);
        }
        std::exception_ptr await_resume() const noexcept { return group_.discardAll(); }

    private:
        TaskGroup& group_;
    };
    /// `co_await group.end()` waits for all children and gives the first error that next() did not take.
    [[nodiscard]] EndAwaiter end() noexcept { return EndAwaiter(*this); }

    /// Keeps the frames of children that still have something to give, and frees the others at once.
    void taskFinished(TaskPromiseBase& promise) noexcept override {
        auto& child = static_cast<TaskPromise<T>&>(promise);
        const bool hasFailed = child.result().error() != nullptr;
        const bool isKept = hasFailed || (!std::is_void_v<T> && !isEnding());
        if (!isKept) Task<T>::Handle::from_promise(child).destroy();
        finishChild(isKept ? &child : nullptr, hasFailed);
    }

private:
    /// Destroys the child's frame behind it.
    auto takeNext() {
        const Finished finished = takeFinished();
        auto* const child = static_cast<TaskPromise<T>*>(finished.child);
        const Task<T> frame = frameOf(child);
        if constexpr (std::is_void_v<T>) {
            if (child) child->result().value();
            return finished.isAny;
        } else {
            return child ? std::optional<T>(std::move(child->result()).value()) : std::nullopt;
        }
    }
    /// Values that nobody took are destroyed with their frames.
    std::exception_ptr discardAll() noexcept {
        std::exception_ptr error;
        while (auto* const child = static_cast<TaskPromise<T>*>(takeFinished().child)) {
            const Task<T> frame = frameOf(child);
            if (!error) error = child->result().error();
        }
        return error;
    }
    static Task<T> frameOf(TaskPromise<T>* child) noexcept {
        return Task<T>(child ? Task<T>::Handle::from_promise(*child) : typename Task<T>::Handle());
    }
};

/// Runs `body(group)`, a task, and gives its result when every child has finished, whether or not next() took it.
/// Errors   What the body throws, else the first error of a child that next() did not take; the rest is asked to stop
///          first. Cancelling the task that awaits this cancels the children.
template <class T = void, class Body>
Task<typename std::invoke_result_t<Body&, TaskGroup<T>&>::Value> withTaskGroup(Body body) {
    const TaskContext& context = co_await taskContext();
    TaskGroup<T> group(context);
    using Result = typename std::invoke_result_t<Body&, TaskGroup<T>&>::Value;
    TaskResult<Result> result;
    try {
        auto task = body(group);
        if constexpr (std::is_void_v<Result>) {
            co_await std::move(task);
        } else {
            result.setValue(co_await std::move(task));
        }
    } catch (...) {
        result.setError(std::current_exception());
    }
    if (result.error()) group.cancelAll();
    std::exception_ptr childError = co_await group.end();
    if (childError && !result.error()) result.setError(std::move(childError));
    co_return std::move(result).value();
}

}  // namespace corvex::inline v0

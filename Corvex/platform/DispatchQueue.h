#pragma once

#include <string>
#include <type_traits>
#include <utility>

#include <Corvex/platform/DispatchQoS.h>
#include <Corvex/platform/SharedState.h>
#include <Corvex/platform/ShortMutex.h>
#include <Corvex/platform/WorkQueue.h>

namespace corvex::inline v0 {

namespace detail {

class DispatchState;

/// A piece of work in a dispatch queue. A caller that waits for its turn is one whose `run` wakes it, and lies on that
/// caller's stack.
struct DispatchItem : WorkNode {
    DispatchItem(Run function, bool exclusive, bool sync) noexcept
        : WorkNode(function), isExclusive(exclusive), isSync(sync) {}

    const bool isExclusive, isSync;
};

/// Work that a queue owns until it has been done.
class CORVEX_EXPORT AsyncDispatchItem : public DispatchItem {
public:
    /// Freed by the queue when perform() has returned.
    explicit AsyncDispatchItem(bool exclusive) noexcept;
    virtual ~AsyncDispatchItem();
    virtual void perform() noexcept = 0;

private:
    friend DispatchState;
    Shared<DispatchState> state_;
};

/// The caller's function object, moved in.
template <class Work>
class DispatchWork final : public AsyncDispatchItem {
public:
    DispatchWork(bool exclusive, Work&& work) : AsyncDispatchItem(exclusive), work_(std::move(work)) {}
    void perform() noexcept override { work_(); }

private:
    Work work_;
};

/// What runs and what waits. Exclusive items run alone, others together with their like; they start in their order.
class CORVEX_EXPORT DispatchState final : public SharedState {
public:
    DispatchState(Executor& target, TaskPriority priority) noexcept : target_(target), priority_(priority) {}

    /// Posts it at once if it may run, else keeps it.
    void add(AsyncDispatchItem& item) noexcept;
    /// Blocks until the caller may run; from the queue's own work, stops the process.
    void begin(bool isExclusive) noexcept;
    void end() noexcept;  ///< Of what begin() began.

private:
    friend AsyncDispatchItem;
    static void run(WorkNode& node) noexcept;
    /// Whether one more of that kind may run beside what runs now.
    [[nodiscard]] bool admits(bool isExclusive) const noexcept {
        return isExclusive ? runningCount_ == 0 : !isExclusiveRunning_;
    }
    /// Under the lock.
    void noteStart(bool isExclusive) noexcept;
    /// Ends one item and takes from the queue what may run now. Under the lock.
    void noteEnd(WorkQueue& admitted) noexcept;
    /// Outside of the lock: wakes the callers and posts the work that may run now.
    void start(WorkQueue& admitted) noexcept;

    Executor& target_;
    const TaskPriority priority_;
    ShortMutex mutex_;
    WorkQueue waiting_;
    std::size_t runningCount_ = 0;
    bool isExclusiveRunning_ = false;
};

/// Says that the thread does work of the queue: how a call that would wait for itself is found out. Scopes nest.
class DispatchOccupation {
public:
    explicit DispatchOccupation(const DispatchState& state) noexcept;
    ~DispatchOccupation();
    DispatchOccupation(const DispatchOccupation&) = delete;
    DispatchOccupation& operator=(const DispatchOccupation&) = delete;

    /// Whether the calling thread does work of that queue, however deep on its stack.
    [[nodiscard]] static bool holds(const DispatchState& state) noexcept;

private:
    const DispatchState& state_;
    const DispatchOccupation* const outer_;
};

/// The turn of a caller that runs its work itself, from when it has come until the end of the scope.
class CORVEX_EXPORT DispatchTurn {
public:
    DispatchTurn(DispatchState& state, bool isExclusive) noexcept;
    ~DispatchTurn();
    DispatchTurn(const DispatchTurn&) = delete;
    DispatchTurn& operator=(const DispatchTurn&) = delete;

private:
    DispatchState& state_;
    const DispatchOccupation occupation_;
};

}  // namespace detail

/// What serial and concurrent queues have in common: plain functions in order of arrival, which may block.
/// Threads  Every function from any thread. Asynchronous work runs on threads that are kept for such queues, or on the
///          executor that the queue was given; synchronous work on its caller's own, when its turn has come.
/// Errors   What synchronous work throws reaches its caller; what asynchronous work throws stops the process.
/// Cost     One allocation for each piece of asynchronous work, none for synchronous work.
class CORVEX_EXPORT DispatchQueue {
public:
    DispatchQueue(const DispatchQueue&) = delete;
    DispatchQueue& operator=(const DispatchQueue&) = delete;

    /// Names the queue for people; two may have the same.
    [[nodiscard]] const std::string& label() const noexcept { return label_; }
    /// As it was given; `unspecified` where a target class was given instead.
    [[nodiscard]] const DispatchQoS& qos() const noexcept { return qos_; }

protected:
    DispatchQueue(std::string label, DispatchQoS qos);  ///< On threads that are kept for such queues.
    /// Counts as that class where it runs, without a quality of its own.
    DispatchQueue(std::string label, DispatchQoS::QoSClass target);
    DispatchQueue(std::string label, Executor& target, DispatchQoS qos);
    /// Waits until all work is done. Not from the queue's own work.
    ~DispatchQueue();

    /// Returns at once. The work is destroyed where it ran, as soon as it has returned.
    template <class Work>
    void addAsync(bool isExclusive, Work work) {
        state_->add(*new detail::DispatchWork<Work>(isExclusive, std::move(work)));
    }
    /// Calls the work when its turn has come; blocks the thread until then.
    template <class Work>
    std::invoke_result_t<Work&> runSync(bool isExclusive, Work& work) {
        const detail::DispatchTurn turn(*state_, isExclusive);
        return work();
    }

private:
    std::string label_;
    DispatchQoS qos_;
    Shared<detail::DispatchState> state_;
};

}  // namespace corvex::inline v0

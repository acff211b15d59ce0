#include <Corvex/platform/DispatchQueue.h>

#include <atomic>
#include <memory>

#include <Corvex/platform/Checked.h>
#include <Corvex/platform/internal/DispatchThreads.h>

namespace corvex::inline v0 {
namespace detail {
namespace {

constinit thread_local const DispatchOccupation* innermost = nullptr;

constexpr int turnLength = 64;  // pieces of work before the executor below may run something else

/// A caller that blocks until its turn has come.
struct SyncDispatchItem : DispatchItem {
    explicit SyncDispatchItem(bool exclusive) noexcept
        : DispatchItem(
              [](WorkNode& node) noexcept {
                  std::atomic<int>& flag = static_cast<SyncDispatchItem&>(node).hasBegun;
                  flag.store(1, std::memory_order_release);
                  flag.notify_one();  // needs the address only: the caller may be gone
              },
              exclusive, true) {}

    std::atomic<int> hasBegun{0};
};

}  // namespace

DispatchOccupation::DispatchOccupation(const DispatchState& state) noexcept : state_(state), outer_(innermost) {
    innermost = this;
}

DispatchOccupation::~DispatchOccupation() { innermost = outer_; }

bool DispatchOccupation::holds(const DispatchState& state) noexcept {
    for (const DispatchOccupation* work = innermost; work; work = work->outer_)
        if (&work->state_ == &state) return true;
    return false;
}

AsyncDispatchItem::AsyncDispatchItem(bool exclusive) noexcept : DispatchItem(&DispatchState::run, exclusive, false) {}

AsyncDispatchItem::~AsyncDispatchItem() = default;

void DispatchState::add(AsyncDispatchItem& item) noexcept {
    item.priority = priority_;
    item.state_ = Shared<DispatchState>::retain(*this);
    ShortLock lock(mutex_);
    if (!waiting_.isEmpty() || !admits(item.isExclusive)) {
        waiting_.append(item);
        return;
    }
    noteStart(item.isExclusive);
    lock.unlock();
    target_.post(item);
}

void DispatchState::begin(bool isExclusive) noexcept {
    require(!DispatchOccupation::holds(*this), "work of a dispatch queue waited for the queue");
    SyncDispatchItem item(isExclusive);
    {
        const ShortLock lock(mutex_);
        if (waiting_.isEmpty() && admits(isExclusive)) {
            noteStart(isExclusive);
            return;
        }
        waiting_.append(item);
    }
    item.hasBegun.wait(0, std::memory_order_acquire);
}

void DispatchState::end() noexcept {
    WorkQueue admitted;
    {
        const ShortLock lock(mutex_);
        noteEnd(admitted);
    }
    start(admitted);
}

/// Runs the item, and while the next that may run is asynchronous too, that one behind it.
void DispatchState::run(WorkNode& node) noexcept {
    auto* item = &static_cast<AsyncDispatchItem&>(node);
    const Shared<DispatchState> state = std::move(item->state_);
    for (int count = 1; item; ++count) {
        {
            const DispatchOccupation occupation(*state);
            const std::unique_ptr<AsyncDispatchItem> done(item);
            item->perform();
        }
        item = nullptr;
        WorkQueue admitted;
        {
            const ShortLock lock(state->mutex_);
            state->noteEnd(admitted);
        }
        const auto* const next = static_cast<DispatchItem*>(admitted.first());
        if (count < turnLength && next && !next->isSync) item = static_cast<AsyncDispatchItem*>(admitted.takeFirst());
        state->start(admitted);
    }
}

void DispatchState::noteStart(bool isExclusive) noexcept {
    ++runningCount_;
    isExclusiveRunning_ = isExclusive;
}

void DispatchState::noteEnd(WorkQueue& admitted) noexcept {
    --runningCount_;
    isExclusiveRunning_ = false;
    while (WorkNode* const first = waiting_.first()) {
        const bool isExclusive = static_cast<DispatchItem*>(first)->isExclusive;
        if (!admits(isExclusive)) return;
        admitted.append(*waiting_.takeFirst());
        noteStart(isExclusive);
    }
}

void DispatchState::start(WorkQueue& admitted) noexcept {
    while (auto* const item = static_cast<DispatchItem*>(admitted.takeFirst())) {
        if (item->isSync) {
            item->run(*item);
        } else {
            target_.post(*item);
        }
    }
}

DispatchTurn::DispatchTurn(DispatchState& state, bool isExclusive) noexcept
    : state_((state.begin(isExclusive), state)), occupation_(state) {}

DispatchTurn::~DispatchTurn() { state_.end(); }

}  // namespace detail

namespace {

TaskPriority priorityOf(DispatchQoS::QoSClass qosClass) noexcept {
    return taskPriorityEquivalent(qosClass).value_or(TaskPriority::medium);
}

}  // namespace

DispatchQueue::DispatchQueue(std::string label, DispatchQoS qos)
    : DispatchQueue(std::move(label), detail::dispatchThreads(), qos) {}

DispatchQueue::DispatchQueue(std::string label, DispatchQoS::QoSClass target)
    : label_(std::move(label)),
      qos_(DispatchQoS::unspecified),
      state_(Shared<detail::DispatchState>::make(detail::dispatchThreads(), priorityOf(target))) {}

DispatchQueue::DispatchQueue(std::string label, Executor& target, DispatchQoS qos)
    : label_(std::move(label)),
      qos_(qos),
      state_(Shared<detail::DispatchState>::make(target, priorityOf(qos.qosClass))) {}

DispatchQueue::~DispatchQueue() { const detail::DispatchTurn last(*state_, true); }

}  // namespace corvex::inline v0

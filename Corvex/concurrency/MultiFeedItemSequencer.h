#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <type_traits>
#include <unordered_map>
#include <utility>
#include <vector>

#include <Corvex/collections/AVLTree.h>
#include <Corvex/concurrency/DataCoordinationError.h>
#include <Corvex/concurrency/TaskSemaphore.h>
#include <Corvex/platform/Checked.h>

namespace corvex::inline v0 {

namespace detail {

/// What is stored and who asks, by index. An index has either an item or requests that wait for it.
template <class Item, class FeedId>
class MultiFeedState final : public SharedState {
public:
    class Producer;
    class Requester;
    using SharedItem = std::shared_ptr<Item>;

    /// `ownCapacity` is that of each feed.
    explicit MultiFeedState(std::uint64_t ownCapacity) noexcept : capacityPerFeed(ownCapacity) {}

    /// Hands the item to those who wait for it; true if somebody did. Else keeps it in a slot, if it has been given one.
    bool deliver(std::int64_t index, SharedItem& item, const TaskSemaphore* slot) {
        ReleasedWaiters released;
        const ShortLock lock(mutex);
        const bool isDelivered = answer(index, item, released);
        if (isDelivered || !slot) return isDelivered;
        if (Stored* const stored = items_.search(index)) {
            std::swap(stored->item, item);  // what is replaced goes with the producer
            stored->throttle = *slot;
        } else {
            items_.insert(index, Stored{std::move(item), *slot});
        }
        return false;
    }

    /// The semaphore of a feed, made when the feed is first seen; nothing if the sequencer is closed.
    std::optional<TaskSemaphore> throttleOf(const FeedId& feed) {
        {
            const ShortLock lock(mutex);
            if (!isOpen) return std::nullopt;
            if (const auto found = throttles_.find(feed); found != throttles_.end()) return found->second;
        }
        TaskSemaphore made(checkedCast<std::int64_t>(capacityPerFeed));
        const ShortLock lock(mutex);
        return throttles_.try_emplace(feed, std::move(made)).first->second;
    }

    /// True if the request has to wait; else its payload is the item or, after closing, empty.
    [[gnu::noinline]] bool request(Requester& requester) noexcept {
        ShortLock lock(mutex);
        Stored* const stored = items_.search(requester.index_);
        if (!stored) {
            if (isOpen) requester.enqueue(*this, requestsOf(requester.index_));
            return isOpen;
        }
        requester.payload = {std::move(stored->item), true};
        const TaskSemaphore throttle = stored->throttle;
        items_.deleteKey(requester.index_);
        lock.unlock();
        throttle.signal();
        return false;
    }

    /// Answers requests with nothing. Producers wait at their feed's semaphore, which this does not touch.
    void close() noexcept {
        ReleasedWaiters released;
        const ShortLock lock(mutex);
        isOpen = false;
        for (WaiterList<Requester>& requests : requests_)
            while (Requester* const requester = requests.takeFirst()) released.append(*requester);
    }

    /// Guards all that changes.
    ShortMutex mutex;
    /// In items that nobody has asked for.
    const std::uint64_t capacityPerFeed;
    bool isOpen = true;

private:
    /// An item that nobody has asked for yet, and the semaphore whose slot it holds.
    struct Stored {
        SharedItem item;
        TaskSemaphore throttle;
    };
    /// What a request gets.
    struct Answer {
        SharedItem item;
        bool isOnlyOne = false;  ///< Nobody else has been given the item.
    };

    /// Gives the item to all that wait for the index; they are posted when the lock is gone.
    bool answer(std::int64_t index, const SharedItem& item, ReleasedWaiters& released) noexcept {
        Requester* last = nullptr;
        requestsOf(index).takeWhere([&](const Requester& requester) { return requester.index_ == index; },
                                    [&](Requester& requester) {
                                        requester.payload.item = item;
                                        requester.payload.isOnlyOne = last == nullptr;
                                        if (last) last->payload.isOnlyOne = false;
                                        last = &requester;
                                        released.append(requester);
                                    });
        return last != nullptr;
    }

    /// The list that holds the requests for an index, among those for others of the same remainder.
    WaiterList<Requester>& requestsOf(std::int64_t index) noexcept {
        return requests_[static_cast<std::uint64_t>(index) % requests_.size()];
    }

    /// One for each feed that was ever seen.
    std::unordered_map<FeedId, TaskSemaphore> throttles_;
    /// By index.
    AVLTree<std::int64_t, Stored> items_;
    /// By remainder of the index, so that waiting allocates nothing.
    std::array<WaiterList<Requester>, 128> requests_;
};

/// What requestItemsAtIndex() gives. Cancellation does not end its wait.
template <class Item, class FeedId>
class MultiFeedState<Item, FeedId>::Requester final : public Waiter<MultiFeedState, Answer> {
public:
    static constexpr const char* operation = "requestItemsAtIndex(_:)";

    Requester(MultiFeedState& sequencer, std::int64_t index) noexcept : sequencer_(sequencer), index_(index) {}
    /// The item is looked for under the lock alone.
    [[nodiscard]] bool await_ready() const noexcept { return false; }
    template <class Promise>
    bool await_suspend(std::coroutine_handle<Promise> coroutine) noexcept {
        this->capture(coroutine);
        return sequencer_.request(*this);
    }
    /// The item, or nothing once the sequencer is closed.
    std::optional<Item> await_resume() {
        this->leave();
        if (!this->payload.item) return std::nullopt;
        if (this->payload.isOnlyOne) return std::move(*this->payload.item);
        return *this->payload.item;
    }

private:
    friend MultiFeedState;
    MultiFeedState& sequencer_;
    const std::int64_t index_;
};

/// What enqueueItems() gives: hands the item over at once if it can, else takes a slot of its feed, for which it may
/// wait, and tries again before it stores the item.
template <class Item, class FeedId>
class MultiFeedState<Item, FeedId>::Producer {
public:
    Producer(MultiFeedState& sequencer, Item item, std::int64_t index, FeedId feed)
        : sequencer_(sequencer),
          item_(std::make_shared<Item>(std::move(item))),
          index_(index),
          feed_(std::move(feed)) {}
    Producer(const Producer&) = delete;
    Producer& operator=(const Producer&) = delete;

    /// True if the item has been taken from it, or the sequencer refuses it, or the feed has a free slot.
    bool await_ready() {
        if (sequencer_.deliver(index_, item_, nullptr)) {
            item_ = nullptr;
            return true;
        }
        throttle_ = sequencer_.throttleOf(feed_);
        if (!throttle_) return true;
        slot_.emplace(SlotMaker{*throttle_});
        return slot_->await_ready();
    }
    template <class Promise>
    bool await_suspend(std::coroutine_handle<Promise> coroutine) noexcept {
        keeper_ = Shared<MultiFeedState>::retain(sequencer_);
        return slot_->await_suspend(coroutine);
    }
    /// The slot is held now: the item is handed over or stored in it. One that was delivered without needs none.
    void await_resume() {
        if (!item_) return;
        if (!throttle_) throw DataCoordinationError(DataCoordinationError::Case::addToClosedConduitError);
        slot_->await_resume();
        if (sequencer_.deliver(index_, item_, &*throttle_)) throttle_->signal();
    }

private:
    /// Makes the awaiter where it stays, as it cannot be moved.
    struct SlotMaker {
        const TaskSemaphore& throttle;
        // NOLINTNEXTLINE(google-explicit-constructor,hicpp-explicit-conversions): emplace() converts
        operator SemaphoreWaiter() const noexcept { return throttle.wait(); }
    };

    MultiFeedState& sequencer_;
    /// Null once it has been delivered.
    SharedItem item_;
    const std::int64_t index_;
    const FeedId feed_;
    /// Of the feed; none where the sequencer was closed.
    std::optional<TaskSemaphore> throttle_;
    /// The wait for a slot, within this awaiter.
    std::optional<SemaphoreWaiter> slot_;
    /// While it waits: the semaphore alone would not keep the sequencer.
    Shared<MultiFeedState> keeper_;
};

}  // namespace detail

/// Hands out items by their index, from producers of several feeds. Each feed may store `capacityPerFeed` items that
/// nobody has asked for; a producer beyond that is suspended. Copies are the same sequencer.
/// Use      A reader asks for indexes in the order in which it wants them; the feeds, such as the files of one clip,
///          run ahead by their capacity. FeedId is hashed and compared.
/// Order    Producers of a feed are served first in, first out, and so are the requests for one index, all of which get
///          the item. Everybody is posted: enqueueItems() ends before the consumer runs.
/// Limits   Closing frees no producer that waits. An item that replaces one of its index takes a slot of its own, and
///          the slot of the replaced one never comes back. Items that come more than `capacityPerFeed` out of order can
///          fill their feed while everybody waits for one that is held back behind them: nothing moves then.
/// Cost     O(log n) to store and to find one of n stored items. A request that waits is found among those whose index
///          has the same remainder by 128. The item is kept in one allocation.
/// Threads  Every function from any thread.
template <class Item, class FeedId>
class MultiFeedItemSequencer {
    static_assert(std::is_copy_constructible_v<Item>, "several requests may get one item: share what cannot be copied");
    using State = detail::MultiFeedState<Item, FeedId>;

public:
    /// `initialFeedIds` are made known beforehand; any other feed is when it first stores something. A capacity above
    /// 2^63 - 1 stops the process when the first feed is known; one of 0 lets items through only to requests that wait
    /// already.
    explicit MultiFeedItemSequencer(std::uint64_t capacityPerFeed,
                                    const std::optional<std::vector<FeedId>>& initialFeedIds = std::nullopt)
        : state_(Shared<State>::make(capacityPerFeed)) {
        if (!initialFeedIds) return;
        for (const FeedId& feed : *initialFeedIds) (void)state_->throttleOf(feed);
    }

    /// `co_await sequencer.enqueueItems(item, index, feed)` hands the item to the requests that wait for it, else stores
    /// it when the feed has a free slot. Throws DataCoordinationError if nobody waits for it and the sequencer is closed
    /// by then; one whose producer waits for a slot when the sequencer is closed is still stored.
    [[nodiscard]] typename State::Producer enqueueItems(Item item, std::int64_t withIndex, FeedId fromFeed) const {
        return {*state_, std::move(item), withIndex, std::move(fromFeed)};
    }
    /// `co_await sequencer.requestItemsAtIndex(index)` gives the item, once it is there; nothing if the sequencer is
    /// closed and has none. The item is moved to the only request for it, and copied where there are several.
    [[nodiscard]] typename State::Requester requestItemsAtIndex(std::int64_t index) const noexcept {
        return {*state_, index};
    }
    /// Refuses further items, for good, and answers all requests that wait with nothing.
    void close() const noexcept { state_->close(); }

    [[nodiscard]] std::uint64_t capacityPerFeed() const noexcept { return state_->capacityPerFeed; }
    /// Until close().
    [[nodiscard]] bool isOpen() const noexcept {
        const ShortLock lock(state_->mutex);
        return state_->isOpen;
    }

private:
    Shared<State> state_;
};

}  // namespace corvex::inline v0

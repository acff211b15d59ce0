#pragma once

#include <map>
#include <optional>
#include <utility>
#include <vector>

#include <Corvex/collections/AVLTree.h>
#include <Corvex/concurrency/KeyedItem.h>
#include <Corvex/concurrency/PipelineProtocols.h>
#include <Corvex/concurrency/PullAwaiter.h>

namespace corvex::inline v0 {

namespace detail {

/// Consumers wait only while no item is there, so that an item never waits while a consumer does.
template <class Key, class Item>
class GroupedState final : public SharedState {
public:
    using Supplied = KeyedItem<Key, Item>;
    using Consumed = std::map<Key, Item>;
    using Consumer = PullAwaiter<GroupedState>;

    /// False if closed. Takes the items out of the map one by one.
    bool add(Consumed& items) {
        std::vector<Supplied> entries;  // so that nothing is freed under the lock
        entries.reserve(items.size());
        while (!items.empty()) {
            auto node = items.extract(items.begin());
            entries.emplace_back(std::move(node.key()), std::move(node.mapped()));
        }
        ReleasedWaiters released;
        const ShortLock lock(mutex);
        if (!isOpen) return false;
        for (Supplied& entry : entries) {
            if (searchTree_.search(entry.key)) continue;
            searchTree_.insert(std::move(entry.key), std::move(entry.item));
        }
        while (searchTree_.root() && !consumers_.isEmpty()) {
            Consumer& consumer = *consumers_.takeFirst();
            giveSmallest(consumer);
            released.append(consumer);
        }
        return true;
    }

    /// True if the consumer has to wait; else its payload is the item or, at the end, empty.
    [[gnu::noinline]] bool next(Consumer& consumer) noexcept {
        const ShortLock lock(mutex);
        if (searchTree_.root()) {
            giveSmallest(consumer);
            return false;
        }
        if (isOpen) consumer.enqueue(*this, consumers_);
        return isOpen;
    }

    /// Consumers wait only while nothing is there, so all of them get nothing.
    void close() noexcept {
        ReleasedWaiters released;
        const ShortLock lock(mutex);
        isOpen = false;
        while (Consumer* const consumer = consumers_.takeFirst()) released.append(*consumer);
    }

    /// Guards all that follows.
    ShortMutex mutex;
    /// Until close().
    bool isOpen = true;
    /// Of the item that was handed out last.
    std::optional<Key> nextKeyInSequnce;

private:
    /// Takes the smallest entry into the consumer's payload; there must be one.
    void giveSmallest(Consumer& consumer) noexcept {
        auto entry = searchTree_.takeMinimum();
        nextKeyInSequnce = entry->key;
        consumer.payload.emplace(std::move(entry->key), std::move(*entry->payload));
    }

    /// What nobody has asked for yet.
    AVLTree<Key, Item> searchTree_;
    WaiterList<Consumer> consumers_;
};

}  // namespace detail

/// Takes items in groups and hands them out one by one, the smallest key first of all that are there. It waits for no
/// key: a smaller one that comes later goes out later. Copies are the same sequencer.
/// Order    Consumers are served first in, first out, and posted: add() ends before the consumer runs.
/// Keys     Are compared and copied under a lock: quickly, and without exceptions.
/// Cost     O(log n) for each item in and each item out, with n items that wait; a group of k items allocates k nodes.
/// Limits   Nothing bounds how many items wait, and producers never do: bound them with a TaskSemaphore.
/// Threads  Every function from any thread.
template <std::totally_ordered Key, class Item>
class GroupedItemsSequencer {
    using State = detail::GroupedState<Key, Item>;

public:
    using SuppliedType = KeyedItem<Key, Item>;
    using ConsumableType = std::map<Key, Item>;

    /// Open and empty. Allocates the state that copies share.
    GroupedItemsSequencer() : state_(Shared<State>::make()) {}

    /// `co_await sequencer.add(items)` never suspends. A key that is still there keeps its first item, and the new one
    /// is dropped. Throws DataCoordinationError if the sequencer is closed.
    [[nodiscard]] detail::PushAwaiter<State> add(ConsumableType items) const noexcept {
        return {*state_, std::move(items)};
    }
    /// `co_await sequencer.next()` gives the item with the smallest key; nothing once the sequencer is closed and empty.
    [[nodiscard]] typename State::Consumer next() const noexcept { return typename State::Consumer(*state_); }
    /// Refuses further items, for good; what is there is still handed out. Closing again does nothing.
    void close() const noexcept { state_->close(); }

    /// The key that was handed out last, whatever the name says. None before the first.
    [[nodiscard]] std::optional<Key> nextKeyInSequnce() const {
        const ShortLock lock(state_->mutex);
        return state_->nextKeyInSequnce;
    }
    /// Until close().
    [[nodiscard]] bool isOpen() const noexcept {
        const ShortLock lock(state_->mutex);
        return state_->isOpen;
    }

private:
    Shared<State> state_;
};

static_assert(PushPullConduit<GroupedItemsSequencer<int, int>>);

}  // namespace corvex::inline v0

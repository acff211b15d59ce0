#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <Corvex/collections/AVLTree.h>
#include <Corvex/concurrency/PipelineProtocols.h>
#include <Corvex/concurrency/PullAwaiter.h>
#include <Corvex/concurrency/SequencerEntry.h>
#include <Corvex/platform/Log.h>

namespace corvex::inline v0 {

namespace detail {

/// Consumers wait only while nothing is ready. Closing makes all that is pending ready where it lies.
template <class Key, class Item>
class IndeterminateState final : public SharedState {
public:
    using Supplied = Item;
    using Consumed = SequencerEntry<Key, Item>;
    using Consumer = PullAwaiter<IndeterminateState>;

    explicit IndeterminateState(std::uint64_t ownFlushWindow) noexcept : flushWindow(ownFlushWindow) {}

    /// False if closed.
    bool add(Consumed& entry) {
        ReleasedWaiters released;
        Aside aside;
        const ShortLock lock(mutex);
        if (!isOpen) return false;
        if (pending_.search(entry.key)) return true;
        readyThoseBelow(entry.key, aside);
        pending_.insert(std::move(entry.key), Waiting{std::move(entry.value), entry.outrankings});
        while (ready_.root() && !consumers_.isEmpty()) {
            Consumer& consumer = *consumers_.takeFirst();
            give(consumer, takeSmallest(aside), aside);
            released.append(consumer);
        }
        return true;
    }

    /// True if the consumer has to wait; else its payload is the item or, at the end, empty.
    [[gnu::noinline]] bool next(Consumer& consumer) noexcept {
        Aside aside;
        const ShortLock lock(mutex);
        if (ready_.root() || (!isOpen && pending_.root())) {
            give(consumer, takeSmallest(aside), aside);
            return false;
        }
        if (isOpen) consumer.enqueue(*this, consumers_);
        return isOpen;
    }

    /// Gives what is pending to those who wait, in ascending order; nothing to those who are left.
    void close() noexcept {
        ReleasedWaiters released;
        Aside aside;
        const ShortLock lock(mutex);
        isOpen = false;
        while (Consumer* const consumer = consumers_.takeFirst()) {
            if (pending_.root()) give(*consumer, takeSmallest(aside), aside);
            released.append(*consumer);
        }
    }

    /// Guards all that follows.
    ShortMutex mutex;
    /// In items.
    const std::uint64_t flushWindow;
    bool isOpen = true;
    /// Items handed out so far.
    std::int64_t supplied = 0;
    std::optional<Key> highestSuppliedKey;

private:
    /// What is pending under a key, and how many larger ones have come since.
    struct Waiting {
        Item item;
        std::int64_t outrankings;
    };
    using Tree = AVLTree<Key, Waiting>;
    using TreeEntry = typename Tree::Entry;

    /// What waits for the lock to be released: entries to free, and keys to report, each beside the highest before it.
    class Aside {
    public:
        Aside() noexcept = default;
        Aside(const Aside&) = delete;
        Aside& operator=(const Aside&) = delete;
        ~Aside() {
            for (const auto& [key, highest] : lateKeys)
                logInfo("CV_IS_S-Out of order sequencing detected.  Payload key: " + plainText(key) +
                        " high key: " + plainText(highest));
        }
        std::vector<TreeEntry> dropped;
        std::vector<std::pair<Key, Key>> lateKeys;
    };

    /// Counts one more larger key for each pending item below `key`, and moves those that have enough of them, or are
    /// late.
    void readyThoseBelow(const Key& key, Aside& aside) {
        pending_.deleteWhere([&](typename Tree::Node& node, bool& stop) {
            stop = !(node.key() < key);
            if (stop) return false;
            Waiting& waiting = *node.payload();
            waiting.outrankings = checkedAdd(waiting.outrankings, std::int64_t{1});
            const bool isLate = highestSuppliedKey && !(*highestSuppliedKey < node.key());
            if (!isLate && std::cmp_less(waiting.outrankings, flushWindow)) return false;
            if (ready_.search(node.key())) {
                aside.dropped.push_back({node.key(), std::move(node.payload())});
            } else {
                ready_.insert(node.key(), std::move(node.payload()));
            }
            return true;
        });
    }

    /// Of all that is ready. What is pending at the end would be dropped where its key is ready already.
    TreeEntry takeSmallest(Aside& aside) {
        const auto* const ready = ready_.root() ? ready_.root()->minimum() : nullptr;
        const auto* const pending = !isOpen && pending_.root() ? pending_.root()->minimum() : nullptr;
        if (ready && pending && ready->key() == pending->key()) {
            aside.dropped.push_back(*pending_.takeMinimum());
            return *ready_.takeMinimum();
        }
        return *(!ready || (pending && pending->key() < ready->key()) ? pending_ : ready_).takeMinimum();
    }

    /// Hands an entry to a consumer and notes how far the sequence has come.
    void give(Consumer& consumer, TreeEntry entry, Aside& aside) {
        consumer.payload.emplace(std::move(entry.payload->item));
        supplied = checkedAdd(supplied, std::int64_t{1});
        if (highestSuppliedKey && entry.key < *highestSuppliedKey) {
            aside.lateKeys.emplace_back(std::move(entry.key), *highestSuppliedKey);
        } else {
            highestSuppliedKey = std::move(entry.key);
        }
    }

    /// By key. A key may be in both: what is ready came first.
    Tree pending_, ready_;
    WaiterList<Consumer> consumers_;
};

}  // namespace detail

/// Holds items back for a while to bring them nearer to ascending order of their keys, where nobody knows which keys
/// will come: an item becomes ready when `flushWindow` items with larger keys have come after it, or when one with a
/// larger key comes and it is late already. Copies are the same sequencer.
/// Order    The smallest key that is ready goes first. One that came before a smaller key is ready before it, so the
///          smaller may find it gone: it is still delivered, and logged at level info as "CV_IS_S-Out of order
///          sequencing detected.  Payload key: 3 high key: 5". Consumers are served first in, first out, and posted:
///          add() ends before the consumer runs.
/// Keys     Are compared and copied under a lock: quickly, and without exceptions.
/// Cost     add() takes time for every item that is pending with a smaller key: `flushWindow` where order is nearly
///          kept. next() is O(log n).
/// Limits   The last `flushWindow` items stay until the sequencer is closed, as nothing larger follows them.
/// Threads  Every function from any thread.
template <std::totally_ordered Key, class Item>
class IndeterminateItemSequencer {
    using State = detail::IndeterminateState<Key, Item>;

public:
    using Entry = SequencerEntry<Key, Item>;
    using SuppliedType = Item;
    using ConsumableType = Entry;

    /// The larger the window, the more disorder is mended and the later items come. 0 acts as 1: an item is ready when
    /// the first with a larger key comes.
    explicit IndeterminateItemSequencer(std::uint64_t flushWindow) : state_(Shared<State>::make(flushWindow)) {}

    /// `co_await sequencer.add(entry)` never suspends. A key that is pending keeps its first item, and so does a key that
    /// is ready when another item of that key becomes so. Throws DataCoordinationError if the sequencer is closed.
    [[nodiscard]] detail::PushAwaiter<State> add(Entry entry) const noexcept { return {*state_, std::move(entry)}; }
    /// The same, with the key behind the item and no outrankings.
    [[nodiscard]] detail::PushAwaiter<State> add(Item item, Key forKey) const noexcept {
        return {*state_, Entry(std::move(forKey), std::move(item))};
    }
    /// `co_await sequencer.next()` gives the next item that is ready; nothing once the sequencer is closed and empty.
    [[nodiscard]] typename State::Consumer next() const noexcept { return typename State::Consumer(*state_); }
    /// Refuses further items, for good, and makes all that is pending ready, in ascending order. Closing again does
    /// nothing.
    void close() const noexcept { state_->close(); }

    /// In items, as given.
    [[nodiscard]] std::uint64_t flushWindow() const noexcept { return state_->flushWindow; }
    /// How many items have been handed out.
    [[nodiscard]] std::int64_t supplied() const noexcept {
        const ShortLock lock(state_->mutex);
        return state_->supplied;
    }
    /// The largest key handed out so far; none while nothing has been. A key at or below it is late.
    [[nodiscard]] std::optional<Key> highestSuppliedKey() const {
        const ShortLock lock(state_->mutex);
        return state_->highestSuppliedKey;
    }
    /// Until close().
    [[nodiscard]] bool isOpen() const noexcept {
        const ShortLock lock(state_->mutex);
        return state_->isOpen;
    }

private:
    Shared<State> state_;
};

static_assert(PushPullConduit<IndeterminateItemSequencer<int, int>>);

}  // namespace corvex::inline v0

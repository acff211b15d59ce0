#pragma once

#include <optional>
#include <utility>

#include <Corvex/concurrency/ArrivedItems.h>
#include <Corvex/concurrency/PipelineProtocols.h>
#include <Corvex/concurrency/PullAwaiter.h>
#include <Corvex/platform/FunctionCore.h>

namespace corvex::inline v0 {

namespace detail {

/// While nobody supplies, no consumer waits for an item that is there. Whoever supplies looks again after each call of the
/// key update block, which runs outside of the lock.
template <class Key, class Item>
class GuidedState final : public SharedState {
public:
    using Supplied = KeyedItem<Key, Item>;
    using Consumed = Supplied;
    using Consumer = PullAwaiter<GuidedState>;
    using KeyUpdateBlock = std::function<std::optional<Key>(const Key&)>;

    GuidedState(Key initialKey, KeyUpdateBlock keyUpdateBlock) noexcept
        : keyToSupply_(std::move(initialKey)), keyUpdateBlock_(std::move(keyUpdateBlock)) {}

    /// False if closed. Takes the lock only where somebody waits for an item, or much has come.
    bool add(Supplied& entry) {
        HandOut handOut;
        const auto keep = [&] { handOut.keeper = Shared<GuidedState>::retain(*this); };
        const typename Items::Addition addition = items_.add(entry, keep);
        if (addition == Items::Addition::awaited) {
            ShortLock lock(mutex);
            if (!isSupplying_) supply(lock, handOut);
        }
        return addition != Items::Addition::refused;
    }

    /// True if the consumer has to wait; else its payload is the item or, at the end, empty.
    [[gnu::noinline]] bool next(Consumer& consumer) noexcept {
        HandOut handOut;
        ShortLock lock(mutex);
        // Who supplies has the key in its hands; it looks at the consumers again before it ends.
        if (isSupplying_) {
            consumer.enqueue(*this, isOpen ? consumers_ : lateConsumers_);
            return true;
        }
        if (!isOpen) {
            items_.takeMinimum(consumer.payload, handOut.discarded);
            return false;
        }
        if (consumers_.isEmpty()) {  // else the first one's item may have arrived just now
            items_.collect(handOut.discarded);
            items_.take(keyToSupply_, consumer.payload, handOut.discarded);
        }
        if (!consumer.payload) {
            consumer.enqueue(*this, consumers_);
            supply(lock, handOut);
            return true;
        }
        isSupplying_ = true;
        advance(lock);
        // The following item may have been there before its key was due.
        supply(lock, handOut);
        return false;
    }

    /// Takes effect at the end of a hand-out that is under way.
    void close() noexcept {
        HandOut handOut;
        ShortLock lock(mutex);
        isOpen = false;
        items_.close();
        if (!isSupplying_) supply(lock, handOut);
    }

    /// Of this moment; a copy.
    [[nodiscard]] Key keyToSupply() {
        const ShortLock lock(mutex);
        return keyToSupply_;
    }

    /// Guards all but the items that have just come.
    ShortMutex mutex;
    bool isOpen = true;

private:
    using Items = ArrivedItems<Key, Item>;
    /// What must end after the lock. Consumers are posted while others still wait, and may let go of the sequencer.
    struct HandOut {
        Shared<GuidedState> keeper;
        typename Items::Discarded discarded;
        ReleasedWaiters released;
    };

    /// The rest of a hand-out, as a piece of work of its own.
    struct Rest : WorkNode {
        explicit Rest(GuidedState& owner) noexcept
            : WorkNode([](WorkNode& node) noexcept { static_cast<Rest&>(node).state.supplyRest(); }), state(owner) {}
        GuidedState& state;
        Shared<GuidedState> keeper;  ///< While posted.
    };
    /// How much one call does for others, in items and in looks at what has come.
    static constexpr int share = 64;

    /// Closing while it is at work takes effect at its end: those who asked before it still get what follows. It goes on
    /// as long as it finds what to do, but after its share as work of the executor of the consumer that is next.
    void supply(ShortLock<>& lock, HandOut& handOut) noexcept {
        isSupplying_ = true;
        for (int step = 0;; ++step) {
            items_.collect(handOut.discarded);
            if (consumers_.isEmpty()) break;
            if (step == share) return postRest(lock);
            typename Items::Taken taken;
            items_.take(keyToSupply_, taken, handOut.discarded);
            if (taken) {
                if (!handOut.keeper) handOut.keeper = Shared<GuidedState>::retain(*this);
                Consumer& consumer = *consumers_.takeFirst();
                consumer.payload.emplace(*std::move(taken));
                lock.unlock();
                consumer.post();
                lock.lock();
                advance(lock);
            } else if (!isOpen || items_.await()) {  // what came between collect() and await() is looked at again
                break;
            }
        }
        isSupplying_ = false;
        if (!isOpen) drain(handOut);
    }

    /// Nobody else supplies before it runs.
    void postRest(ShortLock<>& lock) noexcept {
        const Consumer& consumer = *consumers_.first();
        Executor& executor = consumer.executor();
        rest_.keeper = Shared<GuidedState>::retain(*this);
        rest_.priority = consumer.priority;
        lock.unlock();
        executor.post(rest_);
    }

    /// What the posted work does: goes on where supply() stopped.
    void supplyRest() noexcept {
        HandOut handOut;
        ShortLock lock(mutex);
        handOut.keeper = std::move(rest_.keeper);
        supply(lock, handOut);
    }

    /// Only who supplies changes the key, and so may read it without the lock.
    void advance(ShortLock<>& lock) noexcept {
        lock.unlock();
        std::optional<Key> following = keyUpdateBlock_(keyToSupply_);
        lock.lock();
        if (following) std::swap(keyToSupply_, *following);
    }

    /// After closing: each waiter gets an item, smallest key first, and nothing when there are no more.
    void drain(HandOut& handOut) noexcept {
        items_.collect(handOut.discarded);
        for (auto* const list : {&consumers_, &lateConsumers_}) {
            while (Consumer* const consumer = list->takeFirst()) {
                items_.takeMinimum(consumer->payload, handOut.discarded);
                handOut.released.append(*consumer);
            }
        }
    }

    /// Those that wait for their key, and those that have just come.
    Items items_;
    WaiterList<Consumer> consumers_, lateConsumers_;  ///< The latter came after the closing that is under way.
    /// The key that is due.
    Key keyToSupply_;
    /// Somebody hands items out, with the lock released now and then.
    bool isSupplying_ = false;
    Rest rest_{*this};
    const KeyUpdateBlock keyUpdateBlock_;
};

}  // namespace detail

/// Hands out items in the order of a chain of keys, each key giving the next, whatever the order in which they arrive:
/// frames that finish out of order, for example, with a block that adds 1. Copies are the same sequencer.
/// Order    Consumers are served first in, first out, and posted: add() ends before the consumer runs. A call serves 64 of
///          them at most; the executor of the one that is next goes on with the rest.
/// Keys     Are compared under a lock: quickly, and without exceptions.
/// Cost     O(log n) for each item in and each item out, with n items that wait; one node is allocated for each.
/// Limits   Nothing bounds how many items wait, and producers never do. An item whose key the chain has passed stays
///          until the sequencer is closed.
/// Threads  Every function from any thread.
template <std::totally_ordered Key, class Item>
class GuidedItemSequencer {
    using State = detail::GuidedState<Key, Item>;

public:
    using SuppliedType = KeyedItem<Key, Item>;
    using ConsumableType = SuppliedType;
    /// Gives the key that follows one that has been handed out; nothing for none, and then the sequence stands still until
    /// an item for that same key comes again. Runs on the thread that happens to hand out, one call at a time, and throws
    /// nothing.
    using KeyUpdateBlock = typename State::KeyUpdateBlock;

    /// The item of `initialKey` goes out first. The block must not be empty.
    GuidedItemSequencer(Key initialKey, KeyUpdateBlock keyUpdateBlock)
        : state_(Shared<State>::make(std::move(initialKey), std::move(keyUpdateBlock))) {}

    /// `co_await sequencer.add(entry)` never suspends. An item that waits under the same key is replaced. Throws
    /// DataCoordinationError if the sequencer is closed.
    [[nodiscard]] detail::PushAwaiter<State> add(SuppliedType entry) const noexcept {
        return {*state_, std::move(entry)};
    }
    /// The same, with the key behind the item.
    [[nodiscard]] detail::PushAwaiter<State> add(Item item, Key forKey) const noexcept {
        return {*state_, SuppliedType(std::move(forKey), std::move(item))};
    }
    /// `co_await sequencer.next()` gives the item of the key that is due. Once closed, what is left with ascending keys,
    /// over all gaps, and then nothing.
    [[nodiscard]] typename State::Consumer next() const noexcept { return typename State::Consumer(*state_); }
    /// Refuses further items, for good, and lets consumers drain what is left. Closing again does nothing.
    void close() const noexcept { state_->close(); }

    /// The key that is due; for a chain that has ended, the last one.
    [[nodiscard]] Key keyToSupply() const { return state_->keyToSupply(); }
    /// Until close().
    [[nodiscard]] bool isOpen() const noexcept {
        const ShortLock lock(state_->mutex);
        return state_->isOpen;
    }

private:
    Shared<State> state_;
};

static_assert(PushPullConduit<GuidedItemSequencer<int, int>>);

}  // namespace corvex::inline v0

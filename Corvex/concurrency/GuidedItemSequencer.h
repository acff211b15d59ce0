#pragma once

#include <functional>
#include <optional>
#include <utility>

#include <Corvex/concurrency/ArrivedItems.h>
#include <Corvex/concurrency/PipelineProtocols.h>
#include <Corvex/concurrency/PullAwaiter.h>

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

    bool add(Supplied& entry) {
        const typename Items::Addition addition = items_.add(entry);
        if (addition == Items::Addition::awaited) {
            Discarded discarded;
            ReleasedWaiters released;
            ShortLock lock(mutex);
            if (!isSupplying_) supply(lock, released, discarded);
        }
        return addition != Items::Addition::refused;
    }

    [[gnu::noinline]] bool next(Consumer& consumer) noexcept {
        Shared<GuidedState> keeper;
        Discarded discarded;
        ReleasedWaiters released;
        ShortLock lock(mutex);
        if (isSupplying_) {
            consumer.enqueue(*this, isOpen ? consumers_ : lateConsumers_);
            return true;
        }
        if (!isOpen) {
            items_.takeMinimum(consumer.payload, discarded);
            return false;
        }
        if (!consumers_.isEmpty()) {                      // whose item may have arrived just now
            keeper = Shared<GuidedState>::retain(*this);  // who goes on may be the last that refers to it
            consumer.enqueue(*this, consumers_);
            supply(lock, released, discarded);
            return true;
        }
        do {
            items_.collect(discarded);
            items_.take(keyToSupply_, consumer.payload, discarded);
        } while (!consumer.payload && !items_.await());
        if (!consumer.payload) {
            consumer.enqueue(*this, consumers_);
            return true;
        }
        isSupplying_ = true;
        advance(lock);
        supply(lock, released, discarded);
        return false;
    }

    void close() noexcept {
        Discarded discarded;
        ReleasedWaiters released;
        ShortLock lock(mutex);
        isOpen = false;
        items_.close();
        if (!isSupplying_) supply(lock, released, discarded);
    }

    [[nodiscard]] Key keyToSupply() {
        const ShortLock lock(mutex);
        return keyToSupply_;
    }

    ShortMutex mutex;
    bool isOpen = true;

private:
    using Items = ArrivedItems<Key, Item>;
    using Discarded = typename Items::Discarded;

    /// Closing while it is at work takes effect at its end: those who asked before it still get what follows.
    void supply(ShortLock& lock, ReleasedWaiters& released, Discarded& discarded) noexcept {
        isSupplying_ = true;
        for (;;) {
            items_.collect(discarded);
            if (consumers_.isEmpty()) break;
            typename Items::Taken taken;
            items_.take(keyToSupply_, taken, discarded);
            if (taken) {
                Consumer& consumer = *consumers_.takeFirst();
                consumer.payload.emplace(*std::move(taken));
                lock.unlock();
                consumer.post();
                lock.lock();
                advance(lock);
            } else if (!isOpen || items_.await()) {
                break;
            }
        }
        isSupplying_ = false;
        if (!isOpen) drain(released, discarded);
    }

    /// Only who supplies changes the key, and so may read it without the lock.
    void advance(ShortLock& lock) noexcept {
        lock.unlock();
        std::optional<Key> following = keyUpdateBlock_(keyToSupply_);
        lock.lock();
        if (following) std::swap(keyToSupply_, *following);
    }

    void drain(ReleasedWaiters& released, Discarded& discarded) noexcept {
        items_.collect(discarded);
        for (auto* const list : {&consumers_, &lateConsumers_}) {
            while (Consumer* const consumer = list->takeFirst()) {
                items_.takeMinimum(consumer->payload, discarded);
                released.append(*consumer);
            }
        }
    }

    Items items_;
    WaiterList<Consumer> consumers_, lateConsumers_;  ///< The latter came after the closing that is under way.
    Key keyToSupply_;
    bool isSupplying_ = false;
    const KeyUpdateBlock keyUpdateBlock_;
};

}  // namespace detail

/// Hands out items in the order of a chain of keys, each key giving the next, whatever the order in which they arrive.
/// Copies are the same sequencer.
/// Order    Consumers are served first in, first out, and posted: add() ends before the consumer runs.
/// Keys     Are compared under a lock: quickly, and without exceptions.
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
    /// Refuses further items, for good.
    void close() const noexcept { state_->close(); }

    /// The key that is due.
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

#pragma once

#include <cstdint>
#include <utility>

#include <Corvex/concurrency/DataCoordinationError.h>
#include <Corvex/concurrency/ItemRing.h>
#include <Corvex/concurrency/PipelineProtocols.h>
#include <Corvex/concurrency/PullAwaiter.h>
#include <Corvex/platform/Atomic.h>

namespace corvex::inline v0 {

namespace detail {

/// The two mutexes of a buffer. Who holds one may take, or add, an item; everything else needs both, taken in this order.
class FifoMutex {
public:
    /// Both: for whatever changes more than one end.
    void lock() noexcept {
        taking.lock();
        adding.lock();
    }
    /// The other way round.
    void unlock() noexcept {
        adding.unlock();
        taking.unlock();
    }

    /// On cache lines of their own, as the two sides use them at the same time.
    alignas(64) ShortMutex taking;
    alignas(64) ShortMutex adding;
};

/// Consumers wait only while nothing is buffered, producers only while the buffer is full. Items lie in a ring from the
/// index `taken_` up to `added_`. Each side keeps what it saw last of the other's index and looks again only when that
/// says empty or full, so that the two seldom touch the same memory.
template <class Item>
class FifoState final : public SharedState {
public:
    using Supplied = Item;
    using Consumer = PullAwaiter<FifoState>;
    class Producer;

    explicit FifoState(std::uint64_t ownCapacity) noexcept : capacity(ownCapacity == 0 ? 1 : ownCapacity) {}
    /// Nobody refers to the buffer any more, so nobody adds or takes.
    ~FifoState() {
        { const ShortLock lock(mutex); }  // who added what was taken last may still be releasing the one
        for (std::size_t i = taken_.load(MemoryOrder::acquire); i != added_.load(MemoryOrder::acquire); ++i)
            ring_.at(i)->~Item();
    }

    /// With the mutex of the adding side alone: true if the item is in the ring.
    [[nodiscard]] bool tryAdd(Producer& producer) noexcept {
        const ShortLock lock(mutex.adding);
        const std::size_t added = added_.load(MemoryOrder::relaxed);
        const std::size_t room = capacity < ring_.size() ? static_cast<std::size_t>(capacity) : ring_.size();
        if (added - takenSeen_ >= room) takenSeen_ = taken_.load(MemoryOrder::acquire);
        if (added - takenSeen_ >= room || !consumers_.isEmpty() || !isOpen_) return false;
        append(std::move(producer.payload));
        return true;
    }
    /// With the mutex of the taking side alone: true if the consumer has its item.
    [[nodiscard]] bool tryNext(Consumer& consumer) noexcept {
        const ShortLock lock(mutex.taking);
        const std::size_t taken = taken_.load(MemoryOrder::relaxed);
        if (taken == addedSeen_) addedSeen_ = added_.load(MemoryOrder::acquire);
        if (taken == addedSeen_ || !producers_.isEmpty()) return false;
        takeInto(consumer);
        return true;
    }

    /// True if the producer has to wait. Storage grows outside of the lock, doubling, and may throw
    /// std::bad_alloc.
    [[gnu::noinline]] bool add(Producer& producer) {
        Ring spare;
        ShortLock lock(mutex);
        // Checked again after each allocation: others may have added, taken, grown or closed meanwhile.
        while (isOpen_ && consumers_.isEmpty() && count() < capacity && count() == ring_.size()) {
            const std::size_t size = ring_.size() == 0 ? 8 : 2 * ring_.size();
            lock.unlock();
            spare = Ring(size);
            lock.lock();
            makeRoom(spare);
        }
        producer.isRefused_ = !isOpen_;
        if (!isOpen_) return false;
        if (Consumer* const consumer = consumers_.takeFirst()) {
            consumer->payload.emplace(std::move(producer.payload));
            lock.unlock();
            consumer->post();
            return false;
        }
        if (count() < capacity) {
            append(std::move(producer.payload));
            return false;
        }
        producer.enqueue(*this, producers_);
        return true;
    }

    /// True if the consumer has to wait, else its payload is the item or, at the end, empty. What it takes makes room
    /// for the producer that waits longest.
    [[gnu::noinline]] bool next(Consumer& consumer) noexcept {
        ShortLock lock(mutex);
        addedSeen_ = added_.load(MemoryOrder::relaxed);
        if (count() == 0) {
            if (!isOpen_) return false;
            consumer.enqueue(*this, consumers_);
            return true;
        }
        takeInto(consumer);
        Producer* const admitted = producers_.takeFirst();
        if (admitted) append(std::move(admitted->payload));
        lock.unlock();
        if (admitted) admitted->post();
        return false;
    }

    /// Consumers wait only while nothing is there, so all of them get nothing. Producers that wait stay.
    void close() noexcept {
        ReleasedWaiters released;
        const ShortLock lock(mutex);
        isOpen_ = false;
        while (Consumer* const consumer = consumers_.takeFirst()) released.append(*consumer);
    }

    /// In items, at least 1. The ring may be larger, and is never fuller.
    const std::uint64_t capacity;
    FifoMutex mutex;

private:
    using Ring = typename ItemRing<Item>::Storage;

    /// Under both mutexes.
    [[nodiscard]] std::size_t count() const noexcept {
        return added_.load(MemoryOrder::relaxed) - taken_.load(MemoryOrder::relaxed);
    }
    /// Under the mutex of the adding side.
    void append(Item&& item) noexcept {
        const std::size_t added = added_.load(MemoryOrder::relaxed);
        ring_.fill(added, std::move(item));
        added_.store(added + 1, MemoryOrder::release);
    }
    /// Under the mutex of the taking side.
    void takeInto(Consumer& consumer) noexcept {
        const std::size_t taken = taken_.load(MemoryOrder::relaxed);
        Item* const item = ring_.at(taken);
        consumer.payload.emplace(std::move(*item));
        item->~Item();
        taken_.store(taken + 1, MemoryOrder::release);
    }

    /// Moves the items into the larger of the two; `spare` becomes the other one.
    void makeRoom(Ring& spare) noexcept {
        if (spare.size() <= ring_.size()) return;
        for (std::size_t i = taken_.load(MemoryOrder::relaxed); i != added_.load(MemoryOrder::relaxed); ++i) {
            spare.fill(i, ring_.take(i));
        }
        std::swap(ring_, spare);
    }

    /// Written by the taking side; both indexes only grow, and the ring wraps them.
    alignas(64) Atomic<std::size_t> taken_{0};
    /// The taking side's memory of added_.
    std::size_t addedSeen_ = 0;
    /// Written by the adding side.
    alignas(64) Atomic<std::size_t> added_{0};
    /// The adding side's memory of taken_.
    std::size_t takenSeen_ = 0;
    /// From here on what changes with both mutexes alone.
    alignas(64) Ring ring_;
    WaiterList<Producer> producers_;
    WaiterList<Consumer> consumers_;
    bool isOpen_ = true;
};

/// What add() gives; the item is its payload until it is buffered.
template <class Item>
class FifoState<Item>::Producer final : public Waiter<FifoState, Item> {
public:
    static constexpr const char* operation = "add(_:)";

    Producer(FifoState& buffer, Item item) noexcept : Waiter<FifoState, Item>(std::move(item)), buffer_(buffer) {}
    /// Without suspending where there is room and nobody waits.
    [[nodiscard]] bool await_ready() noexcept { return buffer_.tryAdd(*this); }
    template <class Promise>
    bool await_suspend(std::coroutine_handle<Promise> coroutine) {
        this->capture(coroutine);
        return buffer_.add(*this);
    }
    /// Throws if the buffer was closed before the item was in it.
    void await_resume() {
        this->leave();
        if (isRefused_) throw DataCoordinationError(DataCoordinationError::Case::addToClosedConduitError);
    }

private:
    friend FifoState;
    FifoState& buffer_;
    /// The buffer was closed before the item was in it.
    bool isRefused_ = false;
};

}  // namespace detail

/// Hands items from producer tasks to consumer tasks in the order in which they were added. A producer is suspended
/// while `capacity` items are buffered, a consumer while none is. Copies are the same buffer.
/// Order    Producers and consumers are each served first in, first out, and posted: add() ends before the consumer
///          runs.
/// Cost     O(1); storage grows to the largest number of items that were buffered at once and is kept. One producer and
///          one consumer seldom touch the same memory.
/// Limits   Cancellation ends no wait.
/// Threads  Every function from any thread.
template <class Item>
class OrvaneBlockingFifoBuffer {
    using State = detail::FifoState<Item>;

public:
    using SuppliedType = Item;
    using ConsumableType = Item;

    /// 0 counts as 1.
    explicit OrvaneBlockingFifoBuffer(std::uint64_t capacity) : state_(Shared<State>::make(capacity)) {}

    /// `co_await buffer.add(item)`. Throws DataCoordinationError if the buffer is closed by then. An item whose producer
    /// waits when the buffer is closed is still delivered.
    [[nodiscard]] typename State::Producer add(Item item) const noexcept { return {*state_, std::move(item)}; }
    /// `co_await buffer.next()`: the oldest item; nothing once the buffer is closed and all items have been delivered.
    [[nodiscard]] typename State::Consumer next() const noexcept { return typename State::Consumer(*state_); }
    /// Refuses further items, for good. Closing again does nothing.
    void close() const noexcept { state_->close(); }

    [[nodiscard]] std::uint64_t capacity() const noexcept { return state_->capacity; }

private:
    Shared<State> state_;
};

static_assert(PushPullConduit<OrvaneBlockingFifoBuffer<int>>);

}  // namespace corvex::inline v0

#pragma once

#include <algorithm>
#include <cstdint>
#include <utility>

#include <Corvex/concurrency/DataCoordinationError.h>
#include <Corvex/concurrency/ItemRing.h>
#include <Corvex/concurrency/PipelineProtocols.h>
#include <Corvex/concurrency/PullAwaiter.h>

namespace corvex::inline v0 {

namespace detail {

/// Consumers wait only while nothing is buffered, producers only while the buffer is full.
template <class Item>
class FifoState final : public SharedState {
public:
    using Supplied = Item;
    using Consumer = PullAwaiter<FifoState>;
    class Producer;

    explicit FifoState(std::uint64_t ownCapacity) noexcept : capacity(std::max<std::uint64_t>(ownCapacity, 1)) {}

    /// True if the producer has to wait.
    [[gnu::noinline]] bool add(Producer& producer) {
        typename ItemRing<Item>::Storage spare;
        ShortLock lock(mutex);
        while (isOpen_ && consumers_.isEmpty() && items_.count() < capacity && items_.needsRoom()) {
            const std::size_t size = items_.sizeForMore();
            lock.unlock();
            spare = typename ItemRing<Item>::Storage(size);
            lock.lock();
            items_.makeRoom(spare);
        }
        producer.isRefused_ = !isOpen_;
        if (!isOpen_) return false;
        if (Consumer* const consumer = consumers_.takeFirst()) {
            consumer->payload.emplace(std::move(producer.payload));
            lock.unlock();
            consumer->post();
            return false;
        }
        if (items_.count() < capacity) {
            items_.append(std::move(producer.payload));
            return false;
        }
        producer.enqueue(*this, producers_);
        return true;
    }

    /// True if the consumer has to wait, else its payload is the item or, at the end, empty.
    [[gnu::noinline]] bool next(Consumer& consumer) noexcept {
        ShortLock lock(mutex);
        if (items_.isEmpty()) {
            if (!isOpen_) return false;
            consumer.enqueue(*this, consumers_);
            return true;
        }
        consumer.payload.emplace(items_.takeFirst());
        Producer* const admitted = producers_.takeFirst();
        if (admitted) items_.append(std::move(admitted->payload));
        lock.unlock();
        if (admitted) admitted->post();
        return false;
    }

    void close() noexcept {
        ReleasedWaiters released;
        const ShortLock lock(mutex);
        isOpen_ = false;
        while (Consumer* const consumer = consumers_.takeFirst()) released.append(*consumer);
    }

    ShortMutex mutex;
    const std::uint64_t capacity;

private:
    ItemRing<Item> items_;
    WaiterList<Producer> producers_;
    WaiterList<Consumer> consumers_;
    bool isOpen_ = true;
};

template <class Item>
class FifoState<Item>::Producer final : public Waiter<FifoState, Item> {
public:
    static constexpr const char* operation = "add(_:)";

    Producer(FifoState& buffer, Item item) noexcept : Waiter<FifoState, Item>(std::move(item)), buffer_(buffer) {}
    [[nodiscard]] bool await_ready() const noexcept { return false; }
    template <class Promise>
    bool await_suspend(std::coroutine_handle<Promise> coroutine) {
        this->capture(coroutine);
        return buffer_.add(*this);
    }
    void await_resume() {
        this->leave();
        if (isRefused_) throw DataCoordinationError(DataCoordinationError::Case::addToClosedConduitError);
    }

private:
    friend FifoState;
    FifoState& buffer_;
    bool isRefused_ = false;
};

}  // namespace detail

/// Hands items from producer tasks to consumer tasks in the order in which they were added. A producer is suspended
/// while `capacity` items are buffered, a consumer while none is. Copies are the same buffer.
/// Order    Producers and consumers are each served first in, first out, and posted: add() ends before the consumer runs.
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
    /// Refuses further items, for good.
    void close() const noexcept { state_->close(); }

    [[nodiscard]] std::uint64_t capacity() const noexcept { return state_->capacity; }

private:
    Shared<State> state_;
};

static_assert(PushPullConduit<OrvaneBlockingFifoBuffer<int>>);

}  // namespace corvex::inline v0

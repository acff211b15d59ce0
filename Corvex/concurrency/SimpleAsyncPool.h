#pragma once

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include <Corvex/concurrency/AsyncPool.h>
#include <Corvex/concurrency/ItemRing.h>
#include <Corvex/platform/Task.h>
#include <Corvex/platform/Waiter.h>

namespace corvex::inline v0 {

namespace detail {

/// What is on hand and who waits. Borrowers wait only while no item is on hand.
template <class Item>
class PoolState final : public SharedState {
public:
    class Borrower;

    /// True if the borrower has to wait.
    [[gnu::noinline]] bool checkOut(Borrower& borrower) noexcept {
        const ShortLock lock(mutex);
        if (available.isEmpty()) {
            borrower.enqueue(*this, waiters);
            return true;
        }
        borrower.payload.emplace(available.takeLast());
        return false;
    }

    /// To the borrower that waits longest, else into the ring; `grows`: with one more of capacity. Storage grows
    /// outside of the lock. An item that is neither handed on nor kept goes with the caller.
    void checkIn(Item& item, bool grows) {
        typename ItemRing<Item>::Storage spare;
        ShortLock lock(mutex);
        while (waiters.isEmpty() && available.needsRoom() && (grows || hasRoom())) {
            const std::size_t size = available.sizeForMore();
            lock.unlock();
            spare = typename ItemRing<Item>::Storage(size);
            lock.lock();
            available.makeRoom(spare);
        }
        if (grows) capacity = checkedAdd<std::int64_t>(capacity, 1);
        if (Borrower* const borrower = waiters.takeFirst()) {
            borrower->payload.emplace(std::move(item));
            lock.unlock();
            borrower->post();
        } else if (hasRoom()) {
            available.append(std::move(item));
        }
    }

    /// Drops what is beyond the new capacity, in one step; none of it is freed under the lock. False: an increase, which
    /// nobody wants.
    bool updateCapacity(std::int64_t newCapacity, bool mayRaise) {
        const auto keptCount = static_cast<std::uint64_t>(newCapacity > 0 ? newCapacity : 0);
        std::vector<Item> dropped;
        ShortLock lock(mutex);
        while (available.count() > keptCount && available.count() - keptCount > dropped.capacity()) {
            const std::size_t count = available.count() - keptCount;
            lock.unlock();
            dropped.reserve(count);
            lock.lock();
        }
        if (!mayRaise && capacity < newCapacity) return false;
        capacity = newCapacity;
        while (available.count() > keptCount) dropped.push_back(available.takeFirst());
        return true;
    }
    /// Whether fewer than `capacity` are on hand. Under the lock.
    [[nodiscard]] bool hasRoom() const noexcept { return static_cast<std::int64_t>(available.count()) < capacity; }

    /// Guards the three below.
    ShortMutex mutex;
    /// On hand, oldest first.
    ItemRing<Item> available;
    /// While there are any, nothing is on hand.
    WaiterList<Borrower> waiters;
    /// How many are kept on hand at most; may be negative, as a host may set it.
    std::int64_t capacity = 0;
};

/// What checkOut() gives. Cancellation does not end its wait.
template <class Item>
class PoolState<Item>::Borrower final : public Waiter<PoolState, std::optional<Item>> {
public:
    /// What a frame that is destroyed too late is said to wait in; see Waiter.
    static constexpr const char* operation = "checkOut()";

    explicit Borrower(PoolState& pool) noexcept : pool_(pool) {}
    /// Items are looked for under the lock alone.
    [[nodiscard]] bool await_ready() const noexcept { return false; }
    template <class Promise>
    bool await_suspend(std::coroutine_handle<Promise> coroutine) noexcept {
        this->capture(coroutine);
        return pool_.checkOut(*this);
    }
    /// The item, which is the borrower's until it checks it in.
    Item await_resume() noexcept {
        this->leave();
        return std::move(*this->payload);
    }

private:
    friend PoolState;
    PoolState& pool_;
};

}  // namespace detail

/// A stock of items that tasks borrow and bring back. Copies are the same pool.
/// Order    The item that came back last goes out first, as it is likeliest to be in the caches. Borrowers that wait
///          are served first in, first out, and posted.
/// Use      Nothing brings an item back by itself: check it in on every way out of the borrowing task. The pool does
///          not know its items, and takes any.
/// Cost     O(1). Items move without exceptions, which is checked when the pool is compiled.
/// Threads  Every function from any thread.
template <class Item>
class SimpleAsyncPool {
    using State = detail::PoolState<Item>;

public:
    using ItemType = Item;

    /// The last of the items goes out first. The capacity is their number.
    explicit SimpleAsyncPool(std::vector<Item> items) : state_(Shared<State>::make()) {
        state_->capacity = checkedCast<std::int64_t>(items.size());
        if (items.empty()) return;
        typename ItemRing<Item>::Storage storage(items.size());
        state_->available.makeRoom(storage);
        for (Item& item : items) state_->available.append(std::move(item));
    }

    /// `co_await pool.checkOut()` gives an item; it is suspended while none is on hand. In an empty pool that is until
    /// somebody adds one.
    [[nodiscard]] typename State::Borrower checkOut() const noexcept { return typename State::Borrower(*state_); }
    /// Hands the item to the borrower that waits longest, else keeps it; drops it if `capacity` items are on hand.
    void checkIn(Item item) const { state_->checkIn(item, false); }
    /// Raises the capacity by one and checks the item in. A capacity beyond 64 bits stops the process. May throw
    /// std::bad_alloc, and so may checkIn() where the ring has to grow.
    void add(Item item) const { state_->checkIn(item, true); }

    /// How many items the pool keeps on hand at most. Setting it drops nothing; 0 or less keeps nothing that comes back.
    [[nodiscard]] std::int64_t capacity() const noexcept {
        const ShortLock lock(state_->mutex);
        return state_->capacity;
    }
    void setCapacity(std::int64_t capacity) const noexcept {
        const ShortLock lock(state_->mutex);
        state_->capacity = capacity;
    }
    /// Sets the capacity and drops the items beyond it, those that have been on hand for longest first. Borrowed items
    /// are dropped when they come back.
    void updateCapacity(std::int64_t newCapacity) const { state_->updateCapacity(newCapacity, true); }
    /// As above where that is no increase. Else adds what `co_await factory()` gives, an optional item, until the capacity
    /// is reached or the factory gives nothing. What the factory throws ends it; items added so far stay.
    template <class Factory>
    Task<> updateCapacity(std::int64_t newCapacity, Factory factory) const {
        return grow(*this, newCapacity, std::move(factory));
    }

    /// Items that nobody has borrowed, at this moment.
    [[nodiscard]] std::size_t availableCount() const noexcept {
        const ShortLock lock(state_->mutex);
        return state_->available.count();
    }
    /// Tasks that wait for an item, at this moment.
    [[nodiscard]] std::size_t waitingCount() const noexcept {
        const ShortLock lock(state_->mutex);
        return state_->waiters.count();
    }

private:
    template <class Factory>
    static Task<> grow(SimpleAsyncPool pool, std::int64_t newCapacity, Factory factory) {
        if (pool.state_->updateCapacity(newCapacity, false)) co_return;
        do {
            std::optional<Item> item = co_await factory();
            if (!item) break;
            pool.add(std::move(*item));
        } while (pool.capacity() < newCapacity);
    }

    Shared<State> state_;
};

static_assert(AsyncPool<SimpleAsyncPool<int>>);

}  // namespace corvex::inline v0

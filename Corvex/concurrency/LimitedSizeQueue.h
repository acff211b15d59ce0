#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <utility>
#include <vector>

#include <Corvex/platform/SerialQueue.h>

namespace corvex::inline v0 {

/// The newest items, `capacity` at most: a further one drops the oldest. Writing returns at once, also while somebody
/// reads; reading waits for all that was written before. Any thread. Destruction waits for what was pushed.
template <class Item>
class LimitedSizeQueue final {
public:
    /// In items. 0 counts as 1.
    explicit LimitedSizeQueue(std::uint64_t capacity) : capacity_(capacity == 0 ? 1 : capacity) {}

    /// Drops the oldest where the queue is full. Allocates; what is dropped is destroyed on the queue's thread.
    void push(Item item) {
        dispatch_.async([this, item = std::move(item)]() mutable {
            if (queue_.size() >= capacity_) queue_.pop_front();
            queue_.push_back(std::move(item));
        });
    }
    /// Drops what was pushed before, in its turn: what another thread pushes meanwhile may stay.
    void clear() {
        dispatch_.async([this] { std::deque<Item>().swap(queue_); });
    }

    /// In items, at least 1.
    [[nodiscard]] std::uint64_t capacity() const noexcept { return capacity_; }
    /// Copies of all items, oldest first.
    [[nodiscard]] std::vector<Item> getQueue() const {
        return dispatch_.sync([this] { return std::vector<Item>(queue_.begin(), queue_.end()); });
    }
    /// Of items, once all that was pushed before has arrived.
    [[nodiscard]] std::int64_t getCount() const {
        return dispatch_.sync([this] { return static_cast<std::int64_t>(queue_.size()); });
    }
    /// A copy of the oldest item; none while the queue is empty.
    [[nodiscard]] std::optional<Item> getFirst() const {
        return dispatch_.sync([this] { return queue_.empty() ? std::nullopt : std::optional<Item>(queue_.front()); });
    }
    /// A copy of the newest item; none while the queue is empty.
    [[nodiscard]] std::optional<Item> getLast() const {
        return dispatch_.sync([this] { return queue_.empty() ? std::nullopt : std::optional<Item>(queue_.back()); });
    }

private:
    const std::uint64_t capacity_;
    std::deque<Item> queue_;                                       ///< Touched by the work of `dispatch_` alone.
    mutable SerialQueue dispatch_{"com.orvane.limitedSizeQueue"};  ///< Last, so that its work ends before the rest.
};

}  // namespace corvex::inline v0

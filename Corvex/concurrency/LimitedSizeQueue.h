#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <utility>
#include <vector>

#include <Corvex/platform/SerialQueue.h>

namespace corvex::inline v0 {

/// The newest items, `capacity` at most: a further one drops the oldest. Writing returns at once, also while somebody
/// reads; reading waits for all that was written before. Any thread.
template <class Item>
class LimitedSizeQueue final {
public:
    /// 0 counts as 1.
    explicit LimitedSizeQueue(std::uint64_t capacity) : capacity_(capacity == 0 ? 1 : capacity) {}

    /// Drops the oldest where the queue is full.
    void push(Item item) {
        dispatch_.async([this, item = std::move(item)]() mutable {
            if (queue_.size() >= capacity_) queue_.pop_front();
            queue_.push_back(std::move(item));
        });
    }
    /// Drops what was pushed before.
    void clear() {
        dispatch_.async([this] { std::deque<Item>().swap(queue_); });
    }

    [[nodiscard]] std::uint64_t capacity() const noexcept { return capacity_; }
    /// Oldest first.
    [[nodiscard]] std::vector<Item> getQueue() const {
        return dispatch_.sync([this] { return std::vector<Item>(queue_.begin(), queue_.end()); });
    }
    /// Of items, once all that was pushed before has arrived.
    [[nodiscard]] std::int64_t getCount() const {
        return dispatch_.sync([this] { return static_cast<std::int64_t>(queue_.size()); });
    }
    /// The oldest, and the newest.
    [[nodiscard]] std::optional<Item> getFirst() const {
        return dispatch_.sync([this] { return queue_.empty() ? std::nullopt : std::optional<Item>(queue_.front()); });
    }
    /// As getFirst().
    [[nodiscard]] std::optional<Item> getLast() const {
        return dispatch_.sync([this] { return queue_.empty() ? std::nullopt : std::optional<Item>(queue_.back()); });
    }

private:
    const std::uint64_t capacity_;
    std::deque<Item> queue_;                                       ///< Touched by the work of `dispatch_` alone.
    mutable SerialQueue dispatch_{"com.orvane.limitedSizeQueue"};  ///< Last, so that its work ends before the rest.
};

}  // namespace corvex::inline v0

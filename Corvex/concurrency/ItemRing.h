#pragma once

#include <bit>
#include <cstddef>
#include <new>
#include <type_traits>
#include <utility>

namespace corvex::inline v0 {

/// A queue of items in a ring of storage. It never allocates by itself: whoever guards it with a lock makes larger
/// storage outside of that and swaps it in. Items move without exceptions. Not synchronised.
/// Use      While needsRoom(): unlock, make a Storage of sizeForMore(), lock, makeRoom(storage), look again. Then
///          append().
template <class Item>
class ItemRing {
public:
    static_assert(std::is_nothrow_move_constructible_v<Item>, "an item must be movable without exceptions");

    /// Room for items, without any: it knows its size and not which of its slots hold something, so its end destroys
    /// none.
    class Storage {
    public:
        Storage() noexcept = default;
        /// Room for at least `size` items, a power of two. Throws std::bad_alloc.
        explicit Storage(std::size_t size)
            : items_(static_cast<Item*>(::operator new(std::bit_ceil(size) * sizeof(Item), alignment))),
              size_(std::bit_ceil(size)) {}
        Storage(Storage&& other) noexcept
            : items_(std::exchange(other.items_, nullptr)), size_(std::exchange(other.size_, 0)) {}
        /// Exchanges the two.
        Storage& operator=(Storage&& other) noexcept {
            std::swap(items_, other.items_);
            std::swap(size_, other.size_);
            return *this;
        }
        ~Storage() { ::operator delete(items_, alignment); }
        /// Indexes wrap around; a slot may be empty.
        [[nodiscard]] Item* at(std::size_t index) const noexcept { return items_ + (index & (size_ - 1)); }
        [[nodiscard]] std::size_t size() const noexcept { return size_; }

        /// Makes the item of a slot that is empty.
        void fill(std::size_t index, Item&& item) const noexcept {
            ::new (static_cast<void*>(at(index))) Item(std::move(item));
        }
        /// Leaves the slot empty.
        Item take(std::size_t index) const noexcept {
            Item* const item = at(index);
            Item taken(std::move(*item));
            item->~Item();
            return taken;
        }

    private:
        static constexpr std::align_val_t alignment{alignof(Item)};

        Item* items_ = nullptr;
        std::size_t size_ = 0;  ///< A power of two.
    };

    ItemRing() noexcept = default;
    ItemRing(const ItemRing&) = delete;
    ItemRing& operator=(const ItemRing&) = delete;
    /// Destroys what is left in it.
    ~ItemRing() {
        while (count_ > 0) takeFirst();
    }

    [[nodiscard]] bool isEmpty() const noexcept { return count_ == 0; }
    /// Items that are in it, not the room for them.
    [[nodiscard]] std::size_t count() const noexcept { return count_; }
    /// Whether append() has no slot.
    [[nodiscard]] bool needsRoom() const noexcept { return count_ == storage_.size(); }
    /// How large the storage should be that makeRoom() gets.
    [[nodiscard]] std::size_t sizeForMore() const noexcept { return storage_.size() == 0 ? 8 : 2 * storage_.size(); }
    /// Moves the items into the larger of the two; `storage` becomes the other one.
    void makeRoom(Storage& storage) noexcept {
        if (storage.size() <= storage_.size()) return;
        for (std::size_t i = 0; i < count_; ++i) {
            storage.fill(i, storage_.take(first_ + i));
        }
        first_ = 0;
        std::swap(storage_, storage);
    }

    /// Needs a free slot. O(1), as the next two are.
    void append(Item&& item) noexcept { storage_.fill(first_ + count_++, std::move(item)); }
    /// The oldest. Needs an item.
    Item takeFirst() noexcept {
        --count_;
        return storage_.take(first_++);
    }
    /// The newest. Needs an item.
    Item takeLast() noexcept { return storage_.take(first_ + --count_); }

private:
    Storage storage_;
    std::size_t first_ = 0, count_ = 0;
};

}  // namespace corvex::inline v0

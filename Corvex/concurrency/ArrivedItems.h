#pragma once

#include <cstddef>
#include <cstdint>
#include <new>
#include <optional>
#include <utility>

#include <Corvex/collections/AVLTree.h>
#include <Corvex/concurrency/KeyedItem.h>
#include <Corvex/platform/Atomic.h>
#include <Corvex/platform/FrameCache.h>

namespace corvex::inline v0 {

namespace detail {

/// Items of any keys that come from any threads and wait to be taken by their keys. Those who add take no lock and meet on
/// one word; everything else is for one thread at a time. What is new is put in order by who takes: into a list, where keys
/// come nearly in order, else into a tree, whose keys are all below those of the list.
///
/// What has come lies in a list that grows at its head, the newest first; its word also carries whether it is closed and
/// whether somebody waits. What has been collected lies in two places: a doubly linked list for the keys that come nearly in
/// order, which take no search and no further memory, and a tree for all others. An item is in one of the three.
template <class Key, class Item>
class ArrivedItems {
public:
    /// One item, and the memory that it came in.
    struct Arrival {
        explicit Arrival(KeyedItem<Key, Item>&& ownEntry) noexcept : entry(std::move(ownEntry)) {}
        /// From the thread's own cache of small blocks, as one comes and goes with every item.
        static void* operator new(std::size_t size) { return FrameCache::allocate(size); }
        static void operator delete(void* memory, std::size_t size) noexcept { FrameCache::release(memory, size); }
        /// The cache knows no larger alignment than usual.
        static void* operator new(std::size_t size, std::align_val_t alignment) {
            return ::operator new(size, alignment);
        }
        static void operator delete(void* memory, std::align_val_t alignment) noexcept {
            ::operator delete(memory, alignment);
        }

        KeyedItem<Key, Item> entry;
        /// Neighbours in the list that it is in; `previous` only once it has been collected.
        Arrival *next = nullptr, *previous = nullptr;
    };
    /// Items to be destroyed when no lock is held any more: declare it before the lock.
    class Discarded {
    public:
        Discarded() noexcept = default;
        /// Destroys them, on this thread.
        ~Discarded() { freeAll(first_); }
        Discarded(const Discarded&) = delete;
        Discarded& operator=(const Discarded&) = delete;
        void add(Arrival* arrival) noexcept {  ///< Takes it over.
            arrival->next = std::exchange(first_, arrival);
        }

    private:
        Arrival* first_ = nullptr;
    };
    /// What became of an item, and whether its producer has more to do.
    enum class Addition : std::uint8_t { refused, kept, awaited };

    ArrivedItems() = default;
    ArrivedItems(const ArrivedItems&) = delete;
    ArrivedItems& operator=(const ArrivedItems&) = delete;
    /// Nobody adds or takes any more.
    ~ArrivedItems() {
        // What the tree holds goes with it.
        freeAll(pointerOf(arrived_.load(MemoryOrder::acquire)));
        freeAll(first_);
    }

    /// From any thread. `awaited` says that who takes wants to hear of it, once, or that much has come: then collect().
    /// Calls keep() before that, as who takes the item may let go of this. Else this is not touched once it is added.
    template <class Keep>
    Addition add(KeyedItem<Key, Item>& entry, const Keep& keep) {
        std::uintptr_t seen = arrived_.load(MemoryOrder::relaxed);
        if ((seen & isClosed) != 0) return Addition::refused;
        // Two producers may read the same count: it says when about a crowd has come, and needs no instruction that locks.
        const unsigned count = uncollected_.load(MemoryOrder::relaxed) + 1;
        uncollected_.store(count, MemoryOrder::relaxed);
        auto* const arrival = new Arrival(std::move(entry));
        Addition addition = Addition::kept;
        do {
            if ((seen & isClosed) != 0) {
                delete arrival;
                return Addition::refused;
            }
            // Before the item is in the list: after that this may be gone.
            if (addition == Addition::kept && ((seen & isAwaited) != 0 || count >= crowd)) {
                keep();
                addition = Addition::awaited;
            }
            // The word loses "is awaited" with this: who comes later need not tell again.
            arrival->next = pointerOf(seen);
        } while (!arrived_.compareExchange(seen, reinterpret_cast<std::uintptr_t>(arrival), MemoryOrder::acquireRelease,
                                           MemoryOrder::relaxed));
        return addition;
    }
    /// Refuses what comes from now on. What has come before can still be collected.
    void close() noexcept { arrived_.fetchOr(isClosed, MemoryOrder::acquireRelease); }
    /// Asks to be told of what comes. False if something has come.
    [[nodiscard]] bool await() noexcept {
        std::uintptr_t nothing = 0;
        return arrived_.compareExchange(nothing, isAwaited, MemoryOrder::acquireRelease, MemoryOrder::relaxed);
    }

    /// Puts in order what has come, in which an item replaces one of the same key. Time for each item is constant while
    /// keys come nearly in order, else logarithmic. Takes the whole list in one exchange, so that producers never wait.
    void collect(Discarded& discarded) {
        std::uintptr_t seen = arrived_.load(MemoryOrder::relaxed);
        if ((seen & ~isClosed) == 0) return;
        seen = arrived_.exchange(seen & isClosed, MemoryOrder::acquireRelease);
        uncollected_.store(0, MemoryOrder::relaxed);
        // Turned round: of two items with one key the later one has to win.
        Arrival* oldestFirst = nullptr;
        for (Arrival* arrival = pointerOf(seen); arrival;) {
            Arrival* const older = arrival->next;
            arrival->next = std::exchange(oldestFirst, arrival);
            arrival = older;
        }
        while (oldestFirst) {
            Arrival* const arrival = std::exchange(oldestFirst, oldestFirst->next);
            if (!enlist(arrival, discarded)) insert(arrival, discarded);
        }
    }

    /// Nothing where the key is not there.
    using Taken = std::optional<KeyedItem<Key, Item>>;

    /// Of what has been collected: the item of that key, or nothing.
    void take(const Key& key, Taken& taken, Discarded& discarded) {
        if (first_ && !(key < first_->entry.key)) {
            Arrival* arrival = first_;
            for (int i = 0; i < reach && arrival && arrival->entry.key < key; ++i) arrival = arrival->next;
            if (!arrival || key < arrival->entry.key) return;
            if (arrival->entry.key == key) return unlink(arrival, taken, discarded);
            // Further in than is worth looking: the tree finds it in fewer steps, and what comes after it, too.
            moveToTree(discarded);
        }
        give(tree_.take(key), taken);
    }
    /// As take(): that of the smallest key.
    void takeMinimum(Taken& taken, Discarded& discarded) {
        if (tree_.root()) {  // below all that is in the list
            give(tree_.takeMinimum(), taken);
        } else if (first_) {
            unlink(first_, taken, discarded);
        }
    }

private:
    static constexpr std::uintptr_t isClosed = 1, isAwaited = 2;
    /// After so many who takes is told, so that what has been replaced does not stay for long.
    static constexpr unsigned crowd = 128;
    /// How many places of the list are looked at from either end.
    static constexpr int reach = 16;
    using Tree = AVLTree<Key, Item>;

    /// The newest item of a word, without its flags; null for none.
    static Arrival* pointerOf(std::uintptr_t word) noexcept {
        // NOLINTNEXTLINE(performance-no-int-to-ptr): two flags share the word
        return reinterpret_cast<Arrival*>(word & ~(isClosed | isAwaited));
    }
    /// Follows `next` to the end.
    static void freeAll(Arrival* first) noexcept {
        while (first) delete std::exchange(first, first->next);
    }

    /// Puts an item into the list; false if its place is not near either end of that. Then the whole list has moved to the
    /// tree, or the tree holds larger keys: the item belongs there, too.
    bool enlist(Arrival* arrival, Discarded& discarded) {
        const Key& key = arrival->entry.key;
        Arrival* before = last_;
        if (!before) {
            // A list begins above the tree only, so that the two never overlap.
            if (tree_.root() && !(tree_.root()->maximum()->key() < key)) return false;
            link(nullptr, arrival, nullptr);
            return true;
        }
        if (key < first_->entry.key) {
            if (tree_.root()) return false;
            link(nullptr, arrival, first_);
            return true;
        }
        // Ends within the list, as the first key is at or below this one.
        for (int i = 0; i < reach; ++i, before = before->previous) {
            if (key < before->entry.key) continue;
            if (before->entry.key == key) {
                std::swap(before->entry.item, arrival->entry.item);
                discarded.add(arrival);
            } else {
                link(before, arrival, before->next);
            }
            return true;
        }
        moveToTree(discarded);
        return false;
    }
    /// Keys do not come in order: the tree takes over all that is in the list.
    void moveToTree(Discarded& discarded) {
        // From the smallest key on, each at the end of the tree, which is where inserting costs least.
        while (Arrival* const arrival = first_) {
            first_ = arrival->next;
            insert(arrival, discarded);
        }
        last_ = nullptr;
    }
    /// Into the tree. An item of the same key is replaced.
    void insert(Arrival* arrival, Discarded& discarded) {
        if (Item* const waiting = tree_.search(arrival->entry.key)) {
            std::swap(*waiting, arrival->entry.item);
        } else {
            tree_.insert(std::move(arrival->entry.key), std::move(arrival->entry.item));
        }
        discarded.add(arrival);
    }
    /// An entry of the tree, if there is one, as what is handed out.
    static void give(std::optional<typename Tree::Entry> entry, Taken& taken) noexcept {
        if (entry) taken.emplace(std::move(entry->key), std::move(*entry->payload));
    }
    /// Between two neighbours in the list, either of which may be null: an end.
    void link(Arrival* before, Arrival* arrival, Arrival* after) noexcept {
        arrival->previous = before;
        arrival->next = after;
        (before ? before->next : first_) = arrival;
        (after ? after->previous : last_) = arrival;
    }
    /// Out of the list, into what is handed out.
    void unlink(Arrival* arrival, Taken& taken, Discarded& discarded) noexcept {
        (arrival->previous ? arrival->previous->next : first_) = arrival->next;
        (arrival->next ? arrival->next->previous : last_) = arrival->previous;
        taken.emplace(std::move(arrival->entry));
        discarded.add(arrival);
    }

    alignas(64) Atomic<std::uintptr_t> arrived_{0};  ///< The newest, which leads to those before, and two flags.
    Atomic<unsigned> uncollected_{0};                ///< About so many have come; no more is needed.
    /// The list of those that came in order, smallest key first. On another cache line than what producers write.
    alignas(64) Arrival* first_ = nullptr;
    Arrival* last_ = nullptr;
    /// All others. Its keys are below those of the list.
    Tree tree_;
};

}  // namespace detail

}  // namespace corvex::inline v0

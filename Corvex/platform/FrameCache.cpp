#include <Corvex/platform/FrameCache.h>

#include <utility>

#include <Corvex/platform/ShortMutex.h>

namespace corvex::inline v0 {
namespace detail {

constinit thread_local FrameCache::State FrameCache::state{};

/// Batches that any thread may take: blocks linked through `next`, each batch's first in the list of the size's batches.
struct FrameCache::Store {
    struct Batch : Block {
        Batch* nextBatch;
    };
    ShortMutex mutex;
    std::array<Batch*, classCount> batches{};
    std::size_t bytes = 0;

    static Store& shared() noexcept {
        static constinit Store store;
        return store;
    }
    [[nodiscard]] static constexpr std::size_t bytesOf(std::size_t sizeClass) noexcept {
        return (sizeClass + 1) * step * batchCount;
    }
    static void discard(Block* first) noexcept {
        while (first) ::operator delete(std::exchange(first, first->next));
    }
};

/// Gives back what a thread kept when it ends.
struct FrameCache::ThreadEnd {
    ThreadEnd() noexcept {
        state.isRegistered = true;
        for (Kept& kept : state.kept) kept.count = 0;
    }
    ~ThreadEnd() {
        state.isRegistered = false;
        for (Kept& kept : state.kept) Store::discard(std::exchange(kept, Kept{}).first);
    }
    ThreadEnd(const ThreadEnd&) = delete;
    ThreadEnd& operator=(const ThreadEnd&) = delete;
};

bool FrameCache::registerThread() noexcept {
    static thread_local const ThreadEnd end;
    return state.isRegistered;
}

void* FrameCache::allocateMore(std::size_t sizeClass) {
    if (!state.isRegistered && !registerThread()) return ::operator new((sizeClass + 1) * step);
    Store& store = Store::shared();
    ShortLock lock(store.mutex);
    Store::Batch* const batch = store.batches[sizeClass];
    if (batch) {
        store.batches[sizeClass] = batch->nextBatch;
        store.bytes -= Store::bytesOf(sizeClass);
    }
    lock.unlock();
    if (!batch) return ::operator new((sizeClass + 1) * step);
    state.kept[sizeClass] = {batch->next, batchCount - 1};
    return batch;
}

void FrameCache::releaseSome(std::size_t sizeClass) noexcept {
    Kept& kept = state.kept[sizeClass];
    if (!state.isRegistered) {  // there is one block only
        if (registerThread()) {
            kept.count = 1;
        } else {
            Store::discard(std::exchange(kept, Kept{}).first);
        }
        return;
    }
    if (kept.count == batchCount) return;
    Block* last = kept.first;  // the batch is the newer half, the next batch that which was kept before
    for (std::uint32_t i = 1; i < batchCount; ++i) last = last->next;
    Block* const first = std::exchange(kept.first, std::exchange(last->next, nullptr));
    kept.count = batchCount;
    Store& store = Store::shared();
    ShortLock lock(store.mutex);
    if (store.bytes + Store::bytesOf(sizeClass) > storeLimit) {
        lock.unlock();
        Store::discard(first);
        return;
    }
    store.bytes += Store::bytesOf(sizeClass);
    Block* const rest = first->next;
    store.batches[sizeClass] = ::new (static_cast<void*>(first)) Store::Batch{{rest}, store.batches[sizeClass]};
}

}  // namespace detail
}  // namespace corvex::inline v0

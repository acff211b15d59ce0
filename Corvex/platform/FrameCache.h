#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <new>

#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {
namespace detail {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define CORVEX_CACHES_FRAMES 0  // sanitizers are to see every frame come and go
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer) || __has_feature(memory_sanitizer)
#define CORVEX_CACHES_FRAMES 0
#endif
#endif
#ifndef CORVEX_CACHES_FRAMES
#define CORVEX_CACHES_FRAMES 1
#endif

/// Memory of coroutine frames, which come and go faster than anything else, often from one thread to another. A thread
/// keeps freed blocks of each small size for its next frames; what it has too much of goes in batches to a common store,
/// from which threads that have none take them (Bonwick and Adams, Magazines and Vmem, USENIX 2001). Larger blocks, and
/// what is beyond the store's limit, go to the heap.
class FrameCache {
public:
    /// `size` is above 0. Throws std::bad_alloc.
    [[nodiscard]] static void* allocate(std::size_t size) {
        if (!CORVEX_CACHES_FRAMES || size > largestSize) return ::operator new(size);
        Kept& kept = state.kept[classOf(size)];
        Block* const block = kept.first;
        if (!block) [[unlikely]]
            return allocateMore(classOf(size));
        kept.first = block->next;
        __builtin_prefetch(kept.first, 1);
        --kept.count;
        return block;
    }
    /// `size` as it was allocated. On any thread.
    static void release(void* memory, std::size_t size) noexcept {
        if (!CORVEX_CACHES_FRAMES || size > largestSize) {
            ::operator delete(memory);
            return;
        }
        Kept& kept = state.kept[classOf(size)];
        kept.first = ::new (memory) Block{kept.first};
        if (++kept.count % batchCount == 0) [[unlikely]]
            releaseSome(classOf(size));
    }

private:
    /// Sizes are rounded up to cache lines; larger frames are rare, and the heap is good enough for them.
    static constexpr std::size_t step = 64, largestSize = 512, classCount = largestSize / step;
    /// Blocks that move between a thread and the store at once.
    static constexpr std::uint32_t batchCount = 64;
    static constexpr std::uint32_t fullCount = batchCount - 1;  ///< Of none, while the thread may not keep any.
    /// In bytes, over all sizes: what is kept for other threads, not what frames may take.
    static constexpr std::size_t storeLimit = std::size_t{2} << 20U;

    /// A free block: its first bytes link it to the next.
    struct Block {
        Block* next;
    };
    /// The free blocks of one size that a thread keeps. The count begins so that the first release of a thread
    /// registers it.
    struct Kept {
        Block* first = nullptr;
        std::uint32_t count = fullCount;
    };
    /// What a thread keeps; constant initialisation, so that it costs nothing to reach.
    struct State {
        std::array<Kept, classCount> kept;
        bool isRegistered = false;
    };
    /// What the threads share. It is in the source.
    struct Store;
    struct ThreadEnd;

    /// `size` is above 0.
    [[nodiscard]] static constexpr std::size_t classOf(std::size_t size) noexcept { return (size - 1) / step; }
    /// Has what the thread keeps given back when it ends. False if that is happening.
    static bool registerThread() noexcept;
    [[nodiscard]] CORVEX_EXPORT static void* allocateMore(std::size_t sizeClass);
    /// Keeps one batch at most; nothing if the thread ends.
    CORVEX_EXPORT static void releaseSome(std::size_t sizeClass) noexcept;

    [[gnu::tls_model("initial-exec")]] static constinit CORVEX_EXPORT thread_local State state;
};

}  // namespace detail
}  // namespace corvex::inline v0

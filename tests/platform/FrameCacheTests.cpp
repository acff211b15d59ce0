#include <cstring>
#include <set>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include <Corvex/platform/FrameCache.h>

namespace corvex::frameCacheTests {
namespace {

using detail::FrameCache;

struct Held {
    void* memory;
    std::size_t size;
};

/// Blocks of every size, held at once in numbers beyond what a thread keeps, each filled to its end; then freed, half of
/// them by a thread that ends at once. Nothing is handed out twice, and nothing is lost when run under valgrind.
TEST(FrameCache, blocksAreWholeAndHeldOnceAlsoWhenThreadsExchangeThem) {
    constexpr std::size_t sizes[] = {1, 64, 65, 130, 512, 513, 4000};
    std::vector<std::jthread> threads;
    for (int thread = 0; thread < 3; ++thread) {
        threads.emplace_back([&sizes] {
            for (int round = 0; round < 20; ++round) {
                std::vector<Held> held;
                std::set<void*> distinct;
                for (std::size_t i = 0; i < 1400; ++i) {
                    const std::size_t size = sizes[i % std::size(sizes)];
                    held.push_back({FrameCache::allocate(size), size});
                    std::memset(held.back().memory, static_cast<int>(i % 251), size);
                    distinct.insert(held.back().memory);
                }
                EXPECT_EQ(distinct.size(), held.size());
                for (std::size_t i = 0; i < held.size(); ++i) {
                    const auto* const bytes = static_cast<const unsigned char*>(held[i].memory);
                    ASSERT_EQ(bytes[0], i % 251);
                    ASSERT_EQ(bytes[held[i].size - 1], i % 251);
                }
                const std::size_t half = held.size() / 2;
                std::jthread([&held, half] {
                    for (std::size_t i = 0; i < half; ++i) FrameCache::release(held[i].memory, held[i].size);
                }).join();
                for (std::size_t i = half; i < held.size(); ++i) FrameCache::release(held[i].memory, held[i].size);
            }
        });
    }
}

}  // namespace
}  // namespace corvex::frameCacheTests

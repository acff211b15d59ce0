#include <cstring>
#include <set>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <Corvex/platform/FrameCache.h>

#include <tests/OnThreads.h>

namespace corvex::frameCacheTests {
namespace {

using detail::FrameCache;

/// Blocks of every size, held at once in numbers beyond what a thread keeps, each filled to its end; then freed, half of
/// them by a thread that ends at once. Nothing is handed out twice, and nothing is lost when run under valgrind.
TEST(FrameCache, blocksAreWholeAndHeldOnceAlsoWhenThreadsExchangeThem) {
    constexpr std::size_t sizes[] = {1, 64, 65, 130, 512, 513, 4000};
    test::onThreads(3, [&sizes](int) {
        for (int round = 0; round < 20; ++round) {
            std::vector<std::pair<void*, std::size_t>> held;
            std::set<void*> distinct;
            for (std::size_t i = 0; i < 1400; ++i) {
                const std::size_t size = sizes[i % std::size(sizes)];
                held.emplace_back(FrameCache::allocate(size), size);
                std::memset(held.back().first, static_cast<int>(i % 251), size);
                distinct.insert(held.back().first);
            }
            EXPECT_EQ(distinct.size(), held.size());
            const auto release = [&held](std::size_t from, std::size_t end) {
                for (std::size_t i = from; i < end; ++i) {
                    const auto* const bytes = static_cast<const unsigned char*>(held[i].first);
                    ASSERT_TRUE(bytes[0] == i % 251 && bytes[held[i].second - 1] == i % 251);
                    FrameCache::release(held[i].first, held[i].second);
                }
            };
            std::jthread([&] { release(0, held.size() / 2); }).join();
            release(held.size() / 2, held.size());
        }
    });
}

}  // namespace
}  // namespace corvex::frameCacheTests

#include <atomic>
#include <memory>
#include <random>
#include <stdexcept>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <Corvex/concurrency/SimpleAsyncPool.h>
#include <Corvex/concurrency/TaskFactory.h>
#include <Corvex/platform/TaskGroup.h>
#include <Corvex/platform/TaskHandle.h>
#include <Corvex/platform/ThreadPool.h>

// Many tasks, random delays. What is counted on one side must come out on the other; races and leaks show under the
// sanitizers.
namespace corvex::stressTests {
namespace {

using std::chrono::microseconds;

/// Sleeps up to so many microseconds, or often not at all.
Task<> dawdle(std::minstd_rand& random, unsigned longest) {
    const auto time = random() % (2 * longest + 2);
    if (time <= longest) co_await sleepFor(microseconds(time));
}

/// The factory fails at random; the capacity goes up and down while items are lent. Every item that was made is either in
/// the pool at the end or has been dropped.
TEST(Stress, aPoolWhoseFactoryFailsAndWhoseCapacityChangesLosesNoItem) {
    struct Item {
        std::shared_ptr<void> alive;
        int uses = 0;  // not guarded: whoever borrows the item is alone with it
    };
    const auto alive = std::make_shared<int>();
    const auto makeItem = [&alive] { return std::make_shared<Item>(Item{alive}); };
    {
        ThreadPool threads(4);
        const SimpleAsyncPool<std::shared_ptr<Item>> pool({makeItem()});
        auto borrow = [&](unsigned seed) -> Task<> {
            std::minstd_rand random(seed);
            for (int i = 0; i < 50; ++i) {
                auto item = co_await pool.checkOut();
                ++item->uses;
                if (i % 8 == 0) co_await dawdle(random, 10);
                pool.checkIn(std::move(item));
            }
        };
        auto resize = [&](unsigned seed) -> Task<> {
            std::minstd_rand random(seed);
            auto factory = [&]() -> Task<std::optional<std::shared_ptr<Item>>> {
                co_await dawdle(random, 5);
                if (random() % 3 == 0) throw std::runtime_error("no memory");
                co_return makeItem();
            };
            for (int i = 0; i < 40; ++i) {
                try {
                    co_await pool.updateCapacity(2 + static_cast<std::int64_t>(random() % 8), factory);
                } catch (const std::runtime_error&) {  // what was made before stays
                }
            }
        };
        auto body = [&](TaskGroup<>& group) -> Task<> {
            for (unsigned i = 1; i <= 100; ++i) group.add(borrow(i));
            group.add(resize(7));
            co_return;
        };
        EXPECT_TRUE(spawn(withTaskGroup(body), threads).waitSync()->hasValue());
        EXPECT_EQ(alive.use_count() - 1, static_cast<std::int64_t>(pool.availableCount()));
    }
    EXPECT_EQ(alive.use_count(), 1);
}

TEST(Stress, throttledOperationsThatFailTimeOutAndAreCancelledGiveTheirSlotsBack) {
    ThreadPool pool(4);
    const TaskSemaphore throttle(5);
    std::atomic<int> running{0}, excess{0};
    auto run = [&](unsigned seed) -> Task<> {
        auto operation = [&, seed]() -> Task<int> {
            if (++running > 5) ++excess;
            const std::shared_ptr<void> leave(nullptr, [&running](void*) { --running; });
            std::minstd_rand random(seed);
            co_await dawdle(random, 40);
            if (random() % 3 == 0) throw std::runtime_error("failed");
            co_return 1;
        };
        co_await TaskFactory::withThrottledTimeout(throttle, seed % 2 == 0 ? 0 : 60, std::nullopt, operation);
    };
    std::vector<TaskHandle<>> handles;
    for (unsigned i = 0; i < 400; ++i) {
        handles.push_back(spawn(run(i + 1), pool));
        if (i % 5 == 0) handles.back().cancel();
    }
    for (const auto& handle : handles) (void)handle.waitSync();
    EXPECT_EQ(excess.load(), 0);
    EXPECT_EQ(throttle.activeTasks(), 0);
}

}  // namespace
}  // namespace corvex::stressTests

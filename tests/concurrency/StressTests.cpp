#include <atomic>
#include <map>
#include <memory>
#include <random>
#include <stdexcept>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <Corvex/concurrency/OrvaneBlockingFifoBuffer.h>
#include <Corvex/concurrency/SimpleAsyncPool.h>
#include <Corvex/concurrency/TaskFactory.h>
#include <Corvex/platform/TaskGroup.h>
#include <Corvex/platform/TaskHandle.h>
#include <Corvex/platform/ThreadPool.h>

// Many tasks, random delays, closing at random moments. What is counted on one side must come out on the other; races
// and leaks show under the sanitizers.
namespace corvex::stressTests {
namespace {

using std::chrono::microseconds;

/// Sleeps up to so many microseconds, or often not at all.
Task<> dawdle(std::minstd_rand& random, unsigned longest) {
    const auto time = random() % (2 * longest + 2);
    if (time <= longest) co_await sleepFor(microseconds(time));
}

using Items = OrvaneBlockingFifoBuffer<std::unique_ptr<std::int64_t>>;
struct Tally {
    std::atomic<std::int64_t> count{0}, sum{0}, refused{0};
    void add(std::int64_t value) { ++count, sum += value; }
};

Task<> produceUntilRefused(Items items, Tally& added, std::int64_t producer) {
    std::minstd_rand random(static_cast<unsigned>(producer));
    try {
        for (std::int64_t value = 1000 * producer; value < 1000 * producer + 300; ++value) {
            auto item = std::make_unique<std::int64_t>(value);
            co_await items.add(std::move(item));
            added.add(value);
            if (value % 16 == 0) co_await dawdle(random, 20);
        }
    } catch (const DataCoordinationError&) {
        ++added.refused;
    }
}
Task<> consumeToTheEnd(Items items, Tally& taken, unsigned seed) {
    std::minstd_rand random(seed);
    std::map<std::int64_t, std::int64_t> last;  // by producer
    while (const auto item = co_await items.next()) {
        EXPECT_LT(std::exchange(last[**item / 1000], **item), **item) << "each producer's items come in its order";
        taken.add(**item);
        if (**item % 32 == 0) co_await dawdle(random, 20);
    }
}

TEST(Stress, aBufferThatIsClosedAtAnyMomentDeliversWhatItTook) {
    ThreadPool pool(4);
    std::int64_t refused = 0;
    for (unsigned round = 0; round < 30; ++round) {
        Tally added, taken;
        const Items items(round % 3 == 0 ? 1 : 20 * round);
        auto body = [&](TaskGroup<>& group) -> Task<> {
            for (unsigned i = 1; i <= 20; ++i) {
                group.add(produceUntilRefused(items, added, round * 20 + i));
                group.add(consumeToTheEnd(items, taken, i));
            }
            std::minstd_rand random(round + 1);
            co_await dawdle(random, 3000);
            items.close();
        };
        EXPECT_TRUE(spawn(withTaskGroup(body), pool).waitSync()->hasValue());
        EXPECT_EQ(taken.count.load(), added.count.load()) << round;
        EXPECT_EQ(taken.sum.load(), added.sum.load()) << round;
        refused += added.refused;
    }
    EXPECT_GT(refused, 0) << "no round was closed in the middle";
}

/// The factory fails at random; the capacity goes up and down while items are lent. Every item that was made is either in
/// the pool at the end or has been dropped.
TEST(Stress, aPoolWhoseFactoryFailsAndWhoseCapacityChangesLosesNoItem) {
    struct Item {
        explicit Item(std::atomic<int>& counter) : alive(&counter) { ++counter; }
        ~Item() { --*alive; }
        Item(const Item&) = delete;
        Item& operator=(const Item&) = delete;
        std::atomic<int>* alive;
        int uses = 0;  // not guarded: whoever borrows the item is alone with it
    };
    using Pool = SimpleAsyncPool<std::unique_ptr<Item>>;
    std::atomic<int> alive{0}, borrowed{0};
    {
        ThreadPool threads(4);
        std::vector<std::unique_ptr<Item>> first;
        first.push_back(std::make_unique<Item>(alive));
        const Pool pool(std::move(first));
        auto borrow = [&](unsigned seed) -> Task<> {
            std::minstd_rand random(seed);
            for (int i = 0; i < 50; ++i) {
                auto item = co_await pool.checkOut();
                ++item->uses, ++borrowed;
                if (i % 8 == 0) co_await dawdle(random, 10);
                pool.checkIn(std::move(item));
            }
        };
        auto resize = [&](unsigned seed) -> Task<> {
            std::minstd_rand random(seed);
            auto factory = [&]() -> Task<std::optional<std::unique_ptr<Item>>> {
                co_await dawdle(random, 5);
                if (random() % 3 == 0) throw std::runtime_error("no memory");
                co_return std::make_unique<Item>(alive);
            };
            for (int i = 0; i < 40; ++i) {
                try {
                    co_await pool.updateCapacity(2 + static_cast<std::int64_t>(random() % 8), factory);
                } catch (const std::runtime_error&) {
                    continue;
                }
            }
        };
        auto body = [&](TaskGroup<>& group) -> Task<> {
            for (unsigned i = 1; i <= 100; ++i) group.add(borrow(i));
            group.add(resize(7));
            co_return;
        };
        EXPECT_TRUE(spawn(withTaskGroup(body), threads).waitSync()->hasValue());
        EXPECT_EQ(alive.load(), static_cast<int>(pool.availableCount()));
    }
    EXPECT_EQ(borrowed.load(), 100 * 50);
    EXPECT_EQ(alive.load(), 0);
}

TEST(Stress, throttledOperationsThatFailTimeOutAndAreCancelledGiveTheirSlotsBack) {
    constexpr int operationCount = 400;
    ThreadPool pool(4);
    const TaskSemaphore throttle(5);
    std::atomic<int> values{0}, errors{0}, timeouts{0}, cancellations{0}, running{0}, excess{0};
    auto run = [&](unsigned seed) -> Task<> {
        auto operation = [&, seed]() -> Task<int> {
            if (++running > 5) ++excess;
            struct Leave {
                explicit Leave(std::atomic<int>& counter) : count(counter) {}
                ~Leave() { --count; }
                std::atomic<int>& count;
            } leave(running);
            std::minstd_rand random(seed);
            co_await dawdle(random, 40);
            if (random() % 3 == 0) throw std::runtime_error("failed");
            co_return 1;
        };
        try {
            values +=
                co_await TaskFactory::withThrottledTimeout(throttle, seed % 2 == 0 ? 0 : 60, std::nullopt, operation);
        } catch (const TimeoutError&) {
            ++timeouts;
        } catch (const CancellationError&) {
            ++cancellations;
        } catch (const std::runtime_error&) {
            ++errors;
        }
    };
    std::vector<TaskHandle<>> handles;
    for (unsigned i = 0; i < operationCount; ++i) {
        handles.push_back(spawn(run(i + 1), pool));
        if (i % 5 == 0) handles.back().cancel();
    }
    for (const auto& handle : handles) EXPECT_TRUE(handle.waitSync()->hasValue());
    EXPECT_EQ(values + errors + timeouts + cancellations, operationCount);
    EXPECT_EQ(excess.load(), 0);
    EXPECT_EQ(throttle.activeTasks(), 0);
}

}  // namespace
}  // namespace corvex::stressTests

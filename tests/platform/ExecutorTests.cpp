#include <algorithm>
#include <atomic>
#include <memory>
#include <random>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <Corvex/platform/ManualExecutor.h>
#include <Corvex/platform/SerialExecutor.h>
#include <Corvex/platform/Sleep.h>
#include <Corvex/platform/TaskHandle.h>
#include <Corvex/platform/ThreadPool.h>

#include <tests/OnThreads.h>

namespace corvex::executorTests {
namespace {

using std::chrono::milliseconds;

/// Appends its name when it runs.
template <class Node = WorkNode>
struct Mark : Node {
    Mark(std::string& ownTrace, char ownName)
        : Node([](WorkNode& node) noexcept { static_cast<Mark&>(node).trace += static_cast<Mark&>(node).name; }),
          trace(ownTrace),
          name(ownName) {}
    std::string& trace;
    char name;
};

TEST(ManualExecutor, advanceRunsTimersByDeadlineThenByArrival) {
    ManualExecutor executor;
    std::string trace;
    Mark<TimerNode> late(trace, 'l'), firstEqual(trace, '1'), secondEqual(trace, '2'), cancelled(trace, 'x'),
        never(trace, 'n'), past(trace, 'p'), refused(trace, 'r');
    executor.postAt(late, executor.now() + milliseconds(3));
    executor.postAt(firstEqual, executor.now() + milliseconds(2));
    executor.postAt(cancelled, executor.now() + milliseconds(2));
    executor.postAt(secondEqual, executor.now() + milliseconds(2));
    executor.postAt(never, TimePoint::max());
    executor.postAt(past, executor.now() - milliseconds(1));
    EXPECT_FALSE(executor.cancel(refused));
    executor.postAt(refused, executor.now() + milliseconds(9));
    EXPECT_TRUE(executor.cancel(cancelled));
    EXPECT_EQ(executor.advance(milliseconds(1)), 2U);
    EXPECT_EQ(trace, "pr");
    EXPECT_EQ(executor.advance(milliseconds(1)), 2U);
    EXPECT_EQ(executor.advance(milliseconds(100)), 1U);
    EXPECT_EQ(trace, "pr12l");
    EXPECT_FALSE(executor.cancel(late)) << "it has run";
    EXPECT_EQ(executor.now().time_since_epoch(), milliseconds(102));
    for (int i = 0; i < 2; ++i) EXPECT_EQ(executor.advance(std::chrono::nanoseconds::max()), 0U);
    EXPECT_EQ(executor.now(), TimePoint::max() - TimePoint::duration(1));
    EXPECT_TRUE(executor.cancel(never));
}

/// Against a plain sort, with cancellations in between.
TEST(ManualExecutor, manySleepersWakeInOrderOfTheirDeadlines) {
    using Sleepers = std::vector<std::pair<milliseconds, int>>;
    ManualExecutor executor;
    Sleepers woken, expected;
    auto sleep = [](Sleepers& list, milliseconds time, int number) -> Task<> {
        co_await sleepFor(time);
        list.emplace_back(time, number);
    };
    std::minstd_rand random(1);
    for (int i = 0; i < 5000; ++i) {
        const milliseconds time(1 + random() % 997);
        const auto handle = spawn(sleep(woken, time, i), executor);
        executor.runAll();
        if (i % 3 == 2) {
            handle.cancel();
        } else {
            expected.emplace_back(time, i);
        }
    }
    std::sort(expected.begin(), expected.end());
    executor.advance(milliseconds(1000));
    EXPECT_EQ(woken, expected);
}

TEST(SerialExecutor, keepsTheOrderOfAllItsWorkAndIsSeenByIt) {
    ManualExecutor base;
    SerialExecutor serial(base);
    std::string trace;
    Mark<> a(trace, 'a'), b(trace, 'b'), between(trace, '.');
    serial.post(a);
    serial.post(b);
    base.post(between);
    EXPECT_EQ(base.runAll(), 2U) << "one turn runs all that waits";
    EXPECT_EQ(trace, "ab.");

    auto look = [](SerialExecutor& queue, ManualExecutor& below) -> Task<bool> {
        co_return &Executor::current() == &queue&& queue.runsHere() && below.runsHere();
    };
    auto seen = spawn(look(serial, base), serial);
    base.runAll();
    EXPECT_TRUE(seen.waitSync()->value());
    EXPECT_FALSE(serial.runsHere());
}

TEST(ThreadPool, runsEverythingOnceBeforeItIsJoined) {
    struct Count : WorkNode {
        Count() : WorkNode([](WorkNode& node) noexcept { ++*static_cast<Count&>(node).count; }) {}
        std::atomic<int>* count = nullptr;
    };
    constexpr std::size_t posterCount = 3, nodeCount = 20000;
    std::atomic<int> count{0};
    std::vector<Count> nodes(posterCount * nodeCount);
    for (auto& node : nodes) node.count = &count;
    ThreadPool pool(2);
    test::onThreads(posterCount, [&](int poster) {
        for (auto& node : std::span(nodes).subspan(static_cast<std::size_t>(poster) * nodeCount, nodeCount)) {
            pool.post(node);
        }
    });
    pool.join();
    EXPECT_EQ(count.load(), static_cast<int>(nodes.size()));
}

TEST(ThreadPool, higherPrioritiesGoFirst) {
    ThreadPool pool(1);
    std::string trace;
    struct Gate : WorkNode {
        Gate() : WorkNode([](WorkNode& node) noexcept { static_cast<Gate&>(node).isOpen.wait(false); }) {}
        std::atomic<bool> isOpen{false};
    } gate;
    pool.post(gate);
    std::vector<std::unique_ptr<Mark<>>> marks;
    for (const auto priority : {TaskPriority::background, TaskPriority::medium, TaskPriority::utility,
                                TaskPriority::high, TaskPriority::medium}) {
        auto& mark = *marks.emplace_back(std::make_unique<Mark<>>(trace, static_cast<char>('a' + marks.size())));
        mark.priority = priority;
        pool.post(mark);
    }
    gate.isOpen = true;
    gate.isOpen.notify_all();
    pool.join();
    EXPECT_EQ(trace, "dbeca");
}

TEST(ThreadPoolDeathTest, postingAfterJoiningStopsTheProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(
        {
            ThreadPool pool(1);
            pool.join();
            WorkNode node;
            pool.post(node);
        },
        "joined thread pool");
}

}  // namespace
}  // namespace corvex::executorTests

#include <algorithm>
#include <atomic>
#include <random>
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
Task<> note(std::string& trace, char name) {
    trace += name;
    co_return;
}

TEST(ManualExecutor, timersThatArePastOrRefusedRunAtOnceAndOneAtTheEndOfTimeNever) {
    ManualExecutor executor;
    const auto nothing = [](WorkNode&) noexcept {};
    TimerNode never(nothing), past(nothing), refused(nothing);
    executor.postAt(never, TimePoint::max());
    executor.postAt(past, executor.now() - milliseconds(1));
    EXPECT_FALSE(executor.cancel(refused));
    executor.postAt(refused, executor.now() + milliseconds(9));
    EXPECT_EQ(executor.advance(milliseconds(1)), 2U);
    EXPECT_FALSE(executor.cancel(past)) << "it has run";
    EXPECT_EQ(executor.now().time_since_epoch(), milliseconds(1));
    for (int i = 0; i < 2; ++i) EXPECT_EQ(executor.advance(std::chrono::nanoseconds::max()), 0U);
    EXPECT_EQ(executor.now(), TimePoint::max() - TimePoint::duration(1));
    EXPECT_TRUE(executor.cancel(never));
}

/// Against a plain sort, with cancellations amid those that sleep, some beside each other.
TEST(ManualExecutor, manySleepersWakeInOrderOfTheirDeadlines) {
    using Sleepers = std::vector<std::pair<milliseconds, int>>;
    ManualExecutor executor;
    Sleepers woken, expected;
    auto sleep = [](Sleepers& list, milliseconds time, int number) -> Task<> {
        co_await sleepFor(time);
        list.emplace_back(time, number);
    };
    std::vector<TaskHandle<>> sleepers;
    std::minstd_rand random(1);
    for (int i = 0; i < 5000; ++i) {
        const milliseconds time(1 + random() % 997);
        sleepers.push_back(spawn(sleep(woken, time, i), executor));
        if (i % 3 == 0) expected.emplace_back(time, i);
    }
    executor.runAll();
    for (std::size_t i = sleepers.size(); i-- > 0;) {
        if (i % 3 != 0) sleepers[i].cancel();
    }
    std::sort(expected.begin(), expected.end());
    executor.advance(milliseconds(1000));
    EXPECT_EQ(woken, expected);
}

TEST(SerialExecutor, keepsTheOrderOfAllItsWorkAndIsSeenByIt) {
    ManualExecutor base;
    SerialExecutor serial(base);
    std::string trace;
    spawn(note(trace, 'a'), serial);
    spawn(note(trace, 'b'), serial);
    spawn(note(trace, '.'), base);
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
    constexpr int posterCount = 3, taskCount = 20'000;
    std::atomic<int> count{0};
    auto add = [](std::atomic<int>& sum) -> Task<> { co_return void(++sum); };
    ThreadPool pool(2);
    test::onThreads(posterCount, [&](int) {
        for (int i = 0; i < taskCount; ++i) spawn(add(count), pool);
    });
    pool.join();
    EXPECT_EQ(count.load(), posterCount * taskCount);
}

TEST(ThreadPool, higherPrioritiesGoFirst) {
    ThreadPool pool(1);
    std::string trace;
    std::atomic<bool> isOpen{false};
    auto hold = [&isOpen]() -> Task<> { co_return isOpen.wait(false); };
    spawn(hold(), pool);
    char name = 'a';
    for (const auto priority : {TaskPriority::background, TaskPriority::medium, TaskPriority::utility,
                                TaskPriority::high, TaskPriority::medium}) {
        spawn(note(trace, name++), SpawnOptions(pool, priority));
    }
    isOpen = true;
    isOpen.notify_all();
    pool.join();
    EXPECT_EQ(trace, "dbeca");
}

TEST(ThreadPoolDeathTest, postingAfterJoiningStopsTheProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto misuse = [] {
        ThreadPool pool(1);
        pool.join();
        WorkNode node;
        pool.post(node);
    };
    EXPECT_DEATH(misuse(), "joined thread pool");
}

}  // namespace
}  // namespace corvex::executorTests

#include <atomic>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <Corvex/concurrency/AsyncSwitch.h>
#include <Corvex/concurrency/AsyncTaskGroup.h>
#include <Corvex/concurrency/ClosableTaskSemaphore.h>
#include <Corvex/concurrency/TaskSemaphore.h>
#include <Corvex/platform/Sleep.h>
#include <Corvex/platform/ThreadPool.h>

#include "Schedules.h"

namespace corvex::semaphoreTests {
namespace {

/// Appends the name when it has a slot; in upper case when it was turned away.
template <class Semaphore>
Task<> enter(const Semaphore& semaphore, std::string& trace, char name) {
    if constexpr (requires { semaphore.close(); }) {
        const bool isIn = co_await semaphore.wait();
        trace += isIn ? name : static_cast<char>(name - 'a' + 'A');
    } else {
        co_await semaphore.wait();
        trace += name;
    }
}

/// Letters enter, "-" signals, "|" closes, "#" notes how many are in.
template <class Semaphore>
void expectTraces(const auto& rows) {
    for (const Schedule& row : rows) {
        ManualExecutor executor;
        std::string trace;
        const Semaphore semaphore(row.setting);
        play(row.steps, executor, [&](char step) -> std::optional<Task<>> {
            if (step == '-') return semaphore.signal(), std::nullopt;
            if (step == '#') return trace += std::to_string(semaphore.activeTasks()), std::nullopt;
            if constexpr (requires { semaphore.close(); })
                if (step == '|') return semaphore.close(), std::nullopt;
            return enter(semaphore, trace, step);
        });
        EXPECT_EQ(trace, row.trace) << row.name;
        for (std::size_t i = 0; i < std::string_view(row.steps).size(); ++i) semaphore.signal();  // for who still waits
        executor.runAll();
    }
}

template <class Semaphore>
struct Semaphores : testing::Test {};
using Kinds = testing::Types<TaskSemaphore, ClosableTaskSemaphore>;
TYPED_TEST_SUITE(Semaphores, Kinds);

TYPED_TEST(Semaphores, schedules) {
    constexpr Schedule rows[] = {
        {"slots pass in order, posted, and surplus signals count for nothing", 2, "abcde -# -- -#-#-#-#fgh ",
         "ab2cde1000fg"},
        {"a limit of nothing waits for a signal", 0, "-ab #-- #", "0ab0"},
        {"nobody takes the slot that a waiter who has gone waited for", 1, "a ~x -#bc ", "a0b"},
        {"who goes loses his place alone", 1, "a ~xbc --#", "a1bc"},
    };
    expectTraces<TypeParam>(rows);
    constexpr auto highest = std::numeric_limits<std::int64_t>::max();
    EXPECT_EQ(TypeParam::withUnsignedLimit(std::numeric_limits<std::uint64_t>::max()).limit(), highest);
    EXPECT_EQ(TypeParam::withUnsignedLimit(3).limit(), 3);
}

TEST(ClosableTaskSemaphore, closingTurnsWaitersAwayInOrderAndForGood) {
    constexpr Schedule rows[] = {{"posted", 1, "abc |# ", "a0BC"}, {"for good", 1, "ab |-|c # ", "aBC0"}};
    expectTraces<ClosableTaskSemaphore>(rows);
    EXPECT_DEATH(ClosableTaskSemaphore(-1), "must not be negative");
}

TYPED_TEST(Semaphores, waiterKeepsTheStateAlive) {
    std::string trace;
    auto semaphore = std::make_unique<TypeParam>(0);
    const Abandoned waiter(enter(*semaphore, trace, 'x'));
    semaphore.reset();
}

/// Every task enters many times; closing comes in between, or too late. A count too many shows as an excess, one that is lost
/// or a waiter that is not answered as a hang.
TYPED_TEST(Semaphores, stress) {
    using std::chrono::microseconds;
    constexpr int limit = 3, taskCount = 100, entryCount = 50;
    ThreadPool pool(4);
    for (int round = 0; round < 20; ++round) {
        const TypeParam semaphore(limit);
        std::atomic<int> holders{0}, excess{0};
        auto work = [&](int seed) -> Task<> {
            for (int i = seed; i < seed + entryCount; ++i) {
                std::string name;
                co_await enter(semaphore, name, 'a');
                if (name == "A") co_return;
                if (++holders > limit) ++excess;
                if (i % 16 == 0) co_await sleepFor(microseconds(i % 32));
                --holders;
                semaphore.signal();
            }
        };
        auto close = [&]() -> Task<> {
            co_await sleepFor(microseconds(400 * round));
            if constexpr (requires { semaphore.close(); }) semaphore.close();
        };
        std::vector<TaskHandle<>> handles;
        for (int i = 0; i < taskCount; ++i) handles.push_back(spawn(work(i), pool));
        handles.push_back(spawn(close(), pool));
        for (auto& handle : handles) EXPECT_TRUE(handle.waitSync()->hasValue());
        EXPECT_EQ(excess.load(), 0) << round;
        EXPECT_EQ(semaphore.activeTasks(), 0) << round;
    }
}

TEST(TaskSemaphoreDeathTest, aFrameThatGoesAfterItsResumptionWasPostedStopsTheProcessByTheOperationsName) {
    const auto misuse = [] {
        ManualExecutor executor;
        const ExecutorScope scope(executor);
        const TaskSemaphore semaphore(0);
        std::string trace;
        const Abandoned waiting(enter(semaphore, trace, 'a'));
        semaphore.signal();
    };
    EXPECT_DEATH(misuse(), "wait\\(\\): a coroutine was destroyed after");
}

/// "+" enters, "-" leaves, "." marks a moment, letters wait.
TEST(AsyncTaskGroup, schedules) {
    constexpr Schedule rows[] = {
        {"nothing to wait for", 0, "a ", "a"},
        {"only the last leaving frees", 0, "++ab -c .-. ", "..abc"},
        {"frees once", 0, "+a -. +b .", ".a."},
        {"from below zero frees nobody", 0, "--a ++. b ", ".b"},
        {"from below zero and through one", 0, "-a -. +++. - ", "..a"},
    };
    for (const auto& row : rows) {
        ManualExecutor executor;
        std::string trace;
        const AsyncTaskGroup group;
        int count = 0;
        const auto act = [&](char step) -> std::optional<Task<>> {
            if (step == '+') return group.enter(), ++count, std::nullopt;
            if (step == '-') return group.leave(), --count, std::nullopt;
            if (step == '.') return trace += '.', std::nullopt;
            return enter(group, trace, step);
        };
        play(row.steps, executor, act);
        EXPECT_EQ(trace, row.trace) << row.name;
        for (; count < 1; ++count) group.enter();  // frees those that the row left waiting
        for (; count > 0; --count) group.leave();
        executor.runAll();
    }
}

TEST(AsyncSwitch, togglesAndSetsForAllItsCopies) {
    const AsyncSwitch first(true);
    const AsyncSwitch copy = first;  // NOLINT(performance-unnecessary-copy-initialization): the copy is the point
    first.toggle();
    EXPECT_FALSE(copy.isOn());
    for (int i = 0; i < 2; ++i) copy.switchOn();
    EXPECT_TRUE(first.isOn());
    for (int i = 0; i < 2; ++i) copy.switchOff();
    EXPECT_FALSE(first.isOn());
}

}  // namespace
}  // namespace corvex::semaphoreTests

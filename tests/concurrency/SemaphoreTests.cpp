#include <atomic>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <Corvex/concurrency/AsyncSwitch.h>
#include <Corvex/concurrency/ClosableTaskSemaphore.h>
#include <Corvex/concurrency/TaskSemaphore.h>
#include <Corvex/platform/ManualExecutor.h>
#include <Corvex/platform/Sleep.h>
#include <Corvex/platform/ThreadPool.h>

#include "Coroutines.h"

namespace corvex::semaphoreTests {
namespace {

/// Appends the name when it has a slot; in upper case when it was turned away.
Task<> enter(TaskSemaphore semaphore, std::string& trace, char name) {
    co_await semaphore.wait();
    trace += name;
}
Task<> enter(ClosableTaskSemaphore semaphore, std::string& trace, char name) {
    const bool isIn = co_await semaphore.wait();
    trace += isIn ? name : static_cast<char>(name - 'a' + 'A');
}

template <class Semaphore>
class SemaphoreTest : public testing::Test {
protected:
    /// So many tasks a, b, c, … that wait one after the other.
    void enterAll(const Semaphore& semaphore, int count) {
        for (int i = 0; i < count; ++i) spawn(enter(semaphore, trace, static_cast<char>('a' + i)), executor);
        executor.runAll();
    }
    ManualExecutor executor;
    std::string trace;
};
using Semaphores = testing::Types<TaskSemaphore, ClosableTaskSemaphore>;
TYPED_TEST_SUITE(SemaphoreTest, Semaphores);

TYPED_TEST(SemaphoreTest, slotsPassToWaitersInOrderAndSurplusSignalsCountForNothing) {
    const TypeParam semaphore(2);
    this->enterAll(semaphore, 5);
    EXPECT_EQ(this->trace, "ab");
    semaphore.signal();
    EXPECT_EQ(this->trace, "ab") << "the signaller resumes nobody";
    EXPECT_EQ(semaphore.activeTasks(), 2);
    this->executor.runAll();
    semaphore.signal();
    semaphore.signal();
    this->executor.runAll();
    EXPECT_EQ(this->trace, "abcde");
    for (const std::int64_t expected : {1, 0, 0, 0}) {
        semaphore.signal();
        EXPECT_EQ(semaphore.activeTasks(), expected);
    }
    this->enterAll(semaphore, 3);
    EXPECT_EQ(this->trace, "abcdeab") << "no credit was kept";
    semaphore.signal();
    this->executor.runAll();
}

TYPED_TEST(SemaphoreTest, limitOfNothingWaitsForASignal) {
    const TypeParam semaphore(0);
    semaphore.signal();
    this->enterAll(semaphore, 2);
    EXPECT_EQ(this->trace, "");
    semaphore.signal();
    semaphore.signal();
    this->executor.runAll();
    EXPECT_EQ(this->trace, "ab");
    EXPECT_EQ(semaphore.activeTasks(), 0);
}

TYPED_TEST(SemaphoreTest, limitsSaturate) {
    constexpr auto highest = std::numeric_limits<std::int64_t>::max();
    EXPECT_EQ(TypeParam::withUnsignedLimit(std::numeric_limits<std::uint64_t>::max()).limit(), highest);
    EXPECT_EQ(TypeParam::withUnsignedLimit(3).limit(), 3);
}

TYPED_TEST(SemaphoreTest, waiterThatIsDestroyedLosesItsPlaceAndNothingElse) {
    const TypeParam semaphore(1);
    this->enterAll(semaphore, 1);
    { const Abandoned only(enter(semaphore, this->trace, 'x')); }
    semaphore.signal();
    EXPECT_EQ(semaphore.activeTasks(), 0) << "nobody took the slot";
    this->enterAll(semaphore, 1);
    {
        const Abandoned first(enter(semaphore, this->trace, 'y'));
        this->enterAll(semaphore, 2);
    }
    semaphore.signal();
    semaphore.signal();
    this->executor.runAll();
    EXPECT_EQ(this->trace, "aaab");
}

TYPED_TEST(SemaphoreTest, waiterKeepsTheStateAlive) {
    std::optional<Abandoned<void>> waiter;
    {
        const TypeParam semaphore(0);
        waiter.emplace(enter(semaphore, this->trace, 'x'));
    }
    waiter.reset();
    EXPECT_EQ(this->trace, "");
}

/// Every task enters many times; closing comes in between, or too late. A count too many shows as an excess, one that is lost
/// or a waiter that is not answered as a hang.
TYPED_TEST(SemaphoreTest, stress) {
    using std::chrono::microseconds;
    constexpr int limit = 3, taskCount = 100, entryCount = 50;
    ThreadPool pool(4);
    for (int round = 0; round < 20; ++round) {
        const TypeParam semaphore(limit);
        std::atomic<int> holders{0}, excess{0}, ended{0}, refused{0};
        auto work = [&](int seed) -> Task<> {
            for (int i = seed; i < seed + entryCount; ++i) {
                std::string name;
                co_await enter(semaphore, name, 'a');
                if (name == "A") {
                    ++refused;
                    co_return;
                }
                if (++holders > limit) ++excess;
                if (i % 16 == 0) co_await sleepFor(microseconds(i % 32));
                --holders;
                semaphore.signal();
            }
            ++ended;
        };
        std::vector<TaskHandle<>> handles;
        for (int i = 0; i < taskCount; ++i) handles.push_back(spawn(work(i), pool));
        if constexpr (requires { semaphore.close(); }) {
            auto close = [](TypeParam open, microseconds delay) -> Task<> {
                co_await sleepFor(delay);
                open.close();
            };
            handles.push_back(spawn(close(semaphore, microseconds(400 * round)), pool));
        }
        for (auto& handle : handles) EXPECT_TRUE(handle.waitSync()->hasValue());
        EXPECT_EQ(ended + refused, taskCount) << round;
        EXPECT_EQ(excess.load(), 0) << round;
        EXPECT_EQ(semaphore.activeTasks(), 0) << round;
    }
}

TEST(TaskSemaphore, cancellationDoesNotEndAWait) {
    ManualExecutor executor;
    std::string trace;
    const TaskSemaphore semaphore(-1);
    auto handle = spawn(enter(semaphore, trace, 'a'), executor);
    executor.runAll();
    handle.cancel();
    executor.runAll();
    EXPECT_FALSE(handle.isFinished());
    semaphore.signal();
    executor.runAll();
    EXPECT_EQ(trace, "a");
}

TEST(ClosableTaskSemaphore, closingTurnsWaitersAwayInOrderAndForGood) {
    ManualExecutor executor;
    std::string trace;
    const ClosableTaskSemaphore semaphore(1);
    for (const char name : {'a', 'b', 'c'}) spawn(enter(semaphore, trace, name), executor);
    executor.runAll();
    semaphore.close();
    EXPECT_EQ(trace, "a") << "closing resumes nobody";
    EXPECT_EQ(semaphore.activeTasks(), 0);
    semaphore.signal();
    semaphore.close();
    spawn(enter(semaphore, trace, 'd'), executor);
    executor.runAll();
    EXPECT_EQ(trace, "aBCD");
    EXPECT_TRUE(semaphore.closed());
    EXPECT_EQ(semaphore.activeTasks(), 0);
}

TEST(ClosableTaskSemaphoreDeathTest, negativeLimitStopsTheProcess) {
    EXPECT_DEATH(ClosableTaskSemaphore(-1), "must not be negative");
}

TEST(TaskSemaphoreDeathTest, aFrameThatGoesAfterItsResumptionWasPostedStopsTheProcessByTheOperationsName) {
    const auto misuse = [] {
        ManualExecutor executor;
        const ExecutorScope scope(executor);
        const TaskSemaphore semaphore(0);
        auto hold = [](TaskSemaphore held) -> Task<> { co_await held.wait(); };
        const Abandoned waiting(hold(semaphore));
        semaphore.signal();
    };
    EXPECT_DEATH(misuse(), "wait\\(\\): a coroutine was destroyed after");
}

TEST(AsyncSwitch, togglesAndSetsForAllItsCopies) {
    const AsyncSwitch first(false);
    const AsyncSwitch copy = first;  // NOLINT(performance-unnecessary-copy-initialization): the copy is the point
    first.toggle();
    EXPECT_TRUE(copy.isOn());
    copy.switchOn();
    copy.toggle();
    EXPECT_FALSE(first.isOn());
    copy.switchOff();
    first.toggle();
    EXPECT_TRUE(copy.isOn());
    EXPECT_TRUE(AsyncSwitch(true).isOn());
}

}  // namespace
}  // namespace corvex::semaphoreTests

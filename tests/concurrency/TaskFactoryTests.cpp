#include <cstdint>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include <Corvex/concurrency/TaskFactory.h>
#include <Corvex/platform/ManualExecutor.h>

#include <tests/Thrown.h>

namespace corvex::taskFactoryTests {
namespace {

using std::chrono::seconds;

const TaskTimeoutLog timeoutLog("CVX_TEST_TO-", "reading");

/// Catches log lines while it lives.
class TaskFactoryTest : public testing::Test {
protected:
    TaskFactoryTest() {
        setLogSink([this](LogLevel, std::string_view line) { lines.emplace_back(line); });
    }
    ~TaskFactoryTest() override { setLogSink({}); }

    ManualExecutor executor;
    std::vector<std::string> lines;
};

/// An operation that takes its seconds and gives 7 or throws. A deaf one does not react to cancellation.
Task<int> takeTime(int duration, bool fails, bool isDeaf, bool* hasEnded) {
    const std::shared_ptr<void> end(nullptr, [hasEnded](void*) { *hasEnded = true; });
    auto sleep = [](int time) -> Task<> { co_await sleepFor(seconds(time)); };
    if (isDeaf) {
        co_await spawn(sleep(duration)).result();
    } else if (duration > 0) {
        co_await sleep(duration);
    }
    if (fails) throw std::runtime_error("own");
    co_return 7;
}

struct TimeoutRow {
    const char* name;
    std::uint64_t limit;
    int duration;
    bool fails, isDeaf;
    int cancelAfter;  ///< Seconds until the whole is cancelled, -1 never.
    int endsAfter;
    const char* error;
};

TEST_F(TaskFactoryTest, firstToFinishDecidesAndTheOtherIsAwaited) {
    constexpr std::uint64_t forEver = std::numeric_limits<std::uint64_t>::max();
    constexpr const char* cancelled = "the task was cancelled";
    constexpr TimeoutRow rows[] = {
        {"in time", 2, 1, false, false, -1, 1, ""},
        {"own error", 2, 1, true, false, -1, 1, "own"},
        {"too late", 1, 5, false, false, -1, 1, "Timed out after 1"},
        {"too late and deaf", 1, 5, false, true, -1, 5, "Timed out after 1"},
        {"late error is dropped", 1, 5, true, true, -1, 5, "Timed out after 1"},
        {"no limit that a clock can count", forEver, 1000000, false, false, -1, 1000000, ""},
        {"at the same time", 3, 3, false, false, -1, 3, "Timed out after 3"},
        {"no time, no suspension", 0, 0, false, false, -1, 0, ""},
        {"no time, error at once", 0, 0, true, false, -1, 0, "own"},
        {"no time", 0, 5, false, false, -1, 0, "Timed out after 0"},
        {"cancelled", 9, 5, false, false, 2, 2, cancelled},
        {"cancelled and deaf", 9, 5, false, true, 2, 5, cancelled},
        {"cancelled before it starts", 9, 5, false, false, 0, 0, cancelled},
    };
    for (const auto& row : rows) {
        lines.clear();
        bool hasEnded = false;
        const auto operation = [&] { return takeTime(row.duration, row.fails, row.isDeaf, &hasEnded); };
        const TimePoint start = executor.now();
        auto handle = spawn(TaskFactory::withTimeout(row.limit, timeoutLog, operation), executor);
        if (row.cancelAfter > 0) executor.advance(seconds(row.cancelAfter));
        if (row.cancelAfter >= 0) handle.cancel();
        executor.runAll();
        if (!handle.isFinished()) {
            executor.advance(start + seconds(row.endsAfter) - executor.now() - std::chrono::nanoseconds(1));
            EXPECT_FALSE(handle.isFinished()) << row.name << ": too early";
            executor.advance(std::chrono::nanoseconds(1));
        }
        ASSERT_TRUE(handle.isFinished()) << row.name;
        EXPECT_EQ(executor.now() - start, seconds(row.endsAfter)) << row.name;
        EXPECT_EQ(test::errorOf(handle), row.error) << row.name;
        EXPECT_TRUE(hasEnded) << row.name;
        const bool isLogged = std::string_view(row.error).starts_with("Timed out");
        EXPECT_EQ(lines, std::vector<std::string>(isLogged ? 1 : 0, "CVX_TEST_TO-- reading")) << row.name;
        executor.advance(seconds(10));
    }
}

TEST_F(TaskFactoryTest, timeoutTaskNeverGivesAValue) {
    const auto make = TaskFactory::timeoutTask<int>(3, timeoutLog);
    auto late = spawn(make(), executor);
    auto cancelled = spawn(make(), executor);
    executor.runAll();
    cancelled.cancel();
    executor.advance(seconds(3));
    EXPECT_EQ(test::errorOf(late), "Timed out after 3");
    EXPECT_EQ(test::errorOf(cancelled), CancellationError().what());
    EXPECT_EQ(lines.size(), 1U);
}

/// Each level awaits the next one under a limit of no time; the innermost ends at once or waits.
Task<int> nestedLimits(int depth, seconds innermost) {
    if (depth == 0) {
        if (innermost > seconds(0)) co_await sleepFor(innermost);
        co_return 0;
    }
    const auto inner = [depth, innermost] { return nestedLimits(depth - 1, innermost); };
    co_return 1 + co_await TaskFactory::withTimeout(0, std::nullopt, inner);
}

TEST_F(TaskFactoryTest, nestedLimitsOfNoTimeTakeNoStack) {
    constexpr int depth = 50'000;
    auto inTime = spawn(nestedLimits(depth, seconds(0)), executor);
    auto late = spawn(nestedLimits(depth, seconds(1)), executor);
    executor.runAll();
    EXPECT_EQ(inTime.waitSync()->value(), depth);
    EXPECT_EQ(test::errorOf(late), "Timed out after 0");
}

struct Controls final : TaskControlArguments {
    explicit Controls(TaskSemaphore ownThrottle) : semaphore(std::move(ownThrottle)) {}
    [[nodiscard]] std::optional<TaskSemaphore> throttle() const override { return semaphore; }
    [[nodiscard]] std::uint64_t operationTimeout() const override { return 2; }
    TaskSemaphore semaphore;
};

TEST_F(TaskFactoryTest, throttleIsHeldDuringTheOperationAndGivenBackOnce) {
    constexpr std::tuple<int, bool, const char*> rows[] = {
        {1, false, ""}, {1, true, "own"}, {5, false, "Timed out after 2"}};
    for (const auto& [duration, fails, error] : rows) {
        const TaskSemaphore throttle(2);
        auto hold = [](TaskSemaphore semaphore) -> Task<> { co_await semaphore.wait(); };
        for (int i = 0; i < 2; ++i) spawn(hold(throttle), executor);
        bool hasEnded = false;
        const auto operation = [&] { return takeTime(duration, fails, false, &hasEnded); };
        const Controls controls(throttle);
        auto handle = spawn(TaskFactory::withControlledArguments(&controls, std::nullopt, operation), executor);
        executor.advance(seconds(60));
        EXPECT_FALSE(hasEnded) << error << ": the wait for a slot is outside the limit";
        throttle.signal();
        executor.runAll();
        EXPECT_EQ(throttle.activeTasks(), 2) << error;
        executor.advance(seconds(2));
        EXPECT_EQ(test::errorOf(handle), error) << error;
        EXPECT_EQ(throttle.activeTasks(), 1) << error;
    }
}

TEST_F(TaskFactoryTest, withoutControlArgumentsTheOperationRunsAsItIs) {
    bool hasEnded = false;
    const auto operation = [&] { return takeTime(1000, false, false, &hasEnded); };
    auto handle = spawn(TaskFactory::withControlledArguments(nullptr, timeoutLog, operation), executor);
    executor.advance(seconds(1000));
    EXPECT_EQ(handle.waitSync()->value(), 7);
}

TEST(TimeoutError, describesItself) {
    EXPECT_EQ(TimeoutError::undefined().errorDescription(), "Undefined timeout");
    EXPECT_NE(TimeoutError::timedOut(5), TimeoutError::timedOut(6));
    EXPECT_NE(TimeoutError::timedOut(0), TimeoutError::undefined());
}

}  // namespace
}  // namespace corvex::taskFactoryTests

#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <Corvex/concurrency/TaskFactory.h>
#include <Corvex/platform/ManualExecutor.h>

#include "Coroutines.h"

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

enum class End : std::uint8_t { value, error };

/// An operation that takes its time and gives 7 or throws. A deaf one does not react to cancellation.
struct Operation {
    seconds duration;
    End end;
    bool isDeaf;
    bool* hasEnded;

    Operation(seconds ownDuration, End ownEnd, bool deaf, bool* flag)
        : duration(ownDuration), end(ownEnd), isDeaf(deaf), hasEnded(flag) {}
    Task<int> operator()() const { return run(duration, end, isDeaf, hasEnded); }
    static Task<int> run(seconds duration, End end, bool isDeaf, bool* hasEnded) {
        const auto other = [](seconds time) -> Task<> { co_await sleepFor(time); };
        try {
            if (isDeaf) {
                co_await spawn(other(duration)).result();
            } else if (duration > seconds(0)) {
                co_await sleepFor(duration);
            }
        } catch (...) {
            *hasEnded = true;
            throw;
        }
        *hasEnded = true;
        if (end == End::error) throw std::runtime_error("own");
        co_return 7;
    }
};

struct TimeoutRow {
    const char* name;
    std::uint64_t limit;
    int duration;
    End end;
    bool isDeaf;
    int cancelAfter;  ///< Seconds until the whole is cancelled, -1 never.
    int endsAfter;
    const char* error;
    bool isLogged;
};

TEST_F(TaskFactoryTest, firstToFinishDecidesAndTheOtherIsAwaited) {
    constexpr std::uint64_t forEver = std::numeric_limits<std::uint64_t>::max();
    constexpr const char* cancelled = "the task was cancelled";
    constexpr TimeoutRow rows[] = {
        {"in time", 2, 1, End::value, false, -1, 1, "", false},
        {"own error", 2, 1, End::error, false, -1, 1, "own", false},
        {"too late", 1, 5, End::value, false, -1, 1, "Timed out after 1", true},
        {"too late and deaf", 1, 5, End::value, true, -1, 5, "Timed out after 1", true},
        {"late error is dropped", 1, 5, End::error, true, -1, 5, "Timed out after 1", true},
        {"no limit that a clock can count", forEver, 1000000, End::value, false, -1, 1000000, "", false},
        {"at the same time", 3, 3, End::value, false, -1, 3, "Timed out after 3", true},
        {"no time, no suspension", 0, 0, End::value, false, -1, 0, "", false},
        {"no time, error at once", 0, 0, End::error, false, -1, 0, "own", false},
        {"no time", 0, 5, End::value, false, -1, 0, "Timed out after 0", true},
        {"cancelled", 9, 5, End::value, false, 2, 2, cancelled, false},
        {"cancelled and deaf", 9, 5, End::value, true, 2, 5, cancelled, false},
        {"cancelled before it starts", 9, 5, End::value, false, 0, 0, cancelled, false},
    };
    for (const auto& row : rows) {
        lines.clear();
        bool hasEnded = false;
        const Operation operation(seconds(row.duration), row.end, row.isDeaf, &hasEnded);
        const TimePoint start = executor.now();
        auto handle = spawn(TaskFactory::withTimeout(row.limit, timeoutLog, operation), executor);
        if (row.cancelAfter >= 0) {
            if (row.cancelAfter > 0) executor.advance(seconds(row.cancelAfter));
            handle.cancel();
        }
        executor.runAll();
        if (!handle.isFinished()) {
            executor.advance(start + seconds(row.endsAfter) - executor.now() - std::chrono::nanoseconds(1));
            EXPECT_FALSE(handle.isFinished()) << row.name << ": too early";
            executor.advance(std::chrono::nanoseconds(1));
        }
        ASSERT_TRUE(handle.isFinished()) << row.name;
        EXPECT_EQ(executor.now() - start, seconds(row.endsAfter)) << row.name;
        EXPECT_EQ(errorOf(*handle.waitSync()), row.error) << row.name;
        EXPECT_TRUE(hasEnded) << row.name;
        EXPECT_EQ(lines, row.isLogged ? std::vector<std::string>{"CVX_TEST_TO-- reading"} : std::vector<std::string>{})
            << row.name;
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
    EXPECT_EQ(errorOf(*late.waitSync()), "Timed out after 3");
    EXPECT_EQ(errorOf(*cancelled.waitSync()), CancellationError().what());
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
    EXPECT_EQ(errorOf(*late.waitSync()), "Timed out after 0");
}

struct Controls final : TaskControlArguments {
    Controls(std::optional<TaskSemaphore> ownThrottle, std::uint64_t ownTimeout)
        : semaphore(std::move(ownThrottle)), timeout(ownTimeout) {}
    [[nodiscard]] std::optional<TaskSemaphore> throttle() const override { return semaphore; }
    [[nodiscard]] std::uint64_t operationTimeout() const override { return timeout; }
    std::optional<TaskSemaphore> semaphore;
    std::uint64_t timeout;
};

struct ThrottleRow {
    const char* name;
    int duration;
    End end;
    const char* error;
};

TEST_F(TaskFactoryTest, throttleIsHeldDuringTheOperationAndGivenBackOnce) {
    constexpr ThrottleRow rows[] = {
        {"value", 1, End::value, ""}, {"error", 1, End::error, "own"}, {"timeout", 5, End::value, "Timed out after 2"}};
    for (const auto& row : rows) {
        const TaskSemaphore throttle(2);
        auto hold = [](TaskSemaphore semaphore) -> Task<> { co_await semaphore.wait(); };
        spawn(hold(throttle), executor);
        spawn(hold(throttle), executor);
        bool hasEnded = false;
        const Operation operation(seconds(row.duration), row.end, false, &hasEnded);
        const Controls controls(throttle, 2);
        auto handle = spawn(TaskFactory::withControlledArguments(&controls, std::nullopt, operation), executor);
        executor.advance(seconds(60));
        EXPECT_FALSE(hasEnded) << row.name << ": the wait for a slot is outside the limit";
        throttle.signal();
        executor.runAll();
        EXPECT_EQ(throttle.activeTasks(), 2) << row.name;
        executor.advance(seconds(2));
        EXPECT_EQ(errorOf(*handle.waitSync()), row.error) << row.name;
        EXPECT_EQ(throttle.activeTasks(), 1) << row.name;
    }
}

TEST_F(TaskFactoryTest, withoutControlArgumentsTheOperationRunsAsItIs) {
    bool hasEnded = false;
    const Operation operation(seconds(1000), End::value, false, &hasEnded);
    auto handle = spawn(TaskFactory::withControlledArguments(nullptr, timeoutLog, operation), executor);
    executor.advance(seconds(1000));
    EXPECT_EQ(handle.waitSync()->value(), 7);
}

TEST(TimeoutError, describesItself) {
    EXPECT_EQ(TimeoutError::timedOut(5).errorDescription(), "Timed out after 5");
    EXPECT_EQ(TimeoutError::undefined().errorDescription(), "Undefined timeout");
    EXPECT_NE(TimeoutError::timedOut(5), TimeoutError::timedOut(6));
    EXPECT_NE(TimeoutError::timedOut(0), TimeoutError::undefined());
}

}  // namespace
}  // namespace corvex::taskFactoryTests

#include <memory>
#include <stdexcept>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include <Corvex/platform/ManualExecutor.h>
#include <Corvex/platform/SerialExecutor.h>
#include <Corvex/platform/Sleep.h>
#include <Corvex/platform/TaskGroup.h>
#include <Corvex/platform/TaskHandle.h>
#include <Corvex/platform/ThreadPool.h>

#include <tests/Thrown.h>

namespace corvex::taskTests {
namespace {

using std::chrono::milliseconds;

Task<int> valueOf(int value) { co_return value; }

Task<> failWith(const char* message) {
    throw std::runtime_error(message);
    co_return;
}

Task<int> sleepThen(int value, milliseconds duration) {
    co_await sleepFor(duration);
    co_return value;
}

TEST(Task, errorsReachTheAwaiterAndMoveOnlyValuesPass) {
    ManualExecutor executor;
    auto parent = []() -> Task<std::unique_ptr<std::string>> {
        try {
            co_await failWith("first");
        } catch (const std::runtime_error& error) {
            co_return std::make_unique<std::string>(error.what());
        }
        co_return nullptr;
    };
    auto handle = spawn(parent(), executor);
    auto failed = spawn(failWith("second"), executor);
    executor.runAll();
    EXPECT_EQ(*std::move(handle).waitSync()->value(), "first");
    EXPECT_EQ(test::errorOf(failed), "second");
    EXPECT_FALSE(TaskHandle<int>().waitSync().has_value());
}

/// Chains of a length that no stack could hold: tasks that end at once, one in the other, and one after the other.
TEST(Task, stackUseDoesNotDependOnTheLengthOfAChain) {
    struct Chain {
        static Task<int> nested(int depth) {
            if (depth == 0) co_return 0;
            co_return 1 + co_await nested(depth - 1);
        }
        static Task<int> inTurn(int count) {
            int sum = 0;
            for (int i = 0; i < count; ++i) sum += co_await valueOf(1);
            co_return sum;
        }
    };
    ManualExecutor executor;
    auto nested = spawn(Chain::nested(200'000), executor);
    auto inTurn = spawn(Chain::inTurn(1'000'000), executor);
    executor.runAll();
    EXPECT_EQ(nested.waitSync()->value(), 200'000);
    EXPECT_EQ(inTurn.waitSync()->value(), 1'000'000);
}

/// A coroutine type of somebody else: starts at once, offers no context, nobody awaits it.
struct Detached {
    struct promise_type {  // NOLINT(readability-identifier-naming): the language's name
        Detached get_return_object() const noexcept { return {}; }
        std::suspend_never initial_suspend() const noexcept { return {}; }
        std::suspend_never final_suspend() const noexcept { return {}; }
        void return_void() const noexcept {}
        void unhandled_exception() const noexcept { std::terminate(); }
    };
};

TEST(Task, foreignCoroutinesCanAwaitTasksAndPrimitives) {
    ManualExecutor executor;
    std::string trace;
    auto foreign = [](ManualExecutor& home, std::string& text) -> Detached {
        text += std::to_string(co_await valueOf(1));
        co_await resumeOn(home);
        text += home.runsHere() ? " home " : " away ";
        text += std::to_string(co_await sleepThen(2, milliseconds(5)));
    };
    foreign(executor, trace);
    EXPECT_EQ(trace, "1");
    executor.advance(milliseconds(5));
    EXPECT_EQ(trace, "1 home 2");

    // Started within a task, whose own chain must go on as well.
    auto parent = [&foreign](ManualExecutor& home, std::string& text) -> Task<> {
        foreign(home, text);
        text += std::to_string(co_await valueOf(3));
    };
    trace.clear();
    spawn(parent(executor, trace), executor);
    executor.advance(milliseconds(5));
    EXPECT_EQ(trace, "31 home 2");
}

TEST(Sleep, wakesAtItsTimeAndThrowsWhenCancelled) {
    ManualExecutor executor;
    const auto sleep = [&executor](milliseconds time) { return spawn(sleepThen(1, time), executor); };
    const auto inTime = sleep(milliseconds(10)), during = sleep(milliseconds(10)), before = sleep(milliseconds(10)),
               yielding = sleep(milliseconds(0)), unbounded = sleep(milliseconds::max());
    before.cancel();
    yielding.cancel();
    executor.advance(milliseconds(9));
    EXPECT_FALSE(inTime.isFinished());
    EXPECT_TRUE(before.isFinished());
    during.cancel();
    unbounded.cancel();
    EXPECT_FALSE(during.isFinished()) << "the cancelling thread resumes nobody";
    executor.advance(milliseconds(1));
    EXPECT_EQ(inTime.waitSync()->value(), 1);
    for (const auto& cancelled : {during, before, yielding, unbounded}) {
        EXPECT_EQ(test::errorOf(cancelled), CancellationError().what());
    }
}

TEST(Task, cancellationAndPriorityReachAwaitedTasks) {
    ManualExecutor executor;
    auto child = []() -> Task<TaskPriority> {
        co_await checkCancellation();
        co_return (co_await taskContext()).priority;
    };
    auto parent = [&child]() -> Task<TaskPriority> { co_return co_await child(); };
    auto finished = spawn(parent(), SpawnOptions(executor, TaskPriority::utility));
    auto cancelled = spawn(parent(), executor);
    cancelled.cancel();
    executor.runAll();
    EXPECT_EQ(finished.waitSync()->value(), TaskPriority::utility);
    EXPECT_EQ(test::errorOf(cancelled), CancellationError().what());
}

TEST(TaskHandle, everyWaiterGetsTheResult) {
    ManualExecutor executor;
    auto handle = spawn(sleepThen(5, milliseconds(1)), executor);
    auto wait = [](TaskHandle<int> awaited) -> Task<int> { co_return (co_await awaited.result()).value(); };
    auto early = spawn(wait(handle), executor);
    auto alsoEarly = spawn(wait(handle), executor);
    {
        auto abandoned = wait(handle).release();  // destroyed while it waits
        abandoned.resume();
        abandoned.destroy();
    }
    executor.advance(milliseconds(1));
    auto late = spawn(wait(handle), executor);
    executor.runAll();
    EXPECT_EQ(early.waitSync()->value() + alsoEarly.waitSync()->value() + late.waitSync()->value(), 15);
}

TEST(TaskGroup, nextGivesResultsInTheOrderOfFinishing) {
    ManualExecutor executor;
    auto body = [](TaskGroup<int>& group) -> Task<std::string> {
        for (const int value : {3, 1, 2}) group.add(sleepThen(value, milliseconds(value)));
        std::string text;
        while (const auto value = co_await group.next()) text += std::to_string(*value);
        co_return text;
    };
    auto handle = spawn(withTaskGroup<int>(body), executor);
    executor.advance(milliseconds(3));
    EXPECT_EQ(handle.waitSync()->value(), "123");
}

/// Notes its end, unless it was cancelled.
Task<> noteEnd(std::string& trace, char name, milliseconds duration) {
    co_await sleepFor(duration);
    trace += name;
}

TEST(TaskGroup, childrenAreAwaitedOnEveryExitAndErrorsCancelTheRest) {
    constexpr std::tuple<bool, bool, bool, const char*, const char*> rows[] = {
        {false, false, false, "ab", ""},
        {true, false, false, "", "body"},
        {false, true, false, "", "child"},
        {true, true, false, "", "body"},
        {false, false, true, "", "the task was cancelled"},
    };
    for (const auto& [bodyThrows, childThrows, isCancelled, expected, error] : rows) {
        ManualExecutor executor;
        std::string trace;
        auto body = [&trace, bodyThrows = bodyThrows, childThrows = childThrows](TaskGroup<>& group) -> Task<> {
            group.add(noteEnd(trace, 'a', milliseconds(1)));
            group.add(noteEnd(trace, 'b', milliseconds(2)));
            if (childThrows) group.add(failWith("child"));
            if (bodyThrows) throw std::runtime_error("body");
            co_return;
        };
        auto handle = spawn(withTaskGroup(body), executor);
        executor.runAll();
        if (isCancelled) handle.cancel();
        executor.advance(milliseconds(2));
        ASSERT_TRUE(handle.isFinished()) << error;
        EXPECT_EQ(trace, expected) << error;
        EXPECT_EQ(test::errorOf(handle), error) << bodyThrows << childThrows << isCancelled;
    }
}

/// Sleeps, cancellations, groups and hops of many tasks at once; a race among them shows under ThreadSanitizer.
TEST(Task, stress) {
    constexpr int rounds = 200, childCount = 20;
    ThreadPool pool(3);
    SerialExecutor serial(pool);
    int onSerial = 0;  // guarded by the serial executor alone
    auto child = [](SerialExecutor& queue, int& count, int number) -> Task<int> {
        co_await sleepFor(std::chrono::microseconds(number * 7 % 50));
        co_await resumeOn(queue);
        ++count;
        if (number % 7 == 6) throw std::runtime_error("seventh");
        co_return 1;
    };
    auto body = [&](TaskGroup<int>& group) -> Task<int> {
        for (int i = 0; i < childCount; ++i) group.add(child(serial, onSerial, i % 6));
        int sum = 0;
        while (const auto value = co_await group.next()) sum += *value;
        group.add(child(serial, onSerial, 6));
        for (int i = 0; i < 5; ++i) group.add(sleepThen(0, milliseconds(60'000)));
        co_return sum;
    };
    std::vector<TaskHandle<int>> finished, cancelled;
    for (int round = 0; round < rounds; ++round) {
        finished.push_back(spawn(withTaskGroup<int>(body), pool));
        cancelled.push_back(spawn(sleepThen(round, milliseconds(60'000)), pool));
        if (round % 2 == 1) cancelled[static_cast<std::size_t>(round / 2)].cancel();
    }
    for (auto& handle : cancelled) handle.cancel();
    for (auto& handle : finished) EXPECT_EQ(test::errorOf(handle), "seventh");
    for (auto& handle : cancelled) EXPECT_FALSE(handle.waitSync()->hasValue());
    pool.join();
    EXPECT_EQ(onSerial, rounds * (childCount + 1));
}

}  // namespace
}  // namespace corvex::taskTests

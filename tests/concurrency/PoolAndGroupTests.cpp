#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <Corvex/concurrency/AsyncTaskGroup.h>
#include <Corvex/concurrency/SimpleAsyncPool.h>
#include <Corvex/platform/ManualExecutor.h>

#include "Coroutines.h"

namespace corvex::poolAndGroupTests {
namespace {

using Pool = SimpleAsyncPool<std::string>;

Task<> borrow(Pool pool, std::string& trace) { trace += co_await pool.checkOut(); }

/// Everything on hand, the next to go out first.
std::string contents(const Pool& pool, ManualExecutor& executor) {
    std::string text;
    for (std::size_t count = pool.availableCount(); count > 0; --count) spawn(borrow(pool, text), executor);
    executor.runAll();
    return text;
}

TEST(SimpleAsyncPool, lastInGoesOutFirstAndBorrowersAreServedInOrder) {
    ManualExecutor executor;
    std::string trace;
    const Pool pool({"a", "b", "c"});
    for (int i = 0; i < 5; ++i) spawn(borrow(pool, trace), executor);
    {
        executor.runAll();
        const Abandoned gone(borrow(pool, trace));
        EXPECT_EQ(pool.waitingCount(), 3U);
    }
    EXPECT_EQ(trace, "cba");
    EXPECT_EQ(pool.waitingCount(), 2U);
    pool.checkIn("x");
    EXPECT_EQ(trace, "cba") << "bringing back resumes nobody";
    pool.checkIn("y");
    pool.checkIn("z");
    executor.runAll();
    EXPECT_EQ(trace, "cbaxy");
    EXPECT_EQ(contents(pool, executor), "z");
}

struct CapacityRow {
    const char* name;
    void (*change)(const Pool& pool);
    std::int64_t capacity;
    const char* contents;
};

TEST(SimpleAsyncPool, capacityRows) {
    const CapacityRow rows[] = {
        {"drops what comes back beyond it", [](const Pool& pool) { pool.checkIn("d"); }, 3, "cba"},
        {"add raises it", [](const Pool& pool) { pool.add("d"); }, 4, "dcba"},
        {"updating drops the oldest", [](const Pool& pool) { pool.updateCapacity(1); }, 1, "c"},
        {"negative drops all", [](const Pool& pool) { pool.updateCapacity(-2); }, -2, ""},
        {"setting drops nothing", [](const Pool& pool) { pool.setCapacity(1); }, 1, "cba"},
        {"setting makes room", [](const Pool& pool) { pool.setCapacity(5), pool.checkIn("d"); }, 5, "dcba"},
        {"add to a shrunk pool", [](const Pool& pool) { pool.setCapacity(1), pool.add("d"); }, 2, "cba"},
    };
    for (const auto& row : rows) {
        ManualExecutor executor;
        const Pool pool({"a", "b", "c"});
        row.change(pool);
        EXPECT_EQ(pool.capacity(), row.capacity) << row.name;
        EXPECT_EQ(contents(pool, executor), row.contents) << row.name;
    }
}

TEST(SimpleAsyncPool, dropsItsSurplusInOneStep) {
    const SimpleAsyncPool<std::shared_ptr<void>> pool({});
    std::vector<std::size_t> counts;
    const auto look = [&](void*) { counts.push_back(pool.availableCount()); };
    for (int i = 0; i < 3; ++i) pool.add(std::shared_ptr<void>(nullptr, look));
    pool.updateCapacity(1);
    EXPECT_EQ(counts, std::vector<std::size_t>({1, 1}));
    pool.updateCapacity(0);
}

struct FactoryRow {
    const char* name;
    std::int64_t newCapacity;
    int itemCount;  ///< How many the factory gives before it gives nothing, or throws when `throws`.
    bool throws;
    int calls;
    std::int64_t capacity;
    const char *contents, *error;
};

TEST(SimpleAsyncPool, factoryFillsUpToTheNewCapacity) {
    constexpr FactoryRow rows[] = {
        {"fills up", 5, 9, false, 2, 5, "10cba", ""},       {"gives less", 9, 1, false, 2, 4, "0cba", ""},
        {"gives nothing", 5, 0, false, 1, 3, "cba", ""},    {"throws", 9, 1, true, 2, 4, "0cba", "no more"},
        {"no increase trims", 2, 9, false, 0, 2, "cb", ""}, {"the same", 3, 9, false, 0, 3, "cba", ""},
    };
    for (const auto& row : rows) {
        ManualExecutor executor;
        const Pool pool({"a", "b", "c"});
        int calls = 0;
        auto factory = [&calls, &row]() -> Task<std::optional<std::string>> {
            if (calls++ < row.itemCount) co_return std::to_string(calls - 1);
            if (row.throws) throw std::runtime_error("no more");
            co_return std::nullopt;
        };
        auto handle = spawn(pool.updateCapacity(row.newCapacity, factory), executor);
        executor.runAll();
        EXPECT_EQ(errorOf(*handle.waitSync()), row.error) << row.name;
        EXPECT_EQ(calls, row.calls) << row.name;
        EXPECT_EQ(pool.capacity(), row.capacity) << row.name;
        EXPECT_EQ(contents(pool, executor), row.contents) << row.name;
    }
}

TEST(SimpleAsyncPoolDeathTest, capacityBeyondItsTypeStopsTheProcess) {
    const Pool pool({});
    pool.setCapacity(std::numeric_limits<std::int64_t>::max());
    EXPECT_DEATH(pool.add("a"), "addition overflowed");
}

struct GroupRow {
    const char *name, *steps;  ///< "+" enters, "-" leaves, letters wait, " " runs what is posted.
    const char* trace;
};

TEST(AsyncTaskGroup, schedules) {
    constexpr GroupRow rows[] = {
        {"nothing to wait for", "a ", "a"},
        {"only the last leaving frees", "++ab - c . -. ", "..abc"},
        {"frees once", "+a -. +b .", ".a."},
        {"from below zero frees nobody", "--a ++. b ", ".b"},
        {"from below zero and through one", "-a ++. - ", ".a"},
    };
    for (const auto& row : rows) {
        ManualExecutor executor;
        std::string trace;
        const AsyncTaskGroup group;
        auto wait = [](AsyncTaskGroup awaited, std::string& text, char name) -> Task<> {
            co_await awaited.wait();
            text += name;
        };
        int count = 0;
        for (const char step : std::string_view(row.steps)) {
            if (step == '+') group.enter(), ++count;
            if (step == '-') group.leave(), --count;
            if (step == '.') trace += '.';
            if (step == ' ') executor.runAll();
            if (step >= 'a' && step <= 'z') spawn(wait(group, trace, step), executor), executor.runAll();
        }
        EXPECT_EQ(trace, row.trace) << row.name;
        for (; count > 0; --count) group.leave();  // frees those that the row left waiting
        for (; count < 1; ++count) group.enter();
        group.leave();
        executor.runAll();
    }
}

}  // namespace
}  // namespace corvex::poolAndGroupTests

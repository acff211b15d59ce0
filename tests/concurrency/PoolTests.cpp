#include <cstdint>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include <Corvex/concurrency/SimpleAsyncPool.h>

#include <tests/Thrown.h>

#include "Schedules.h"

namespace corvex::poolTests {
namespace {

using Pool = SimpleAsyncPool<std::string>;

Task<> borrow(Pool pool, std::string& trace) { trace += co_await pool.checkOut(); }

/// Everything on hand, the next to go out first.
std::string contents(const Pool& pool) {
    ManualExecutor executor;
    std::string text;
    for (std::size_t count = pool.availableCount(); count > 0; --count) spawn(borrow(pool, text), executor);
    executor.runAll();
    return text;
}

TEST(SimpleAsyncPool, lastInGoesOutFirstAndBorrowersAreServedInOrder) {
    ManualExecutor executor;
    std::string trace;
    const Pool pool({"a", "b", "c"});
    const auto act = [&](char step) -> std::optional<Task<>> {
        if (step == '?') return borrow(pool, trace);
        if (step == '#') return trace += std::to_string(pool.waitingCount()), std::nullopt;
        return pool.checkIn(std::string(1, step)), std::nullopt;
    };
    play("????? ~?# #x# yz ", executor, act);  // who brings back resumes nobody
    EXPECT_EQ(trace, "cba321xy");
    EXPECT_EQ(contents(pool), "z");
}

TEST(SimpleAsyncPool, capacityRows) {
    constexpr std::tuple<const char*, void (*)(const Pool& pool), std::int64_t, const char*> rows[] = {
        {"drops what comes back beyond it", [](const Pool& pool) { pool.checkIn("d"); }, 3, "cba"},
        {"add raises it", [](const Pool& pool) { pool.add("d"); }, 4, "dcba"},
        {"updating drops the oldest", [](const Pool& pool) { pool.updateCapacity(1); }, 1, "c"},
        {"negative drops all", [](const Pool& pool) { pool.updateCapacity(-2); }, -2, ""},
        {"setting drops nothing", [](const Pool& pool) { pool.setCapacity(1); }, 1, "cba"},
        {"setting makes room", [](const Pool& pool) { pool.setCapacity(5), pool.checkIn("d"); }, 5, "dcba"},
        {"add to a shrunk pool", [](const Pool& pool) { pool.setCapacity(1), pool.add("d"); }, 2, "cba"},
    };
    for (const auto& [name, change, capacity, left] : rows) {
        const Pool pool({"a", "b", "c"});
        change(pool);
        EXPECT_EQ(pool.capacity(), capacity) << name;
        EXPECT_EQ(contents(pool), left) << name;
    }
    const Pool full({});
    full.setCapacity(std::numeric_limits<std::int64_t>::max());
    EXPECT_DEATH(full.add("a"), "addition overflowed");
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

TEST(SimpleAsyncPool, factoryFillsUpToTheNewCapacity) {
    // The new capacity; how many the factory gives before it gives nothing, or throws; what comes of it.
    constexpr std::tuple<const char*, int, int, bool, int, int, const char*, const char*> rows[] = {
        {"fills up", 5, 9, false, 2, 5, "10cba", ""},       {"gives less", 9, 1, false, 2, 4, "0cba", ""},
        {"gives nothing", 5, 0, false, 1, 3, "cba", ""},    {"throws", 9, 1, true, 2, 4, "0cba", "no more"},
        {"no increase trims", 2, 9, false, 0, 2, "cb", ""}, {"the same", 3, 9, false, 0, 3, "cba", ""},
    };
    for (const auto& [name, newCapacity, itemCount, throws, expectedCalls, capacity, left, error] : rows) {
        ManualExecutor executor;
        const Pool pool({"a", "b", "c"});
        int calls = 0;
        auto factory = [&calls, itemCount = itemCount, throws = throws]() -> Task<std::optional<std::string>> {
            if (calls++ < itemCount) co_return std::to_string(calls - 1);
            if (throws) throw std::runtime_error("no more");
            co_return std::nullopt;
        };
        auto handle = spawn(pool.updateCapacity(newCapacity, factory), executor);
        executor.runAll();
        EXPECT_EQ(test::errorOf(handle), error) << name;
        EXPECT_EQ(calls, expectedCalls) << name;
        EXPECT_EQ(pool.capacity(), capacity) << name;
        EXPECT_EQ(contents(pool), left) << name;
    }
}

}  // namespace
}  // namespace corvex::poolTests

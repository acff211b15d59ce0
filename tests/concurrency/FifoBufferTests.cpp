#include <atomic>
#include <memory>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include <Corvex/concurrency/OrvaneBlockingFifoBuffer.h>

#include "Schedules.h"

namespace corvex::fifoBufferTests {
namespace {

TEST(OrvaneBlockingFifoBuffer, schedules) {
    constexpr Schedule rows[] = {
        {"capacity 0 is 1", 0, "12 ?", "+1-1+2"},
        {"a slot admits the oldest producer", 1, "123 ? ? ? ", "+1-1+2-2+3-3"},
        {"consumers in order, posted", 2, "?? 1 2 ", "+1-1+2-2"},
        {"add ends before its consumer runs", 2, "? 12 ", "+1+2-1"},
        {"closed while empty frees consumers, also twice", 2, "?? || ", "-.-."},
        {"closed keeps what is buffered", 2, "12 |??? ", "+1+2-1-2-."},
        {"closed while full still admits", 1, "123 | 4 ??? ? ", "+1!4-1-2-3+2+3-."},
        {"nothing is admitted beyond the capacity", 2, "12345 ? ", "+1+2-1+3"},
        {"destroyed producer", 1, "1 ~92 ??? ", "+1-1-2+2"},
        {"destroyed consumer", 1, "~?? 1 ", "+1-1"},
    };
    for (const auto& row : rows) {
        const OrvaneBlockingFifoBuffer<std::string> buffer(static_cast<unsigned>(row.setting));
        const auto add = [&buffer](char, const std::string& item) { return buffer.add(item); };
        EXPECT_EQ(traceOf(buffer, row.steps, "?", add, [&buffer](char) { return buffer.next(); }), row.trace)
            << row.name;
    }
}

TEST(OrvaneBlockingFifoBuffer, itemsThatNobodyTakesAreFreedWithIt) {
    using Items = OrvaneBlockingFifoBuffer<std::shared_ptr<int>>;
    const auto counted = std::make_shared<int>(0);
    auto fill = [&counted](Items target) -> Task<> {
        for (int i = 0; i < 50; ++i) co_await target.add(counted);
    };
    ManualExecutor executor;
    spawn(fill(Items(100)), executor);
    EXPECT_EQ(executor.runAll(), 1U);
    EXPECT_EQ(counted.use_count(), 1);
}

/// The quick ways take one mutex each. Shows under ThreadSanitizer.
TEST(OrvaneBlockingFifoBuffer, whoTakesTheLastItemMayDestroyIt) {
    using Items = OrvaneBlockingFifoBuffer<int>;
    auto items = std::make_unique<Items>(2);
    auto produce = [](Items& target) -> Task<> {
        for (int i = 0; i < 2; ++i) co_await target.add(i);
    };
    auto consume = [](std::unique_ptr<Items> source) -> Task<> {
        for (int i = 0; i < 2; ++i) EXPECT_EQ(co_await source->next(), i);
    };
    std::atomic<bool> isAdded{false};
    ManualExecutor executor;
    const std::jthread producer([&isAdded, produce, target = items.get()] {
        ManualExecutor own;
        spawn(produce(*target), own);
        own.runAll();
        isAdded.store(true, std::memory_order_relaxed);  // orders nothing: the buffer has to
    });
    while (!isAdded.load(std::memory_order_relaxed)) std::this_thread::yield();
    spawn(consume(std::move(items)), executor);
    executor.runAll();
}

}  // namespace
}  // namespace corvex::fifoBufferTests

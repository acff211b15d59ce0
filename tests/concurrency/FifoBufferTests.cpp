#include <atomic>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include <Corvex/concurrency/OrvaneBlockingFifoBuffer.h>

#include "SequencerSchedules.h"

namespace corvex::fifoBufferTests {
namespace {

using Buffer = OrvaneBlockingFifoBuffer<std::string>;

Task<> consume(Buffer buffer, std::string* trace) {
    const auto item = co_await buffer.next();
    *trace += "-" + item.value_or(".");
}

std::string traceOf(const Buffer& buffer, const char* steps) {
    std::string trace;
    const auto add = [&](char step) {
        const std::string item(1, step);
        return traceAdding(&trace, item, [buffer, item] { return buffer.add(item); });
    };
    const auto ask = [&](char) { return consume(buffer, &trace); };
    return play(steps, buffer, trace, "?", add, ask, [&](ManualExecutor& executor) {
        while (!trace.ends_with("-.")) {  // ends the producers that the schedule left waiting
            spawn(consume(buffer, &trace), executor);
            executor.runAll();
        }
    });
}

TEST(OrvaneBlockingFifoBuffer, schedules) {
    constexpr SequencerRow rows[] = {
        {"order", 3, "123 ??? ", "+1+2+3-1-2-3"},
        {"capacity 0 is 1", 0, "12 ?", "+1-1+2"},
        {"a slot admits the oldest producer", 1, "123 ? ? ? ", "+1-1+2-2+3-3"},
        {"consumers in order, posted", 2, "?? 1 2 ", "+1-1+2-2"},
        {"add ends before its consumer runs", 2, "? 12 ", "+1+2-1"},
        {"closed while empty frees consumers", 2, "?? | ", "-.-."},
        {"closed keeps what is buffered", 2, "12 |??? ", "+1+2-1-2-."},
        {"closed while full still admits", 1, "123 | 4 ??? ? ", "+1!4-1-2-3+2+3-."},
        {"closing twice", 1, "1 || ?? ", "+1-1-."},
        {"nothing is admitted beyond the capacity", 2, "12345 ? ", "+1+2-1+3"},
        {"destroyed producer", 1, "1 x2 ??? ", "+1-1-2+2"},
        {"destroyed consumer", 1, "o? 1 ", "+1-1"},
    };
    for (const auto& row : rows) EXPECT_EQ(traceOf(Buffer(row.setting), row.steps), row.trace) << row.name;
}

TEST(OrvaneBlockingFifoBuffer, itemsThatNobodyTakesAreFreedWithIt) {
    const auto counted = std::make_shared<int>(0);
    {
        ManualExecutor executor;
        const OrvaneBlockingFifoBuffer<std::shared_ptr<int>> buffer(100);
        auto fill = [](OrvaneBlockingFifoBuffer<std::shared_ptr<int>> target, std::shared_ptr<int> item) -> Task<> {
            for (int i = 0; i < 50; ++i) co_await target.add(item);
        };
        spawn(fill(buffer, counted), executor);
        executor.runAll();
        EXPECT_EQ(counted.use_count(), 51);
    }
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
    const std::jthread producer([&isAdded, produce, target = items.get()] {
        ManualExecutor executor;
        spawn(produce(*target), executor);
        executor.runAll();
        isAdded.store(true, std::memory_order_relaxed);  // orders nothing: the buffer has to
    });
    while (!isAdded.load(std::memory_order_relaxed)) std::this_thread::yield();
    ManualExecutor executor;
    spawn(consume(std::move(items)), executor);
    executor.runAll();
}

}  // namespace
}  // namespace corvex::fifoBufferTests

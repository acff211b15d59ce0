#include <atomic>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include <Corvex/concurrency/OrvaneBlockingFifoBuffer.h>
#include <Corvex/platform/ManualExecutor.h>

#include "Coroutines.h"

namespace corvex::fifoBufferTests {
namespace {

using Buffer = OrvaneBlockingFifoBuffer<std::string>;

/// Traces "+item", "!item" for a refused one, "-item" for what comes out, "-." for the end.
Task<> produce(Buffer buffer, std::string& trace, std::string item) {
    try {
        co_await buffer.add(item);
        trace += "+" + item;
    } catch (const DataCoordinationError& error) {
        EXPECT_EQ(error, DataCoordinationError(DataCoordinationError::Case::addToClosedConduitError));
        trace += "!" + item;
    }
}
Task<> consume(Buffer buffer, std::string& trace) {
    const auto item = co_await buffer.next();
    trace += "-" + item.value_or(".");
}

/// What one schedule does to a buffer: letters and digits add themselves, "?" asks for an item, "|" closes, " " lets
/// everything run that is posted, "x" and "o" are a producer and a consumer that are destroyed while they wait.
struct ScheduleRow {
    const char* name;
    std::uint64_t capacity;
    const char *steps, *trace;
};

TEST(OrvaneBlockingFifoBuffer, schedules) {
    constexpr ScheduleRow rows[] = {
        {"order", 3, "123 ??? ", "+1+2+3-1-2-3"},
        {"capacity 0 is 1", 0, "12 ?", "+1"},
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
    for (const auto& row : rows) {
        ManualExecutor executor;
        std::string trace;
        {
            const Buffer buffer(row.capacity);
            std::vector<std::unique_ptr<Abandoned<void>>> abandoned;
            for (const char step : std::string_view(row.steps)) {
                switch (step) {
                    case '?': spawn(consume(buffer, trace), executor); break;
                    case '|': buffer.close(); break;
                    case ' ':
                        abandoned.clear();
                        executor.runAll();
                        break;
                    case 'x':
                        abandoned.push_back(std::make_unique<Abandoned<void>>(produce(buffer, trace, "x")));
                        break;
                    case 'o': abandoned.push_back(std::make_unique<Abandoned<void>>(consume(buffer, trace))); break;
                    default: spawn(produce(buffer, trace, std::string(1, step)), executor); break;
                }
            }
            EXPECT_EQ(trace, row.trace) << row.name;
            buffer.close();
            executor.runAll();
            while (trace.substr(trace.size() - std::min<std::size_t>(2, trace.size())) != "-.") {
                spawn(consume(buffer, trace), executor);  // ends the producers that the row left waiting
                executor.runAll();
            }
        }
    }
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

#include <benchmark/benchmark.h>

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <memory>
#include <numeric>
#include <optional>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include <Corvex/concurrency/GuidedItemSequencer.h>
#include <Corvex/concurrency/IndeterminateItemSequencer.h>
#include <Corvex/concurrency/MultiFeedItemSequencer.h>
#include <Corvex/concurrency/TaskSemaphore.h>
#include <Corvex/platform/ManualExecutor.h>
#include <Corvex/platform/Task.h>
#include <Corvex/platform/TaskHandle.h>
#include <Corvex/platform/ThreadPool.h>

#if __has_include(<oneapi/tbb/parallel_pipeline.h>)
#include <oneapi/tbb/flow_graph.h>
#include <oneapi/tbb/parallel_pipeline.h>
#define CORVEX_BENCH_TBB 1
#endif

namespace {

using corvex::Task;

// Re-ordering with work: numbers are worked on by all processors and come out in order, 64 of them in flight at most.
// The argument is the mean number of steps of the work, which differs from number to number by a factor of up to 15.

constexpr std::int64_t itemCount = 20'000;
constexpr std::int64_t inFlight = 64;

std::uint64_t workOn(std::int64_t number, std::int64_t steps) {
    auto value = static_cast<std::uint64_t>(number) * 0x9E3779B97F4A7C15U;
    const auto count = static_cast<std::uint64_t>(steps) * (1 + (value >> 60)) / 8;
    for (std::uint64_t i = 0; i < count; ++i) value = value * 6364136223846793005U + 1442695040888963407U;
    return value;
}

/// Depends on the order.
std::uint64_t gather(std::uint64_t sum, std::uint64_t value) { return sum * 31 + value; }

void finish(benchmark::State& state, std::uint64_t sum) {
    std::uint64_t expected = 0;
    for (std::int64_t i = 0; i < itemCount; ++i) expected = gather(expected, workOn(i, state.range()));
    if (sum != expected) state.SkipWithError("out of order");
    state.SetItemsProcessed(state.iterations() * itemCount);
}

using Numbers = corvex::GuidedItemSequencer<std::int64_t, std::uint64_t>;

Task<> workInALane(Numbers numbers, corvex::TaskSemaphore slots, std::atomic<std::int64_t>* next, std::int64_t steps) {
    for (;;) {
        co_await slots.wait();
        const std::int64_t number = next->fetch_add(1, std::memory_order_relaxed);
        if (number >= itemCount) {
            slots.signal();
            co_return;
        }
        co_await numbers.add(workOn(number, steps), number);
    }
}

Task<std::uint64_t> gatherAll(Numbers numbers, corvex::TaskSemaphore slots) {
    std::uint64_t sum = 0;
    for (std::int64_t i = 0; i < itemCount; ++i) {
        const auto entry = co_await numbers.next();
        sum = gather(sum, entry->item);
        slots.signal();
    }
    co_return sum;
}

void reorderCorvex(benchmark::State& state) {
    corvex::ThreadPool pool;
    std::uint64_t sum = 0;
    for (auto _ : state) {
        const Numbers numbers(0, [](const std::int64_t& key) { return std::optional(key + 1); });
        const corvex::TaskSemaphore slots(inFlight);
        std::atomic<std::int64_t> next{0};
        auto gathered = corvex::spawn(gatherAll(numbers, slots), pool);
        std::vector<corvex::TaskHandle<>> lanes;
        for (unsigned i = 0; i < pool.threadCount(); ++i)
            lanes.push_back(corvex::spawn(workInALane(numbers, slots, &next, state.range()), pool));
        for (auto& lane : lanes) (void)lane.waitSync();
        sum = gathered.waitSync()->value();
    }
    finish(state, sum);
}
BENCHMARK(reorderCorvex)->Arg(100)->Arg(1'000)->Arg(10'000)->MeasureProcessCPUTime()->UseRealTime();

#ifdef CORVEX_BENCH_TBB
struct Numbered {
    std::size_t number;
    std::uint64_t value;
};

void reorderTbbPipeline(benchmark::State& state) {
    using tbb::filter_mode;
    std::uint64_t sum = 0;
    for (auto _ : state) {
        std::int64_t next = 0;
        sum = 0;
        const auto source = [&](tbb::flow_control& control) {
            if (next == itemCount) control.stop();
            return next++;
        };
        tbb::parallel_pipeline(
            inFlight,
            tbb::make_filter<void, std::int64_t>(filter_mode::serial_in_order, source) &
                tbb::make_filter<std::int64_t, std::uint64_t>(
                    filter_mode::parallel, [&](std::int64_t number) { return workOn(number, state.range()); }) &
                tbb::make_filter<std::uint64_t, void>(filter_mode::serial_in_order,
                                                      [&](std::uint64_t value) { sum = gather(sum, value); }));
    }
    finish(state, sum);
}
BENCHMARK(reorderTbbPipeline)->Arg(100)->Arg(1'000)->Arg(10'000)->MeasureProcessCPUTime()->UseRealTime();

void reorderTbbSequencerNode(benchmark::State& state) {
    namespace flow = tbb::flow;
    std::uint64_t sum = 0;
    for (auto _ : state) {
        sum = 0;
        std::int64_t next = 0;
        flow::graph graph;
        flow::input_node<Numbered> source(graph, [&](tbb::flow_control& control) {
            if (next == itemCount) control.stop();
            return Numbered{static_cast<std::size_t>(next++), 0};
        });
        flow::limiter_node<Numbered> limiter(graph, inFlight);
        flow::function_node<Numbered, Numbered> work(graph, flow::unlimited, [&](Numbered item) {
            return Numbered{item.number, workOn(static_cast<std::int64_t>(item.number), state.range())};
        });
        flow::sequencer_node<Numbered> order(graph, [](const Numbered& item) { return item.number; });
        flow::function_node<Numbered, flow::continue_msg> sink(graph, flow::serial, [&](const Numbered& item) {
            sum = gather(sum, item.value);
            return flow::continue_msg();
        });
        flow::make_edge(source, limiter);
        flow::make_edge(limiter, work);
        flow::make_edge(work, order);
        flow::make_edge(order, sink);
        flow::make_edge(sink, limiter.decrementer());
        source.activate();
        graph.wait_for_all();
    }
    finish(state, sum);
}
BENCHMARK(reorderTbbSequencerNode)->Arg(100)->Arg(1'000)->Arg(10'000)->MeasureProcessCPUTime()->UseRealTime();
#endif

// Growth on one thread: adding and taking one item each while so many wait.

std::vector<std::int64_t> shuffledNumbers(std::int64_t count) {
    std::vector<std::int64_t> numbers(static_cast<std::size_t>(count));
    std::iota(numbers.begin(), numbers.end(), 0);
    std::shuffle(numbers.begin(), numbers.end(), std::mt19937_64(1));
    return numbers;
}

/// Runs a task to its end on this thread.
void runHere(corvex::ManualExecutor& executor, Task<> task) {
    const auto handle = corvex::spawn(std::move(task), executor);
    executor.runAll();
}

/// Blocks of items come in any order within the block, and are taken in theirs.
Task<> passGuided(Numbers numbers, const std::vector<std::int64_t>* block, std::int64_t first) {
    for (const std::int64_t number : *block) co_await numbers.add(1, first + number);
    for (std::size_t i = 0; i < block->size(); ++i) benchmark::DoNotOptimize((co_await numbers.next())->item);
}
void guidedWithPending(benchmark::State& state) {
    corvex::ManualExecutor executor;
    const Numbers numbers(0, [](const std::int64_t& key) { return std::optional(key + 1); });
    const auto block = shuffledNumbers(state.range());
    std::int64_t first = 0;
    for (auto _ : state) {
        runHere(executor, passGuided(numbers, &block, first));
        first += state.range();
    }
    state.SetItemsProcessed(state.iterations() * state.range());
}
BENCHMARK(guidedWithPending)->RangeMultiplier(10)->Range(100, 100'000);

using Window = corvex::IndeterminateItemSequencer<std::int64_t, std::int64_t>;

Task<> passWindow(Window window, std::int64_t first, std::int64_t count) {
    for (std::int64_t i = first; i < first + count; ++i) {
        co_await window.add(i, i);
        if (i >= static_cast<std::int64_t>(window.flushWindow())) benchmark::DoNotOptimize(co_await window.next());
    }
}
void indeterminateByWindow(benchmark::State& state) {
    constexpr std::int64_t count = 1'000;
    corvex::ManualExecutor executor;
    const Window window(static_cast<std::uint64_t>(state.range()));
    std::int64_t first = 0;
    runHere(executor, passWindow(window, first, state.range()));
    first += state.range();
    for (auto _ : state) {
        runHere(executor, passWindow(window, first, count));
        first += count;
    }
    state.SetItemsProcessed(state.iterations() * count);
}
BENCHMARK(indeterminateByWindow)->RangeMultiplier(10)->Range(10, 1'000);

using Feeds = corvex::MultiFeedItemSequencer<std::int64_t, int>;

Task<> request(Feeds feeds, std::int64_t index) { benchmark::DoNotOptimize(co_await feeds.requestItemsAtIndex(index)); }
Task<> enqueueAll(Feeds feeds, const std::vector<std::int64_t>* indexes) {
    for (const std::int64_t index : *indexes) co_await feeds.enqueueItems(1, index, 0);
}
/// So many requests wait, for one index each; their items come in any order.
void multiFeedWithRequests(benchmark::State& state) {
    corvex::ManualExecutor executor;
    const Feeds feeds(16);
    const auto indexes = shuffledNumbers(state.range());
    for (auto _ : state) {
        for (const std::int64_t index : indexes) corvex::spawn(request(feeds, index), executor);
        executor.runAll();
        runHere(executor, enqueueAll(feeds, &indexes));
    }
    state.SetItemsProcessed(state.iterations() * state.range());
}
BENCHMARK(multiFeedWithRequests)->RangeMultiplier(10)->Range(100, 10'000);

}  // namespace

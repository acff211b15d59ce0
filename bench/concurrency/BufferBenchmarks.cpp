#include <benchmark/benchmark.h>

#include <thread>
#include <vector>

#include <Corvex/concurrency/OrvaneBlockingFifoBuffer.h>
#include <Corvex/platform/TaskGroup.h>
#include <Corvex/platform/TaskHandle.h>
#include <Corvex/platform/ThreadPool.h>

#include "Peers.h"

namespace {

constexpr int itemCount = 20000;  // of each producer

/// Capacity, then the number of producers and of consumers. On two threads.
void bufferCases(benchmark::internal::Benchmark* benchmark) {
    for (const int pairs : {1, 4})
        for (const int capacity : {1, 16, 1024}) benchmark->Args({capacity, pairs});
    benchmark->MeasureProcessCPUTime()->UseRealTime();
}

using Buffer = corvex::OrvaneBlockingFifoBuffer<int>;

corvex::Task<> produce(Buffer buffer) {
    for (int i = 0; i < itemCount; ++i) co_await buffer.add(i);
}
corvex::Task<> consume(Buffer buffer) {
    for (int i = 0; i < itemCount; ++i) benchmark::DoNotOptimize(co_await buffer.next());
}
void buffer_corvex(benchmark::State& state) {
    corvex::ThreadPool pool(2);
    for (auto _ : state) {
        const Buffer buffer(static_cast<std::uint64_t>(state.range(0)));
        auto body = [&](corvex::TaskGroup<>& group) -> corvex::Task<> {
            for (int i = 0; i < state.range(1); ++i) {
                group.add(produce(buffer));
                group.add(consume(buffer));
            }
            co_return;
        };
        corvex::spawn(corvex::withTaskGroup(body), pool).waitSync();
    }
    state.SetItemsProcessed(state.iterations() * state.range(1) * itemCount);
}
BENCHMARK(buffer_corvex)->Apply(bufferCases);

#ifdef CORVEX_BENCH_ASIO
using Channel = asio::experimental::concurrent_channel<void(asio::error_code, int)>;

asio::awaitable<void> produce(Channel& channel) {
    for (int i = 0; i < itemCount; ++i) co_await channel.async_send(asio::error_code(), i, asio::use_awaitable);
}
asio::awaitable<void> consume(Channel& channel) {
    for (int i = 0; i < itemCount; ++i) benchmark::DoNotOptimize(co_await channel.async_receive(asio::use_awaitable));
}
void buffer_asio(benchmark::State& state) {
    for (auto _ : state) {
        asio::thread_pool pool(2);
        Channel channel(pool.get_executor(), static_cast<std::size_t>(state.range(0)));
        for (int i = 0; i < state.range(1); ++i) {
            asio::co_spawn(pool, produce(channel), asio::detached);
            asio::co_spawn(pool, consume(channel), asio::detached);
        }
        pool.join();
    }
    state.SetItemsProcessed(state.iterations() * state.range(1) * itemCount);
}
BENCHMARK(buffer_asio)->Apply(bufferCases);
#endif

#ifdef CORVEX_BENCH_TBB
/// Its callers block, so each has a thread.
void buffer_tbb(benchmark::State& state) {
    for (auto _ : state) {
        oneapi::tbb::concurrent_bounded_queue<int> queue;
        queue.set_capacity(state.range(0));
        std::vector<std::jthread> threads;
        for (int i = 0; i < state.range(1); ++i) {
            threads.emplace_back([&queue] {
                for (int item = 0; item < itemCount; ++item) queue.push(item);
            });
            threads.emplace_back([&queue] {
                int item{};
                for (int count = 0; count < itemCount; ++count) queue.pop(item), benchmark::DoNotOptimize(item);
            });
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(1) * itemCount);
}
BENCHMARK(buffer_tbb)->Apply(bufferCases);
#endif

}  // namespace

#include <benchmark/benchmark.h>

#include <Corvex/concurrency/ClosableTaskSemaphore.h>
#include <Corvex/concurrency/TaskSemaphore.h>
#include <Corvex/platform/ManualExecutor.h>
#include <Corvex/platform/Sleep.h>
#include <Corvex/platform/TaskGroup.h>
#include <Corvex/platform/TaskHandle.h>
#include <Corvex/platform/ThreadPool.h>

#include "Peers.h"

namespace {

template <class Semaphore>
void waitAndSignal_corvex(benchmark::State& state) {
    struct Loop {
        static corvex::Task<> run(benchmark::State& runs, Semaphore semaphore) {
            for (auto _ : runs) {
                co_await semaphore.wait();
                semaphore.signal();
            }
        }
    };
    corvex::ManualExecutor executor;
    corvex::spawn(Loop::run(state, Semaphore(1)), executor);
    executor.runAll();
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(waitAndSignal_corvex<corvex::TaskSemaphore>);
BENCHMARK(waitAndSignal_corvex<corvex::ClosableTaskSemaphore>);

constexpr int roundCount = 200;

/// One slot that goes round among so many coroutines: all but one wait at any time.
corvex::Task<> passOn(corvex::TaskSemaphore semaphore) {
    for (int i = 0; i < roundCount; ++i) {
        co_await semaphore.wait();
        co_await corvex::sleepFor(std::chrono::seconds(0));  // to the end of the queue, so that all others wait
        semaphore.signal();
    }
}
void handOver_corvex(benchmark::State& state, unsigned threadCount) {
    corvex::ThreadPool pool(threadCount);
    for (auto _ : state) {
        const corvex::TaskSemaphore semaphore(1);
        auto body = [&](corvex::TaskGroup<>& group) -> corvex::Task<> {
            for (int i = 0; i < state.range(0); ++i) group.add(passOn(semaphore));
            co_return;
        };
        corvex::spawn(corvex::withTaskGroup(body), pool).waitSync();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0) * roundCount);
}
BENCHMARK_CAPTURE(handOver_corvex, oneThread, 1)->Arg(64)->Arg(640)->Arg(6400)->MeasureProcessCPUTime()->UseRealTime();
BENCHMARK_CAPTURE(handOver_corvex, twoThreads, 2)->Arg(64)->MeasureProcessCPUTime()->UseRealTime();

#ifdef CORVEX_BENCH_ASIO
/// The same with the one token of a channel.
template <class Channel>
void handOver_asio(benchmark::State& state, auto&& makeContext, auto&& runContext) {
    struct Loop {
        static asio::awaitable<void> run(Channel& channel) {
            for (int i = 0; i < roundCount; ++i) {
                co_await channel.async_receive(asio::use_awaitable);
                co_await asio::post(asio::use_awaitable);
                co_await channel.async_send(asio::error_code(), 0, asio::use_awaitable);
            }
        }
    };
    for (auto _ : state) {
        auto context = makeContext();
        Channel channel(context->get_executor(), 1);
        for (int i = 0; i < state.range(0); ++i) asio::co_spawn(*context, Loop::run(channel), asio::detached);
        asio::co_spawn(*context, channel.async_send(asio::error_code(), 0, asio::use_awaitable), asio::detached);
        runContext(*context);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0) * roundCount);
}
void handOver_asio_oneThread(benchmark::State& state) {
    handOver_asio<asio::experimental::channel<void(asio::error_code, int)>>(
        state, [] { return std::make_unique<asio::io_context>(1); }, [](asio::io_context& context) { context.run(); });
}
BENCHMARK(handOver_asio_oneThread)->Arg(64)->Arg(640)->MeasureProcessCPUTime()->UseRealTime();
void handOver_asio_twoThreads(benchmark::State& state) {
    handOver_asio<asio::experimental::concurrent_channel<void(asio::error_code, int)>>(
        state, [] { return std::make_unique<asio::thread_pool>(2); }, [](asio::thread_pool& pool) { pool.join(); });
}
BENCHMARK(handOver_asio_twoThreads)->Arg(64)->MeasureProcessCPUTime()->UseRealTime();
#endif

}  // namespace

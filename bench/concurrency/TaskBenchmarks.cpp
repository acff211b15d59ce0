#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <ctime>
#include <thread>
#include <vector>

#include <Corvex/concurrency/TaskFactory.h>
#include <Corvex/platform/ManualExecutor.h>
#include <Corvex/platform/TaskGroup.h>
#include <Corvex/platform/TaskHandle.h>
#include <Corvex/platform/ThreadPool.h>

#include "Peers.h"

namespace {

[[gnu::noinline]] corvex::Task<int> valueOf(int value) { co_return value; }

void awaitLazyTask_corvex(benchmark::State& state) {
    auto loop = [](benchmark::State& runs) -> corvex::Task<> {
        for (auto _ : runs) benchmark::DoNotOptimize(co_await valueOf(1));
    };
    corvex::ManualExecutor executor;
    corvex::spawn(loop(state), executor);
    executor.runAll();
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(awaitLazyTask_corvex);

corvex::Task<> nothing() { co_return; }

void spawnAndJoin_corvex(benchmark::State& state) {
    corvex::ThreadPool pool(2);
    auto body = [&state](corvex::TaskGroup<>& group) -> corvex::Task<> {
        for (int i = 0; i < state.range(0); ++i) group.add(nothing());
        co_return;
    };
    auto loop = [&state, &body]() -> corvex::Task<> {
        for (auto _ : state) co_await corvex::withTaskGroup(body);
    };
    corvex::spawn(loop(), pool).waitSync();
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(spawnAndJoin_corvex)->RangeMultiplier(10)->Range(100, 10000)->MeasureProcessCPUTime()->UseRealTime();

#ifdef CORVEX_BENCH_TBB
void spawnAndJoin_tbb(benchmark::State& state) {
    oneapi::tbb::task_arena arena(2);
    arena.execute([&state] {
        for (auto _ : state) {
            oneapi::tbb::task_group group;
            for (int i = 0; i < state.range(0); ++i) group.run([] {});
            group.wait();
        }
    });
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(spawnAndJoin_tbb)->RangeMultiplier(10)->Range(100, 10000)->MeasureProcessCPUTime()->UseRealTime();
#endif

double secondsSince(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// The first children of threads that have just been made; making and joining them is not timed.
void firstChildren_corvex(benchmark::State& state) {
    auto body = [&state](corvex::TaskGroup<>& group) -> corvex::Task<> {
        for (int i = 0; i < state.range(0); ++i) group.add(nothing());
        co_return;
    };
    auto run = [&state, &body]() -> corvex::Task<> {
        const auto start = std::chrono::steady_clock::now();
        co_await corvex::withTaskGroup(body);
        state.SetIterationTime(secondsSince(start));
    };
    for (auto _ : state) {
        corvex::ThreadPool pool(2);
        corvex::spawn(run(), pool).waitSync();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(firstChildren_corvex)->Arg(1000)->Arg(3000)->UseManualTime();

#ifdef CORVEX_BENCH_TBB
/// In a new arena; its threads are those that oneTBB keeps.
void firstChildren_tbb(benchmark::State& state) {
    for (auto _ : state) {
        oneapi::tbb::task_arena arena(2);
        arena.execute([&state] {
            const auto start = std::chrono::steady_clock::now();
            oneapi::tbb::task_group group;
            for (int i = 0; i < state.range(0); ++i) group.run([] {});
            group.wait();
            state.SetIterationTime(secondsSince(start));
        });
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(firstChildren_tbb)->Arg(1000)->Arg(3000)->UseManualTime();
#endif

/// An operation that is posted once, against a timer that never fires.
corvex::Task<int> postedOnce() {
    co_await corvex::sleepFor(std::chrono::seconds(0));
    co_return 1;
}
void againstTimer_corvex(benchmark::State& state) {
    corvex::ThreadPool pool(1);
    auto loop = [](benchmark::State& runs) -> corvex::Task<> {
        for (auto _ : runs)
            benchmark::DoNotOptimize(co_await corvex::TaskFactory::withTimeout(30, std::nullopt, postedOnce));
    };
    corvex::spawn(loop(state), pool).waitSync();
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(againstTimer_corvex)->MeasureProcessCPUTime()->UseRealTime();

#ifdef CORVEX_BENCH_ASIO
asio::awaitable<int> postedOnce(asio::io_context& context) {
    co_await asio::post(context, asio::use_awaitable);
    co_return 1;
}
asio::awaitable<void> againstTimer(benchmark::State& state, asio::io_context& context) {
    using namespace asio::experimental::awaitable_operators;
    for (auto _ : state) {
        asio::steady_timer timer(context, std::chrono::seconds(30));
        benchmark::DoNotOptimize(co_await (postedOnce(context) || timer.async_wait(asio::use_awaitable)));
    }
}
void againstTimer_asio(benchmark::State& state) {
    asio::io_context context(1);
    asio::co_spawn(context, againstTimer(state, context), asio::detached);
    context.run();
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(againstTimer_asio)->MeasureProcessCPUTime()->UseRealTime();
#endif

double processSeconds() {
    std::timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

/// Sleeps of 100 ms at once: how late the last one ends, and what they cost.
void sleeps_corvex(benchmark::State& state) {
    using Clock = std::chrono::steady_clock;
    corvex::ThreadPool pool(2);
    auto sleepOnce = []() -> corvex::Task<double> {
        const auto due = Clock::now() + std::chrono::milliseconds(100);
        co_await corvex::sleepFor(std::chrono::milliseconds(100));
        co_return std::chrono::duration<double, std::milli>(Clock::now() - due).count();
    };
    auto body = [&](corvex::TaskGroup<double>& group) -> corvex::Task<double> {
        for (int i = 0; i < state.range(0); ++i) group.add(sleepOnce());
        double worst = 0;
        while (const auto late = co_await group.next()) worst = std::max(worst, *late);
        co_return worst;
    };
    double worst = 0;
    const double start = processSeconds();
    for (auto _ : state)
        worst = std::max(worst, corvex::spawn(corvex::withTaskGroup<double>(body), pool).waitSync()->value());
    state.counters["late_ms"] = worst;
    state.counters["cpu_ms"] = (processSeconds() - start) * 1000 / static_cast<double>(state.iterations());
}
BENCHMARK(sleeps_corvex)
    ->RangeMultiplier(10)
    ->Range(1000, 100000)
    ->MeasureProcessCPUTime()
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

/// What a pool costs while it has nothing to do.
void idlePool_corvex(benchmark::State& state) {
    corvex::ThreadPool pool(2);
    corvex::spawn(nothing(), pool).waitSync();
    const double start = processSeconds();
    for (auto _ : state) std::this_thread::sleep_for(std::chrono::milliseconds(200));
    state.counters["cpu_us"] = (processSeconds() - start) * 1e6 / static_cast<double>(state.iterations());
}
BENCHMARK(idlePool_corvex)->Iterations(5)->UseRealTime()->Unit(benchmark::kMillisecond);

}  // namespace

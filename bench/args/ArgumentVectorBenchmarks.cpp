#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include <Corvex/cli/transcode/TranscodeCliArguments.h>

#include "AllocationCount.h"
#include "JobWords.h"

namespace {

using corvex::TranscodeCliArguments;

/// Runs `work` and reports words per second and the allocations of one run.
template <class Work>
void measure(benchmark::State& state, Work work) {
    const std::size_t before = allocationCount();
    for (auto _ : state) work();
    const auto allocations = static_cast<double>(allocationCount() - before);
    state.counters["allocations"] = benchmark::Counter(allocations, benchmark::Counter::kAvgIterations);
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void parse(benchmark::State& state) {
    const auto words = jobWords(static_cast<std::size_t>(state.range(0)));
    measure(state, [&] { benchmark::DoNotOptimize(TranscodeCliArguments(words)); });
}

void parseOrdered(benchmark::State& state) {
    const auto words = jobWords(static_cast<std::size_t>(state.range(0)));
    measure(state, [&] { benchmark::DoNotOptimize(TranscodeCliArguments(words, true)); });
}

/// Asks for the value of every flag of the job.
void lookUp(benchmark::State& state) {
    const auto words = jobWords(static_cast<std::size_t>(state.range(0)));
    const TranscodeCliArguments arguments(words);
    measure(state, [&] {
        for (std::size_t i = 0; i < words.size(); i += 2)
            benchmark::DoNotOptimize(arguments.argumentFlagValue(words[i]));
    });
}

void render(benchmark::State& state) {
    const TranscodeCliArguments arguments(jobWords(static_cast<std::size_t>(state.range(0))), true);
    measure(state, [&] { benchmark::DoNotOptimize(arguments.commandLineArguments()); });
}

BENCHMARK(parse)->Arg(10)->Arg(60)->Arg(600)->Arg(6000);
BENCHMARK(parseOrdered)->Arg(10)->Arg(60)->Arg(600)->Arg(6000);
BENCHMARK(lookUp)->Arg(10)->Arg(60)->Arg(600)->Arg(6000);
BENCHMARK(render)->Arg(10)->Arg(60)->Arg(600)->Arg(6000);

}  // namespace

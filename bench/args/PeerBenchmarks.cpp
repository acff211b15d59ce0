// The same sixty words through other parsers. Each peer's run is interleaved with ours, so that both see the same
// machine, and the counter `ratio` is the peer's time over ours.

#include <getopt.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include <Corvex/cli/transcode/TranscodeCliArguments.h>

#include "AllocationCount.h"
#include "JobWords.h"

#if __has_include(<CLI/CLI.hpp>)
#include <CLI/CLI.hpp>
#endif
#if __has_include(<absl/flags/parse.h>)
#include <absl/flags/flag.h>
#include <absl/flags/parse.h>
#endif

namespace {

using corvex::TranscodeCliArguments;
using Clock = std::chrono::steady_clock;

constexpr std::size_t wordCount = jobFlags.size() * 2;

/// The words as main() gets them: the program's name first, a null pointer last.
class MainArguments {
public:
    explicit MainArguments(std::string_view dash) : words_(jobWords(wordCount, dash)) {
        words_.insert(words_.begin(), "program");
        for (std::string& word : words_) pointers_.push_back(word.data());
        pointers_.push_back(nullptr);
    }
    [[nodiscard]] int count() const noexcept { return static_cast<int>(words_.size()); }
    [[nodiscard]] char** pointers() noexcept { return pointers_.data(); }

private:
    std::vector<std::string> words_;
    std::vector<char*> pointers_;
};

using Microseconds = std::chrono::duration<double, std::micro>;

double median(std::vector<double>& values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// Times `peer` against our parse of the same job, both from the argument vector of main(), batch by batch in turn.
/// Medians, because a batch that the machine interrupts says nothing about either.
template <class Peer>
void compare(benchmark::State& state, Peer peer) {
    constexpr int batch = 16;
    MainArguments arguments("-");
    std::vector<double> ours, theirs;
    const std::size_t before = allocationCount();
    peer();
    const std::size_t peerAllocations = allocationCount() - before;
    for (auto _ : state) {
        const auto start = Clock::now();
        for (int i = 0; i < batch; ++i) {
            const std::vector<std::string> words(arguments.pointers() + 1, arguments.pointers() + arguments.count());
            benchmark::DoNotOptimize(TranscodeCliArguments(words));
        }
        const auto middle = Clock::now();
        for (int i = 0; i < batch; ++i) peer();
        const auto end = Clock::now();
        ours.push_back(Microseconds(middle - start).count() / batch);
        theirs.push_back(Microseconds(end - middle).count() / batch);
        state.SetIterationTime(std::chrono::duration<double>(end - middle).count());
    }
    state.counters["ours_us"] = median(ours);
    state.counters["peer_us"] = median(theirs);
    state.counters["peer_allocations"] = static_cast<double>(peerAllocations);
    state.counters["ratio"] = median(theirs) / median(ours);
}

void getoptLongOnly(benchmark::State& state) {
    std::array<std::string, jobFlags.size()> names;
    std::array<option, jobFlags.size() + 1> options{};
    for (std::size_t i = 0; i < names.size(); ++i) {
        names[i] = jobFlags[i].first;
        options[i] = {names[i].c_str(), required_argument, nullptr, static_cast<int>(i) + 256};
    }
    MainArguments arguments("-");
    std::array<const char*, jobFlags.size()> values{};
    compare(state, [&] {
        optind = 0;  // from the start again
        for (int found = 0;
             (found = getopt_long_only(arguments.count(), arguments.pointers(), "", options.data(), nullptr)) != -1;) {
            if (found < 256) return state.SkipWithError("getopt_long_only refused a word");
            values[static_cast<std::size_t>(found) - 256] = optarg;
        }
        benchmark::DoNotOptimize(values.data());
    });
}
BENCHMARK(getoptLongOnly)->UseManualTime();

#if __has_include(<CLI/CLI.hpp>)
/// CLI11 takes one dash as a bundle of letters, so its words have two.
void cli11ReusedApp(benchmark::State& state) {
    CLI::App app;
    std::array<std::string, jobFlags.size()> values;
    for (std::size_t i = 0; i < values.size(); ++i) app.add_option("--" + std::string(jobFlags[i].first), values[i]);
    MainArguments arguments("--");
    compare(state, [&] {
        app.parse(arguments.count(), arguments.pointers());
        benchmark::DoNotOptimize(values.data());
    });
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (values[i] != jobFlags[i].second) state.SkipWithError("CLI11 lost a value");
    }
}
BENCHMARK(cli11ReusedApp)->UseManualTime();
#endif

}  // namespace

#if __has_include(<absl/flags/parse.h>)
ABSL_FLAG(std::string, in, "", "");
ABSL_FLAG(std::string, out, "", "");
ABSL_FLAG(std::string, progress_file, "", "");
ABSL_FLAG(std::string, progress_prefix, "", "");
ABSL_FLAG(std::string, work_dir, "", "");
ABSL_FLAG(std::string, lang_code, "", "");
ABSL_FLAG(std::string, file_format, "", "");
ABSL_FLAG(std::string, clut, "", "");
ABSL_FLAG(std::string, vcodec, "", "");
ABSL_FLAG(std::string, vr, "", "");
ABSL_FLAG(std::string, dims, "", "");
ABSL_FLAG(std::string, aspect_scaling, "", "");
ABSL_FLAG(std::string, crop_anchor, "", "");
ABSL_FLAG(std::string, vbr, "", "");
ABSL_FLAG(std::string, vbd, "", "");
ABSL_FLAG(std::string, c_space, "", "");
ABSL_FLAG(std::string, c_matrix, "", "");
ABSL_FLAG(std::string, c_transfer, "", "");
ABSL_FLAG(std::string, key_frames, "", "");
ABSL_FLAG(std::string, v_frame_cap, "", "");
ABSL_FLAG(std::string, v_decoder, "", "");
ABSL_FLAG(std::string, acodec, "", "");
ABSL_FLAG(std::string, asr, "", "");
ABSL_FLAG(std::string, abpc, "", "");
ABSL_FLAG(std::string, acl, "", "");
ABSL_FLAG(std::string, alang_code, "", "");
ABSL_FLAG(std::string, tc_custom, "", "");
ABSL_FLAG(std::string, tc_burn_size, "", "");
ABSL_FLAG(std::string, wmt_text, "", "");
ABSL_FLAG(std::string, wmt_size, "", "");

namespace {

void abseilFlags(benchmark::State& state) {
    MainArguments arguments("-");
    compare(state, [&] { benchmark::DoNotOptimize(absl::ParseCommandLine(arguments.count(), arguments.pointers())); });
    if (absl::GetFlag(FLAGS_wmt_size) != jobFlags.back().second) state.SkipWithError("Abseil lost a value");
}
BENCHMARK(abseilFlags)->UseManualTime();

}  // namespace
#endif

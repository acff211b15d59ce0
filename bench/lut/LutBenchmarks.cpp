#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <limits>
#include <string>
#include <thread>
#include <vector>

#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

#include <Corvex/lut/LutApplier.h>
#include <Corvex/lut/ParsedLutFactory.h>
#include <Corvex/lut/ParsedLutFile.h>

#include "LutSamples.h"

namespace {

using namespace corvex;
using namespace corvex::bench;

/// A line of /proc/self/status, in bytes.
double memoryOf(const std::string& name) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(name + ":")) return std::stod(line.substr(name.size() + 1)) * 1024;
    }
    return std::numeric_limits<double>::quiet_NaN();
}

/// How much more memory a process has at most while it reads a file, over the size of the table as doubles.
double peakOverTable(const std::filesystem::path& path, std::size_t pointCount) {
    int ends[2];
    if (pipe(ends) != 0) return std::numeric_limits<double>::quiet_NaN();
    const pid_t child = fork();
    if (child == 0) {
        malloc_trim(0);
        std::ofstream("/proc/self/clear_refs") << 5;  // the peak begins anew (proc(5))
        const double before = memoryOf("VmRSS");
        const auto file = ParsedLutFactory::parsedLut(path);
        const double peak = memoryOf("VmHWM") - before;
        _exit(file && write(ends[1], &peak, sizeof peak) == sizeof peak ? 0 : 1);
    }
    double peak = std::numeric_limits<double>::quiet_NaN();
    if (child < 0 || read(ends[0], &peak, sizeof peak) != sizeof peak) peak = std::numeric_limits<double>::quiet_NaN();
    if (child > 0) waitpid(child, nullptr, 0);
    close(ends[0]);
    close(ends[1]);
    return peak / static_cast<double>(pointCount * pointCount * pointCount * sizeof(LutValueTriplet));
}

void load(benchmark::State& state) {
    const auto pointCount = static_cast<std::size_t>(state.range(0));
    const auto& path = cubeFile(pointCount);
    state.counters["peakOverTable"] = peakOverTable(path, pointCount);
    for (auto _ : state) benchmark::DoNotOptimize(ParsedLutFactory::parsedLut(path));
}
BENCHMARK(load)->Name("load/Corvex")->Arg(17)->Arg(33)->Arg(65)->Unit(benchmark::kMillisecond);

template <class Sample>
PixelBuffer bufferOf(std::vector<Sample>& samples, SampleFormat format, std::size_t channelCount) {
    return PixelBuffer::interleaved(
        samples.data(), format, channelCount == 4 ? ChannelLayout::rgba : ChannelLayout::rgb, frameWidth, frameHeight,
        static_cast<std::ptrdiff_t>(frameWidth * channelCount * sizeof(Sample)));
}

template <class Sample>
void applyTo(benchmark::State& state, std::vector<Sample> source, SampleFormat format, std::size_t channelCount,
             LutApplierSettings settings, std::size_t pointCount, bool isRandom, std::size_t threadCount = 1) {
    const auto file = ParsedLutFactory::parsedLut(cubeFile(pointCount, isRandom));
    settings.source = settings.destination = format;
    const LutApplier applier(*file, settings);
    std::vector<Sample> destination(source.size());
    const ConstPixelBuffer from = bufferOf(source, format, channelCount);
    const PixelBuffer to = bufferOf(destination, format, channelCount);
    for (auto _ : state) {
        std::vector<std::jthread> others;
        const std::size_t rows = frameHeight / threadCount;
        for (std::size_t i = 1; i < threadCount; ++i) {
            others.emplace_back([&, i] { applier.apply(from, to, i * rows, rows); });
        }
        applier.apply(from, to, 0, rows);
        others.clear();
        benchmark::DoNotOptimize(destination.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(framePixels));
}

void applyFloat(benchmark::State& state, std::size_t channelCount, LutBlending blending, LutArithmetic arithmetic,
                std::size_t pointCount, bool isRandom, std::size_t threadCount = 1) {
    LutApplierSettings settings;
    settings.blending = blending;
    settings.arithmetic = arithmetic;
    applyTo(state, picture(channelCount, isRandom), SampleFormat::float32, channelCount, settings, pointCount, isRandom,
            threadCount);
}

void applyCodes(benchmark::State& state, std::size_t channelCount, LutBlending blending, LutArithmetic arithmetic,
                std::size_t pointCount, bool isRandom) {
    LutApplierSettings settings;
    settings.blending = blending;
    settings.arithmetic = arithmetic;
    applyTo(state, codePicture(channelCount, 10, isRandom), SampleFormat::unsigned10, channelCount, settings,
            pointCount, isRandom);
}

using enum LutBlending;
using enum LutArithmetic;

[[maybe_unused]] const bool isRegistered = [] {
    const auto add = [](const char* name, auto function, auto... arguments) {
        benchmark::RegisterBenchmark(name, [=](benchmark::State& state) { function(state, arguments...); })
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime();
    };
    add("f32 rgb 33 trilinear/Corvex", applyFloat, 3U, trilinear, fast, 33U, false, 1U);
    add("f32 rgb 33 tetrahedral/Corvex", applyFloat, 3U, tetrahedral, fast, 33U, false, 1U);
    add("f32 rgba 33 trilinear/Corvex", applyFloat, 4U, trilinear, fast, 33U, false, 1U);
    add("f32 rgba 33 tetrahedral/Corvex", applyFloat, 4U, tetrahedral, fast, 33U, false, 1U);
    add("f32 rgb 33 trilinear/Corvex exact", applyFloat, 3U, trilinear, exact, 33U, false, 1U);
    add("f32 rgb 33 tetrahedral/Corvex exact", applyFloat, 3U, tetrahedral, exact, 33U, false, 1U);
    add("u10 rgb 33 trilinear/Corvex", applyCodes, 3U, trilinear, fast, 33U, false);
    add("u10 rgb 33 tetrahedral/Corvex", applyCodes, 3U, tetrahedral, fast, 33U, false);
    add("u10 rgb 33 trilinear/Corvex exact", applyCodes, 3U, trilinear, exact, 33U, false);
    add("f32 rgb 65 random trilinear/Corvex", applyFloat, 3U, trilinear, fast, 65U, true, 1U);
    add("f32 rgb 65 random tetrahedral/Corvex", applyFloat, 3U, tetrahedral, fast, 65U, true, 1U);
    add("u10 rgb 65 random trilinear/Corvex", applyCodes, 3U, trilinear, fast, 65U, true);
    add("f32 rgb 33 tetrahedral/Corvex 2 threads", applyFloat, 3U, tetrahedral, fast, 33U, false, 2U);
    add("f32 rgb 33 trilinear/Corvex 2 threads", applyFloat, 3U, trilinear, fast, 33U, false, 2U);
    return true;
}();

}  // namespace

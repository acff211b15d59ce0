#if __has_include(<OpenColorIO/OpenColorIO.h>)
#include <OpenColorIO/OpenColorIO.h>
#include <benchmark/benchmark.h>

#include <cstdint>
#include <filesystem>
#include <vector>

#include "LutSamples.h"

namespace {

namespace ocio = OCIO_NAMESPACE;
using namespace corvex::bench;

ocio::ConstProcessorRcPtr processorOf(const std::filesystem::path& path, ocio::Interpolation interpolation) {
    const auto transform = ocio::FileTransform::Create();
    transform->setSrc(path.c_str());
    transform->setInterpolation(interpolation);
    return ocio::Config::CreateRaw()->getProcessor(transform);
}

void load(benchmark::State& state) {
    const auto& path = cubeFile(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        ocio::ClearAllCaches();
        benchmark::DoNotOptimize(processorOf(path, ocio::INTERP_LINEAR));
    }
}
BENCHMARK(load)->Name("load/OpenColorIO")->Arg(17)->Arg(33)->Arg(65)->Unit(benchmark::kMillisecond);

template <class Sample>
void apply(benchmark::State& state, std::vector<Sample> source, ocio::BitDepth depth, std::int64_t channelCount,
           ocio::Interpolation interpolation, std::size_t pointCount, bool isRandom) {
    const auto processor = processorOf(cubeFile(pointCount, isRandom), interpolation)
                               ->getOptimizedCPUProcessor(depth, depth, ocio::OPTIMIZATION_DEFAULT);
    std::vector<Sample> destination(source.size());
    const auto describe = [&](std::vector<Sample>& samples) {
        return ocio::PackedImageDesc(samples.data(), frameWidth, frameHeight,
                                     channelCount == 4 ? ocio::CHANNEL_ORDERING_RGBA : ocio::CHANNEL_ORDERING_RGB,
                                     depth, ocio::AutoStride, ocio::AutoStride, ocio::AutoStride);
    };
    const auto from = describe(source);
    auto to = describe(destination);
    for (auto _ : state) {
        processor->apply(from, to);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(framePixels));
}

[[maybe_unused]] const bool isRegistered = [] {
    const auto add = [](const char* name, std::int64_t channels, ocio::Interpolation interpolation, std::size_t points,
                        bool isRandom, bool isFloat) {
        benchmark::RegisterBenchmark(name,
                                     [=](benchmark::State& state) {
                                         const auto count = static_cast<std::size_t>(channels);
                                         if (isFloat) {
                                             apply(state, picture(count, isRandom), ocio::BIT_DEPTH_F32, channels,
                                                   interpolation, points, isRandom);
                                         } else {
                                             apply(state, codePicture(count, 10, isRandom), ocio::BIT_DEPTH_UINT10,
                                                   channels, interpolation, points, isRandom);
                                         }
                                     })
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime();
    };
    add("f32 rgb 33 trilinear/OpenColorIO", 3, ocio::INTERP_LINEAR, 33, false, true);
    add("f32 rgb 33 tetrahedral/OpenColorIO", 3, ocio::INTERP_TETRAHEDRAL, 33, false, true);
    add("f32 rgba 33 trilinear/OpenColorIO", 4, ocio::INTERP_LINEAR, 33, false, true);
    add("f32 rgba 33 tetrahedral/OpenColorIO", 4, ocio::INTERP_TETRAHEDRAL, 33, false, true);
    add("u10 rgb 33 trilinear/OpenColorIO", 3, ocio::INTERP_LINEAR, 33, false, false);
    add("u10 rgb 33 tetrahedral/OpenColorIO", 3, ocio::INTERP_TETRAHEDRAL, 33, false, false);
    add("f32 rgb 65 random trilinear/OpenColorIO", 3, ocio::INTERP_LINEAR, 65, true, true);
    add("f32 rgb 65 random tetrahedral/OpenColorIO", 3, ocio::INTERP_TETRAHEDRAL, 65, true, true);
    add("u10 rgb 65 random trilinear/OpenColorIO", 3, ocio::INTERP_LINEAR, 65, true, false);
    return true;
}();

}  // namespace
#endif

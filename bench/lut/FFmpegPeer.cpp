#if __has_include(<libavfilter/avfilter.h>)
#include <benchmark/benchmark.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

extern "C" {
#include <libavfilter/avfilter.h>
#include <libavfilter/buffersink.h>
#include <libavfilter/buffersrc.h>
#include <libavutil/frame.h>
#include <libavutil/pixdesc.h>
}

#include "LutSamples.h"

namespace {

using namespace corvex::bench;

/// lut3d in a graph of its own, on one thread.
class Graph {
public:
    Graph(const std::filesystem::path& cube, const char* interpolation, AVPixelFormat format)
        : graph_(avfilter_graph_alloc()) {
        graph_->nb_threads = 1;
        const std::string source = "video_size=" + std::to_string(frameWidth) + "x" + std::to_string(frameHeight) +
                                   ":pix_fmt=" + av_get_pix_fmt_name(format) + ":time_base=1/25";
        const std::string lut = "file=" + cube.string() + ":interp=" + interpolation;
        AVFilterContext* filter = nullptr;
        isReady_ = avfilter_graph_create_filter(&source_, avfilter_get_by_name("buffer"), "in", source.c_str(), nullptr,
                                                graph_) >= 0 &&
                   avfilter_graph_create_filter(&filter, avfilter_get_by_name("lut3d"), "lut", lut.c_str(), nullptr,
                                                graph_) >= 0 &&
                   avfilter_graph_create_filter(&sink_, avfilter_get_by_name("buffersink"), "out", nullptr, nullptr,
                                                graph_) >= 0 &&
                   avfilter_link(source_, 0, filter, 0) >= 0 && avfilter_link(filter, 0, sink_, 0) >= 0 &&
                   avfilter_graph_config(graph_, nullptr) >= 0;
    }
    ~Graph() { avfilter_graph_free(&graph_); }
    Graph(const Graph&) = delete;
    Graph& operator=(const Graph&) = delete;

    [[nodiscard]] bool isReady() const { return isReady_; }
    /// The frame stays the caller's, so that the filter writes to another one.
    bool run(AVFrame* frame, AVFrame* result) {
        return av_buffersrc_add_frame_flags(source_, frame, AV_BUFFERSRC_FLAG_KEEP_REF) >= 0 &&
               av_buffersink_get_frame(sink_, result) >= 0;
    }

private:
    AVFilterGraph* graph_;
    AVFilterContext* source_ = nullptr;
    AVFilterContext* sink_ = nullptr;
    bool isReady_ = false;
};

void load(benchmark::State& state) {
    const auto& path = cubeFile(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        if (!Graph(path, "trilinear", AV_PIX_FMT_GBRPF32).isReady()) return state.SkipWithError("no graph");
    }
}
BENCHMARK(load)->Name("load/FFmpeg")->Arg(17)->Arg(33)->Arg(65)->Unit(benchmark::kMillisecond);

/// The picture in planes, in the order green, blue, red.
template <class Sample>
void fill(AVFrame* frame, const std::vector<Sample>& samples) {
    constexpr std::size_t channelOfPlane[] = {1, 2, 0};
    for (std::size_t plane = 0; plane < 3; ++plane) {
        for (std::size_t y = 0; y < frameHeight; ++y) {
            auto* row =
                reinterpret_cast<Sample*>(frame->data[plane] + static_cast<std::ptrdiff_t>(y) * frame->linesize[plane]);
            for (std::size_t x = 0; x < frameWidth; ++x) {
                row[x] = samples[(y * frameWidth + x) * 3 + channelOfPlane[plane]];
            }
        }
    }
}

void apply(benchmark::State& state, const char* interpolation, std::size_t pointCount, bool isRandom, bool isFloat) {
    const AVPixelFormat format = isFloat ? AV_PIX_FMT_GBRPF32 : AV_PIX_FMT_GBRP10;
    Graph graph(cubeFile(pointCount, isRandom), interpolation, format);
    AVFrame* frame = av_frame_alloc();
    AVFrame* result = av_frame_alloc();
    frame->format = format;
    frame->width = static_cast<int>(frameWidth);
    frame->height = static_cast<int>(frameHeight);
    if (!graph.isReady() || av_frame_get_buffer(frame, 0) < 0) {
        state.SkipWithError("no graph");
    } else if (isFloat) {
        fill(frame, picture(3, isRandom));
    } else {
        fill(frame, codePicture(3, 10, isRandom));
    }
    for (auto _ : state) {
        if (!graph.run(frame, result)) state.SkipWithError("no frame");
        av_frame_unref(result);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(framePixels));
    av_frame_free(&frame);
    av_frame_free(&result);
}

[[maybe_unused]] const bool isRegistered = [] {
    const auto add = [](const char* name, const char* interpolation, std::size_t points, bool isRandom, bool isFloat) {
        benchmark::RegisterBenchmark(
            name, [=](benchmark::State& state) { apply(state, interpolation, points, isRandom, isFloat); })
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime();
    };
    add("f32 rgb 33 trilinear/FFmpeg", "trilinear", 33, false, true);
    add("f32 rgb 33 tetrahedral/FFmpeg", "tetrahedral", 33, false, true);
    add("u10 rgb 33 trilinear/FFmpeg", "trilinear", 33, false, false);
    add("u10 rgb 33 tetrahedral/FFmpeg", "tetrahedral", 33, false, false);
    add("f32 rgb 65 random trilinear/FFmpeg", "trilinear", 65, true, true);
    add("f32 rgb 65 random tetrahedral/FFmpeg", "tetrahedral", 65, true, true);
    return true;
}();

}  // namespace
#endif

#include <benchmark/benchmark.h>

#include <array>
#include <cstdint>
#include <string>

#include <Corvex/timing/TimecodeFrame.h>

#if __has_include(<libavutil/timecode.h>)
extern "C" {
#include <libavutil/timecode.h>
}
#define CORVEX_BENCH_LIBAV 1
#endif

namespace {

using corvex::TimecodeComponents;

// Frames of a day at 29.97 in an order that a branch predictor cannot learn: multiples of a prime modulo the day.
constexpr std::int64_t dayFrames = 2589408;
constexpr std::int64_t stride = 1299709;

std::int64_t nextFrame(std::int64_t frame) { return (frame + stride) % dayFrames; }

/// The cost of choosing the frame alone, which is in every figure below.
void chooseFrame(benchmark::State& state) {
    std::int64_t frame = 0;
    for (auto _ : state) {
        frame = nextFrame(frame);
        benchmark::DoNotOptimize(frame);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(chooseFrame);

void frameToText_corvexBuffer(benchmark::State& state) {
    std::array<char, TimecodeComponents::longestText> buffer{};
    std::int64_t frame = 0;
    for (auto _ : state) {
        frame = nextFrame(frame);
        benchmark::DoNotOptimize(TimecodeComponents::dropFrameComponents(frame, 30).writeTimecode(buffer));
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(frameToText_corvexBuffer);

void frameToText_corvexString(benchmark::State& state) {
    std::int64_t frame = 0;
    for (auto _ : state) {
        frame = nextFrame(frame);
        std::string text = TimecodeComponents::dropFrameComponents(frame, 30).timecodeString();
        benchmark::DoNotOptimize(text);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(frameToText_corvexString);

/// The texts of a few frames of the day.
auto sampleTexts() {
    std::array<std::string, 64> texts;
    std::int64_t frame = 0;
    for (auto& text : texts) {
        frame = nextFrame(frame);
        text = TimecodeComponents::dropFrameComponents(frame, 30).timecodeString();
    }
    return texts;
}

void textToFrame_corvex(benchmark::State& state) {
    const auto texts = sampleTexts();
    constexpr corvex::MediaRational rate(30000, 1001);
    std::size_t at = 0;
    for (auto _ : state) {
        const auto components = TimecodeComponents::fromTimecode(texts[at++ % texts.size()]);
        benchmark::DoNotOptimize(corvex::TimecodeFrame(*components, rate).frameNumber());
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(textToFrame_corvex);

#ifdef CORVEX_BENCH_LIBAV
void frameToText_libavutil(benchmark::State& state) {
    AVTimecode timecode{};
    av_timecode_init(&timecode, AVRational{30000, 1001}, AV_TIMECODE_FLAG_DROPFRAME, 0, nullptr);
    std::array<char, AV_TIMECODE_STR_SIZE> buffer{};
    std::int64_t frame = 0;
    for (auto _ : state) {
        frame = nextFrame(frame);
        benchmark::DoNotOptimize(av_timecode_make_string(&timecode, buffer.data(), static_cast<int>(frame)));
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(frameToText_libavutil);

void textToFrame_libavutil(benchmark::State& state) {
    const auto texts = sampleTexts();
    std::size_t at = 0;
    for (auto _ : state) {
        AVTimecode timecode{};
        av_timecode_init_from_string(&timecode, AVRational{30000, 1001}, texts[at++ % texts.size()].c_str(), nullptr);
        benchmark::DoNotOptimize(timecode.start);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(textToFrame_libavutil);
#endif

}  // namespace

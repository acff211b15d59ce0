// The conventional application against other tools of the field, on the same files: FFmpeg's lut3d filter in a graph of
// this process, and OpenColorIO.

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <OpenColorIO/OpenColorIO.h>

extern "C" {
#include <libavfilter/avfilter.h>
#include <libavfilter/buffersink.h>
#include <libavfilter/buffersrc.h>
#include <libavutil/frame.h>
}

#include <Corvex/lut/LutApplier.h>
#include <Corvex/lut/ParsedLutFactory.h>
#include <Corvex/lut/ParsedLutFile.h>
#include <tests/Places.h>

#include "LutFiles.h"

namespace corvex::lutPeerTests {
namespace {

namespace ocio = OCIO_NAMESPACE;

constexpr int width = 256, height = 24;
constexpr std::size_t pixelCount = std::size_t{width} * height;
constexpr int fullScale10 = 1023;

/// Pixels of 10 bits, red, green and blue one behind the other.
using Codes = std::vector<std::uint16_t>;

/// Greys, ramps, the corners and colours at random.
Codes colors() {
    Codes codes;
    const auto add = [&](unsigned r, unsigned g, unsigned b) {
        for (const unsigned code : {r, g, b}) codes.push_back(static_cast<std::uint16_t>(code));
    };
    for (unsigned code = 0; code <= fullScale10; ++code) add(code, code, code);
    for (unsigned code = 0; code <= fullScale10; ++code) add(code, fullScale10 - code, code / 2);
    for (unsigned corner = 0; corner < 8; ++corner) {
        add((corner & 1U) * 1023U, (corner >> 1U & 1U) * 1023U, (corner >> 2U & 1U) * 1023U);
    }
    std::mt19937 generator(3);
    while (codes.size() < pixelCount * 3) codes.push_back(static_cast<std::uint16_t>(generator() % 1024));
    return codes;
}

Codes appliedHere(const std::filesystem::path& path, LutBlending blending, LutArithmetic arithmetic) {
    const auto file = ParsedLutFactory::read(path).file;
    if (!file) {
        ADD_FAILURE() << path;
        return {};
    }
    LutApplierSettings settings;
    settings.blending = blending;
    settings.arithmetic = arithmetic;
    settings.source = settings.destination = SampleFormat::unsigned10;
    Codes codes = colors();
    const auto pixels = PixelBuffer::interleaved(codes.data(), SampleFormat::unsigned10, ChannelLayout::rgb, width,
                                                 height, std::ptrdiff_t{width} * 3 * 2);
    LutApplier(*file, settings).apply(pixels, pixels);
    return codes;
}

/// Frees what a graph and its frames hold.
struct Free {
    void operator()(AVFilterGraph* graph) const { avfilter_graph_free(&graph); }
    void operator()(AVFrame* frame) const { av_frame_free(&frame); }
};

std::uint16_t& sampleAt(AVFrame& frame, std::size_t channel, std::size_t pixel) {
    constexpr std::size_t planes[] = {2, 0, 1};  // the library's order is green, blue, red
    auto* const row =
        frame.data[planes[channel]] + static_cast<std::ptrdiff_t>(pixel / width) * frame.linesize[planes[channel]];
    return reinterpret_cast<std::uint16_t*>(row)[pixel % width];
}

Codes appliedByFFmpeg(const std::filesystem::path& path, LutBlending blending) {
    const std::unique_ptr<AVFilterGraph, Free> graph(avfilter_graph_alloc());
    const std::unique_ptr<AVFrame, Free> frame(av_frame_alloc()), result(av_frame_alloc());
    graph->nb_threads = 1;
    AVFilterContext *source = nullptr, *filter = nullptr, *sink = nullptr;
    const auto add = [&](AVFilterContext*& context, const char* name, const std::string& options) {
        return avfilter_graph_create_filter(&context, avfilter_get_by_name(name), name, options.c_str(), nullptr,
                                            graph.get()) >= 0;
    };
    const std::string size = "video_size=" + std::to_string(width) + "x" + std::to_string(height);
    const char* const interpolation = blending == LutBlending::trilinear ? "trilinear" : "tetrahedral";
    bool isDone = add(source, "buffer", size + ":pix_fmt=gbrp10:time_base=1/25") &&
                  add(filter, "lut3d", "file=" + path.string() + ":interp=" + interpolation) &&
                  add(sink, "buffersink", "") && avfilter_link(source, 0, filter, 0) >= 0 &&
                  avfilter_link(filter, 0, sink, 0) >= 0 && avfilter_graph_config(graph.get(), nullptr) >= 0;
    frame->format = AV_PIX_FMT_GBRP10;
    frame->width = width;
    frame->height = height;
    isDone = isDone && av_frame_get_buffer(frame.get(), 0) >= 0;
    Codes codes = colors();
    for (std::size_t i = 0; isDone && i < codes.size(); ++i) sampleAt(*frame, i % 3, i / 3) = codes[i];
    isDone =
        isDone && av_buffersrc_add_frame(source, frame.get()) >= 0 && av_buffersink_get_frame(sink, result.get()) >= 0;
    EXPECT_TRUE(isDone) << path;
    for (std::size_t i = 0; isDone && i < codes.size(); ++i) codes[i] = sampleAt(*result, i % 3, i / 3);
    return codes;
}

Codes appliedByOpenColorIO(const std::filesystem::path& path, LutBlending blending) {
    const auto transform = ocio::FileTransform::Create();
    transform->setSrc(path.c_str());
    transform->setInterpolation(blending == LutBlending::trilinear ? ocio::INTERP_LINEAR : ocio::INTERP_TETRAHEDRAL);
    const auto processor = ocio::Config::CreateRaw()->getProcessor(transform)->getOptimizedCPUProcessor(
        ocio::BIT_DEPTH_F32, ocio::BIT_DEPTH_F32, ocio::OPTIMIZATION_LOSSLESS);
    Codes codes = colors();
    std::vector<float> numbers(codes.begin(), codes.end());
    for (float& number : numbers) number /= fullScale10;
    ocio::PackedImageDesc image(numbers.data(), width, height, 3);
    processor->apply(image);
    for (std::size_t i = 0; i < codes.size(); ++i) {
        const double code = std::round(static_cast<double>(numbers[i]) * fullScale10);
        codes[i] = static_cast<std::uint16_t>(std::clamp(code, 0.0, double{fullScale10}));
    }
    return codes;
}

int largestDifference(const Codes& a, const Codes& b) {
    int largest = a.size() == b.size() ? 0 : -1;
    for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i) largest = std::max(largest, std::abs(a[i] - b[i]));
    return largest;
}

class LutPeers : public testing::Test {
protected:
    /// An ordinary cube of `n` points with entries at random between two numbers.
    std::filesystem::path cube(const char* name, int n, double low, double high, const std::string& header = {}) {
        std::mt19937 generator(static_cast<unsigned>(n));
        std::uniform_real_distribution<double> any(low, high);
        std::ofstream file(directory_.path() / name);
        file << "TITLE \"made\"\nLUT_3D_SIZE " << n << '\n' << header << std::fixed;
        for (int i = 0; i < n * n * n; ++i) {
            const double r = any(generator), g = any(generator), b = any(generator);
            file << r << ' ' << g << ' ' << b << '\n';
        }
        return directory_.path() / name;
    }
    TemporaryDirectory directory_;
};

TEST_F(LutPeers, showTheSamePictureToACodeValueOfTenBits) {
    const std::filesystem::path field = std::filesystem::path(test::dataDirectory) / "luts";
    const struct {
        std::filesystem::path path;
        bool byFFmpeg = true;
    } rows[] = {
        {field / "baked_resolve33.cube"},
        {field / "filmluts_fuji_velvia_50.cube"},
        {field / "filmluts_ilford_hp_5_plus_400.cube"},
        {field / "colour_iridas_cube_Colour_Correct.cube"},
        {field / "colour_iridas_cube_RGB_1_0.5_0.25.cube"},
        {cube("two.cube", 2, 0, 1)},
        {cube("sixteen.cube", 16, 0, 1)},
        {cube("deep.cube", 33, -0.5, 1.7)},
        {cube("domain.cube", 9, 0, 1, "DOMAIN_MIN 0 0 0\nDOMAIN_MAX 2 1 1.5\n")},
        // The filter takes domains from 0 on that are no narrower than 1.
        {cube("narrow.cube", 9, 0, 1, "DOMAIN_MIN 0 0 0\nDOMAIN_MAX 2 1 0.5\n"), false},
        {cube("offset.cube", 9, 0, 1, "DOMAIN_MIN -0.25 0.1 0\nDOMAIN_MAX 1 0.9 1.5\n"), false},
    };
    for (const auto& row : rows) {
        for (const auto blending : {LutBlending::trilinear, LutBlending::tetrahedral}) {
            const auto trace =
                row.path.filename().string() + (blending == LutBlending::trilinear ? "" : " tetrahedral");
            for (const auto arithmetic : {LutArithmetic::exact, LutArithmetic::fast}) {
                const Codes here = appliedHere(row.path, blending, arithmetic);
                if (row.byFFmpeg) {
                    EXPECT_LE(largestDifference(here, appliedByFFmpeg(row.path, blending)), 1) << trace;
                }
                EXPECT_LE(largestDifference(here, appliedByOpenColorIO(row.path, blending)), 1) << trace;
            }
        }
    }
}

}  // namespace
}  // namespace corvex::lutPeerTests

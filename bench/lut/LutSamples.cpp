#include "LutSamples.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <random>

namespace corvex::bench {
namespace {

/// A directory that goes when the program does.
struct Scratch {
    std::filesystem::path path;
    Scratch() {
        std::string name = (std::filesystem::temp_directory_path() / "corvex-bench-XXXXXX").string();
        if (!mkdtemp(name.data())) std::abort();
        path = name;
    }
    ~Scratch() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
};

std::string line(double r, double g, double b) {
    char text[64];
    const int length = std::snprintf(text, sizeof text, "%.6f %.6f %.6f\n", r, g, b);
    return {text, static_cast<std::size_t>(length)};
}

}  // namespace

const std::filesystem::path& cubeFile(std::size_t pointCount, bool isRandom) {
    static const Scratch scratch;
    static std::map<std::pair<std::size_t, bool>, std::filesystem::path> files;
    auto& path = files[{pointCount, isRandom}];
    if (!path.empty()) return path;
    path = scratch.path / ("cube" + std::to_string(pointCount) + (isRandom ? "r" : "") + ".cube");
    std::ofstream file(path);
    file << "LUT_3D_SIZE " << pointCount << '\n';
    std::mt19937 generator(7);
    std::uniform_real_distribution<double> any(0, 1);
    const double last = static_cast<double>(pointCount - 1);
    for (std::size_t b = 0; b < pointCount; ++b) {
        for (std::size_t g = 0; g < pointCount; ++g) {
            for (std::size_t r = 0; r < pointCount; ++r) {
                const double x = static_cast<double>(r) / last, y = static_cast<double>(g) / last,
                             z = static_cast<double>(b) / last;
                file << (isRandom ? line(any(generator), any(generator), any(generator))
                                  : line(std::pow(x, 0.8) * 0.9 + 0.1 * y, std::pow(y, 0.9) * 0.95 + 0.05 * z,
                                         std::pow(z, 1.1) * 0.9 + 0.1 * x));
            }
        }
    }
    return path;
}

std::vector<float> picture(std::size_t channelCount, bool isRandom) {
    std::vector<float> samples(framePixels * channelCount, 1.0F);
    std::mt19937 generator(11);
    std::uniform_real_distribution<float> any(0, 1), noise(-0.01F, 0.01F);
    for (std::size_t i = 0; i < framePixels; ++i) {
        const float x = static_cast<float>(i % frameWidth) / frameWidth;
        const float y = static_cast<float>(i / frameWidth) / frameHeight;
        const float soft[] = {x, y, 0.5F + 0.5F * std::sin(6 * x * y)};
        for (std::size_t c = 0; c < 3; ++c) {
            const float number = isRandom ? any(generator) : soft[c] + noise(generator);
            samples[i * channelCount + c] = std::fmin(std::fmax(number, 0.0F), 1.0F);
        }
    }
    return samples;
}

std::vector<std::uint16_t> codePicture(std::size_t channelCount, unsigned bitDepth, bool isRandom) {
    const auto numbers = picture(channelCount, isRandom);
    const auto largest = static_cast<float>((1U << bitDepth) - 1U);
    std::vector<std::uint16_t> codes(numbers.size());
    for (std::size_t i = 0; i < codes.size(); ++i) codes[i] = static_cast<std::uint16_t>(numbers[i] * largest + 0.5F);
    return codes;
}

}  // namespace corvex::bench

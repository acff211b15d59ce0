#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include <Corvex/lut/LutApplier.h>
#include <Corvex/lut/ParsedLutFactory.h>
#include <Corvex/lut/ParsedLutFile.h>

// Tables and pixels at random, and what an applier makes of them.
namespace corvex::lutApplierTests {

inline constexpr float infinity = std::numeric_limits<float>::infinity();
inline constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
using Entries = std::vector<LutValueTriplet>;
using File = std::shared_ptr<const ParsedLutFile>;

inline Entries randomEntries(std::size_t count, double low, double high, bool areWhole = false) {
    std::mt19937 generator(static_cast<unsigned>(count));
    std::uniform_real_distribution<double> any(low, high);
    const auto next = [&] { return areWhole ? std::floor(any(generator)) : any(generator); };
    Entries entries(count);
    for (auto& entry : entries) entry = {next(), next(), next()};
    return entries;
}

inline File floatCube(const Entries& entries, double low, double high, const LutDomain& domain = {},
                      const char* path = "look.cube") {
    return std::make_shared<ParsedThreeDimensionalFloatingPointFile>(
        path, LutMarkupType::genericText,
        NormalizedFloatingPoint3DSampleConverter(LutCube(entries, low, high),
                                                 std::make_shared<TrilinearLutInterpolator>()),
        domain);
}

inline File codeCube(const Entries& entries, double low, double high, std::int64_t depth) {
    return std::make_shared<ParsedThreeDimensionalIntegerFile>(
        "look.3dl", LutMarkupType::genericText,
        Integer3DSampleConverter(LutCube(entries, low, high), std::make_shared<TrilinearLutInterpolator>(), depth));
}

template <class Converter>
File table(const Entries& entries, auto... details) {
    return std::make_shared<ParsedOneDimensionLutFile>("look.cube", LutMarkupType::genericText,
                                                       std::make_unique<Converter>(entries, details...));
}

/// Of every kind, and with every habit that sampling has.
inline const std::vector<std::pair<const char*, File>>& files() {
    using Codes = OneDimensionsUnsignedIntegerConverter;
    using Numbers = OneDimensionFloatingPointConverter;
    static const std::vector<std::pair<const char*, File>> all = {
        {"cube of 17", floatCube(randomEntries(4913, 0, 1), 0, 1)},
        {"cube of 2, stretched", floatCube(randomEntries(8, 0, 0.64), 0, 0.64)},
        {"cube of 5, clamped at 0.2", floatCube(randomEntries(125, 0.2, 1), 0.2, 1)},
        {"cube of 4, from -0.5", floatCube(randomEntries(64, -0.5, 1), -0.5, 1)},
        {"cube of 1", floatCube({{0.25, 0.5, 0.75}}, 0.25, 0.75)},
        {"cube of 9, above 1", floatCube(randomEntries(729, 0, 1.5), 0, 1.5)},
        {"cube of 17, 10 bits", codeCube(randomEntries(4913, 0, 1024, true), 0, 1023, 10)},
        {"cube of 3, 12 bits, to 4000", codeCube(randomEntries(27, 100, 4001, true), 100, 4000, 12)},
        {"cube of 3, 20 bits", codeCube(randomEntries(27, 0, 1000000, true), 0, 999999, 20)},
        {"table of numbers", table<Numbers>(randomEntries(256, 0, 1), 0, 1)},
        {"table of codes", table<Codes>(randomEntries(1024, 0, 4096, true), 12)},
        {"table of 2 bits, to 4", table<Codes>(randomEntries(256, 0, 5, true), 2)},
    };
    return all;
}

inline std::vector<std::uint16_t> randomCodes(std::size_t count, SampleFormat format) {
    std::mt19937 generator(5);
    std::uniform_int_distribution<unsigned> any(0, static_cast<unsigned>(fullScale(format)));
    std::vector<std::uint16_t> codes(count);
    for (auto& code : codes) code = static_cast<std::uint16_t>(any(generator));
    for (std::size_t i = 0; i < 6; ++i) codes[i] = static_cast<std::uint16_t>(i % 2 == 0 ? 0 : fullScale(format));
    return codes;
}

inline std::vector<float> randomNumbers(std::size_t count, float low, float high) {
    std::mt19937 generator(9);
    std::uniform_real_distribution<float> any(low, high);
    std::vector<float> numbers(count);
    for (float& number : numbers) number = any(generator);
    return numbers;
}

template <class Sample>
PixelBuffer rowOf(std::vector<Sample>& samples, SampleFormat format, ChannelLayout layout = ChannelLayout::rgb) {
    const std::size_t channels = layout == ChannelLayout::rgb ? 3 : 4;
    return PixelBuffer::interleaved(samples.data(), format, layout, samples.size() / channels, 1, 0);
}

/// What an applier makes of a row of interleaved pixels.
template <class To, class From>
std::vector<To> applied(const ParsedLutFile& file, const LutApplierSettings& settings, std::vector<From> source,
                        ChannelLayout layout = ChannelLayout::rgb) {
    std::vector<To> result(source.size());
    EXPECT_EQ(LutApplier(file, settings)
                  .apply(rowOf(source, settings.source, layout), rowOf(result, settings.destination, layout)),
              std::nullopt);
    return result;
}

template <class Sample>
auto largestDifference(const std::vector<Sample>& a, const std::vector<Sample>& b) {
    auto largest = std::abs(Sample{} - Sample{});
    for (std::size_t i = 0; i < a.size(); ++i) largest = std::max(largest, std::abs(a[i] - b.at(i)));
    return largest;
}

/// The same bits: NaN equals NaN, and 0 is not -0.
template <class Sample>
bool isSame(const std::vector<Sample>& a, const std::vector<Sample>& b) {
    return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(Sample)) == 0;
}

}  // namespace corvex::lutApplierTests

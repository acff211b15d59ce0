#include <Corvex/lut/LutApplier.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <Corvex/lut/ParsedLutFactory.h>

namespace corvex::lutApplierTests {
namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
constexpr SampleFormat codeFormats[] = {SampleFormat::unsigned8, SampleFormat::unsigned10, SampleFormat::unsigned12,
                                        SampleFormat::unsigned16};
using Entries = std::vector<LutValueTriplet>;
using File = std::shared_ptr<const ParsedLutFile>;

Entries randomEntries(std::size_t count, double low, double high, bool areWhole = false) {
    std::mt19937 generator(static_cast<unsigned>(count));
    std::uniform_real_distribution<double> any(low, high);
    const auto next = [&] { return areWhole ? std::floor(any(generator)) : any(generator); };
    Entries entries(count);
    for (auto& entry : entries) entry = {next(), next(), next()};
    return entries;
}

File floatCube(const Entries& entries, double low, double high, const LutDomain& domain = {},
               const char* path = "look.cube") {
    return std::make_shared<ParsedThreeDimensionalFloatingPointFile>(
        path, LutMarkupType::genericText,
        NormalizedFloatingPoint3DSampleConverter(LutCube(entries, low, high),
                                                 std::make_shared<TrilinearLutInterpolator>()),
        domain);
}

File codeCube(const Entries& entries, double low, double high, std::int64_t depth) {
    return std::make_shared<ParsedThreeDimensionalIntegerFile>(
        "look.3dl", LutMarkupType::genericText,
        Integer3DSampleConverter(LutCube(entries, low, high), std::make_shared<TrilinearLutInterpolator>(), depth));
}

File table(std::unique_ptr<const OneDimensionConverter> converter, const LutDomain& domain = {}) {
    return std::make_shared<ParsedOneDimensionLutFile>("look.cube", LutMarkupType::genericText, std::move(converter),
                                                       domain);
}

struct NamedFile {
    const char* name;
    File file;
};

/// Of every kind, and with every habit that sampling has.
const std::vector<NamedFile>& files() {
    static const std::vector<NamedFile> all = {
        {"cube of 17", floatCube(randomEntries(4913, 0, 1), 0, 1)},
        {"cube of 2, stretched", floatCube(randomEntries(8, 0, 0.64), 0, 0.64)},
        {"cube of 5, clamped at 0.2", floatCube(randomEntries(125, 0.2, 1), 0.2, 1)},
        {"cube of 4, from -0.5", floatCube(randomEntries(64, -0.5, 1), -0.5, 1)},
        {"cube of 1", floatCube({{0.25, 0.5, 0.75}}, 0.25, 0.75)},
        {"cube of 9, above 1", floatCube(randomEntries(729, 0, 1.5), 0, 1.5)},
        {"cube of 17, 10 bits", codeCube(randomEntries(4913, 0, 1024, true), 0, 1023, 10)},
        {"cube of 3, 12 bits, to 4000", codeCube(randomEntries(27, 100, 4001, true), 100, 4000, 12)},
        {"cube of 3, 20 bits", codeCube(randomEntries(27, 0, 1000000, true), 0, 999999, 20)},
        {"table of numbers",
         table(std::make_unique<OneDimensionFloatingPointConverter>(randomEntries(256, 0, 1), 0, 1))},
        {"table of codes",
         table(std::make_unique<OneDimensionsUnsignedIntegerConverter>(randomEntries(1024, 0, 4096, true), 12))},
    };
    return all;
}

std::vector<std::uint16_t> randomCodes(std::size_t count, SampleFormat format) {
    std::mt19937 generator(5);
    std::uniform_int_distribution<unsigned> any(0, static_cast<unsigned>(fullScale(format)));
    std::vector<std::uint16_t> codes(count);
    for (auto& code : codes) code = static_cast<std::uint16_t>(any(generator));
    for (std::size_t i = 0; i < 6; ++i) codes[i] = static_cast<std::uint16_t>(i % 2 == 0 ? 0 : fullScale(format));
    return codes;
}

std::vector<float> randomNumbers(std::size_t count, float low, float high) {
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

LutApplierSettings exactly(LutApplication application, SampleFormat source, SampleFormat destination) {
    LutApplierSettings settings;
    settings.application = application;
    settings.arithmetic = LutArithmetic::exact;
    settings.source = source;
    settings.destination = destination;
    return settings;
}

TEST(LutApplier, exactlyAsStatedIsWhatSamplingOnePixelGives) {
    for (const auto& [name, file] : files()) {
        for (const SampleFormat format : codeFormats) {
            if (format == SampleFormat::unsigned8) continue;  // below, in bytes
            const auto depth = static_cast<std::int64_t>(bitDepth(format));
            const auto limit = static_cast<std::uint64_t>(fullScale(format));
            const auto codes = randomCodes(3 * 301, format);
            std::vector<std::uint16_t> expected;
            for (std::size_t i = 0; i < codes.size(); i += 3) {
                // Extrapolation below 0 stops one-pixel sampling; here it is limited.
                if (std::string_view(name).find("-0.5") != std::string_view::npos) break;
                const auto color =
                    file->converter().sample({codes[i], codes[i + 1], codes[i + 2]}, depth, depth, AnswerDepth::output);
                for (const auto value : {color.r, color.g, color.b}) {
                    expected.push_back(static_cast<std::uint16_t>(std::min(value, limit)));
                }
            }
            if (expected.empty()) continue;
            for (const bool allowsVectorCode : {true, false}) {
                auto settings = exactly(LutApplication::asStated, format, format);
                settings.allowsVectorCode = allowsVectorCode;
                EXPECT_EQ(applied<std::uint16_t>(*file, settings, codes), expected)
                    << name << ", " << depth << " bits, vector code " << allowsVectorCode;
            }
        }
    }
    const auto& file = *files().front().file;
    const auto codes = randomCodes(3 * 100, SampleFormat::unsigned8);
    const auto bytes =
        applied<std::uint8_t>(file, exactly(LutApplication::asStated, SampleFormat::unsigned8, SampleFormat::unsigned8),
                              std::vector<std::uint8_t>(codes.begin(), codes.end()));
    for (std::size_t i = 0; i < codes.size(); i += 3) {
        const auto color = file.converter().sample({codes[i], codes[i + 1], codes[i + 2]}, 8, 8, AnswerDepth::input);
        ASSERT_EQ((RGB<std::uint64_t>{bytes[i], bytes[i + 1], bytes[i + 2]}), color) << i;
    }
}

/// The same bits: NaN equals NaN, and 0 is not -0.
template <class Sample>
bool isSame(const std::vector<Sample>& a, const std::vector<Sample>& b) {
    return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(Sample)) == 0;
}

std::vector<float> hostileNumbers() {
    auto numbers = randomNumbers(3 * 333, -0.5F, 1.5F);
    const float special[] = {0, -0.0F, 1, infinity, -infinity, notANumber, 1e38F, -1e38F, 1e-40F, 0.9999999F};
    std::ranges::copy(special, numbers.begin() + 100);
    return numbers;
}

TEST(LutApplier, vectorCodeGivesTheBitsOfPortableCode) {
    for (const auto& [name, file] : files()) {
        for (const auto application : {LutApplication::asStated, LutApplication::conventional}) {
            for (const auto blending : {LutBlending::trilinear, LutBlending::tetrahedral}) {
                auto settings = exactly(application, SampleFormat::float32, SampleFormat::float32);
                settings.blending = blending;
                if (blending == LutBlending::tetrahedral && application == LutApplication::asStated) continue;
                if (blending == LutBlending::tetrahedral && file->dimensions() == LutDimensions::oneD) continue;
                const auto vector = applied<float>(*file, settings, hostileNumbers());
                settings.allowsVectorCode = false;
                EXPECT_TRUE(isSame(vector, applied<float>(*file, settings, hostileNumbers())))
                    << name << ", stated " << (application == LutApplication::asStated);
            }
        }
    }
}

/// Ordinary blending written again, from its definition: every corner times the product of its weights.
RGB<double> plainTrilinear(const Entries& entries, std::size_t n, bool redFastest, const RGB<double>& at) {
    const double p[] = {at.r * static_cast<double>(n - 1), at.g * static_cast<double>(n - 1),
                        at.b * static_cast<double>(n - 1)};
    RGB<double> sum;
    for (std::size_t corner = 0; corner < 8; ++corner) {
        std::size_t index[3];
        double weight = 1;
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const double lower = std::min(std::floor(p[axis]), static_cast<double>(n - 2));
            const bool isUpper = (corner >> axis & 1U) != 0;
            index[axis] = static_cast<std::size_t>(lower) + (isUpper ? 1 : 0);
            weight *= isUpper ? p[axis] - lower : 1 - (p[axis] - lower);
        }
        const auto& entry = redFastest ? entries[(index[2] * n + index[1]) * n + index[0]]
                                       : entries[(index[0] * n + index[1]) * n + index[2]];
        sum = {sum.r + weight * entry.first, sum.g + weight * entry.second, sum.b + weight * entry.third};
    }
    return sum;
}

/// From the lowest corner to the highest along the axes, the largest fraction first; each step weighs its fraction.
RGB<double> plainTetrahedral(const Entries& entries, std::size_t n, const RGB<double>& at) {
    const double p[] = {at.r * static_cast<double>(n - 1), at.g * static_cast<double>(n - 1),
                        at.b * static_cast<double>(n - 1)};
    std::size_t index[3];
    std::array<std::pair<double, std::size_t>, 3> steps;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const double lower = std::min(std::floor(p[axis]), static_cast<double>(n - 2));
        index[axis] = static_cast<std::size_t>(lower);
        steps[axis] = {p[axis] - lower, axis};
    }
    std::ranges::sort(steps, std::greater());
    const auto entry = [&] { return entries[(index[2] * n + index[1]) * n + index[0]]; };
    LutValueTriplet last = entry();
    RGB<double> sum{last.first, last.second, last.third};
    for (const auto& [fraction, axis] : steps) {
        ++index[axis];
        const LutValueTriplet next = entry();
        sum = {sum.r + fraction * (next.first - last.first), sum.g + fraction * (next.second - last.second),
               sum.b + fraction * (next.third - last.third)};
        last = next;
    }
    return sum;
}

TEST(LutApplier, theConventionalApplicationIsOrdinaryBlendingInTheDialectsOrder) {
    const struct {
        const char* name;
        const char* path;
        LutBlending blending;
        LutDomain domain;
    } rows[] = {
        {"cube", "look.cube", LutBlending::trilinear, {}},
        {"3dl", "LOOK.3DL", LutBlending::trilinear, {}},
        {"tetrahedral", "look.cube", LutBlending::tetrahedral, {}},
        {"domain", "look.cube", LutBlending::trilinear, {{-0.25, 0, 0.125}, {1.25, 0.5, 2}}},
        {"tetrahedral domain", "look.cube", LutBlending::tetrahedral, {{-0.25, 0, 0.125}, {1.25, 0.5, 2}}},
    };
    constexpr std::size_t n = 9;
    const Entries entries = randomEntries(n * n * n, 0, 1);
    for (const auto& row : rows) {
        const auto file = floatCube(entries, 0, 1, row.domain, row.path);
        for (const auto arithmetic : {LutArithmetic::exact, LutArithmetic::fast}) {
            auto settings = exactly(LutApplication::conventional, SampleFormat::float32, SampleFormat::float32);
            settings.blending = row.blending;
            settings.arithmetic = arithmetic;
            auto numbers = randomNumbers(3 * 200, -0.3F, 2.2F);
            numbers[0] = numbers[1] = numbers[2] = 1;
            const auto result = applied<float>(*file, settings, numbers);
            double worst = 0;
            for (std::size_t i = 0; i < numbers.size(); i += 3) {
                const auto at = [&](std::size_t k, double low, double high) {
                    const double number = static_cast<double>(numbers[i + k]);
                    return (std::clamp(number, low, high) - low) / (high - low);
                };
                const RGB<double> position{at(0, row.domain.minimum.r, row.domain.maximum.r),
                                           at(1, row.domain.minimum.g, row.domain.maximum.g),
                                           at(2, row.domain.minimum.b, row.domain.maximum.b)};
                const auto expected = row.blending == LutBlending::tetrahedral
                                          ? plainTetrahedral(entries, n, position)
                                          : plainTrilinear(entries, n, file->file() == "look.cube", position);
                worst = std::max({worst, std::abs(static_cast<double>(result[i]) - expected.r),
                                  std::abs(static_cast<double>(result[i + 1]) - expected.g),
                                  std::abs(static_cast<double>(result[i + 2]) - expected.b)});
            }
            EXPECT_LT(worst, 1e-6) << row.name << ", exact " << (arithmetic == LutArithmetic::exact);
        }
    }
}

TEST(LutApplier, fastStaysWithinAMillionthOfExact) {
    for (const std::size_t n : {2U, 17U, 33U, 65U}) {
        const auto file = floatCube(randomEntries(n * n * n, 0, 1), 0, 1);
        auto numbers = randomNumbers(3 * 4000, 0, 1);
        // Around every point of the lattice, where rounding may choose the wrong cell.
        for (std::size_t i = 0; i < 3 * n; ++i) {
            const float point = static_cast<float>(i / 3) / static_cast<float>(n - 1);
            numbers[i] = std::nextafterf(point, i % 2 == 0 ? 0.0F : 1.0F);
        }
        for (const auto blending : {LutBlending::trilinear, LutBlending::tetrahedral}) {
            auto settings = exactly(LutApplication::conventional, SampleFormat::float32, SampleFormat::float32);
            settings.blending = blending;
            const auto expected = applied<float>(*file, settings, numbers);
            settings.arithmetic = LutArithmetic::fast;
            const auto result = applied<float>(*file, settings, numbers);
            float worst = 0;
            for (std::size_t i = 0; i < result.size(); ++i) {
                worst = std::max(worst, std::abs(result[i] - expected[i]));
            }
            EXPECT_LE(worst, 1e-6F) << n << " points, tetrahedral " << (blending == LutBlending::tetrahedral);
        }
    }
    for (const auto& [name, file] : files()) {
        for (const auto application : {LutApplication::asStated, LutApplication::conventional}) {
            auto settings = exactly(application, SampleFormat::unsigned12, SampleFormat::unsigned10);
            const auto codes = randomCodes(3 * 500, SampleFormat::unsigned12);
            const auto expected = applied<std::uint16_t>(*file, settings, codes);
            settings.arithmetic = LutArithmetic::fast;
            const auto result = applied<std::uint16_t>(*file, settings, codes);
            int worst = 0;
            for (std::size_t i = 0; i < result.size(); ++i) worst = std::max(worst, std::abs(result[i] - expected[i]));
            EXPECT_LE(worst, 1) << name << ", stated " << (application == LutApplication::asStated);
        }
    }
}

/// A picture with room around its rows, whose bytes must stay.
template <class Sample>
struct Picture {
    static constexpr std::size_t height = 3, guard = 5;
    static constexpr Sample untouched = static_cast<Sample>(77);

    Picture(std::size_t pictureWidth, std::size_t channelCount, bool isPlanar)
        : width(pictureWidth), channels(channelCount), planar(isPlanar) {
        rowLength = (planar ? width : width * channels) + guard;
        samples.assign(rowLength * height * (planar ? channels : 1) + guard, untouched);
    }
    Sample& at(std::size_t channel, std::size_t row, std::size_t column) {
        return planar ? samples[(channel * height + row) * rowLength + column]
                      : samples[row * rowLength + column * channels + channel];
    }
    PixelBuffer buffer(SampleFormat format) {
        const auto stride = static_cast<std::ptrdiff_t>(rowLength * sizeof(Sample));
        if (!planar) {
            return PixelBuffer::interleaved(samples.data(), format,
                                            channels == 4 ? ChannelLayout::rgba : ChannelLayout::rgb, width, height,
                                            stride);
        }
        const auto plane = [&](std::size_t channel) {
            return PixelBuffer::Plane{channel < channels ? &at(channel, 0, 0) : nullptr, stride};
        };
        return PixelBuffer::planar(plane(0), plane(1), plane(2), plane(3), format, width, height);
    }

    std::size_t width, channels, rowLength = 0;
    bool planar;
    std::vector<Sample> samples;
};

template <class Sample>
void expectLayoutsAgree(SampleFormat format, const LutApplierSettings& settings) {
    const auto& file = *files().front().file;
    const LutApplier applier(file, settings);
    const auto kindOf = [](std::size_t row, std::size_t column) { return (row * 11 + column * 7) % 100; };
    const auto codeOf = [&](std::size_t channel, std::size_t kind) {
        return static_cast<Sample>(static_cast<double>((channel * 37 + kind) % 100) / 99.0 * fullScale(format));
    };
    const auto code = [&](std::size_t c, std::size_t row, std::size_t column) {
        return codeOf(c, kindOf(row, column));
    };
    std::vector<std::vector<Sample>> colors;
    for (std::size_t kind = 0; kind < 100; ++kind) {
        const std::vector<Sample> pixel = {codeOf(0, kind), codeOf(1, kind), codeOf(2, kind)};
        colors.push_back(applied<Sample>(file, settings, pixel));
    }
    for (const std::size_t width : {1U, 7U, 8U, 19U, 128U, 131U}) {
        for (const std::size_t layout : {0U, 1U, 2U, 3U, 4U, 5U, 6U, 7U}) {
            const std::size_t fromChannels = layout & 1U ? 4 : 3;
            Picture<Sample> from(width, fromChannels, (layout & 2U) != 0);
            for (std::size_t row = 0; row < from.height; ++row) {
                for (std::size_t column = 0; column < width; ++column) {
                    for (std::size_t c = 0; c < fromChannels; ++c) from.at(c, row, column) = code(c, row, column);
                }
            }
            const bool isInPlace = (layout & 4U) == 0;
            Picture<Sample> other(width, layout % 3 == 0 ? 4 : 3, layout % 2 == 0);
            Picture<Sample>& to = isInPlace ? from : other;
            const auto before = to.samples;
            ASSERT_EQ(applier.apply(from.buffer(format), to.buffer(format), 1, 2), std::nullopt);

            Picture<Sample> expected = to;
            expected.samples = before;
            for (std::size_t row = 1; row < 3; ++row) {
                for (std::size_t column = 0; column < width; ++column) {
                    const auto& color = colors[kindOf(row, column)];
                    for (std::size_t c = 0; c < 3; ++c) expected.at(c, row, column) = color[c];
                    if (to.channels == 4) {
                        expected.at(3, row, column) =
                            fromChannels == 4 ? code(3, row, column) : static_cast<Sample>(fullScale(format));
                    }
                }
            }
            EXPECT_TRUE(isSame(to.samples, expected.samples)) << "width " << width << ", layout " << layout;
        }
    }
}

TEST(LutApplier, everyLayoutGivesTheSameColoursAndTouchesNothingElse) {
    for (const auto arithmetic : {LutArithmetic::exact, LutArithmetic::fast}) {
        const auto settings = [&](SampleFormat format) {
            auto result = exactly(LutApplication::conventional, format, format);
            result.arithmetic = arithmetic;
            return result;
        };
        expectLayoutsAgree<float>(SampleFormat::float32, settings(SampleFormat::float32));
        expectLayoutsAgree<std::uint16_t>(SampleFormat::unsigned12, settings(SampleFormat::unsigned12));
        expectLayoutsAgree<std::uint8_t>(SampleFormat::unsigned8, settings(SampleFormat::unsigned8));
    }
}

TEST(LutApplier, formatsMayDifferAndAlphaFollows) {
    const auto identity =
        floatCube({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}, {0, 0, 1}, {1, 0, 1}, {0, 1, 1}, {1, 1, 1}}, 0, 1);
    for (const auto arithmetic : {LutArithmetic::exact, LutArithmetic::fast}) {
        auto settings = exactly(LutApplication::conventional, SampleFormat::unsigned10, SampleFormat::unsigned16);
        settings.arithmetic = arithmetic;
        const std::vector<std::uint16_t> codes = {0, 1023, 512, 1023, 100, 1, 0, 256};
        EXPECT_EQ(applied<std::uint16_t>(*identity, settings, codes, ChannelLayout::rgba),
                  (std::vector<std::uint16_t>{0, 65535, 32800, 65535, 6406, 64, 0, 16400}));
        auto inPlace = codes;
        settings.destination = SampleFormat::unsigned12;
        LutApplier(*identity, settings)
            .apply(rowOf(inPlace, settings.source, ChannelLayout::rgba),
                   rowOf(inPlace, settings.destination, ChannelLayout::rgba));
        EXPECT_EQ(inPlace, (std::vector<std::uint16_t>{0, 4095, 2050, 4095, 400, 4, 0, 1025}));
        settings.destination = SampleFormat::float32;
        const auto numbers = applied<float>(*identity, settings, codes, ChannelLayout::rgba);
        EXPECT_NEAR(numbers[2], 512.0 / 1023, 1e-6);
        EXPECT_NEAR(numbers[7], 256.0 / 1023, 1e-6);
        settings.source = SampleFormat::float32;
        settings.destination = SampleFormat::unsigned8;
        EXPECT_EQ(applied<std::uint8_t>(*identity, settings, std::vector<float>{-1, notANumber, 0.5F, infinity, 1, 2},
                                        ChannelLayout::rgb),
                  (std::vector<std::uint8_t>{0, 0, 128, 255, 255, 255}));
    }
}

TEST(LutApplier, reportsTheFirstPixelThatIsOutOfRange) {
    const auto plain = floatCube(randomEntries(8, 0, 1), 0, 1);
    const auto bright = floatCube(Entries(8, {1.5, 0.5, 0.5}), 0, 1);
    const auto negative = floatCube(Entries(8, {0.5, -0.25, 0.5}), 0, 1);
    using enum SampleFormat;
    const struct {
        const char* name;
        const File& file;
        SampleFormat destination;
        std::size_t pixel;
        unsigned channel;
        float value;
        bool isResult;
        double told;
    } rows[] = {
        {"NaN", plain, float32, 200, 1, notANumber, false, 0},
        {"negative", plain, float32, 0, 2, -0.001F, false, static_cast<double>(-0.001F)},
        {"above", plain, unsigned16, 130, 0, infinity, false, static_cast<double>(infinity)},
        {"a bright result in codes", bright, unsigned10, 0, 0, 0.5F, true, 1.5 * 1023},
        {"a negative result in codes", negative, unsigned8, 0, 1, 0.5F, true, -0.25 * 255},
    };
    for (const auto& row : rows) {
        auto settings = exactly(LutApplication::conventional, float32, row.destination);
        settings.arithmetic = LutArithmetic::fast;
        settings.outOfRange = OutOfRangePolicy::report;
        std::vector<float> numbers(3 * 300, 0.5F);
        numbers[row.pixel * 3 + row.channel] = row.value;
        std::vector<float> result(numbers.size(), 77.0F);  // also large enough for codes
        const LutApplier applier(*row.file, settings);
        const auto offender =
            applier.apply(rowOf(numbers, float32),
                          PixelBuffer::interleaved(result.data(), row.destination, ChannelLayout::rgb, 300, 1, 0));
        ASSERT_TRUE(offender) << row.name;
        EXPECT_EQ(offender->column, row.pixel) << row.name;
        EXPECT_EQ(offender->channel, row.channel) << row.name;
        EXPECT_EQ(offender->isResult, row.isResult) << row.name;
        EXPECT_EQ(std::isnan(row.value) ? row.told : offender->value, row.told) << row.name;
        if (row.destination == float32) {
            EXPECT_TRUE(std::all_of(result.begin() + static_cast<std::ptrdiff_t>(row.pixel) * 3, result.end(),
                                    [](float sample) { return sample == 77.0F; }))
                << row.name;
            EXPECT_TRUE(std::none_of(result.begin(), result.begin() + static_cast<std::ptrdiff_t>(row.pixel) * 3,
                                     [](float sample) { return sample == 77.0F; }))
                << row.name;
        }
    }
}

TEST(LutApplier, refusesWhatCannotBeApplied) {
    const auto black = floatCube(Entries(8), 0, 0);
    const auto plain = floatCube(randomEntries(8, 0, 1), 0, 1);
    const auto empty = floatCube(randomEntries(8, 0, 1), 0, 1, {{0, 1, 0}, {1, 1, 1}});
    const struct {
        const char* name;
        const File& file;
        LutApplication application;
        LutBlending blending;
        std::optional<LutApplierProblem> expected;
    } rows[] = {
        {"black", black, LutApplication::asStated, LutBlending::trilinear, LutApplierProblem::highValueNotPositive},
        {"conventional black", black, LutApplication::conventional, LutBlending::trilinear, std::nullopt},
        {"tetrahedral", plain, LutApplication::asStated, LutBlending::tetrahedral,
         LutApplierProblem::blendingNotStated},
        {"tetrahedral table", files().back().file, LutApplication::conventional, LutBlending::tetrahedral,
         LutApplierProblem::blendingNotStated},
        {"empty domain", empty, LutApplication::conventional, LutBlending::trilinear, LutApplierProblem::emptyDomain},
        {"a domain not asked for", empty, LutApplication::asStated, LutBlending::trilinear, std::nullopt},
    };
    for (const auto& row : rows) {
        LutApplierSettings settings;
        settings.application = row.application;
        settings.blending = row.blending;
        std::optional<LutApplierProblem> problem;
        try {
            const LutApplier applier(*row.file, settings);
        } catch (const LutApplierError& error) {
            problem = error.problem();
        }
        EXPECT_EQ(problem, row.expected) << row.name;
    }
}

}  // namespace
}  // namespace corvex::lutApplierTests

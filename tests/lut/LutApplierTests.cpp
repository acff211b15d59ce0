#include <Corvex/lut/LutApplier.h>

#include <tuple>
#include <utility>

#include <tests/Thrown.h>

#include "LutPixels.h"

namespace corvex::lutApplierTests {
namespace {

/// Codes that are applied as stated become what sampling one pixel gives, limited to their format.
template <class Code>
void expectWhatSamplingGives(const char* name, const ParsedLutFile& file, SampleFormat format) {
    const auto depth = static_cast<std::int64_t>(bitDepth(format));
    const auto limit = static_cast<std::uint64_t>(fullScale(format));
    const auto random = randomCodes(3 * 301, format);
    const std::vector<Code> codes(random.begin(), random.end());
    std::vector<Code> expected;
    for (std::size_t i = 0; i < codes.size(); i += 3) {
        const auto [r, g, b] =
            file.converter().sample({codes[i], codes[i + 1], codes[i + 2]}, depth, depth, AnswerDepth::output);
        for (const auto value : {r, g, b}) expected.push_back(static_cast<Code>(std::min(value, limit)));
    }
    LutApplierSettings settings{.application = LutApplication::asStated, .arithmetic = LutArithmetic::exact};
    settings.source = settings.destination = format;
    for (const bool isVector : {true, false}) {
        settings.allowsVectorCode = isVector;
        EXPECT_EQ(applied<Code>(file, settings, codes), expected)
            << name << ", " << depth << " bits, vector code " << isVector;
    }
}

TEST(LutApplier, exactlyAsStatedIsWhatSamplingOnePixelGives) {
    for (const auto& [name, file] : files()) {
        // Extrapolation below 0 stops one-pixel sampling; applied, it is limited.
        if (std::string_view(name).find("-0.5") != std::string_view::npos) continue;
        expectWhatSamplingGives<std::uint8_t>(name, *file, SampleFormat::unsigned8);
        expectWhatSamplingGives<std::uint16_t>(name, *file, SampleFormat::unsigned10);
        expectWhatSamplingGives<std::uint16_t>(name, *file, SampleFormat::unsigned12);
        expectWhatSamplingGives<std::uint16_t>(name, *file, SampleFormat::unsigned16);
    }
}

TEST(LutApplier, vectorCodeGivesTheBitsOfPortableCode) {
    auto numbers = randomNumbers(3 * 333, -0.5F, 1.5F);
    const float hostile[] = {0, -0.0F, 1, infinity, -infinity, notANumber, 1e38F, -1e38F, 1e-40F, 0.9999999F};
    std::ranges::copy(hostile, numbers.begin() + 100);
    for (const auto& [name, file] : files()) {
        for (auto settings : {LutApplierSettings{.application = LutApplication::asStated}, LutApplierSettings{},
                              LutApplierSettings{.blending = LutBlending::tetrahedral}}) {
            const bool isTetrahedral = settings.blending == LutBlending::tetrahedral;
            if (isTetrahedral && file->dimensions() == LutDimensions::oneD) continue;
            settings.arithmetic = LutArithmetic::exact;
            const auto vector = applied<float>(*file, settings, numbers);
            settings.allowsVectorCode = false;
            EXPECT_TRUE(isSame(vector, applied<float>(*file, settings, numbers)))
                << name << ", stated " << (settings.application == LutApplication::asStated) << ", tetrahedral "
                << isTetrahedral;
        }
    }
}

/// Its ordinary blending is compared with another tool's in LutPeerTests.cpp, where red varies fastest.
TEST(LutApplier, theConventionalApplicationTakesTheOrderOfTheDialect) {
    const Entries entries = randomEntries(9 * 9 * 9, 0, 1);
    const auto redFastest = floatCube(entries, 0, 1), blueFastest = floatCube(entries, 0, 1, {}, "LOOK.3DL");
    const auto numbers = randomNumbers(3 * 200, 0, 1);
    auto swapped = numbers;
    for (std::size_t i = 0; i < swapped.size(); i += 3) std::swap(swapped[i], swapped[i + 2]);
    for (const auto arithmetic : {LutArithmetic::exact, LutArithmetic::fast}) {
        const LutApplierSettings settings{.arithmetic = arithmetic};
        EXPECT_LT(largestDifference(applied<float>(*blueFastest, settings, numbers),
                                    applied<float>(*redFastest, settings, swapped)),
                  1e-6F);
    }
}

/// How near it stays for numbers, LutPeerTests.cpp compares.
TEST(LutApplier, fastStaysWithinOneCodeOfExact) {
    using enum SampleFormat;
    for (const auto& [name, file] : files()) {
        for (const auto application : {LutApplication::asStated, LutApplication::conventional}) {
            LutApplierSettings settings{.application = application, .source = unsigned12, .destination = unsigned10};
            const auto codes = randomCodes(3 * 500, unsigned12);
            const auto result = applied<std::uint16_t>(*file, settings, codes);
            settings.arithmetic = LutArithmetic::exact;
            const auto expected = applied<std::uint16_t>(*file, settings, codes);
            EXPECT_LE(largestDifference(result, expected), 1)
                << name << ", stated " << (application == LutApplication::asStated);
        }
    }
}

TEST(LutApplier, reportsTheFirstPixelThatIsOutOfRange) {
    const auto plain = floatCube(randomEntries(8, 0, 1), 0, 1);
    const auto bright = floatCube(Entries(8, {1.5, 0.5, 0.5}), 0, 1);
    const auto negative = floatCube(Entries(8, {0.5, -0.25, 0.5}), 0, 1);
    using enum SampleFormat;
    const std::tuple<const char*, const File&, SampleFormat, std::size_t, unsigned, float, bool, double> rows[] = {
        {"NaN", plain, float32, 200, 1, notANumber, false, 0},
        {"negative", plain, float32, 0, 2, -0.001F, false, static_cast<double>(-0.001F)},
        {"above", plain, unsigned16, 130, 0, infinity, false, static_cast<double>(infinity)},
        {"a bright result in codes", bright, unsigned10, 0, 0, 0.5F, true, 1.5 * 1023},
        {"a negative result in codes", negative, unsigned8, 0, 1, 0.5F, true, -0.25 * 255},
    };
    for (const auto& [name, file, destination, pixel, channel, value, isResult, told] : rows) {
        const LutApplierSettings settings{.outOfRange = OutOfRangePolicy::report, .destination = destination};
        std::vector<float> numbers(3 * 300, 0.5F);
        numbers[pixel * 3 + channel] = value;
        std::vector<float> result(numbers.size(), 77.0F);  // also large enough for codes
        const LutApplier applier(*file, settings);
        const auto offender =
            applier.apply(rowOf(numbers, float32),
                          PixelBuffer::interleaved(result.data(), destination, ChannelLayout::rgb, 300, 1, 0));
        ASSERT_TRUE(offender) << name;
        EXPECT_EQ(std::tuple(offender->column, offender->channel, offender->isResult),
                  std::tuple(pixel, channel, isResult))
            << name;
        EXPECT_EQ(std::isnan(value) ? told : offender->value, told) << name;
        if (destination != float32) continue;
        const auto firstUntouched = std::ranges::find(result, 77.0F);
        EXPECT_EQ(firstUntouched - result.begin(), static_cast<std::ptrdiff_t>(pixel * 3)) << name;
        EXPECT_EQ(std::ranges::count(result, 77.0F), result.end() - firstUntouched) << name;
    }
}

TEST(LutApplier, refusesWhatCannotBeApplied) {
    using enum LutApplication;
    using enum LutBlending;
    using enum LutApplierProblem;
    const auto black = floatCube(Entries(8), 0, 0);
    const auto empty = floatCube(randomEntries(8, 0, 1), 0, 1, {{0, 1, 0}, {1, 1, 1}});
    const std::tuple<const char*, File, LutApplication, LutBlending, std::optional<LutApplierProblem>> rows[] = {
        {"black", black, asStated, trilinear, highValueNotPositive},
        {"conventional black", black, conventional, trilinear, std::nullopt},
        {"tetrahedral", files().front().second, asStated, tetrahedral, blendingNotStated},
        {"tetrahedral table", files().back().second, conventional, tetrahedral, blendingNotStated},
        {"empty domain", empty, conventional, trilinear, emptyDomain},
        {"a domain not asked for", empty, asStated, trilinear, std::nullopt}};
    for (const auto& [name, file, application, blending, expected] : rows) {
        const LutApplierSettings settings{.application = application, .blending = blending};
        const auto error = test::thrownBy<LutApplierError>([&] { LutApplier(*file, settings); });
        EXPECT_EQ(error ? std::optional(error->problem()) : std::nullopt, expected) << name;
    }
}

/// A picture of three rows with room around them, whose bytes must stay. Pixels are counted through all rows.
template <class Sample>
struct Picture {
    static constexpr std::size_t height = 3, guard = 5;

    Picture(std::size_t pictureWidth, std::size_t channelCount, bool isPlanar)
        : width(pictureWidth), channels(channelCount), planar(isPlanar) {
        samples.assign(rowLength * height * (planar ? channels : 1) + guard, Sample{77});
    }
    Sample& at(std::size_t channel, std::size_t pixel) {
        const std::size_t row = pixel / width, column = pixel % width;
        return planar ? samples[(channel * height + row) * rowLength + column]
                      : samples[row * rowLength + column * channels + channel];
    }
    PixelBuffer buffer(SampleFormat format) {
        const auto stride = static_cast<std::ptrdiff_t>(rowLength * sizeof(Sample));
        const auto layout = channels == 4 ? ChannelLayout::rgba : ChannelLayout::rgb;
        if (!planar) return PixelBuffer::interleaved(samples.data(), format, layout, width, height, stride);
        const auto plane = [&](std::size_t channel) {
            return PixelBuffer::Plane{channel < channels ? &at(channel, 0) : nullptr, stride};
        };
        return PixelBuffer::planar(plane(0), plane(1), plane(2), plane(3), format, width, height);
    }

    std::size_t width, channels;
    bool planar;
    std::size_t rowLength = (planar ? width : width * channels) + guard;
    std::vector<Sample> samples;
};

/// The last two rows of pictures of every layout and width become what one row of the same pixels becomes, and what
/// lies around them stays.
template <class Sample>
void expectLayoutsAgree(SampleFormat format, LutArithmetic arithmetic) {
    const LutApplierSettings settings{.arithmetic = arithmetic, .source = format, .destination = format};
    const auto& file = *files().front().second;
    const LutApplier applier(file, settings);
    const auto codeOf = [&](std::size_t channel, std::size_t pixel) {
        return static_cast<Sample>(static_cast<double>((channel * 37 + pixel * 7) % 100) / 99.0 * fullScale(format));
    };
    for (const std::size_t width : {1U, 7U, 8U, 19U, 128U, 131U}) {
        for (const std::size_t layout : {0U, 1U, 2U, 3U, 4U, 5U, 6U, 7U}) {
            Picture<Sample> from(width, layout & 1U ? 4 : 3, (layout & 2U) != 0);
            std::vector<Sample> colors;
            for (std::size_t pixel = 0; pixel < from.height * width; ++pixel) {
                for (std::size_t c = 0; c < from.channels; ++c) from.at(c, pixel) = codeOf(c, pixel);
                for (std::size_t c = 0; c < 3; ++c) colors.push_back(codeOf(c, pixel));
            }
            colors = applied<Sample>(file, settings, colors);
            Picture<Sample> other(width, layout % 3 == 0 ? 4 : 3, layout % 2 == 0);
            Picture<Sample>& to = (layout & 4U) == 0 ? from : other;  // or in place
            Picture<Sample> expected = to;
            for (std::size_t pixel = width; pixel < from.height * width; ++pixel) {
                for (std::size_t c = 0; c < 3; ++c) expected.at(c, pixel) = colors[3 * pixel + c];
                if (to.channels < 4) continue;
                expected.at(3, pixel) = from.channels == 4 ? codeOf(3, pixel) : static_cast<Sample>(fullScale(format));
            }
            ASSERT_EQ(applier.apply(from.buffer(format), to.buffer(format), 1, 2), std::nullopt);
            EXPECT_TRUE(isSame(to.samples, expected.samples)) << "width " << width << ", layout " << layout;
        }
    }
}

TEST(LutApplierLayout, everyLayoutGivesTheSameColoursAndTouchesNothingElse) {
    for (const auto arithmetic : {LutArithmetic::exact, LutArithmetic::fast}) {
        expectLayoutsAgree<float>(SampleFormat::float32, arithmetic);
        expectLayoutsAgree<std::uint16_t>(SampleFormat::unsigned12, arithmetic);
        expectLayoutsAgree<std::uint8_t>(SampleFormat::unsigned8, arithmetic);
    }
}

TEST(LutApplierLayout, formatsMayDifferAndAlphaFollows) {
    const auto identity =
        floatCube({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}, {0, 0, 1}, {1, 0, 1}, {0, 1, 1}, {1, 1, 1}}, 0, 1);
    for (const auto arithmetic : {LutArithmetic::exact, LutArithmetic::fast}) {
        LutApplierSettings settings{
            .arithmetic = arithmetic, .source = SampleFormat::unsigned10, .destination = SampleFormat::unsigned16};
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

}  // namespace
}  // namespace corvex::lutApplierTests

#include "LutPixels.h"

// Where pixels lie and of what format they are.
namespace corvex::lutApplierTests {
namespace {

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

TEST(LutApplierLayout, everyLayoutGivesTheSameColoursAndTouchesNothingElse) {
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

TEST(LutApplierLayout, formatsMayDifferAndAlphaFollows) {
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

}  // namespace
}  // namespace corvex::lutApplierTests

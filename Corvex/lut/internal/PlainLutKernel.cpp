#include <Corvex/lut/internal/PlainLutKernel.h>

#include <algorithm>
#include <cmath>
#include <cstdint>

#include <Corvex/lut/BitDepth.h>

namespace corvex::inline v0::PlainLutKernel {
namespace {

/// The samples of one channel in a part of a row.
template <class Sample, class Byte>
auto* samplesOf(const BasicPixelBuffer<Byte>& pixels, std::size_t channel, std::size_t row, std::size_t column) {
    using Pointer = std::conditional_t<std::is_const_v<Byte>, const Sample*, Sample*>;
    return reinterpret_cast<Pointer>(pixels.sample(channel, row, column));
}

/// Calls `operation` with a value of the type that samples of a format have.
template <class Operation>
decltype(auto) withSampleType(SampleFormat format, Operation&& operation) {
    switch (byteCount(format)) {
        case 1: return operation(std::uint8_t{});
        case 2: return operation(std::uint16_t{});
        default: return operation(float{});
    }
}

constexpr double blend(double a, double b, double fraction) noexcept { return (1.0 - fraction) * a + fraction * b; }

struct Cell {
    std::size_t entry;
    double fractions[3];  ///< By axis of the lattice.
};

void blendTrilinear(const LutPlan& plan, const Cell& cell, double* color) noexcept {
    const std::size_t middle = plan.pointCount * LutPlan::entryWidth, slow = middle * plan.pointCount;
    const double* const at = plan.lattice.data() + cell.entry * LutPlan::entryWidth;
    for (std::size_t i = 0; i < 3; ++i) {
        const auto alongSlow = [&](std::size_t offset) {
            return blend(at[offset + i], at[slow + offset + i], cell.fractions[LutPlan::slow]);
        };
        const auto alongFast = [&](std::size_t offset) {
            return blend(alongSlow(offset), alongSlow(offset + LutPlan::entryWidth), cell.fractions[LutPlan::fast]);
        };
        color[i] = blend(alongFast(0), alongFast(middle), cell.fractions[LutPlan::middle]);
    }
}

void blendTetrahedral(const LutPlan& plan, const Cell& cell, double* color) noexcept {
    const std::size_t fast = LutPlan::entryWidth, middle = plan.pointCount * fast, slow = middle * plan.pointCount;
    const auto [slowFraction, middleFraction, fastFraction] = cell.fractions;
    const double largest = std::max(std::max(slowFraction, middleFraction), fastFraction);
    const double least = std::min(std::min(slowFraction, middleFraction), fastFraction);
    const double between = std::max(std::min(slowFraction, middleFraction),
                                    std::min(std::max(slowFraction, middleFraction), fastFraction));
    const std::size_t all = slow + middle + fast;
    const std::size_t first = slowFraction == largest ? slow : middleFraction == largest ? middle : fast;
    const std::size_t second = all - (fastFraction == least ? fast : middleFraction == least ? middle : slow);
    const double* const at = plan.lattice.data() + cell.entry * LutPlan::entryWidth;
    for (std::size_t i = 0; i < 3; ++i) {
        color[i] = (1.0 - largest) * at[i] + (largest - between) * at[first + i] + (between - least) * at[second + i] +
                   least * at[all + i];
    }
}

/// The colours at positions that `position(channel, pixel)` gives.
template <class Position>
void lookUpAt(const LutPlan& plan, std::size_t count, Position&& position, double* colors) noexcept {
    for (std::size_t pixel = 0; pixel < count; ++pixel, colors += LutPlan::entryWidth) {
        Cell cell{};
        for (std::size_t channel = 0; channel < 3; ++channel) {
            const LutPosition at = position(channel, pixel);
            if (plan.isCube) {
                cell.entry += at.entry;
                cell.fractions[plan.weighedAxes[channel]] = at.fraction;
            } else {
                const double* const entry = plan.lattice.data() + at.entry * LutPlan::entryWidth + channel;
                colors[channel] = blend(entry[0], entry[LutPlan::entryWidth], at.fraction);
            }
        }
        if (!plan.isCube) continue;
        if (plan.settings.blending == LutBlending::tetrahedral) {
            blendTetrahedral(plan, cell, colors);
        } else {
            blendTrilinear(plan, cell, colors);
        }
    }
}

/// A colour's number in the units of an integer destination, before it is limited.
double codeNumber(const LutPlan& plan, double color) noexcept { return color * plan.outputFactor + plan.outputBias; }

}  // namespace

void lookUp(const LutPlan& plan, const ConstPixelBuffer& source, std::size_t row, std::size_t column, std::size_t count,
            Block& colors) noexcept {
    withSampleType(source.format(), [&]<class Sample>(Sample) {
        const std::size_t stride = source.pixelStride();
        const Sample* const samples[] = {samplesOf<Sample>(source, 0, row, column),
                                         samplesOf<Sample>(source, 1, row, column),
                                         samplesOf<Sample>(source, 2, row, column)};
        lookUpAt(
            plan, count,
            [&](std::size_t channel, std::size_t pixel) {
                const Sample sample = samples[channel][pixel * stride];
                if constexpr (std::is_same_v<Sample, float>) {
                    return plan.position(channel, static_cast<double>(sample) * plan.inputFactor);
                } else {
                    const auto& positions = plan.codePositions[channel];
                    return positions[std::min<std::size_t>(sample, positions.size() - 1)];
                }
            },
            colors);
    });
}

std::optional<OffendingPixel> findOffender(const LutPlan& plan, const ConstPixelBuffer& source, std::size_t row,
                                           std::size_t column, std::size_t count, const Block& colors) noexcept {
    const auto isInputOut = [&](std::size_t channel, double number) {
        const LutAxis& axis = plan.axes[channel];
        return !(number >= axis.low && number <= axis.high);
    };
    const auto isResultOut = [&](double color) {
        if (plan.settings.destination == SampleFormat::float32) return !std::isfinite(color);
        const double number = codeNumber(plan, color);
        const bool isAbove = number >= 0 || (plan.outputBias == 0 && number > -1);  // what is truncated to 0 is 0
        return !(isAbove && number < plan.outputLimit + 1);
    };
    return withSampleType(source.format(), [&]<class Sample>(Sample) -> std::optional<OffendingPixel> {
        for (std::size_t pixel = 0; pixel < count; ++pixel) {
            for (unsigned channel = 0; channel < 3; ++channel) {
                const Sample sample = *samplesOf<Sample>(source, channel, row, column + pixel);
                double number = static_cast<double>(sample) * plan.inputFactor;
                if constexpr (!std::is_same_v<Sample, float>) {
                    number = sample < plan.codePositions[channel].size() ? plan.inputNumber(sample) : NAN;
                }
                if (isInputOut(channel, number)) {
                    return OffendingPixel{row, column + pixel, channel, false, static_cast<double>(sample)};
                }
                const double color = colors[pixel * LutPlan::entryWidth + channel];
                if (isResultOut(color)) {
                    return OffendingPixel{row, column + pixel, channel, true, color * plan.outputFactor};
                }
            }
        }
        return std::nullopt;
    });
}

void store(const LutPlan& plan, const Block& colors, const PixelBuffer& destination, std::size_t row,
           std::size_t column, std::size_t count) noexcept {
    const auto depth = static_cast<std::int64_t>(bitDepth(destination.format()));
    const auto largest = static_cast<std::uint64_t>(fullScale(destination.format()));
    withSampleType(destination.format(), [&]<class Sample>(Sample) {
        for (std::size_t channel = 0; channel < 3; ++channel) {
            Sample* to = samplesOf<Sample>(destination, channel, row, column);
            const double* color = colors + channel;
            for (std::size_t i = 0; i < count; ++i, to += destination.pixelStride(), color += LutPlan::entryWidth) {
                if constexpr (std::is_same_v<Sample, float>) {
                    *to = static_cast<float>(*color / plan.outputDivisor);
                } else {
                    const double number = codeNumber(plan, *color);
                    // One more than the limit still tells that it was too large, also after the shift.
                    const double bounded = number > 0 ? std::min(number, plan.outputLimit + 1) : 0;  // NaN too
                    const auto whole = static_cast<std::uint64_t>(bounded);
                    const std::uint64_t shifted =
                        plan.outputDepth == 0 ? whole : normalizedUnsignedInteger(whole, plan.outputDepth, depth);
                    *to = static_cast<Sample>(std::min(shifted, largest));
                }
            }
        }
    });
}

void storeAlpha(const ConstPixelBuffer& source, const PixelBuffer& destination, std::size_t row, std::size_t column,
                std::size_t count) noexcept {
    constexpr std::size_t alpha = 3;
    if (!destination.hasAlpha()) return;
    const double largest = fullScale(destination.format());
    withSampleType(destination.format(), [&]<class To>(To) {
        To* to = samplesOf<To>(destination, alpha, row, column);
        const std::size_t toStride = destination.pixelStride();
        if (!source.hasAlpha()) {
            for (std::size_t i = 0; i < count; ++i) to[i * toStride] = static_cast<To>(largest);
            return;
        }
        withSampleType(source.format(), [&]<class From>(From) {
            const From* from = samplesOf<From>(source, alpha, row, column);
            const std::size_t fromStride = source.pixelStride();
            if constexpr (std::is_same_v<From, To>) {
                if (source.format() == destination.format()) {
                    if (from == to) return;
                    for (std::size_t i = 0; i < count; ++i) to[i * toStride] = from[i * fromStride];
                    return;
                }
            }
            const double factor = largest / fullScale(source.format());
            const double bias = std::is_same_v<To, float> ? 0 : 0.5;
            for (std::size_t i = 0; i < count; ++i) {
                const double number = static_cast<double>(from[i * fromStride]) * factor;
                to[i * toStride] = static_cast<To>((number > 0 ? std::min(number, largest) : 0) + bias);
            }
        });
    });
}

}  // namespace corvex::inline v0::PlainLutKernel

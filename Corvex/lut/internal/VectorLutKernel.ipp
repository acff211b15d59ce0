// Included several times by VectorLutKernel.cpp, each time for another kind of vector. Lambdas and helpers carry
// HWY_ATTR or HWY_INLINE, which give them that kind.
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace corvex::inline v0::VectorLutKernel::HWY_NAMESPACE {
#if HWY_MAX_BYTES < 32

// Vectors too short for two entries: compiled because Highway wants a baseline, and called for nothing but blocks.
inline void lookUpBlock(const LutPlan& plan, const ConstPixelBuffer& source, std::size_t row, std::size_t column,
                        std::size_t count, PlainLutKernel::Block& colors) {
    PlainLutKernel::lookUp(plan, source, row, column, count, colors);
}

inline void applyFastRow(const LutPlan&, const ConstPixelBuffer&, const PixelBuffer&, std::size_t) {
    fatalError("no plan is fast on this machine");
}

#else

namespace hn = hwy::HWY_NAMESPACE;

using Floats = hn::CappedTag<float, 8>;
using Ints = hn::RebindToSigned<Floats>;
using Doubles = hn::CappedTag<double, 4>;
using FloatVector = hn::Vec<Floats>;
using IntVector = hn::Vec<Ints>;
constexpr std::size_t groupSize = hn::MaxLanes(Floats());
constexpr std::size_t halfGroup = groupSize / 2;
constexpr std::size_t blockSize = PlainLutKernel::blockSize;

struct Colors {
    FloatVector r, g, b;
};

/// The samples of a row's part.
template <class Sample>
struct Samples {
    Sample* channels[3];
    std::size_t stride;
};

template <class Sample, class Byte>
HWY_INLINE auto samplesOf(const BasicPixelBuffer<Byte>& pixels, std::size_t row, std::size_t column) {
    using Element = std::conditional_t<std::is_const_v<Byte>, const Sample, Sample>;
    const auto at = [&](std::size_t channel) {
        return reinterpret_cast<Element*>(pixels.sample(channel, row, column));
    };
    return Samples<Element>{{at(0), at(1), at(2)}, pixels.pixelStride()};
}

template <class Narrow>
HWY_INLINE FloatVector numbersOf(hn::Vec<Narrow> samples) {
    if constexpr (std::is_same_v<hn::TFromD<Narrow>, float>) {
        return samples;
    } else {
        return hn::ConvertTo(Floats(), hn::PromoteTo(Ints(), samples));
    }
}

/// The next groupSize pixels as numbers. All of them must be there.
template <class Sample>
HWY_INLINE Colors loadGroup(const Sample* red, const Sample* green, const Sample* blue, std::size_t stride) {
    using Narrow = hn::Rebind<std::remove_const_t<Sample>, Floats>;
    const Narrow d;
    hn::Vec<Narrow> r, g, b, a;
    if (stride == 3) {
        hn::LoadInterleaved3(d, red, r, g, b);
    } else if (stride == 4) {
        hn::LoadInterleaved4(d, red, r, g, b, a);
    } else {
        r = hn::LoadU(d, red);
        g = hn::LoadU(d, green);
        b = hn::LoadU(d, blue);
    }
    return {numbersOf<Narrow>(r), numbersOf<Narrow>(g), numbersOf<Narrow>(b)};
}

/// Calls `operation(first pixel, colours)` for the groups of a block; the last one is filled up with zeros.
template <class Sample, class Operation>
HWY_INLINE void forEachGroup(const Samples<Sample>& samples, std::size_t count, const Operation& operation) {
    using Plain = std::remove_const_t<Sample>;
    const std::size_t stride = samples.stride;
    std::size_t i = 0;
    for (; i + groupSize <= count; i += groupSize) {
        operation(i, loadGroup(samples.channels[0] + i * stride, samples.channels[1] + i * stride,
                               samples.channels[2] + i * stride, stride));
    }
    if (i == count) return;
    const std::size_t left = count - i;
    alignas(64) Plain last[3][groupSize] = {};
    for (std::size_t channel = 0; channel < 3; ++channel) {
        for (std::size_t k = 0; k < left; ++k) last[channel][k] = samples.channels[channel][(i + k) * stride];
    }
    operation(i, loadGroup<Plain>(last[0], last[1], last[2], 1));
}

/// Which corners of a cell a tetrahedron has beside the lowest and the highest, and what all weigh.
template <class D, class V = hn::Vec<D>>
struct Tetrahedron {
    V weights[4];
    V first, second;  ///< Numbers of the corners' entries, from the lowest corner.
};

template <class D, class V>
HWY_INLINE Tetrahedron<D> tetrahedronOf(D d, V slow, V middle, V fast, const LutPlan& plan) {
    using T = hn::TFromD<D>;
    const V largest = hn::Max(hn::Max(slow, middle), fast);
    const V least = hn::Min(hn::Min(slow, middle), fast);
    const V between = hn::Max(hn::Min(slow, middle), hn::Min(hn::Max(slow, middle), fast));
    const auto n = static_cast<T>(plan.pointCount);
    const V slowStep = hn::Set(d, n * n), middleStep = hn::Set(d, n), fastStep = hn::Set(d, T{1});
    const V all = hn::Set(d, n * n + n + 1);
    const V first =
        hn::IfThenElse(hn::Eq(slow, largest), slowStep, hn::IfThenElse(hn::Eq(middle, largest), middleStep, fastStep));
    const V missing =
        hn::IfThenElse(hn::Eq(fast, least), fastStep, hn::IfThenElse(hn::Eq(middle, least), middleStep, slowStep));
    return {{hn::Sub(hn::Set(d, T{1}), largest), hn::Sub(largest, between), hn::Sub(between, least), least},
            first,
            hn::Sub(all, missing)};
}

/// Where the pixels of a block lie, as numbers of type T in the padded lattice.
template <class T>
struct Cells {
    alignas(64) std::int32_t offsets[blockSize];
    alignas(64) T fractions[3][blockSize];  ///< By axis of the lattice.
};

/// The same, in tetrahedra.
template <class T>
struct TetrahedralCells {
    alignas(64) std::int32_t offsets[3][blockSize];  ///< Of the lowest corner, the first and the second after it.
    alignas(64) T weights[4][blockSize];
};

// Exact: doubles, in the order of operations of the portable code.

HWY_INLINE void storeEntryOffsets(hn::Vec<Doubles> entries, std::int32_t* offsets) {
    const hn::Rebind<std::int32_t, Doubles> narrow;
    const auto numbers = hn::DemoteTo(narrow, entries);
    hn::StoreU(hn::ShiftLeft<2>(numbers), narrow, offsets);
}

/// Locates half a group. The numbers of entries are exact in doubles.
HWY_INLINE void locateExactly(const LutPlan& plan, const hn::Vec<Doubles> (&numbers)[3], std::size_t first,
                              Cells<double>& cells) {
    const Doubles d;
    auto entry = hn::Zero(d);
    for (std::size_t channel = 0; channel < 3; ++channel) {
        const LutAxis& axis = plan.axes[channel];
        auto number = hn::Mul(numbers[channel], hn::Set(d, plan.inputFactor));
        const auto low = hn::Set(d, axis.low), high = hn::Set(d, axis.high);
        number = hn::IfThenElse(hn::Ge(number, low), number, low);
        number = hn::IfThenElse(hn::Gt(number, high), high, number);
        number = hn::Sub(number, hn::Set(d, axis.offset));
        if (axis.span != 1) number = hn::Div(number, hn::Set(d, axis.span));
        const auto at = hn::Mul(number, hn::Set(d, axis.factor));
        const auto cell = hn::Set(d, static_cast<double>(plan.pointCount - 2));
        const auto lower = hn::IfThenElse(hn::Ge(at, hn::Set(d, 1.0)), hn::Min(hn::Trunc(at), cell), hn::Zero(d));
        hn::Store(hn::Sub(at, lower), d, cells.fractions[plan.weighedAxes[channel]] + first);
        entry = hn::Add(entry, hn::Mul(lower, hn::Set(d, static_cast<double>(plan.strides[channel]))));
    }
    storeEntryOffsets(entry, cells.offsets + first);
}

template <class Sample>
HWY_INLINE void locateCodes(const LutPlan& plan, const Samples<Sample>& samples, std::size_t count,
                            Cells<double>& cells) {
    const LutPosition* const tables[] = {plan.codePositions[0].data(), plan.codePositions[1].data(),
                                         plan.codePositions[2].data()};
    double* const fractions[] = {cells.fractions[plan.weighedAxes[0]], cells.fractions[plan.weighedAxes[1]],
                                 cells.fractions[plan.weighedAxes[2]]};
    const std::size_t largest = plan.codePositions[0].size() - 1;
    for (std::size_t i = 0; i < count; ++i) {
        std::uint32_t entry = 0;
        for (std::size_t channel = 0; channel < 3; ++channel) {
            const std::size_t code = samples.channels[channel][i * samples.stride];
            const LutPosition& position = tables[channel][std::min(code, largest)];
            entry += position.entry;
            fractions[channel][i] = position.fraction;
        }
        cells.offsets[i] = static_cast<std::int32_t>(entry * LutPlan::entryWidth);
    }
}

HWY_INLINE hn::Vec<Doubles> blendExactly(hn::Vec<Doubles> a, hn::Vec<Doubles> b, hn::Vec<Doubles> fraction,
                                         hn::Vec<Doubles> rest) {
    return hn::Add(hn::Mul(rest, a), hn::Mul(fraction, b));
}

HWY_ATTR inline void blendTrilinearExactly(const LutPlan& plan, const Cells<double>& cells, std::size_t count,
                                           double* colors) {
    const Doubles d;
    const std::size_t width = LutPlan::entryWidth, middle = plan.pointCount * width, slow = middle * plan.pointCount;
    const auto one = hn::Set(d, 1.0);
    for (std::size_t i = 0; i < count; ++i) {
        const double* const at = plan.lattice.data() + cells.offsets[i];
        const auto slowFraction = hn::Set(d, cells.fractions[LutPlan::slow][i]);
        const auto slowRest = hn::Sub(one, slowFraction);
        const auto middleFraction = hn::Set(d, cells.fractions[LutPlan::middle][i]);
        const auto fastFraction = hn::Set(d, cells.fractions[LutPlan::fast][i]);
        const auto fastRest = hn::Sub(one, fastFraction);
        const auto alongSlow = [&](std::size_t offset) HWY_ATTR {
            return blendExactly(hn::LoadU(d, at + offset), hn::LoadU(d, at + slow + offset), slowFraction, slowRest);
        };
        const auto alongFast = [&](std::size_t offset) HWY_ATTR {
            return blendExactly(alongSlow(offset), alongSlow(offset + width), fastFraction, fastRest);
        };
        const auto color = blendExactly(alongFast(0), alongFast(middle), middleFraction, hn::Sub(one, middleFraction));
        hn::StoreU(color, d, colors + i * width);
    }
}

HWY_ATTR inline void blendTetrahedralExactly(const LutPlan& plan, const Cells<double>& cells, std::size_t count,
                                             double* colors) {
    const Doubles d;
    const std::size_t width = LutPlan::entryWidth, n = plan.pointCount;
    TetrahedralCells<double> tetrahedra;
    for (std::size_t i = 0; i < count; i += halfGroup) {
        const auto shape = tetrahedronOf(d, hn::Load(d, cells.fractions[LutPlan::slow] + i),
                                         hn::Load(d, cells.fractions[LutPlan::middle] + i),
                                         hn::Load(d, cells.fractions[LutPlan::fast] + i), plan);
        for (std::size_t k = 0; k < 4; ++k) hn::Store(shape.weights[k], d, tetrahedra.weights[k] + i);
        storeEntryOffsets(shape.first, tetrahedra.offsets[1] + i);
        storeEntryOffsets(shape.second, tetrahedra.offsets[2] + i);
    }
    for (std::size_t i = 0; i < count; ++i) {
        const double* const at = plan.lattice.data() + cells.offsets[i];
        const auto weighed = [&](std::size_t corner, const double* entry) HWY_ATTR {
            return hn::Mul(hn::Set(d, tetrahedra.weights[corner][i]), hn::LoadU(d, entry));
        };
        auto color = hn::Add(weighed(0, at), weighed(1, at + tetrahedra.offsets[1][i]));
        color = hn::Add(color, weighed(2, at + tetrahedra.offsets[2][i]));
        color = hn::Add(color, weighed(3, at + (n * n + n + 1) * width));
        hn::StoreU(color, d, colors + i * width);
    }
}

HWY_ATTR inline void lookUpBlock(const LutPlan& plan, const ConstPixelBuffer& source, std::size_t row,
                                 std::size_t column, std::size_t count, PlainLutKernel::Block& colors) {
    Cells<double> cells;
    if (source.format() == SampleFormat::float32) {
        const auto locate = [&](std::size_t first, const Colors& pixels) HWY_ATTR {
            const Doubles d;
            const hn::Half<Floats> half;
            const hn::Vec<Doubles> lower[] = {hn::PromoteTo(d, hn::LowerHalf(half, pixels.r)),
                                              hn::PromoteTo(d, hn::LowerHalf(half, pixels.g)),
                                              hn::PromoteTo(d, hn::LowerHalf(half, pixels.b))};
            const hn::Vec<Doubles> upper[] = {hn::PromoteTo(d, hn::UpperHalf(half, pixels.r)),
                                              hn::PromoteTo(d, hn::UpperHalf(half, pixels.g)),
                                              hn::PromoteTo(d, hn::UpperHalf(half, pixels.b))};
            locateExactly(plan, lower, first, cells);
            locateExactly(plan, upper, first + halfGroup, cells);
        };
        forEachGroup(samplesOf<float>(source, row, column), count, locate);
    } else if (source.format() == SampleFormat::unsigned8) {
        locateCodes(plan, samplesOf<std::uint8_t>(source, row, column), count, cells);
    } else {
        locateCodes(plan, samplesOf<std::uint16_t>(source, row, column), count, cells);
    }
    if (plan.settings.blending == LutBlending::tetrahedral) {
        blendTetrahedralExactly(plan, cells, count, colors);
    } else {
        blendTrilinearExactly(plan, cells, count, colors);
    }
}

// Fast: single precision.

/// One channel's axis, in vectors; the stride counts entries.
struct FastAxis {
    FloatVector high, scale, scaleTail, stride;
};

HWY_INLINE FastAxis fastAxisOf(const LutPlan& plan, std::size_t channel) {
    const Floats d;
    return {hn::Set(d, plan.single.high[channel]), hn::Set(d, plan.single.scale[channel]),
            hn::Set(d, plan.single.scaleTail[channel]), hn::Set(d, static_cast<float>(plan.strides[channel]))};
}

/// The lower point; `fraction` gets the rest. The position is rounded, which near a whole number may be across it; the
/// fraction is not, thanks to the fused operations.
template <class Sample>
HWY_INLINE FloatVector locateFast(FloatVector number, const FastAxis& axis, FloatVector cell, FloatVector& fraction) {
    const Floats d;
    FloatVector limited = hn::Min(number, axis.high);
    if constexpr (std::is_same_v<Sample, float>) {
        limited = hn::IfThenElseZero(hn::Gt(number, hn::Zero(d)), limited);  // NaN too
    }
    const FloatVector lower = hn::Min(hn::Floor(hn::Mul(limited, axis.scale)), cell);
    fraction = hn::MulAdd(limited, axis.scaleTail, hn::MulSub(limited, axis.scale, lower));
    const FloatVector across = hn::IfThenElseZero(hn::Lt(fraction, hn::Zero(d)), hn::Set(d, 1.0F));
    fraction = hn::Add(fraction, across);
    return hn::Sub(lower, across);
}

template <class Sample>
HWY_INLINE void locateBlock(const LutPlan& plan, const Samples<Sample>& samples, std::size_t count,
                            Cells<float>& cells) {
    using Plain = std::remove_const_t<Sample>;
    const Floats d;
    const FastAxis red = fastAxisOf(plan, 0), green = fastAxisOf(plan, 1), blue = fastAxisOf(plan, 2);
    const FloatVector cell = hn::Set(d, static_cast<float>(plan.pointCount - 2));
    float* const redFractions = cells.fractions[plan.weighedAxes[0]];
    float* const greenFractions = cells.fractions[plan.weighedAxes[1]];
    float* const blueFractions = cells.fractions[plan.weighedAxes[2]];
    const auto locate = [&](std::size_t first, const Colors& pixels) HWY_ATTR {
        FloatVector redFraction, greenFraction, blueFraction;
        // Numbers of entries are exact: a lattice has no more of them than single precision has whole numbers (2^24).
        FloatVector entry = hn::Mul(locateFast<Plain>(pixels.r, red, cell, redFraction), red.stride);
        entry = hn::MulAdd(locateFast<Plain>(pixels.g, green, cell, greenFraction), green.stride, entry);
        entry = hn::MulAdd(locateFast<Plain>(pixels.b, blue, cell, blueFraction), blue.stride, entry);
        hn::Store(hn::ShiftLeft<2>(hn::ConvertTo(Ints(), entry)), Ints(), cells.offsets + first);
        hn::Store(redFraction, d, redFractions + first);
        hn::Store(greenFraction, d, greenFractions + first);
        hn::Store(blueFraction, d, blueFractions + first);
    };
    forEachGroup(samples, count, locate);
}

HWY_INLINE FloatVector blendFast(FloatVector a, FloatVector b, FloatVector fraction) {
    return hn::MulAdd(fraction, hn::Sub(b, a), a);
}

/// A pixel's cell blended along the slow and the middle axis: the colours at both of its points on the fast axis.
HWY_INLINE FloatVector blendToFastAxis(const float* lattice, std::size_t slow, std::size_t middle,
                                       const Cells<float>& cells, std::size_t i) {
    const Floats d;
    // A vector holds an entry and its neighbour on the fast axis.
    const float* const at = lattice + cells.offsets[i];
    const auto slowFraction = hn::Set(d, cells.fractions[LutPlan::slow][i]);
    const auto near = blendFast(hn::LoadU(d, at), hn::LoadU(d, at + slow), slowFraction);
    const auto far = blendFast(hn::LoadU(d, at + middle), hn::LoadU(d, at + slow + middle), slowFraction);
    return blendFast(near, far, hn::Set(d, cells.fractions[LutPlan::middle][i]));
}

/// Blends the pixels of a block and hands their colours, four floats each, to `put(pixel, colours)` in pairs; behind an odd
/// last one stands a colour that means nothing.
template <class Put>
HWY_INLINE void blendTrilinear(const LutPlan& plan, const Cells<float>& cells, std::size_t count, const Put& put) {
    const Floats d;
    const hn::Half<Floats> half;
    const std::size_t middle = plan.pointCount * LutPlan::entryWidth, slow = middle * plan.pointCount;
    const float* const lattice = plan.single.lattice.data();
    const float* const fastFractions = cells.fractions[LutPlan::fast];
    for (std::size_t i = 0; i < count; i += 2) {
        const auto one = blendToFastAxis(lattice, slow, middle, cells, i);
        const auto other = blendToFastAxis(lattice, slow, middle, cells, i + 1);
        const auto fraction = hn::Combine(d, hn::Set(half, fastFractions[i + 1]), hn::Set(half, fastFractions[i]));
        put(i, blendFast(hn::ConcatLowerLower(d, other, one), hn::ConcatUpperUpper(d, other, one), fraction));
    }
}

/// A pixel's four corners, weighed.
HWY_INLINE hn::Vec<hn::Half<Floats>> blendCorners(const float* lattice, std::size_t opposite, const Cells<float>& cells,
                                                  const TetrahedralCells<float>& tetrahedra, std::size_t i) {
    const hn::Half<Floats> d;
    const float* const at = lattice + cells.offsets[i];
    auto color = hn::Mul(hn::Set(d, tetrahedra.weights[0][i]), hn::LoadU(d, at));
    color = hn::MulAdd(hn::Set(d, tetrahedra.weights[1][i]), hn::LoadU(d, lattice + tetrahedra.offsets[1][i]), color);
    color = hn::MulAdd(hn::Set(d, tetrahedra.weights[2][i]), hn::LoadU(d, lattice + tetrahedra.offsets[2][i]), color);
    return hn::MulAdd(hn::Set(d, tetrahedra.weights[3][i]), hn::LoadU(d, at + opposite), color);
}

template <class Put>
HWY_INLINE void blendTetrahedral(const LutPlan& plan, const Cells<float>& cells, std::size_t count, const Put& put) {
    const Floats d;
    const Ints di;
    TetrahedralCells<float> tetrahedra;
    for (std::size_t i = 0; i < count; i += groupSize) {
        const auto shape = tetrahedronOf(d, hn::Load(d, cells.fractions[LutPlan::slow] + i),
                                         hn::Load(d, cells.fractions[LutPlan::middle] + i),
                                         hn::Load(d, cells.fractions[LutPlan::fast] + i), plan);
        for (std::size_t k = 0; k < 4; ++k) hn::Store(shape.weights[k], d, tetrahedra.weights[k] + i);
        const auto lowest = hn::Load(di, cells.offsets + i);
        const auto offset = [&](FloatVector entry)
                                HWY_ATTR { return hn::Add(lowest, hn::ShiftLeft<2>(hn::ConvertTo(di, entry))); };
        hn::Store(offset(shape.first), di, tetrahedra.offsets[1] + i);
        hn::Store(offset(shape.second), di, tetrahedra.offsets[2] + i);
    }
    const float* const lattice = plan.single.lattice.data();
    const std::size_t n = plan.pointCount, opposite = (n * n + n + 1) * LutPlan::entryWidth;
    for (std::size_t i = 0; i < count; i += 2) {
        put(i, hn::Combine(d, blendCorners(lattice, opposite, cells, tetrahedra, i + 1),
                           blendCorners(lattice, opposite, cells, tetrahedra, i)));
    }
}

template <class Put>
HWY_INLINE void blendBlock(const LutPlan& plan, const Cells<float>& cells, std::size_t count, const Put& put) {
    if (plan.settings.blending == LutBlending::tetrahedral) {
        blendTetrahedral(plan, cells, count, put);
    } else {
        blendTrilinear(plan, cells, count, put);
    }
}

/// How colours become samples of a destination.
struct Limits {
    explicit Limits(const LutPlan& plan) : outputLimit(plan.single.outputLimit), areNeeded(plan.single.needsLimits) {}
    float outputLimit;
    bool areNeeded;
};

/// Colours as whole numbers in the low 16 bits; what is above means nothing.
template <class D, class V>
HWY_INLINE hn::Vec<hn::RebindToSigned<D>> toCodes(D d, const Limits& limits, V colors) {
    if (limits.areNeeded) colors = hn::Min(hn::Max(colors, hn::Zero(d)), hn::Set(d, limits.outputLimit));
    // Numbers at 2^23 have no fraction left, and what is below it stands in their low bits.
    return hn::BitCast(hn::RebindToSigned<D>(), hn::Add(colors, hn::Set(d, 8388608.0F)));
}

template <class Narrow, class V>
HWY_INLINE hn::Vec<Narrow> toSamples(const Limits& limits, V colors) {
    if constexpr (std::is_same_v<hn::TFromD<Narrow>, float>) {
        return colors;
    } else {
        const hn::Rebind<float, Narrow> d;
        const hn::RebindToSigned<decltype(d)> di;
        return hn::DemoteTo(Narrow(), hn::And(toCodes(d, limits, colors), hn::Set(di, 0xFFFF)));
    }
}

/// Two pixels as samples of a destination, each for itself.
template <class Sample>
struct Pixels {
    hn::Vec<hn::Rebind<Sample, hn::Half<Floats>>> first, second;
};

template <class Sample>
HWY_INLINE Pixels<Sample> toPixels(const Limits& limits, FloatVector colors) {
    if constexpr (sizeof(Sample) == 2) {
        // Within its half of the vector each pixel moves to the front at once.
        alignas(16) constexpr std::uint8_t lowBytes[] = {0, 1, 4, 5, 8, 9, 12, 13, 0, 1, 4, 5, 8, 9, 12, 13};
        const hn::Repartition<std::uint8_t, Floats> bytes;
        const hn::Repartition<Sample, Floats> all;
        const hn::Half<decltype(all)> half;
        const auto codes = hn::BitCast(bytes, toCodes(Floats(), limits, colors));
        const auto samples = hn::BitCast(all, hn::TableLookupBytes(codes, hn::LoadDup128(bytes, lowBytes)));
        const hn::Half<decltype(half)> pixel;
        return {hn::LowerHalf(pixel, hn::LowerHalf(half, samples)), hn::LowerHalf(pixel, hn::UpperHalf(half, samples))};
    } else {
        const hn::Rebind<Sample, hn::Half<Floats>> half;
        const auto samples = toSamples<hn::Rebind<Sample, Floats>>(limits, colors);
        return {hn::LowerHalf(half, samples), hn::UpperHalf(half, samples)};
    }
}

/// Writes pixels with alpha, which is taken from `alphaFrom`. A functor, because lambdas are not always inlined.
template <class Sample>
struct PutWithAlpha {
    using Pair = hn::Rebind<Sample, Floats>;
    Limits limits;
    Sample* first;
    const Sample* alphaFrom;
    std::size_t count;

    HWY_INLINE void operator()(std::size_t i, FloatVector colors) const {
        const Pair d;
        const hn::Half<Pair> half;
        const hn::RebindToUnsigned<Pair> bits;
        const auto fourth = hn::Eq(hn::And(hn::Iota(bits, 0), hn::Set(bits, 3)), hn::Set(bits, 3));
        const auto isAlpha = hn::BitCast(d, hn::VecFromMask(bits, fourth));
        const auto samples = toSamples<Pair>(limits, colors);
        if (i + 1 < count) {
            hn::StoreU(hn::IfVecThenElse(isAlpha, hn::LoadU(d, alphaFrom + i * 4), samples), d, first + i * 4);
        } else {
            const auto alpha = hn::LoadU(half, alphaFrom + i * 4);
            const auto pixel = hn::IfVecThenElse(hn::LowerHalf(half, isAlpha), alpha, hn::LowerHalf(half, samples));
            hn::StoreU(pixel, half, first + i * 4);
        }
    }
};

/// Writes pixels without alpha. Each colour is written with a fourth sample, which the next one overwrites; the last ones
/// take a detour.
template <class Sample>
struct PutInterleaved {
    Limits limits;
    Sample* first;
    std::size_t count;

    HWY_INLINE void operator()(std::size_t i, FloatVector colors) const {
        const hn::Rebind<Sample, hn::Half<Floats>> d;
        const Pixels<Sample> pixels = toPixels<Sample>(limits, colors);
        Sample* const at = first + i * 3;
        if (i + 2 < count) {
            hn::StoreU(pixels.first, d, at);
            hn::StoreU(pixels.second, d, at + 3);
        } else {
            alignas(16) Sample last[LutPlan::entryWidth];
            hn::Store(pixels.first, d, last);
            std::memcpy(at, last, 3 * sizeof(Sample));
            hn::Store(pixels.second, d, last);
            if (i + 1 < count) std::memcpy(at + 3, last, 3 * sizeof(Sample));
        }
    }
};

/// Keeps the colours as they are.
struct PutColors {
    float* first;

    HWY_INLINE void operator()(std::size_t i, FloatVector colors) const {
        hn::Store(colors, Floats(), first + i * LutPlan::entryWidth);
    }
};

/// Samples in planes are made of groups of colours.
template <class Sample>
HWY_INLINE void blendPlanar(const LutPlan& plan, const Cells<float>& cells, const Samples<Sample>& to,
                            std::size_t count) {
    using Group = hn::Rebind<Sample, Floats>;
    const Group d;
    const Limits limits(plan);
    alignas(64) float blended[blockSize * LutPlan::entryWidth];
    blendBlock(plan, cells, count, PutColors{blended});
    for (std::size_t i = 0; i < count; i += groupSize) {
        FloatVector planes[3], unused;
        hn::LoadInterleaved4(Floats(), blended + i * LutPlan::entryWidth, planes[0], planes[1], planes[2], unused);
        for (std::size_t channel = 0; channel < 3; ++channel) {
            const auto samples = toSamples<Group>(limits, planes[channel]);
            if (i + groupSize <= count) {
                hn::StoreU(samples, d, to.channels[channel] + i);
                continue;
            }
            alignas(32) Sample last[groupSize];
            hn::Store(samples, d, last);
            std::memcpy(to.channels[channel] + i, last, (count - i) * sizeof(Sample));
        }
    }
}

template <class From, class To>
HWY_INLINE void applyFastBlock(const LutPlan& plan, const ConstPixelBuffer& source, const PixelBuffer& destination,
                               std::size_t row, std::size_t column, std::size_t count) {
    const auto from = samplesOf<From>(source, row, column);
    const auto to = samplesOf<To>(destination, row, column);
    // Alpha of the same kind is written along with the colours, any other before them.
    const bool isSameKind = source.format() == destination.format() && from.stride == 4 && to.stride == 4;
    if (!isSameKind) PlainLutKernel::storeAlpha(source, destination, row, column, count);
    Cells<float> cells;
    locateBlock(plan, from, count, cells);
    if (to.stride == 1) {
        blendPlanar(plan, cells, to, count);
    } else if (to.stride == 3) {
        blendBlock(plan, cells, count, PutInterleaved<To>{Limits(plan), to.channels[0], count});
    } else {
        const To* alphaFrom = to.channels[0];
        if constexpr (std::is_same_v<From, To>) alphaFrom = isSameKind ? from.channels[0] : alphaFrom;
        blendBlock(plan, cells, count, PutWithAlpha<To>{Limits(plan), to.channels[0], alphaFrom, count});
    }
}

template <class From, class To>
HWY_INLINE void applyFastBlocks(const LutPlan& plan, const ConstPixelBuffer& source, const PixelBuffer& destination,
                                std::size_t row) {
    const std::size_t width = source.width();
    for (std::size_t column = 0; column < width; column += blockSize) {
        applyFastBlock<From, To>(plan, source, destination, row, column, std::min(blockSize, width - column));
    }
}

HWY_ATTR inline void applyFastRow(const LutPlan& plan, const ConstPixelBuffer& source, const PixelBuffer& destination,
                                  std::size_t row) {
    const auto withDestination = [&]<class From>(From) HWY_ATTR {
        switch (byteCount(destination.format())) {
            case 1: return applyFastBlocks<From, std::uint8_t>(plan, source, destination, row);
            case 2: return applyFastBlocks<From, std::uint16_t>(plan, source, destination, row);
            default: return applyFastBlocks<From, float>(plan, source, destination, row);
        }
    };
    switch (byteCount(source.format())) {
        case 1: return withDestination(std::uint8_t{});
        case 2: return withDestination(std::uint16_t{});
        default: return withDestination(float{});
    }
}

#endif

}  // namespace corvex::inline v0::VectorLutKernel::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

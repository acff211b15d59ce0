#include <Corvex/lut/ThreeDimensionalLutInterpolator.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include <Corvex/platform/Rounding.h>

namespace corvex::inline v0 {
namespace {

/// Where an input lies on an axis: between which points, and how far from the lower one.
struct AxisPosition {
    std::size_t lower, upper;
    double fraction;
};

AxisPosition positionOf(double value, const ThreeDimensionalLutCube& cube) noexcept {
    if (value > cube.highValue()) {
        value = cube.highValue();
    } else if (value < cube.lowValue()) {
        value = cube.lowValue();
    }
    const auto last = static_cast<std::int64_t>(cube.faceSize()) - 1;
    const double position = value / cube.highValue() * static_cast<double>(last);
    const std::int64_t whole = checkedInt64(position);
    const std::int64_t lower = whole < 0 ? 0 : std::min(whole, last);
    const std::int64_t upper = std::min(lower + 1, last);
    return {static_cast<std::size_t>(lower), static_cast<std::size_t>(upper), position - static_cast<double>(lower)};
}

constexpr double blend(double a, double b, double fraction) noexcept { return (1.0 - fraction) * a + fraction * b; }

RGB<double> blend(const RGB<double>& a, const RGB<double>& b, double fraction) noexcept {
    return {blend(a.r, b.r, fraction), blend(a.g, b.g, fraction), blend(a.b, b.b, fraction)};
}

}  // namespace

ThreeDimensionalLutInterpolator::~ThreeDimensionalLutInterpolator() = default;

RGB<double> TrilinearLutInterpolator::interpolate(const ThreeDimensionalLutCube& cube,
                                                  const RGB<double>& input) const noexcept {
    const std::size_t face = cube.faceSize();
    require(face > 0, "an empty cube has no colours");
    const auto red = positionOf(input.r, cube);
    const auto green = positionOf(input.g, cube);
    const auto blue = positionOf(input.b, cube);
    const auto lattice = cube.lattice();
    const auto alongRed = [&](std::size_t greenIndex, std::size_t blueIndex) {
        const std::size_t offset = greenIndex * face + blueIndex;
        const LutValueTriplet& a = lattice[red.lower * face * face + offset];
        const LutValueTriplet& b = lattice[red.upper * face * face + offset];
        return blend({a.first, a.second, a.third}, {b.first, b.second, b.third}, red.fraction);
    };
    // Crossed on purpose: green's fraction between the blue indices, blue's fraction between the green ones.
    const auto lower = blend(alongRed(green.lower, blue.lower), alongRed(green.lower, blue.upper), green.fraction);
    const auto upper = blend(alongRed(green.upper, blue.lower), alongRed(green.upper, blue.upper), green.fraction);
    return blend(lower, upper, blue.fraction);
}

}  // namespace corvex::inline v0

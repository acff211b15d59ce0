#pragma once

#include <Corvex/lut/LutCube.h>
#include <Corvex/lut/LutValueTriplet.h>
#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

/// Finds the colour of a cube at a point between its entries. Stateless, or at least safe from several threads at once:
/// converters share one.
class CORVEX_EXPORT ThreeDimensionalLutInterpolator {
public:
    virtual ~ThreeDimensionalLutInterpolator();

    /// `input` is in the units of the cube's values. A position that is not finite, or is beyond 64 bits, stops the
    /// process: NaN, or a cube whose high value is 0.
    [[nodiscard]] virtual RGB<double> interpolate(const ThreeDimensionalLutCube& cube,
                                                  const RGB<double>& input) const noexcept = 0;

protected:
    ThreeDimensionalLutInterpolator() = default;
    ThreeDimensionalLutInterpolator(const ThreeDimensionalLutInterpolator&) = default;
    ThreeDimensionalLutInterpolator(ThreeDimensionalLutInterpolator&&) = default;
    ThreeDimensionalLutInterpolator& operator=(const ThreeDimensionalLutInterpolator&) = default;
    ThreeDimensionalLutInterpolator& operator=(ThreeDimensionalLutInterpolator&&) = default;
};

/// Blends the eight entries around a point. Two habits of it are kept on purpose: a position is the input over the high
/// value alone, not over the span from low to high; and the fraction of green weighs along the blue axis, that of blue
/// along the green axis. Stateless; any thread.
class CORVEX_EXPORT TrilinearLutInterpolator final : public ThreeDimensionalLutInterpolator {
public:
    [[nodiscard]] RGB<double> interpolate(const ThreeDimensionalLutCube& cube,
                                          const RGB<double>& input) const noexcept override;
};

// Other kinds of interpolation, by name only.
class TetrahedralLutInterpolator;
class PrismLutInterpolator;
class PyramidLutInterpolator;

}  // namespace corvex::inline v0

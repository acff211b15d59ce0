#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <utility>

#include <Corvex/lut/LutCube.h>
#include <Corvex/lut/RGBSampleConverter.h>
#include <Corvex/lut/ThreeDimensionalLutInterpolator.h>
#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

/// A cube and the interpolator that it is sampled with. Moving it moves no entries, and leaves a converter that may
/// only be destroyed.
class CORVEX_EXPORT ThreeDimensionalSampleConverter : public RGBSampleConverter {
public:
    ~ThreeDimensionalSampleConverter() override;
    ThreeDimensionalSampleConverter(const ThreeDimensionalSampleConverter&) = delete;
    ThreeDimensionalSampleConverter& operator=(const ThreeDimensionalSampleConverter&) = delete;

    /// Valid as long as the converter.
    [[nodiscard]] const LutCube& cube() const noexcept { return cube_; }
    /// Valid as long as the converter.
    [[nodiscard]] const ThreeDimensionalLutInterpolator& interpolator() const noexcept { return *interpolator_; }

protected:
    ThreeDimensionalSampleConverter(ThreeDimensionalSampleConverter&&) = default;
    /// `interpolator` must not be null.
    ThreeDimensionalSampleConverter(LutCube cube, std::shared_ptr<const ThreeDimensionalLutInterpolator> interpolator);

    /// The colour at a point, in the units of the cube's values. Costs one look-up of eight entries; nothing allocates.
    [[nodiscard]] RGB<double> interpolate(const RGB<double>& input) const noexcept {
        return interpolator_->interpolate(cube_, input);
    }

private:
    LutCube cube_;
    /// Shared, as interpolators hold nothing of a cube.
    std::shared_ptr<const ThreeDimensionalLutInterpolator> interpolator_;
};

/// For cubes of whole code values. The largest entry stands for the top of the input, whatever the depth's full scale:
/// a cube of 10 bits whose largest value is 1000 answers 1000 and everything above with its last point.
class CORVEX_EXPORT Integer3DSampleConverter final : public ThreeDimensionalSampleConverter {
public:
    /// `bitDepth` is that of the cube's values, from 1; it is not checked against them.
    /// `interpolator` must not be null.
    Integer3DSampleConverter(LutCube cube, std::shared_ptr<const ThreeDimensionalLutInterpolator> interpolator,
                             std::int64_t bitDepth)
        : ThreeDimensionalSampleConverter(std::move(cube), std::move(interpolator)), bitDepth_(bitDepth) {}
    Integer3DSampleConverter(Integer3DSampleConverter&&) = default;
    ~Integer3DSampleConverter() override;

    /// That of the table's values.
    [[nodiscard]] std::int64_t bitDepth() const noexcept { return bitDepth_; }

    [[nodiscard]] RGB<std::uint64_t> sample(const RGB<std::uint64_t>& input, std::int64_t inputBitDepth,
                                            std::int64_t outputBitDepth,
                                            AnswerDepth answerDepth) const noexcept override;
    [[nodiscard]] std::string_view className() const noexcept override { return "Integer3DSampleConverter"; }

private:
    std::int64_t bitDepth_;
};

/// For cubes of which 1.0 is full scale: code values are divided by the largest of their depth, and answers multiplied
/// by it. (0, 0, 0) where a depth is below 1 or above 63.
class CORVEX_EXPORT NormalizedFloatingPoint3DSampleConverter final : public ThreeDimensionalSampleConverter {
public:
    /// `interpolator` must not be null.
    NormalizedFloatingPoint3DSampleConverter(LutCube cube,
                                             std::shared_ptr<const ThreeDimensionalLutInterpolator> interpolator)
        : ThreeDimensionalSampleConverter(std::move(cube), std::move(interpolator)) {}
    NormalizedFloatingPoint3DSampleConverter(NormalizedFloatingPoint3DSampleConverter&&) = default;
    ~NormalizedFloatingPoint3DSampleConverter() override;

    [[nodiscard]] RGB<std::uint64_t> sample(const RGB<std::uint64_t>& input, std::int64_t inputBitDepth,
                                            std::int64_t outputBitDepth,
                                            AnswerDepth answerDepth) const noexcept override;
    [[nodiscard]] std::string_view className() const noexcept override {
        return "NormalizedFloatingPoint3DSampleConverter";
    }
};

}  // namespace corvex::inline v0

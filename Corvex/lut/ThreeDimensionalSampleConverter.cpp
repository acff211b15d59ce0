#include <Corvex/lut/ThreeDimensionalSampleConverter.h>

#include <Corvex/lut/BitDepth.h>
#include <Corvex/platform/Checked.h>

namespace corvex::inline v0 {

RGBSampleConverter::~RGBSampleConverter() = default;
ThreeDimensionalSampleConverter::~ThreeDimensionalSampleConverter() = default;
Integer3DSampleConverter::~Integer3DSampleConverter() = default;
NormalizedFloatingPoint3DSampleConverter::~NormalizedFloatingPoint3DSampleConverter() = default;

ThreeDimensionalSampleConverter::ThreeDimensionalSampleConverter(
    LutCube cube, std::shared_ptr<const ThreeDimensionalLutInterpolator> interpolator)
    : cube_(std::move(cube)), interpolator_(std::move(interpolator)) {
    require(interpolator_ != nullptr, "a converter needs an interpolator");
}

RGB<std::uint64_t> Integer3DSampleConverter::sample(const RGB<std::uint64_t>& input, std::int64_t inputBitDepth,
                                                    std::int64_t outputBitDepth,
                                                    AnswerDepth answerDepth) const noexcept {
    const auto result = interpolate(mapped(input, [&](std::uint64_t value) {
        return static_cast<double>(normalizedUnsignedInteger(value, inputBitDepth, bitDepth_));
    }));
    const std::int64_t depth = answerDepth == AnswerDepth::input ? inputBitDepth : outputBitDepth;
    return mapped(result, [&](double value) {
        return normalizedUnsignedInteger(checkedUnsignedInteger(value), bitDepth_, depth);
    });
}

RGB<std::uint64_t> NormalizedFloatingPoint3DSampleConverter::sample(const RGB<std::uint64_t>& input,
                                                                    std::int64_t inputBitDepth,
                                                                    std::int64_t outputBitDepth,
                                                                    AnswerDepth answerDepth) const noexcept {
    const auto inputMaximum = static_cast<double>(largestCodeValue(inputBitDepth));
    const std::int64_t depth = answerDepth == AnswerDepth::input ? inputBitDepth : outputBitDepth;
    const auto outputMaximum = static_cast<double>(largestCodeValue(depth));
    if (inputMaximum <= 0 || outputMaximum <= 0) return {};
    const auto result =
        interpolate(mapped(input, [&](std::uint64_t value) { return static_cast<double>(value) / inputMaximum; }));
    return mapped(result, [&](double value) { return checkedUnsignedInteger(value * outputMaximum); });
}

}  // namespace corvex::inline v0

#include <Corvex/timing/FrameRateError.h>

#include <string>

#include <Corvex/platform/DoubleText.h>

namespace corvex::inline v0 {
namespace {

struct Message {
    std::string operator()(const FrameRateError::InvalidNumericFrameRate& error) const {
        return "no frame rate: " + defaultText(error.value);
    }
    std::string operator()(const FrameRateError::InvalidRationalComponents& error) const {
        return "no frame rate: " + std::to_string(error.timeValue) + "/" + std::to_string(error.timeScale);
    }
    std::string operator()(const FrameRateError::ApproximationFailure& error) const {
        return "no ratio within " + defaultText(error.tolerance) + " of the frame rate " + defaultText(error.frameRate);
    }
};

}  // namespace

FrameRateError::FrameRateError(const Case& which) : Error(std::visit(Message{}, which)), case_(which) {}

FrameRateError::~FrameRateError() = default;

FrameRateError FrameRateError::invalidNumericFrameRate(double value) {
    return FrameRateError(InvalidNumericFrameRate{value});
}

FrameRateError FrameRateError::invalidRationalComponents(std::int64_t timeValue, std::int64_t timeScale) {
    return FrameRateError(InvalidRationalComponents{timeValue, timeScale});
}

FrameRateError FrameRateError::approximationFailure(double frameRate, double tolerance) {
    return FrameRateError(ApproximationFailure{frameRate, tolerance});
}

}  // namespace corvex::inline v0

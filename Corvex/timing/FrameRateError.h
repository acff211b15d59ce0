#pragma once

#include <cstdint>
#include <utility>
#include <variant>

#include <Corvex/platform/Error.h>

namespace corvex::inline v0 {

/// A number or a pair of numbers that is no frame rate. Equal by case and payload. what() names the numbers.
class CORVEX_EXPORT FrameRateError : public Error {
public:
    /// A number that is no frame rate. For hosts, as the last case is: the library throws the second one alone.
    struct InvalidNumericFrameRate {
        /// Frames per second.
        double value;
        friend bool operator==(const InvalidNumericFrameRate&, const InvalidNumericFrameRate&) = default;
    };
    /// A pair that is no frame rate, as its scale is 0.
    struct InvalidRationalComponents {
        std::int64_t timeValue, timeScale;
        friend bool operator==(const InvalidRationalComponents&, const InvalidRationalComponents&) = default;
    };
    /// No ratio lies within the tolerance of the rate.
    struct ApproximationFailure {
        double frameRate, tolerance;
        friend bool operator==(const ApproximationFailure&, const ApproximationFailure&) = default;
    };
    using Case = std::variant<InvalidNumericFrameRate, InvalidRationalComponents, ApproximationFailure>;

    /// The message names the numbers.
    explicit FrameRateError(const Case& which);
    ~FrameRateError() override;
    FrameRateError(const FrameRateError&) = default;
    FrameRateError& operator=(const FrameRateError&) = default;

    /// An error of that case.
    [[nodiscard]] static FrameRateError invalidNumericFrameRate(double value);
    /// An error of that case.
    [[nodiscard]] static FrameRateError invalidRationalComponents(std::int64_t timeValue, std::int64_t timeScale);
    /// An error of that case.
    [[nodiscard]] static FrameRateError approximationFailure(double frameRate, double tolerance);

    /// The case with its payload.
    [[nodiscard]] const Case& which() const noexcept { return case_; }

    friend bool operator==(const FrameRateError& a, const FrameRateError& b) { return a.case_ == b.case_; }

private:
    Case case_;
};

}  // namespace corvex::inline v0

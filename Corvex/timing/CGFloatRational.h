#pragma once

#include <optional>

#include <Corvex/timing/RatioRepresentable.h>

namespace corvex::inline v0 {

/// A ratio of two lengths in floating point, such as the sides of a view; never reduced. For exact ratios there is
/// NumericRational. Pure value; any thread.
class CGFloatRational {
public:
    /// Any two numbers, also 0 below: what divides by it is infinite or NaN, as floating point has it.
    constexpr CGFloatRational(double numerator, double denominator) noexcept
        : numerator_(numerator), denominator_(denominator) {}

    /// Both as given: a common factor stays.
    [[nodiscard]] constexpr double numerator() const noexcept { return numerator_; }
    [[nodiscard]] constexpr double denominator() const noexcept { return denominator_; }

    /// This ratio divided by `rhs`; none when the divisor's product is exactly 0. NaN and infinity pass through.
    [[nodiscard]] constexpr std::optional<double> safeQuotient(const CGFloatRational& rhs) const noexcept {
        const double divisor = rhs.numerator_ * denominator_;
        if (divisor == 0) return std::nullopt;
        return rhs.denominator_ * numerator_ / divisor;
    }

    /// Numerators and denominators each; neither product is checked for overflow.
    friend constexpr CGFloatRational operator*(const CGFloatRational& a, const CGFloatRational& b) noexcept {
        return {a.numerator_ * b.numerator_, a.denominator_ * b.denominator_};
    }
    /// Crosswise, without a look at the divisor: one of 0 gives a denominator of 0. safeQuotient() looks.
    friend constexpr CGFloatRational operator/(const CGFloatRational& a, const CGFloatRational& b) noexcept {
        return {a.numerator_ * b.denominator_, a.denominator_ * b.numerator_};
    }

private:
    double numerator_;
    double denominator_;
};
static_assert(RatioRepresentable<CGFloatRational>);

}  // namespace corvex::inline v0

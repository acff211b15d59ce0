#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include <Corvex/platform/Checked.h>
#include <Corvex/platform/Object.h>
#include <Corvex/platform/Rounding.h>
#include <Corvex/timing/RatioRepresentable.h>

namespace corvex::inline v0 {

/// An exact ratio of two integers, for scale factors and sizes. A denominator of 0 means undefined. Arithmetic is
/// exact: a product or sum beyond 64 bits stops the process. MediaRational is the one for rates, whose scale is never
/// 0.
/// Codes to JSON as {"numerator": n, "denominator": d}. Pure value; any thread.
class NumericRational {
public:
    /// 0/1, which is defined.
    constexpr NumericRational() noexcept = default;

    /// Both are stored as given, unreduced.
    constexpr NumericRational(std::int64_t numerator, std::int64_t denominator) noexcept
        : numerator_(numerator), denominator_(denominator) {}

    /// Width over height, each without its fraction. A length that is not finite or beyond 64 bits stops the process.
    [[nodiscard]] static constexpr NumericRational fromSize(double width, double height) noexcept {
        return {checkedInt64(width), checkedInt64(height)};
    }

    /// 1 over `value`; undefined for 0.
    [[nodiscard]] static constexpr NumericRational reciprocalOf(std::int64_t value) noexcept { return {1, value}; }

    /// The first convergent h/k, k from a fraction on, of the continued fraction of `value` with |value - h/k| <
    /// epsilon. A whole value is that over 1. Where the expansion ends before it is that close, as it does for an
    /// exactly representable fraction and epsilon 0, the result is 0/0, undefined. What is not finite, and a term
    /// beyond 64 bits, stops the process.
    [[nodiscard]] static constexpr NumericRational fromDouble(double value, double epsilon) noexcept;

    /// As stored: nothing is reduced but by arithmetic.
    [[nodiscard]] constexpr std::int64_t numerator() const noexcept { return numerator_; }
    [[nodiscard]] constexpr std::int64_t denominator() const noexcept { return denominator_; }
    /// Whether it is a number: 1/0 is none, neither is 0/0.
    [[nodiscard]] constexpr bool isDefined() const noexcept { return denominator_ != 0; }

    /// In floating point. Throws MathematicalError (divideByZero) when undefined.
    [[nodiscard]] CORVEX_EXPORT double quotient() const;

    /// This over `rhs` in floating point; none where that divides by 0.
    [[nodiscard]] constexpr std::optional<double> safeDivision(const NumericRational& rhs) const noexcept {
        const NumericRational result = *this / rhs;
        if (!result.isDefined()) return std::nullopt;
        return static_cast<double>(result.numerator_) / static_cast<double>(result.denominator_);
    }

    /// In lowest terms where the signed divisor (`gcd`) comes out positive; a pair for which it is negative stays
    /// unreduced on purpose, and so does an undefined one. 0 is 0/1.
    friend constexpr NumericRational operator*(const NumericRational& a, const NumericRational& b) noexcept {
        return inLowestTerms(checkedMultiply(a.numerator_, b.numerator_),
                             checkedMultiply(a.denominator_, b.denominator_));
    }
    friend constexpr NumericRational operator/(const NumericRational& a, const NumericRational& b) noexcept {
        return inLowestTerms(checkedMultiply(a.numerator_, b.denominator_),
                             checkedMultiply(a.denominator_, b.numerator_));
    }

    /// By value, as the arithmetic reduces: 1/2 equals 2/4, but -2/4 (whose divisor is negative) does not equal -1/2.
    /// All undefined rationals are equal, and equal to no other.
    friend constexpr bool operator==(const NumericRational& a, const NumericRational& b) noexcept {
        if (a.numerator_ == b.numerator_ && a.denominator_ == b.denominator_) return true;
        if (!a.isDefined() || !b.isDefined()) return a.isDefined() == b.isDefined();
        if (a.numerator_ >= 0 && b.numerator_ >= 0 && a.denominator_ > 0 && b.denominator_ > 0) {
            // Without signs every divisor is positive: crosswise products say the same, and need no reduction.
            return Int128{a.numerator_} * b.denominator_ == Int128{b.numerator_} * a.denominator_;
        }
        const NumericRational x = a.inLowestTerms();
        const NumericRational y = b.inLowestTerms();
        return x.numerator_ == y.numerator_ && x.denominator_ == y.denominator_;
    }

    /// Equal rationals have equal hashes.
    [[nodiscard]] constexpr std::size_t hash() const noexcept {
        if (!isDefined()) return 0;
        const NumericRational lowest = inLowestTerms();
        return combinedHash(static_cast<std::size_t>(lowest.numerator_), static_cast<std::size_t>(lowest.denominator_));
    }

    /// Equal in value; what is undefined stays as it is, and so does a pair whose signed divisor is negative.
    [[nodiscard]] constexpr NumericRational inLowestTerms() const noexcept {
        return inLowestTerms(numerator_, denominator_);
    }

private:
    /// What the operators and inLowestTerms() say.
    static constexpr NumericRational inLowestTerms(std::int64_t numerator, std::int64_t denominator) noexcept {
        if (numerator > 0 && denominator > 0) {
            const auto [n, d] = reducedPositive(numerator, denominator);
            return {n, d};
        }
        if (denominator == 0) return {numerator, denominator};
        if (numerator == 0) return {0, 1};
        const std::int64_t common = gcd(numerator, denominator);
        if (common < 2) return {numerator, denominator};
        return {numerator / common, denominator / common};
    }

    std::int64_t numerator_ = 0;
    /// Of either sign; 0 is undefined.
    std::int64_t denominator_ = 1;
};
static_assert(RationalRepresentable<NumericRational>);

constexpr NumericRational NumericRational::fromDouble(double value, double epsilon) noexcept {
    std::int64_t whole = checkedInt64(roundedDown(value));
    if (static_cast<double>(whole) == value) return {whole, 1};
    std::int64_t h = whole;
    std::int64_t k = 1;
    std::int64_t previousH = 1;
    std::int64_t previousK = 0;
    for (double rest = value;;) {
        const double fraction = rest - static_cast<double>(whole);
        if (fraction == 0) return {0, 0};
        rest = 1 / fraction;
        whole = checkedInt64(roundedDown(rest));
        previousH = std::exchange(h, checkedAdd(checkedMultiply(whole, h), previousH));
        previousK = std::exchange(k, checkedAdd(checkedMultiply(whole, k), previousK));
        const double error = value - static_cast<double>(h) / static_cast<double>(k);
        if ((error < 0 ? -error : error) < epsilon) return {h, k};
    }
}

template <class JsonType>
CORVEX_EXPORT void to_json(JsonType& json, const NumericRational& value);
template <class JsonType>
CORVEX_EXPORT void from_json(const JsonType& json, NumericRational& value);

}  // namespace corvex::inline v0

template <>
struct std::hash<corvex::NumericRational> {
    std::size_t operator()(const corvex::NumericRational& value) const noexcept { return value.hash(); }
};

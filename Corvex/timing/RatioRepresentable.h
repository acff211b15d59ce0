#pragma once

#include <concepts>
#include <cstdint>
#include <utility>

#include <Corvex/timing/IntegerUtility.h>

namespace corvex::inline v0 {

/// What has a numerator and a denominator to read, both of one type, as MediaRational, NumericRational and
/// CGFloatRational have.
template <class T>
concept RatioRepresentable = requires(const T& ratio) {
    ratio.numerator();
    { ratio.denominator() } -> std::same_as<decltype(ratio.numerator())>;
};

/// A ratio of two signed 64-bit integers; reduced() takes these.
template <class T>
concept RationalRepresentable = RatioRepresentable<T> && requires(const T& ratio) {
    { ratio.numerator() } -> std::same_as<std::int64_t>;
};

/// Two numbers above 0 over their greatest common divisor: what nearly every reduction is, so it has no other branches.
/// Nothing is checked.
[[nodiscard]] constexpr std::pair<std::int64_t, std::int64_t> reducedPositive(std::int64_t numerator,
                                                                              std::int64_t denominator) noexcept {
    const auto a = static_cast<std::uint64_t>(numerator);
    const auto b = static_cast<std::uint64_t>(denominator);
    const std::uint64_t common = magnitudeGcd(a, b);
    return {static_cast<std::int64_t>(a / common), static_cast<std::int64_t>(b / common)};
}

/// Numerator and denominator over the greatest common divisor of their magnitudes; signs stay where they are.
/// A pair whose divisor is 0 (0/0) or beyond 64 bits comes back as it is.
/// Nothing overflows: a divisor above 1 only makes magnitudes smaller.
template <RationalRepresentable T>
[[nodiscard]] constexpr std::pair<std::int64_t, std::int64_t> reduced(const T& ratio) noexcept {
    const std::int64_t numerator = ratio.numerator();
    const std::int64_t denominator = ratio.denominator();
    if (numerator > 0 && denominator > 0) return reducedPositive(numerator, denominator);
    const std::int64_t common = safeBinaryIntGCD(numerator, denominator).value_or(0);
    if (common == 0) return {numerator, denominator};
    return {numerator / common, denominator / common};
}

}  // namespace corvex::inline v0

#pragma once

#include <concepts>
#include <cstdint>
#include <utility>

#include <Corvex/timing/IntegerUtility.h>

namespace corvex::inline v0 {

/// What has a numerator and a denominator to read.
template <class T>
concept RatioRepresentable = requires(const T& ratio) {
    ratio.numerator();
    { ratio.denominator() } -> std::same_as<decltype(ratio.numerator())>;
};

/// A ratio of two signed 64-bit integers.
template <class T>
concept RationalRepresentable = RatioRepresentable<T> && requires(const T& ratio) {
    { ratio.numerator() } -> std::same_as<std::int64_t>;
};

/// Numerator and denominator over the greatest common divisor of their magnitudes; signs stay where they are.
/// A pair whose divisor is 0 (0/0) or beyond 64 bits comes back as it is.
template <RationalRepresentable T>
[[nodiscard]] constexpr std::pair<std::int64_t, std::int64_t> reduced(const T& ratio) noexcept {
    const std::int64_t common = safeBinaryIntGCD(ratio.numerator(), ratio.denominator()).value_or(0);
    if (common == 0) return {ratio.numerator(), ratio.denominator()};
    return {ratio.numerator() / common, ratio.denominator() / common};
}

}  // namespace corvex::inline v0

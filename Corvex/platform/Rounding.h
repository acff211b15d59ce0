#pragma once

#include <cstdint>

#include <Corvex/platform/Checked.h>

namespace corvex::inline v0 {

// Roundings of doubles that also work while compiling. A number that is not finite passes through unchanged.
// Pure; any thread.

/// Without its fraction. Magnitudes of 2^52 and more have none.
[[nodiscard]] constexpr double roundedTowardZero(double value) noexcept {
    constexpr double allWhole = 4503599627370496.0;  // 2^52
    return value > -allWhole && value < allWhole ? static_cast<double>(static_cast<std::int64_t>(value)) : value;
}

/// std::floor, also when the compiler computes it.
[[nodiscard]] constexpr double roundedDown(double value) noexcept {
    const double whole = roundedTowardZero(value);
    return whole > value ? whole - 1.0 : whole;
}

/// std::ceil, also when the compiler computes it.
[[nodiscard]] constexpr double roundedUp(double value) noexcept {
    const double whole = roundedTowardZero(value);
    return whole < value ? whole + 1.0 : whole;
}

/// To the nearest whole number, halves away from zero: 2.5 gives 3, -2.5 gives -3.
[[nodiscard]] constexpr double roundedHalfAway(double value) noexcept {
    const double whole = roundedTowardZero(value);
    // Adding a half first would round 0.49999999999999994 up.
    const double fraction = value - whole;  // exact: both have the same exponent range
    if (fraction >= 0.5) return whole + 1.0;
    return fraction <= -0.5 ? whole - 1.0 : whole;
}

/// `value` without its fraction. A number that is not finite or is beyond 64 bits stops the process.
[[nodiscard]] constexpr std::int64_t checkedInt64(
    double value, const std::source_location& where = std::source_location::current()) noexcept {
    constexpr double limit = 9223372036854775808.0;  // 2^63
    require(value >= -limit && value < limit, "a number does not fit into 64 bits", where);
    return static_cast<std::int64_t>(value);
}

}  // namespace corvex::inline v0

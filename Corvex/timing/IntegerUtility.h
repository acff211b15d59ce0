#pragma once

#include <bit>
#include <concepts>
#include <cstdint>
#include <limits>
#include <optional>
#include <type_traits>
#include <utility>

#include <Corvex/platform/Checked.h>

namespace corvex::inline v0 {

// Pure functions on integers; any thread. Those that change one in place do not synchronise it.

/// For products of two 64-bit integers.
/// g++ and clang have them; std::integral leaves them out unless GNU extensions are on.
__extension__ typedef __int128 Int128;            // NOLINT(modernize-use-using): __extension__ does not go with using
__extension__ typedef unsigned __int128 UInt128;  // NOLINT(modernize-use-using)
/// The integer types of every width and signedness, the compiler's 128-bit ones included; no Booleans.
/// Character types count, as std::integral has it.
template <class T>
concept BinaryInteger =
    (std::integral<T> && !std::same_as<T, bool>) || std::same_as<T, Int128> || std::same_as<T, UInt128>;

/// The greatest common divisor of two numbers; that of a and 0 is a, of two zeros 0. One division brings the numbers to
/// like size, then Stein's binary form needs none. At most 64 steps.
/// Source   Stein, Journal of Computational Physics 1(3), 1967.
[[nodiscard]] constexpr std::uint64_t magnitudeGcd(std::uint64_t a, std::uint64_t b) noexcept {
    if (a < b) std::swap(a, b);
    if (b == 0) return a;
    a %= b;
    if (a == 0) return b;
    const int twos = std::countr_zero(a | b);
    a >>= static_cast<unsigned>(std::countr_zero(a));
    b >>= static_cast<unsigned>(std::countr_zero(b));
    while (a != b) {
        const std::uint64_t difference = a > b ? a - b : b - a;
        b = a < b ? a : b;
        a = difference >> static_cast<unsigned>(std::countr_zero(difference));
    }
    return a << static_cast<unsigned>(twos);
}

/// Euclid's algorithm with the remainder that truncates, so that the result carries a sign when an argument does:
/// gcd(-4, 6) is 2, gcd(4, -6) is -2, gcd(a, 0) is a. The lowest value with -1 stops the process.
[[nodiscard]] constexpr std::int64_t gcd(std::int64_t a, std::int64_t b) noexcept {
    if (a >= 0 && b >= 0) {  // no sign to carry, so any way to the divisor will do
        return static_cast<std::int64_t>(magnitudeGcd(static_cast<std::uint64_t>(a), static_cast<std::uint64_t>(b)));
    }
    while (b != 0) {
        const std::int64_t remainder = a - checkedDivide(a, b) * b;
        a = std::exchange(b, remainder);
    }
    return a;
}

/// The greatest common divisor of the magnitudes, never negative; none when T cannot hold it (the lowest value with 0
/// or itself).
template <BinaryInteger T>
[[nodiscard]] constexpr std::optional<T> safeBinaryIntGCD(T a, T b) noexcept {
    using Magnitude = std::conditional_t<(sizeof(T) > sizeof(std::uint64_t)), UInt128, std::uint64_t>;
    constexpr auto magnitude = [](T value) {
        return value < 0 ? Magnitude{0} - static_cast<Magnitude>(value) : static_cast<Magnitude>(value);
    };
    Magnitude x = magnitude(a);
    Magnitude y = magnitude(b);
    if constexpr (std::same_as<Magnitude, std::uint64_t>) {
        x = magnitudeGcd(x, y);
    } else {
        // Euclid's way: the binary form is worth its code for the widths of the field alone.
        while (y != 0) x = std::exchange(y, static_cast<Magnitude>(x % y));
    }
    // std::numeric_limits knows nothing of the 128-bit types either.
    constexpr bool isSigned = static_cast<T>(-1) < static_cast<T>(0);
    constexpr auto largest =
        static_cast<Magnitude>(~Magnitude{0}) >> ((sizeof(Magnitude) - sizeof(T)) * 8 + (isSigned ? 1 : 0));
    return x <= largest ? std::optional(static_cast<T>(x)) : std::nullopt;
}

/// Adds 1 in place and answers the new value. Overflow, which ++ would leave undefined, stops the process.
constexpr std::int64_t preIncrement(std::int64_t& value) noexcept { return value = checkedAdd<std::int64_t>(value, 1); }
/// Adds 1 in place and answers the value before. Overflow stops the process.
constexpr std::int64_t postIncrement(std::int64_t& value) noexcept {
    return std::exchange(value, checkedAdd<std::int64_t>(value, 1));
}

}  // namespace corvex::inline v0

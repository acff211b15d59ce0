#pragma once

#include <concepts>
#include <source_location>
#include <string_view>
#include <utility>

#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

/// Stops the process because of a programming error: one line with the message and the place in the source goes to the
/// log at level `fault`, then abort. Never for bad input, which is an error that a caller can answer. Any thread; no
/// destructor runs.
[[noreturn]] CORVEX_EXPORT void fatalError(
    std::string_view message, const std::source_location& where = std::source_location::current()) noexcept;

/// Stops the process with `reason` unless `holds`; while the compiler evaluates the call, stops the build. `reason`
/// says what should have held, in words that a user can send on.
constexpr void require(bool holds, std::string_view reason,
                       const std::source_location& where = std::source_location::current()) noexcept {
    if (!holds) [[unlikely]]
        fatalError(reason, where);
}

// All of it also works while compiling, where stopping means that the program does not compile. None throws or
// allocates; any thread.
/// a + b in the operands' own type, unsigned ones without wrapping. Overflow stops the process, or the build where the
/// compiler evaluates the call. So it is with all functions of this header; `where` is the caller's place, for the
/// message.
template <std::integral T>
[[nodiscard]] constexpr T checkedAdd(T a, T b,
                                     const std::source_location& where = std::source_location::current()) noexcept {
    T sum{};
    if (__builtin_add_overflow(a, b, &sum)) [[unlikely]]
        fatalError("addition overflowed", where);
    return sum;
}

/// a - b; overflow stops the process, for unsigned types any result below 0. Where that may happen on purpose, compare
/// first.
template <std::integral T>
[[nodiscard]] constexpr T checkedSubtract(
    T a, T b, const std::source_location& where = std::source_location::current()) noexcept {
    T difference{};
    if (__builtin_sub_overflow(a, b, &difference)) [[unlikely]]
        fatalError("subtraction overflowed", where);
    return difference;
}

/// a * b; overflow stops the process. For a product of two 64-bit numbers that may be large on purpose there is Int128.
template <std::integral T>
[[nodiscard]] constexpr T checkedMultiply(
    T a, T b, const std::source_location& where = std::source_location::current()) noexcept {
    T product{};
    if (__builtin_mul_overflow(a, b, &product)) [[unlikely]]
        fatalError("multiplication overflowed", where);
    return product;
}

/// -a. The lowest value of a signed type has no counterpart and stops the process: in two's complement its magnitude is
/// one above the largest value.
template <std::signed_integral T>
[[nodiscard]] constexpr T checkedNegate(T a,
                                        const std::source_location& where = std::source_location::current()) noexcept {
    return checkedSubtract(T{0}, a, where);
}

/// Without its sign; the lowest value has no magnitude in its type and stops the process.
template <std::signed_integral T>
[[nodiscard]] constexpr T checkedMagnitude(
    T a, const std::source_location& where = std::source_location::current()) noexcept {
    return a < 0 ? checkedNegate(a, where) : a;
}

/// a / b, rounding towards zero. A zero divisor, or the lowest value over -1, stops the process.
template <std::integral T>
[[nodiscard]] constexpr T checkedDivide(T a, T b,
                                        const std::source_location& where = std::source_location::current()) noexcept {
    if (b == 0) [[unlikely]]
        fatalError("division by zero", where);
    if constexpr (std::signed_integral<T>) {
        if (b == -1) return checkedNegate(a, where);
    }
    return static_cast<T>(a / b);
}

/// a % b, with the sign of a; b = 0 stops the process. The lowest value over -1 leaves 0.
template <std::integral T>
[[nodiscard]] constexpr T checkedRemainder(
    T a, T b, const std::source_location& where = std::source_location::current()) noexcept {
    if (b == 0) [[unlikely]]
        fatalError("division by zero", where);
    if constexpr (std::signed_integral<T>) {
        if (b == -1) return 0;  // the machine's division traps for the lowest value, although the remainder exists
    }
    return static_cast<T>(a % b);
}

/// `value` as a `To`. A value that `To` cannot hold, as a negative one in an unsigned type, stops the process.
template <std::integral To, std::integral From>
[[nodiscard]] constexpr To checkedCast(From value,
                                       const std::source_location& where = std::source_location::current()) noexcept {
    if (!std::in_range<To>(value)) [[unlikely]]
        fatalError("integer conversion lost the value", where);
    return static_cast<To>(value);
}

}  // namespace corvex::inline v0

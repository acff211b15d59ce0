#pragma once

#include <concepts>
#include <cstddef>
#include <cstring>
#include <optional>
#include <span>

namespace corvex::inline v0 {

/// The tolerance of the comparison helpers where the caller gives none; relative, but absolute below 1.
inline constexpr double defaultTolerance = 1e-9;

/// Comparisons of floating-point numbers that allow for rounding. Pure; any thread.
struct FloatingPointComparator {
    /// A name for its functions; there are no objects of it.
    FloatingPointComparator() = delete;

    /// Whether |a - b| is at most `tolerance` times the largest of |a|, |b| and 1. Without a tolerance the values must
    /// be equal; an absent b equals nothing; under a tolerance NaN equals NaN. As the difference to an infinity is
    /// infinite and so is the allowance, an infinity equals every finite number, but not itself.
    template <std::floating_point T>
    [[nodiscard]] static constexpr bool valuesEqual(T a, std::optional<T> b, std::optional<T> tolerance) noexcept {
        if (!b) return false;
        if (!tolerance) return a == *b;
        if (a != a && *b != *b) return true;
        T largest = magnitude(a);
        if (largest < magnitude(*b)) largest = magnitude(*b);
        if (largest < 1) largest = 1;
        return magnitude(a - *b) <= *tolerance * largest;
    }

    /// Whether both have the same count and the pairs in order are equal as `valuesEqual` says.
    template <std::floating_point T>
    [[nodiscard]] static constexpr bool arraysEqual(std::span<const T> a, std::span<const T> b,
                                                    std::optional<T> tolerance) noexcept {
        if (a.size() != b.size()) return false;
        for (std::size_t i = 0; i < a.size(); ++i) {
            if (!valuesEqual<T>(a[i], b[i], tolerance)) return false;
        }
        return true;
    }

    /// Whether both are stored as the same bits: 0.0 and -0.0 differ, one NaN equals itself.
    template <std::floating_point T>
    [[nodiscard]] static bool bitwiseEqual(T a, T b) noexcept {
        static_assert(sizeof(T) <= 8, "wider types have padding, whose bits mean nothing");
        return std::memcmp(&a, &b, sizeof(T)) == 0;
    }

    /// Without its sign.
    template <std::floating_point T>
    [[nodiscard]] static constexpr T magnitude(T value) noexcept {
        return value < 0 ? -value : value;
    }
};

/// Whether |value| is at most `epsilon`, which is absolute, in the units of the value; false for NaN. A negative epsilon
/// is never reached.
template <std::floating_point T>
[[nodiscard]] constexpr bool isApproximatelyZero(T value, T epsilon = T{defaultTolerance}) noexcept {
    return FloatingPointComparator::magnitude(value) <= epsilon;
}

/// FloatingPointComparator::valuesEqual for two values that are there.
template <std::floating_point T>
[[nodiscard]] constexpr bool valueIsEqual(T value, T other, T tolerance = T{defaultTolerance}) noexcept {
    return FloatingPointComparator::valuesEqual<T>(value, other, tolerance);
}

}  // namespace corvex::inline v0

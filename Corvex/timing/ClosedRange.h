#pragma once

#include <concepts>
#include <cstdint>
#include <numeric>

#include <Corvex/platform/Checked.h>

namespace corvex::inline v0 {

/// All values from `lower` to `upper`, both included, never empty. A pair of bounds: nothing enumerates it. Pure value.
template <std::totally_ordered T>
class ClosedRange {
public:
    /// An upper bound below the lower one stops the process, and so does NaN as either.
    constexpr ClosedRange(T lower, T upper) : lower_(lower), upper_(upper) {
        require(lower <= upper, "a range must not end before it begins");
    }

    /// At most upper().
    [[nodiscard]] constexpr const T& lower() const noexcept { return lower_; }
    /// At least lower().
    [[nodiscard]] constexpr const T& upper() const noexcept { return upper_; }

    /// Both bounds alike. Ranges have no order.
    friend constexpr bool operator==(const ClosedRange&, const ClosedRange&) = default;

private:
    T lower_;
    T upper_;
};

/// The value of the range that is nearest to `value`. NaN comes back as it is.
template <std::totally_ordered T>
[[nodiscard]] constexpr T clamped(const T& value, const ClosedRange<T>& to) {
    if (value < to.lower()) return to.lower();
    return to.upper() < value ? to.upper() : value;
}

/// clamped() for integers; clipTo() does it in place.
[[nodiscard]] constexpr std::int64_t clippedTo(std::int64_t value, const ClosedRange<std::int64_t>& range) noexcept {
    return clamped(value, range);
}
/// Moves the value to the nearest bound where it lies outside.
constexpr void clipTo(std::int64_t& value, const ClosedRange<std::int64_t>& range) noexcept {
    value = clamped(value, range);
}

/// The mean of the bounds, without overflow on the way.
[[nodiscard]] constexpr double middle(const ClosedRange<double>& range) noexcept {
    return std::midpoint(range.lower(), range.upper());
}

}  // namespace corvex::inline v0

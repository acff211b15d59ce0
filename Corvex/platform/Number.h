#pragma once

#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <variant>

#include <Corvex/platform/Checked.h>
#include <Corvex/platform/Object.h>

namespace corvex::inline v0 {

/// A truth value, a 64-bit integer or a double as an object. Equal by numeric value whatever its kind: 1, 1.0 and true
/// are equal, and so are their hashes. Immutable; any thread.
/// The static functions at its end are about powers of two and need no object.
class CORVEX_EXPORT Number final : public Object {
public:
    explicit Number(bool value) noexcept : value_(value) {}
    /// Any integer type; one that does not fit 64 bits with a sign stops the process.
    template <std::integral T>
        requires(!std::same_as<T, bool>)
    explicit Number(T value) noexcept : value_(checkedCast<std::int64_t>(value)) {}
    explicit Number(double value) noexcept : value_(value) {}
    ~Number() override;
    Number(const Number&) = default;
    Number& operator=(const Number&) = default;

    /// True unless the value is 0; NaN is true.
    [[nodiscard]] bool boolValue() const noexcept { return doubleValue() != 0; }
    /// Without its fraction; saturates at 64 bits, NaN reads as 0.
    [[nodiscard]] std::int64_t int64Value() const noexcept;
    /// Rounded to nearest where an integer has more digits.
    [[nodiscard]] double doubleValue() const noexcept;

    /// Whether the value is 1, 2, 4 and so on; never for one with a fraction.
    [[nodiscard]] bool isPowerOfTwo() const noexcept;

    [[nodiscard]] std::string description() const override;
    [[nodiscard]] bool isEqual(const Object& other) const override;
    [[nodiscard]] std::size_t hash() const override;

    /// The index of the highest bit that is set: 0 for 1, 1 for 2 and 3. None below 1.
    [[nodiscard]] static constexpr std::optional<std::uint64_t> littleEndianHighBit(std::int64_t value) noexcept {
        if (value < 1) return std::nullopt;
        return static_cast<std::uint64_t>(std::bit_width(static_cast<std::uint64_t>(value)) - 1);
    }

    /// The largest power of two that is not above `value`. None below 1.
    [[nodiscard]] static constexpr std::optional<std::uint64_t> powerOfTwoFloor(std::int64_t value) noexcept {
        if (value < 1) return std::nullopt;
        return std::bit_floor(static_cast<std::uint64_t>(value));
    }

    /// The smallest power of two that is not below `value`. None below 1, and where it would be 2^63.
    [[nodiscard]] static constexpr std::optional<std::uint64_t> powerOfTwoCeiling(std::int64_t value) noexcept {
        constexpr std::int64_t largest = std::int64_t{1} << 62U;
        if (value < 1 || value > largest) return std::nullopt;
        return std::bit_ceil(static_cast<std::uint64_t>(value));
    }

    /// Of one bit that is set; false for 0 and below.
    [[nodiscard]] static constexpr bool integerIsPowerOfTwo(std::int64_t value) noexcept {
        return value > 0 && std::has_single_bit(static_cast<std::uint64_t>(value));
    }

    /// `value` where it is even; an odd one plus 1 or minus 1. Overflow stops the process.
    [[nodiscard]] static constexpr std::int64_t forcedToEven(std::int64_t value, bool incrementIfOdd) noexcept {
        if (value % 2 == 0) return value;
        return checkedAdd<std::int64_t>(value, incrementIfOdd ? 1 : -1);
    }

private:
    std::variant<bool, std::int64_t, double> value_;
};

/// The shared object of a truth value; it is kept until the process ends.
[[nodiscard]] CORVEX_EXPORT const Number& cfEquivalent(bool value) noexcept;

}  // namespace corvex::inline v0

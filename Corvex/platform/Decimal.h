#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

/// A decimal number as a text spells it, by its readings: as a double, rounded once from the whole text, and as
/// integers, exact whatever the number of digits (1.99999999999999999999 is 2.0 as a double and 1 as an integer).
/// An immutable value of 16 bytes. Never locale-dependent.
class Decimal {
public:
    /// The number at the front of `text`: white space is skipped, then the longest piece of the form
    /// [+-]? (digits [. digits*] | . digits) ([eE] [+-]? digits)? counts; what follows is ignored, so "33 L" is 33 and
    /// "1e" is 1. None without digits and for a magnitude beyond double. Minus zero reads as zero.
    [[nodiscard]] CORVEX_EXPORT static std::optional<Decimal> fromPrefix(std::string_view text) noexcept;

    /// Correctly rounded; 0 for a magnitude too small for double.
    [[nodiscard]] double doubleValue() const noexcept { return value_; }
    /// Single precision, rounded from the double.
    [[nodiscard]] float floatValue() const noexcept { return static_cast<float>(value_); }
    /// Without the fraction; saturates at 64 bits, the unsigned reading also at 0.
    [[nodiscard]] CORVEX_EXPORT std::int64_t int64Value() const noexcept;
    [[nodiscard]] std::uint64_t uint64Value() const noexcept { return value_ < 0 ? 0 : wholeMagnitude_; }

private:
    Decimal(double value, std::uint64_t wholeMagnitude) noexcept : value_(value), wholeMagnitude_(wholeMagnitude) {}

    double value_;
    std::uint64_t wholeMagnitude_;  ///< The magnitude without its fraction; all ones also for what is larger.
};

}  // namespace corvex::inline v0

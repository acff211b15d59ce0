#pragma once

#include <cstdint>
#include <source_location>

#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

// Arithmetic of code values. Depths are in bits; pure; any thread.

/// `value` of one depth as a value of another: shifted, not stretched from full scale to full scale, so 1023 of 10 bits
/// is 4092 of 12. Narrowing drops the fraction, widening saturates at 64 bits. Unchanged where a depth is below 1.
[[nodiscard]] CORVEX_EXPORT std::uint64_t normalizedUnsignedInteger(std::uint64_t value, std::int64_t ofBitDepth,
                                                                    std::int64_t toBitDepth) noexcept;

/// The largest code value: 2^depth - 1. 0 for depths below 1 and above 63.
[[nodiscard]] CORVEX_EXPORT std::uint64_t largestCodeValue(std::int64_t bitDepth) noexcept;

/// `value` without its fraction. What is not above -1 or not below 2^64 stops the process, and so does NaN.
[[nodiscard]] CORVEX_EXPORT std::uint64_t checkedUnsignedInteger(
    double value, const std::source_location& where = std::source_location::current()) noexcept;

}  // namespace corvex::inline v0

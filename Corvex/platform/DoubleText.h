#pragma once

#include <string>

#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

// Texts of a double for people and logs; "." is the decimal point whatever the process's locale. Pure; any thread.

/// The default rendering: the shortest text that reads back, with ".0" for whole values and an exponent below 1e-4 and
/// from 2^53 upwards: -1.0, 23.976, 1e-05. "inf", "-inf" and "nan" for what is not finite.
[[nodiscard]] CORVEX_EXPORT std::string defaultText(double value);

/// Exactly `fractionDigits` digits after the point (0 or more), as "%.2f" has them: halves of the exact binary value
/// go to even.
[[nodiscard]] CORVEX_EXPORT std::string fixedText(double value, int fractionDigits);

/// At most `maximumFractionDigits` digits after the point, without zeros at the end, and at least
/// `minimumIntegerDigits` before it; no grouping; halves of the exact binary value go to even. Negative counts are
/// taken as 0. The empty text for a number that is not finite.
[[nodiscard]] CORVEX_EXPORT std::string trimmingFractionZeros(double value, int maximumFractionDigits,
                                                              int minimumIntegerDigits);

}  // namespace corvex::inline v0

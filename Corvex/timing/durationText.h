#pragma once

#include <cstdint>
#include <string>

#include <Corvex/platform/ChronoCore.h>
#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

/// How a duration is written: `longForm` as h:mm:ss, `shortForm` as total minutes and seconds, m:ss.
enum class TimeIntervalFormat : std::uint8_t { longForm, shortForm };

/// A duration in seconds, without its fraction. A value that is not finite or whose seconds are beyond 64 bits gives
/// the empty text and a log line.
[[nodiscard]] CORVEX_EXPORT std::string formatted(double seconds, TimeIntervalFormat format);

/// The time between two moments as "hh:mm:ss", or as "hh:mm:ss.cc" with hundredths of a second (not milliseconds,
/// despite the name), all truncated. Of a negative interval every field that is not 0 is negative.
[[nodiscard]] CORVEX_EXPORT std::string calculateElapsedTime(std::chrono::system_clock::time_point from,
                                                             std::chrono::system_clock::time_point to,
                                                             bool includeMilliseconds);

}  // namespace corvex::inline v0

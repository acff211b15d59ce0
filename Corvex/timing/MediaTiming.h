#pragma once

#include <cstdint>

namespace corvex::inline v0 {

/// Time scales that the whole family of applications shares; they are in stored data and never change.
struct MediaTiming {
    MediaTiming() = delete;

    static constexpr std::int64_t globalTimeBase = 1000000;  ///< Ticks per second: microseconds.
    static constexpr std::int64_t ntscTimeScale = 1001;      ///< Denominator of the NTSC rates (SMPTE ST 12-1).
};

}  // namespace corvex::inline v0

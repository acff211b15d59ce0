#pragma once

#include <cstdint>

#include <Corvex/timing/TimecodeFrame.h>

namespace corvex::tool {

/// The timecodes of consecutive pictures, counted from a first one. A day ends at 24:00:00:00, where the labels start
/// again.
class TimecodeCount {
public:
    /// Each label stands for `picturesPerLabel` pictures.
    TimecodeCount(const TimecodeFrame& first, std::int64_t picturesPerLabel);

    [[nodiscard]] TimecodeComponents label(std::int64_t picture) const;
    /// Of the longest label.
    [[nodiscard]] int characters() const noexcept { return first_.fullFramesPerSecond() > 100 ? 12 : 11; }

private:
    TimecodeFrame first_;
    std::int64_t picturesPerLabel_;
    std::int64_t framesPerDay_;
};

}  // namespace corvex::tool

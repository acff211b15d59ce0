#pragma once

#include <cstdint>

#include <Corvex/platform/Checked.h>
#include <Corvex/platform/Rounding.h>

namespace corvex::inline v0 {

/// The four numbers of a timecode, without a state. Not bounded: the functions below give what their comments say, hours
/// above 23 without drop frame, and callers may put in any.
struct TimecodeFields {
    std::int64_t hours = 0, minutes = 0, seconds = 0, frames = 0;
};

// From frame counts to labels; TimecodeComponents says what they mean to callers. The rates of the field are compile-time
// constants, so that the divisions become multiplications; every other rate takes the same way with 64-bit divisions.

/// The labels that drop-frame counting skips in nine minutes of ten, for a rate of `quanta` frames a second (SMPTE ST
/// 12-1 has 2 for 30; the factor for other rates has just these digits). Whether a rate drops frames at all is the
/// caller's to know.
[[nodiscard]] constexpr std::int64_t droppedPerMinute(std::int64_t quanta) noexcept {
    if (quanta == 30) return 2;
    if (quanta == 60) return 4;
    return checkedInt64(roundedHalfAway(static_cast<double>(quanta) * 0.0666666667));
}

/// `frame` lies within the nominal day, and Int is wide enough for one. `dropped` labels are skipped in each minute but
/// every tenth.
/// Source   SMPTE ST 12-1: ten minutes have 10 * 60 * quanta - 9 * dropped frames.
template <class Int>
[[nodiscard, gnu::always_inline]] constexpr TimecodeFields splitDropFrame(Int frame, Int quanta, Int dropped) noexcept {
    const Int perMinute = quanta * 60;
    const Int perHour = quanta * 3600;
    const Int perTenMinutes = quanta * 600 - 9 * dropped;
    const Int tens = frame / perTenMinutes;
    const Int rest = frame % perTenMinutes;
    const auto minutesOver = static_cast<Int>((rest - dropped) / (perMinute - dropped));
    const Int skipped = checkedMultiply(dropped, static_cast<Int>(9 * tens + (minutesOver < 0 ? 0 : minutesOver)));
    const Int label = checkedAdd(frame, skipped);
    const Int ofHour = label % perHour;
    const Int ofMinute = ofHour % perMinute;
    return {label / perHour, ofHour / perMinute, ofMinute / quanta, ofMinute % quanta};
}

/// Fields of any frame at a rate that the compiler knows. Wraps at the nominal day.
template <std::int64_t quanta>
/// A negative frame counts back from the end of that day.
[[nodiscard]] constexpr TimecodeFields dropFrameFieldsAt(std::int64_t frame) noexcept {
    constexpr std::int64_t perDay = quanta * 86400;
    constexpr auto dropped = static_cast<std::int32_t>(droppedPerMinute(quanta));
    const std::int64_t ofDay = frame % perDay;
    return splitDropFrame(static_cast<std::int32_t>(ofDay < 0 ? ofDay + perDay : ofDay),
                          static_cast<std::int32_t>(quanta), dropped);
}

/// Fields of any frame; see TimecodeComponents::dropFrameComponents. 30, 60 and 120 are the rates with constants.
/// `quanta` is above 0; 0, or a day of frames beyond 64 bits, stops the process.
[[nodiscard]] constexpr TimecodeFields dropFrameFields(std::int64_t frame, std::int64_t quanta) noexcept {
    switch (quanta) {
        case 30: return dropFrameFieldsAt<30>(frame);
        case 60: return dropFrameFieldsAt<60>(frame);
        case 120: return dropFrameFieldsAt<120>(frame);
        default: break;
    }
    // The other products of the rate are smaller than this one, so it is the only one that must be checked.
    const std::int64_t perDay = checkedMultiply<std::int64_t>(quanta, 86400);
    const std::int64_t ofDay = checkedRemainder(frame, perDay);
    return splitDropFrame(ofDay < 0 ? ofDay + perDay : ofDay, quanta, droppedPerMinute(quanta));
}

/// Fields of a frame from 0, without drop. An hour of frames beyond 64 bits stops the process.
[[nodiscard, gnu::always_inline]] constexpr TimecodeFields splitNonDrop(std::int64_t frame,
                                                                        std::int64_t perSecond) noexcept {
    const std::int64_t perMinute = checkedMultiply<std::int64_t>(perSecond, 60);
    const std::int64_t perHour = checkedMultiply<std::int64_t>(perSecond, 3600);
    const std::int64_t ofHour = frame % perHour;
    const std::int64_t ofMinute = ofHour % perMinute;
    return {frame / perHour, ofHour / perMinute, ofMinute / perSecond, ofMinute % perSecond};
}

/// A negative frame counts as 0; hours are not wrapped. 0 frames a second stop the process.
[[nodiscard]] constexpr TimecodeFields nonDropFields(std::int64_t frame, std::int64_t perSecond) noexcept {
    require(perSecond != 0, "timecode needs a rate that is not 0");
    const std::int64_t counted = frame < 0 ? 0 : frame;
    switch (perSecond) {
        case 24: return splitNonDrop(counted, 24);
        case 25: return splitNonDrop(counted, 25);
        case 30: return splitNonDrop(counted, 30);
        case 50: return splitNonDrop(counted, 50);
        case 60: return splitNonDrop(counted, 60);
        default: return splitNonDrop(counted, perSecond);
    }
}

}  // namespace corvex::inline v0

#pragma once

#include <cstdint>

#include <Corvex/platform/Checked.h>

namespace corvex::inline v0 {

/// A moment or a span on a media timeline: value / timeScale seconds, exact, unreduced. An invalid time (the default)
/// stands for one that is not known. Equal by value; all invalid times are equal. Pure value; any thread.
/// Nothing is added or compared by order here: MediaTime carries times between the file formats and the timecode.
class MediaTime {
public:
    /// Bits of `flags`.
    static constexpr std::uint32_t validFlag = 1;

    constexpr MediaTime() noexcept = default;

    /// A valid time. A negative scale moves its sign to the value; a scale of 0 stops the process.
    constexpr MediaTime(std::int64_t value, std::int64_t timeScale) noexcept
        : value_(timeScale < 0 ? checkedNegate(value) : value),
          timeScale_(checkedMagnitude(timeScale)),
          flags_(validFlag) {
        require(timeScale != 0, "a time scale must not be 0");
    }

    /// Ticks, so many of which make a second as timeScale() says. Either is 0 for an invalid time.
    [[nodiscard]] constexpr std::int64_t value() const noexcept { return value_; }
    [[nodiscard]] constexpr std::int64_t timeScale() const noexcept { return timeScale_; }  ///< Above 0 when valid.
    /// Bit 0: the time is valid. No other is set.
    [[nodiscard]] constexpr std::uint32_t flags() const noexcept { return flags_; }
    [[nodiscard]] constexpr bool isValid() const noexcept { return (flags_ & validFlag) != 0; }

    /// In seconds; 0 for an invalid time.
    [[nodiscard]] constexpr double seconds() const noexcept {
        return isValid() ? static_cast<double>(value_) / static_cast<double>(timeScale_) : 0.0;
    }

    friend constexpr bool operator==(const MediaTime& a, const MediaTime& b) noexcept {
        if (!a.isValid() || !b.isValid()) return a.isValid() == b.isValid();
        return Wide{a.value_} * b.timeScale_ == Wide{b.value_} * a.timeScale_;
    }

private:
    __extension__ typedef __int128 Wide;  // NOLINT(modernize-use-using): __extension__ does not go with using

    std::int64_t value_ = 0;
    std::int64_t timeScale_ = 0;
    std::uint32_t flags_ = 0;
};

/// When a media sample is shown and for how long. The decode time is invalid where it is not known, as it is where
/// samples are decoded in the order in which they are shown.
struct SampleTimingInfo {
    MediaTime duration;
    MediaTime presentationTimeStamp;
    MediaTime decodeTimeStamp;

    friend constexpr bool operator==(const SampleTimingInfo&, const SampleTimingInfo&) noexcept = default;
};

}  // namespace corvex::inline v0

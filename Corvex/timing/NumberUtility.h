#pragma once

#include <bit>
#include <cstdint>
#include <string>

#include <Corvex/platform/Checked.h>

namespace corvex::inline v0 {

/// Small helpers on numbers. Pure; any thread.
struct NumberUtility {
    NumberUtility() = delete;

    /// The smallest power of two that is not below `value`; 1 for 0. With the limit, at most 64. Above 2^63 there is
    /// none, which stops the process.
    [[nodiscard]] static constexpr std::uint64_t ceilingPowerOfTwo(std::uint64_t value,
                                                                   bool limitToMaxBitWidth) noexcept {
        require(value <= std::uint64_t{1} << 63U, "the next power of two does not fit into 64 bits");
        const std::uint64_t power = std::bit_ceil(value);
        return limitToMaxBitWidth && power >= 64 ? 64 : power;
    }

    /// A duration in fields.
    struct HoursMinutesSeconds {
        std::int64_t h = 0, m = 0, s = 0;
        friend constexpr bool operator==(const HoursMinutesSeconds&, const HoursMinutesSeconds&) = default;
    };

    /// Truncating: the fields of a negative count are negative or 0.
    [[nodiscard]] static constexpr HoursMinutesSeconds secondsToHoursMinutesSeconds(std::int64_t seconds) noexcept {
        return {seconds / 3600, seconds % 3600 / 60, seconds % 60};
    }

    /// "00:01:05": each field in at least two digits, its sign before them.
    [[nodiscard]] CORVEX_EXPORT static std::string secondsToStandardDurationText(std::int64_t seconds);
};

}  // namespace corvex::inline v0

#pragma once

#include <compare>
#include <cstdint>
#include <limits>

#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

/// A moment on the clock that counts while the machine is awake, in nanoseconds since it was started; the largest one
/// means never. For measuring and for deadlines, not for dates: it means nothing to another machine, or after a
/// restart. Pure value; any thread.
class DispatchTime {
public:
    constexpr explicit DispatchTime(std::uint64_t uptimeNanoseconds) noexcept : uptimeNanoseconds_(uptimeNanoseconds) {}

    /// By the clock that stands still while the machine sleeps (CLOCK_MONOTONIC on Linux).
    [[nodiscard]] CORVEX_EXPORT static DispatchTime now() noexcept;
    /// Later than every other time. Adding to it leaves it.
    [[nodiscard]] static constexpr DispatchTime distantFuture() noexcept {
        return DispatchTime(std::numeric_limits<std::uint64_t>::max());
    }

    /// All ones for the distant future.
    [[nodiscard]] constexpr std::uint64_t uptimeNanoseconds() const noexcept { return uptimeNanoseconds_; }

    /// Later by `seconds`, or earlier when they are negative. What does not fit is the distant future, or 0.
    [[nodiscard]] constexpr DispatchTime safeAddSeconds(std::int64_t seconds) const noexcept {
        const bool isEarlier = seconds < 0;
        const std::uint64_t magnitude =
            isEarlier ? std::uint64_t{0} - static_cast<std::uint64_t>(seconds) : static_cast<std::uint64_t>(seconds);
        std::uint64_t nanoseconds = 0;
        const bool isTooFar = __builtin_mul_overflow(magnitude, std::uint64_t{1000000000}, &nanoseconds);
        if (isEarlier) {
            return DispatchTime(isTooFar || nanoseconds > uptimeNanoseconds_ ? 0 : uptimeNanoseconds_ - nanoseconds);
        }
        std::uint64_t sum = 0;
        if (isTooFar || __builtin_add_overflow(uptimeNanoseconds_, nanoseconds, &sum)) return distantFuture();
        return DispatchTime(sum);
    }

    /// Earlier is less; the distant future is greatest.
    friend constexpr auto operator<=>(const DispatchTime&, const DispatchTime&) noexcept = default;

private:
    std::uint64_t uptimeNanoseconds_;
};

}  // namespace corvex::inline v0

#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include <Corvex/platform/Object.h>
#include <Corvex/timing/CommonVideoFrameRate.h>
#include <Corvex/timing/MediaRational.h>

namespace corvex::inline v0 {

/// An exact frame rate that remembers which common rate it equals. Equality and hash are those of `doubleValue` and
/// `commonValue`. Pure value; any thread. It may be 0 or negative: only closestFrameRate() and its like judge rates.
class VideoFrameRate {
public:
    /// Keeps `rational` as it is, unreduced, and looks its common rate up.
    explicit VideoFrameRate(const MediaRational& rational) noexcept
        : rational_(rational), commonValue_(definedFrameRate(rational)) {}

    /// Throws FrameRateError (invalidRationalComponents) when `timeScale` is 0.
    CORVEX_EXPORT VideoFrameRate(std::int64_t timeValue, std::int64_t timeScale);

    /// The exact value of the common rate, without a look-up.
    explicit constexpr VideoFrameRate(CommonVideoFrameRate common) noexcept
        : rational_(corvex::rational(common)), commonValue_(common) {}

    /// As it was given, unreduced.
    [[nodiscard]] constexpr const MediaRational& rational() const noexcept { return rational_; }
    /// None for a rate that is not one of the 36.
    [[nodiscard]] constexpr std::optional<CommonVideoFrameRate> commonValue() const noexcept { return commonValue_; }
    [[nodiscard]] constexpr bool isCommon() const noexcept { return commonValue_.has_value(); }

    /// Frames per second.
    [[nodiscard]] constexpr double doubleValue() const noexcept { return rational_.rawValue(); }

    /// Frames per second rounded half away from zero, under two names. Beyond 64 bits stops the process.
    [[nodiscard]] constexpr std::int64_t nominalFrameRate() const noexcept { return rational_.quantizedValue(); }
    [[nodiscard]] constexpr std::int64_t quanta() const noexcept { return nominalFrameRate(); }

    /// Whether the pair is a multiple of 1000 over 1001 as it stands: 24000/1001 is, 48000/2002 is not.
    [[nodiscard]] constexpr bool isNTSCStyle() const noexcept {
        return rational_.timeScale() == MediaTiming::ntscTimeScale && rational_.timeValue() % 1000 == 0;
    }

    friend constexpr bool operator==(const VideoFrameRate& a, const VideoFrameRate& b) noexcept {
        return a.doubleValue() == b.doubleValue() && a.commonValue_ == b.commonValue_;
    }

private:
    MediaRational rational_;
    std::optional<CommonVideoFrameRate> commonValue_;
};

}  // namespace corvex::inline v0

template <>
struct std::hash<corvex::VideoFrameRate> {
    std::size_t operator()(const corvex::VideoFrameRate& rate) const noexcept {
        const std::size_t common = rate.isCommon() ? static_cast<std::size_t>(*rate.commonValue()) + 1 : 0;
        return corvex::combinedHash(std::hash<double>{}(rate.doubleValue()), common);
    }
};

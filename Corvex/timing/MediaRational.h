#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include <Corvex/platform/Checked.h>
#include <Corvex/platform/Rounding.h>
#include <Corvex/timing/MediaTiming.h>
#include <Corvex/timing/RatioRepresentable.h>

namespace corvex::inline v0 {

/// A media time value over a time scale, for frame rates and timecode: 30000/1001 frames per second. The scale is
/// never 0; either field may be negative, and nothing is reduced unless asked for.
/// Equality and hash are those of `rawValue`: 24000/1001 equals 48000/2002.
/// Codes to JSON as one number, `rawValue`, and is read by `fromRawValue`: 24000/1001 survives, 25/2 comes back as
/// 13000/1001, on purpose, and a stored 0 throws DecodingError. Pure value; any thread.
class MediaRational {
public:
    /// 0/1, as a place to decode into; no rate.
    constexpr MediaRational() noexcept = default;

    /// For a scale known not to be 0; a scale of 0 stops the process.
    constexpr MediaRational(std::int64_t timeValue, std::int64_t timeScale) noexcept
        : timeValue_(timeValue), timeScale_(timeScale) {
        require(timeScale != 0, "a time scale must not be 0");
    }

    /// For a scale that comes from outside: none when it is 0.
    [[nodiscard]] static constexpr std::optional<MediaRational> make(std::int64_t timeValue,
                                                                     std::int64_t timeScale) noexcept {
        return timeScale == 0 ? std::nullopt : std::optional(MediaRational(timeValue, timeScale));
    }

    /// A whole number over 1; any other is taken as an NTSC rate, its rounded value times 1000 over 1001, on purpose:
    /// 29.97 gives 30000/1001, and 2.5 gives 3000/1001. None for 0, for what is not finite and from 2^63 upwards.
    /// A value of -2^63 or below stops the process.
    [[nodiscard]] static constexpr std::optional<MediaRational> fromRawValue(double value) noexcept;

    /// The first convergent of the continued fraction of `value` within `tolerance` (inclusive), or the last one whose
    /// denominator is at most `maxDenominator`. None unless value is finite and above 0 and maxDenominator is at least
    /// 1. A term beyond 64 bits stops the process.
    [[nodiscard]] static constexpr std::optional<MediaRational> approximate(double value, std::int64_t maxDenominator,
                                                                            double tolerance) noexcept;

    [[nodiscard]] constexpr std::int64_t timeValue() const noexcept { return timeValue_; }
    [[nodiscard]] constexpr std::int64_t timeScale() const noexcept { return timeScale_; }
    /// As a double, and so exact up to 2^53; the denominator as well.
    [[nodiscard]] constexpr double numerator() const noexcept { return static_cast<double>(timeValue_); }
    [[nodiscard]] constexpr double denominator() const noexcept { return static_cast<double>(timeScale_); }

    /// timeValue / timeScale in double precision: frames per second. Pairs that agree in it are equal, although two
    /// large ones may differ as ratios.
    [[nodiscard]] constexpr double rawValue() const noexcept { return numerator() / denominator(); }

    /// The nearest integer, halves away from zero. One beyond 64 bits stops the process.
    [[nodiscard]] constexpr std::int64_t quantizedValue() const noexcept {
        return checkedInt64(roundedHalfAway(rawValue()));
    }

    /// "29.97": always two digits after the point, "25.00" too.
    [[nodiscard]] CORVEX_EXPORT std::string roundedDecimalString() const;
    /// "f/2.80": a lens opening with two digits after the point.
    [[nodiscard]] CORVEX_EXPORT std::string fStopDescription() const;

    /// timeScale over timeValue; none when timeValue is 0.
    [[nodiscard]] constexpr std::optional<MediaRational> inverse() const noexcept {
        return make(timeScale_, timeValue_);
    }

    /// Whether the rate is not whole and rounds up to a multiple of 30 (SMPTE ST 12-1): 29.97, 59.94, 119.88; not
    /// 23.976, 30, 60. By the same rule 59/2 and every value between -1 and 0 count, on purpose.
    [[nodiscard]] constexpr bool isNTSCDropFrameCompliant() const noexcept {
        constexpr double allWhole = 4503599627370496.0;  // 2^52: no double from there on has a fraction
        const double value = rawValue();
        if (!(value > -allWhole && value < allWhole)) return false;
        const auto whole = static_cast<std::int64_t>(value);
        const std::int64_t ceiling = value > 0 ? whole + 1 : whole;
        return static_cast<double>(whole) != value && ceiling % 30 == 0;
    }

    /// Whether the two values differ by less than `tolerance`.
    [[nodiscard]] constexpr bool equals(const MediaRational& other, double tolerance) const noexcept {
        const double difference = rawValue() - other.rawValue();
        return (difference < 0 ? -difference : difference) < tolerance;
    }

    /// In lowest terms; signs stay where they are (2/-4 gives 1/-2). 0 is 0/1. Where the divisor is 2^63 the value stays
    /// as it is.
    [[nodiscard]] constexpr MediaRational reduced() const noexcept {
        if (timeValue_ == 0) return {};
        const std::int64_t common = safeBinaryIntGCD(timeValue_, timeScale_).value_or(1);
        return {timeValue_ / common, timeScale_ / common};
    }

    /// The pair of the common frame rate that equals this value, or this value itself, unreduced, when none does.
    [[nodiscard]] CORVEX_EXPORT MediaRational quantizedRepresentation() const noexcept;

    friend constexpr bool operator==(const MediaRational& a, const MediaRational& b) noexcept {
        return a.rawValue() == b.rawValue();
    }

private:
    std::int64_t timeValue_ = 0;
    std::int64_t timeScale_ = 1;
};
static_assert(RatioRepresentable<MediaRational>);

constexpr std::optional<MediaRational> MediaRational::fromRawValue(double value) noexcept {
    constexpr double limit = 9223372036854775808.0;  // 2^63
    const bool isFinite = value - value == 0;
    if (value == 0 || !isFinite || value >= limit) return std::nullopt;
    require(value > -limit, "a rate does not fit into 64 bits");
    if (roundedTowardZero(value) == value) return MediaRational(checkedInt64(value), 1);
    return MediaRational(checkedMultiply<std::int64_t>(checkedInt64(roundedHalfAway(value)), 1000),
                         MediaTiming::ntscTimeScale);
}

constexpr std::optional<MediaRational> MediaRational::approximate(double value, std::int64_t maxDenominator,
                                                                  double tolerance) noexcept {
    constexpr double machineEpsilon = 2.220446049250313e-16;
    const bool isFinite = value - value == 0;
    if (!isFinite || !(value > 0) || maxDenominator < 1) return std::nullopt;
    double rest = value;
    double whole = roundedDown(rest);
    std::int64_t h = checkedInt64(whole);
    std::int64_t k = 1;
    std::int64_t previousH = 1;
    std::int64_t previousK = 0;
    for (;;) {
        const MediaRational current(h, k);
        const double error = value - current.rawValue();
        if ((error < 0 ? -error : error) <= tolerance || rest - whole < machineEpsilon) return current;
        rest = 1 / (rest - whole);
        whole = roundedDown(rest);
        const std::int64_t term = checkedInt64(whole);
        previousH = std::exchange(h, checkedAdd(checkedMultiply(term, h), previousH));
        previousK = std::exchange(k, checkedAdd(checkedMultiply(term, k), previousK));
        if (k == 0 || k > maxDenominator) return current;
    }
}

template <class JsonType>
CORVEX_EXPORT void to_json(JsonType& json, const MediaRational& value);
template <class JsonType>
CORVEX_EXPORT void from_json(const JsonType& json, MediaRational& value);

}  // namespace corvex::inline v0

template <>
struct std::hash<corvex::MediaRational> {
    std::size_t operator()(const corvex::MediaRational& value) const noexcept {
        return std::hash<double>{}(value.rawValue());  // equal for 0.0 and -0.0
    }
};

#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include <Corvex/platform/Export.h>
#include <Corvex/timing/MediaRational.h>

namespace corvex::inline v0 {

/// An older list of frame rates, kept to read stored settings; new code uses VideoFrameRate.
/// Raw values of the `ntsc…` cases follow the process-wide `ntscTimeScale`. Equal by case and, for `custom`, by value.
/// Codes to JSON as an object with the case's name as its one key: {"p24": {}}, {"custom": 12.0}. Any thread.
class DeprecatedVideoFrameRate {
public:
    /// The cases, `custom` with a value of its own. The number is that of frames per second, `ntsc…` ones over 1.001;
    /// "p" is for progressive.
    enum class Choice : std::uint8_t {
        ntsc24p,
        p24,
        pal25p,
        ntsc30p,
        p30,
        p48,
        p50,
        ntsc60p,
        p60,
        p72,
        ntsc120p,
        p120,
        p300,
        p600,
        custom
    };

    /// The first case, as a place to decode into.
    constexpr DeprecatedVideoFrameRate() noexcept = default;

    /// A fixed case. `Choice::custom` needs a rate, and stops the process here.
    explicit constexpr DeprecatedVideoFrameRate(Choice choice) noexcept : choice_(choice) {
        require(choice != Choice::custom, "a custom frame rate needs its value");
    }
    /// Any rate, also one that a fixed case has.
    [[nodiscard]] static constexpr DeprecatedVideoFrameRate custom(const MediaRational& rate) noexcept {
        DeprecatedVideoFrameRate result;
        result.choice_ = Choice::custom;
        result.custom_ = rate;
        return result;
    }

    /// The first fixed case whose raw value equals `rate`, else `custom`.
    [[nodiscard]] CORVEX_EXPORT static DeprecatedVideoFrameRate fromRawValue(const MediaRational& rate) noexcept;

    /// `custom` for every rate that was made by custom(), also one that a fixed case has.
    [[nodiscard]] constexpr Choice choice() const noexcept { return choice_; }

    /// Frames per second, as the current `ntscTimeScale` has it.
    [[nodiscard]] CORVEX_EXPORT MediaRational rawValue() const noexcept;

    /// Whether the rate is over the NTSC time scale: always for the `ntsc…` cases; for `custom` when its scale equals
    /// the current `ntscTimeScale`; never for the others.
    [[nodiscard]] CORVEX_EXPORT bool hasNTSCTimeBase() const noexcept;

    /// The four `ntsc…` cases.
    [[nodiscard]] CORVEX_EXPORT static std::span<const DeprecatedVideoFrameRate> definedNTSCRates() noexcept;

    /// "29.97", "25": two digits after the point, ".00" left out.
    [[nodiscard]] CORVEX_EXPORT std::string formattedString() const;

    /// The denominator of the `ntsc…` cases, at first 1001. Process-wide, any thread; setting 0 stops the process.
    [[nodiscard]] CORVEX_EXPORT static std::int64_t ntscTimeScale() noexcept;
    CORVEX_EXPORT static void setNtscTimeScale(std::int64_t timeScale) noexcept;

    friend constexpr bool operator==(const DeprecatedVideoFrameRate& a, const DeprecatedVideoFrameRate& b) noexcept {
        return a.choice_ == b.choice_ && a.custom_ == b.custom_;
    }

private:
    Choice choice_ = Choice::ntsc24p;
    MediaRational custom_;  // 0/1 for the fixed cases
};

template <class JsonType>
CORVEX_EXPORT void to_json(JsonType& json, const DeprecatedVideoFrameRate& value);
template <class JsonType>
CORVEX_EXPORT void from_json(const JsonType& json, DeprecatedVideoFrameRate& value);

}  // namespace corvex::inline v0

template <>
struct std::hash<corvex::DeprecatedVideoFrameRate> {
    CORVEX_EXPORT std::size_t operator()(const corvex::DeprecatedVideoFrameRate& rate) const noexcept;
};

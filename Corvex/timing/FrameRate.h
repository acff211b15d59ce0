#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include <Corvex/platform/Export.h>
#include <Corvex/platform/FourCharacterCode.h>
#include <Corvex/platform/Object.h>

namespace corvex::inline v0 {

/// What the users of the transcoding tools may choose as frame rate. A value: one of the fixed choices below or
/// `custom` with a rate of its own. Equal by choice and rate: custom(24) is not fps24. Any thread. Raw values are in
/// frames per second, rounded as people write them, and are what settings and cloud messages store; for arithmetic
/// there is VideoFrameRate.
class FrameRate {
public:
    /// The cases, `custom` with a rate of its own.
    enum class Choice : std::uint8_t {
        match,
        halfstep,
        fps23_98,
        fps24,
        fps25,
        fps29_97,
        fps30,
        fps50,
        fps59_94,
        fps60,
        custom
    };

    static const FrameRate match;     ///< Keep the source's rate; raw value 0.
    static const FrameRate halfstep;  ///< Half the source's rate; raw value 0.5.
    static const FrameRate fps23_98;  ///< Raw value 23.967: its digits are in this order in stored settings.
    static const FrameRate fps24, fps25, fps29_97, fps30, fps50, fps59_94, fps60;
    /// Any number; fromRawValue() checks it.
    [[nodiscard]] static constexpr FrameRate custom(double rate) noexcept { return {Choice::custom, rate}; }

    /// Frames per second that a custom rate begins with.
    static constexpr double defaultCustomFrameRate = 1.0;

    /// The fixed choice with exactly this raw value, else `custom` for a value above 0; none for any other, with the
    /// line "Could not convert raw value to frame rate: -1.0" in the log.
    [[nodiscard]] CORVEX_EXPORT static std::optional<FrameRate> fromRawValue(double value);

    /// The fixed choices in order, and all choices, ending with custom(0.0).
    [[nodiscard]] CORVEX_EXPORT static std::span<const FrameRate> wellDefinedCases() noexcept;
    /// The fixed choices, then custom(0.0).
    [[nodiscard]] CORVEX_EXPORT static std::span<const FrameRate> allCases() noexcept;

    /// What a codec may be used with: `allCases` for every one.
    [[nodiscard]] static std::span<const FrameRate> allowed([[maybe_unused]] FourCharacterCode codecType) noexcept {
        return allCases();
    }

    [[nodiscard]] constexpr Choice choice() const noexcept { return choice_; }
    [[nodiscard]] constexpr double rawValue() const noexcept { return rawValue_; }
    /// The raw value, as the cloud messages carry it.
    [[nodiscard]] constexpr double frameRateForProto() const noexcept { return rawValue_; }

    /// "23.97 fps", "24 fps"; localised words for `match` and `halfstep`; "Custom: 12.5 fps", or the localised word
    /// alone for a custom rate that is not above 0.
    [[nodiscard]] CORVEX_EXPORT std::string description() const;
    /// The same, but the localised word alone for every custom rate.
    [[nodiscard]] CORVEX_EXPORT std::string pickerDescription() const;
    /// The description without " fps".
    [[nodiscard]] CORVEX_EXPORT std::string tag() const;

    friend constexpr bool operator==(const FrameRate&, const FrameRate&) noexcept = default;

private:
    constexpr FrameRate(Choice choice, double rawValue) noexcept : choice_(choice), rawValue_(rawValue) {}

    Choice choice_;
    double rawValue_;
};

inline constexpr FrameRate FrameRate::match(Choice::match, 0.0);
inline constexpr FrameRate FrameRate::halfstep(Choice::halfstep, 0.5);
inline constexpr FrameRate FrameRate::fps23_98(Choice::fps23_98, 23.967);
inline constexpr FrameRate FrameRate::fps24(Choice::fps24, 24.0);
inline constexpr FrameRate FrameRate::fps25(Choice::fps25, 25.0);
inline constexpr FrameRate FrameRate::fps29_97(Choice::fps29_97, 29.97);
inline constexpr FrameRate FrameRate::fps30(Choice::fps30, 30.0);
inline constexpr FrameRate FrameRate::fps50(Choice::fps50, 50.0);
inline constexpr FrameRate FrameRate::fps59_94(Choice::fps59_94, 59.94);
inline constexpr FrameRate FrameRate::fps60(Choice::fps60, 60.0);

}  // namespace corvex::inline v0

template <>
struct std::hash<corvex::FrameRate> {
    std::size_t operator()(const corvex::FrameRate& rate) const noexcept {
        return corvex::combinedHash(static_cast<std::size_t>(rate.choice()), std::hash<double>{}(rate.rawValue()));
    }
};

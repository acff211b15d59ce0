#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include <Corvex/timing/DropFrameState.h>
#include <Corvex/timing/timecodeCounting.h>
#include <Corvex/timing/timecodeParsing.h>

namespace corvex::inline v0 {

struct SmpteTime;

/// Hours, minutes, seconds and frames of a timecode (SMPTE ST 12-1) and whether it drops frames. No field is bounded,
/// and no rate is known: TimecodeFrame adds one. Equal field by field. Codes to JSON under the names of its fields.
/// Pure value; any thread.
struct TimecodeComponents {
    std::int64_t hours = 0;
    std::int64_t minutes = 0;
    std::int64_t seconds = 0;
    std::int64_t frames = 0;
    DropFrameState dropFrameState = DropFrameState::unknown;

    /// 00:00:00:00 in state `unknown`.
    constexpr TimecodeComponents() noexcept = default;
    constexpr TimecodeComponents(std::int64_t hoursValue, std::int64_t minutesValue, std::int64_t secondsValue,
                                 std::int64_t framesValue, DropFrameState state) noexcept
        : hours(hoursValue), minutes(minutesValue), seconds(secondsValue), frames(framesValue), dropFrameState(state) {}
    constexpr TimecodeComponents(const TimecodeFields& fields, DropFrameState state) noexcept
        : TimecodeComponents(fields.hours, fields.minutes, fields.seconds, fields.frames, state) {}

    /// The labels of an SMPTE time. It drops frames if the format's flags have bit 0 set; else its type says.
    CORVEX_EXPORT explicit TimecodeComponents(const SmpteTime& smpteTime,
                                              std::optional<std::uint32_t> formatDescriptionFlags) noexcept;

    /// Strict: none unless the text has proper form under both checks of `timecodeHasProperForm`.
    [[nodiscard]] static constexpr std::optional<TimecodeComponents> fromTimecode(std::string_view timecode) noexcept {
        return properComponents(timecode, {.forceProperComponentLength = true, .forceComponentBounds = true});
    }

    /// Lenient, never fails: the strict form if the text has it, else the fields that can be read and 0 for the others.
    [[nodiscard]] static constexpr TimecodeComponents sanitizedTimecode(std::string_view text) noexcept;

    /// The fields of a text between ":" and ";", each a decimal integer with an optional sign, or none; fields beyond
    /// the fourth are ignored. A ";" anywhere means drop frame.
    [[nodiscard]] static constexpr DecomposedTimecode decomposeTimecodeString(std::string_view text) noexcept {
        return decomposeTimecode(text);
    }

    /// Whether the text is four fields of decimal digits between ":" and ";", under the checks asked for. On success
    /// `visit` is called with the components. Hours and frames have no bound.
    template <class Visitor>
    static constexpr bool timecodeHasProperForm(std::string_view text, TimecodeFormChecks checks, Visitor&& visit) {
        const auto components = properComponents(text, checks);
        if (components) visit(*components);
        return components.has_value();
    }
    /// The same without the components.
    [[nodiscard]] static constexpr bool timecodeHasProperForm(std::string_view text,
                                                              TimecodeFormChecks checks) noexcept {
        return properComponents(text, checks).has_value();
    }

    /// The label of a frame at `fps` frames a second: drop frame as below, or plain counting, where a negative frame
    /// counts as 0 and hours go on beyond 24. 0 frames a second stop the process, and so does an overflow.
    [[nodiscard]] static constexpr TimecodeComponents timecodeComponents(std::int64_t frame, std::int64_t fps,
                                                                         bool isDropFrame) noexcept {
        if (isDropFrame) return dropFrameComponents(frame, fps);
        return {nonDropFields(frame, fps), DropFrameState::nonDrop};
    }

    /// The drop-frame label of a frame, at a rate that rounds to `quanta` frames a second. Frames wrap at the nominal
    /// day of quanta x 86400 frames, not at the shorter day of drop frame, on purpose: the last frames of such a range
    /// have hours 24, and frame -1 at 30 is 24:01:26;13. 0 quanta stop the process, and so does an overflow.
    [[nodiscard]] static constexpr TimecodeComponents dropFrameComponents(std::int64_t frame,
                                                                          std::int64_t quanta) noexcept {
        return {dropFrameFields(frame, quanta), DropFrameState::drop};
    }

    /// "01:02:03:04", with ";" before the frames in state `drop`. Numbers of 9 and below get one leading 0, negative
    /// ones too ("0-5", on purpose); larger ones are printed whole.
    [[nodiscard]] CORVEX_EXPORT std::string timecodeString() const;

    /// The same into the caller's memory, without allocation. The result refers to `buffer`.
    static constexpr std::size_t longestText = 87;
    /// `buffer` holds what the result refers to.
    CORVEX_EXPORT std::string_view writeTimecode(std::span<char, longestText> buffer) const noexcept;

    [[nodiscard]] constexpr bool isDropFrame() const noexcept { return dropFrameState == DropFrameState::drop; }
    /// Whether every field is 0, whatever the state.
    [[nodiscard]] constexpr bool hasDefaultComponents() const noexcept {
        return hours == 0 && minutes == 0 && seconds == 0 && frames == 0;
    }
    /// hours x 60 + minutes. Overflow stops the process.
    [[nodiscard]] constexpr std::int64_t fullMinutesRepresented() const noexcept {
        return checkedAdd(checkedMultiply<std::int64_t>(hours, 60), minutes);
    }

    static constexpr std::string_view dropFrameSeparator = ";";
    static constexpr std::string_view nonDropSeparator = ":";
    static constexpr std::string_view defaultNonDropTimecode = "00:00:00:00";
    static constexpr std::string_view defaultDropFrameTimecode = "00:00:00;00";
    static const TimecodeComponents defaultNonDropTimecodeComponents;
    static const TimecodeComponents defaultDropFrameTimecodeComponents;

    friend constexpr bool operator==(const TimecodeComponents&, const TimecodeComponents&) noexcept = default;

private:
    static constexpr std::optional<TimecodeComponents> properComponents(std::string_view text,
                                                                        TimecodeFormChecks checks) noexcept {
        const auto proper = properTimecode(text, checks);
        if (!proper) return std::nullopt;
        return TimecodeComponents(proper->fields, proper->dropFrameState);
    }
};

inline constexpr TimecodeComponents TimecodeComponents::defaultNonDropTimecodeComponents{0, 0, 0, 0,
                                                                                         DropFrameState::nonDrop};
inline constexpr TimecodeComponents TimecodeComponents::defaultDropFrameTimecodeComponents{0, 0, 0, 0,
                                                                                           DropFrameState::drop};

constexpr TimecodeComponents TimecodeComponents::sanitizedTimecode(std::string_view text) noexcept {
    if (const auto strict = fromTimecode(text)) return *strict;
    const DecomposedTimecode parts = decomposeTimecode(text);
    return {parts.hours.value_or(0), parts.minutes.value_or(0), parts.seconds.value_or(0), parts.frames.value_or(0),
            parts.dropFrameState};
}

template <class JsonType>
CORVEX_EXPORT void to_json(JsonType& json, const TimecodeComponents& value);
template <class JsonType>
CORVEX_EXPORT void from_json(const JsonType& json, TimecodeComponents& value);

}  // namespace corvex::inline v0

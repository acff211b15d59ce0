#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include <Corvex/platform/NumberText.h>
#include <Corvex/timing/DropFrameState.h>
#include <Corvex/timing/timecodeCounting.h>

namespace corvex::inline v0 {

/// What a text must hold beyond four fields of digits. Both are off at first, as readers of old files want them.
struct TimecodeFormChecks {
    /// Every field has at least two characters.
    bool forceProperComponentLength = false;
    /// Minutes and seconds are at most 60; 60 itself passes, on purpose.
    bool forceComponentBounds = false;
};

/// The fields that a text has, as far as they can be read; a field that is missing or no number is none.
struct DecomposedTimecode {
    /// In the order of the text; further fields are ignored.
    std::optional<std::int64_t> hours, minutes, seconds, frames;
    /// `drop` if there is a ";" anywhere, else `nonDrop`; never `unknown`.
    DropFrameState dropFrameState = DropFrameState::nonDrop;
    friend constexpr bool operator==(const DecomposedTimecode&, const DecomposedTimecode&) noexcept = default;
};

/// What the strict reading gives; every field was there.
struct ProperTimecode {
    /// Never negative, as signs are no digits.
    TimecodeFields fields;
    /// As DecomposedTimecode has it.
    DropFrameState dropFrameState;
};

/// The first four fields of a text, how many there are in all, and what the separators say. Refers to the text.
struct SplitTimecode {
    /// Empty where the text has fewer.
    std::array<std::string_view, 4> fields;
    /// Of all fields of the text, which may be more than four.
    std::size_t count = 0;
    /// By the same rule.
    DropFrameState dropFrameState = DropFrameState::nonDrop;
};

/// Cuts the text at ":" and ";". Empty fields count; a text without separators is one field. ";" anywhere means drop
/// frame. O(n), as are all readings here; none allocates.
[[nodiscard]] constexpr SplitTimecode splitTimecode(std::string_view text) noexcept {
    SplitTimecode result;
    std::size_t start = 0;
    for (std::size_t at = 0; at <= text.size(); ++at) {
        const bool isEnd = at == text.size();
        if (!isEnd && text[at] != ':' && text[at] != ';') continue;
        if (!isEnd && text[at] == ';') result.dropFrameState = DropFrameState::drop;
        if (result.count < result.fields.size()) result.fields[result.count] = text.substr(start, at - start);
        ++result.count;
        start = at + 1;
    }
    return result;
}

/// The lenient reading: a field that is no number is none, and so is one of a number beyond 64 bits. Signs are taken: "-1:00" has -1 hours.
[[nodiscard]] constexpr DecomposedTimecode decomposeTimecode(std::string_view text) noexcept {
    const SplitTimecode split = splitTimecode(text);
    return {parseInteger<std::int64_t>(split.fields[0]), parseInteger<std::int64_t>(split.fields[1]),
            parseInteger<std::int64_t>(split.fields[2]), parseInteger<std::int64_t>(split.fields[3]),
            split.dropFrameState};
}

/// The form that nearly every timecode has: two digits four times, HH:MM:SS:FF. None for any other text. Numbers are
/// not bounded: 99 passes in each field.
/// Source   SMPTE ST 12-1 for the fields; ";" as the mark of drop frame is the practice of the field.
[[nodiscard]] constexpr std::optional<ProperTimecode> usualTimecode(std::string_view text) noexcept {
    if (text.size() != 11) return std::nullopt;
    std::array<std::uint32_t, 4> numbers{};
    std::uint32_t worst = 0;  // the highest bit of a digit that is none is found at the end, without branches before
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const std::uint32_t tens = static_cast<unsigned char>(text[3 * i]) - std::uint32_t{'0'};
        const std::uint32_t ones = static_cast<unsigned char>(text[3 * i + 1]) - std::uint32_t{'0'};
        numbers[i] = tens * 10 + ones;
        worst |= (9U - tens) | (9U - ones) | tens | ones;
    }
    bool isDrop = false;
    for (const std::size_t at : {2U, 5U, 8U}) {
        const std::uint32_t separator = static_cast<unsigned char>(text[at]) - std::uint32_t{':'};
        worst |= 1U - separator;  // ":" and ";" follow each other in ASCII
        worst |= separator;
        isDrop = isDrop || separator == 1;
    }
    if ((worst >> 31U) != 0) return std::nullopt;
    return ProperTimecode{{numbers[0], numbers[1], numbers[2], numbers[3]},
                          isDrop ? DropFrameState::drop : DropFrameState::nonDrop};
}

/// The components of a text that is four fields of digits under the checks, or none; the quick way first. Numbers of
/// any length that 64 bits hold.
/// Whether the labels exist at a rate, as those that drop frame skips, is not looked at.
[[nodiscard]] constexpr std::optional<ProperTimecode> properTimecode(std::string_view text,
                                                                     TimecodeFormChecks checks) noexcept {
    auto result = usualTimecode(text);
    if (!result) {
        const SplitTimecode split = splitTimecode(text);
        if (split.count != split.fields.size()) return std::nullopt;
        std::array<std::int64_t, 4> numbers{};
        for (std::size_t i = 0; i < numbers.size(); ++i) {
            const std::string_view field = split.fields[i];
            const auto number = parseInteger<std::int64_t>(field);
            if (!number || field.front() < '0') return std::nullopt;  // no signs here
            if (checks.forceProperComponentLength && field.size() < 2) return std::nullopt;
            numbers[i] = *number;
        }
        result = ProperTimecode{{numbers[0], numbers[1], numbers[2], numbers[3]}, split.dropFrameState};
    }
    // Both ways come here: the usual form does not bound its fields either.
    if (checks.forceComponentBounds && (result->fields.minutes > 60 || result->fields.seconds > 60)) {
        return std::nullopt;
    }
    return result;
}

}  // namespace corvex::inline v0

#include <algorithm>
#include <optional>

#include <Corvex/timing/TimecodeFrame.h>

#include "support/Fuzzer.h"

namespace {

using namespace corvex;

/// What proper form is, written without a look at the parser: the fields as decomposed, if the text has nothing else.
std::optional<TimecodeComponents> expected(std::string_view text, TimecodeFormChecks checks) {
    if (text.find_first_not_of("0123456789:;") != std::string_view::npos) return std::nullopt;
    const auto fields = wordsOf(text, ":;");
    const auto parts = TimecodeComponents::decomposeTimecodeString(text);
    if (fields.size() != 4 || !parts.hours || !parts.minutes || !parts.seconds || !parts.frames) return std::nullopt;
    const auto isShort = [](const std::string& field) { return field.size() < 2; };
    if (checks.forceProperComponentLength && std::ranges::any_of(fields, isShort)) return std::nullopt;
    if (checks.forceComponentBounds && (*parts.minutes > 60 || *parts.seconds > 60)) return std::nullopt;
    return TimecodeComponents(*parts.hours, *parts.minutes, *parts.seconds, *parts.frames, parts.dropFrameState);
}

/// Never fails, agrees with the fields that it decomposes, and its result can be printed and, where the numbers are
/// small enough for arithmetic, counted at a drop-frame rate.
void checkLenient(std::string_view text) {
    const auto parts = TimecodeComponents::decomposeTimecodeString(text);
    const auto lenient = TimecodeComponents::sanitizedTimecode(text);
    const TimecodeComponents fromParts(parts.hours.value_or(0), parts.minutes.value_or(0), parts.seconds.value_or(0),
                                       parts.frames.value_or(0), parts.dropFrameState);
    require(lenient == fromParts, "the lenient parser reads other fields");
    require(lenient.isDropFrame() == (text.find(';') != std::string_view::npos), "another drop-frame state");
    require(lenient.timecodeString().size() <= TimecodeComponents::longestText, "a text too long");
    for (const std::int64_t field : {lenient.hours, lenient.minutes, lenient.seconds, lenient.frames}) {
        constexpr std::int64_t limit = std::int64_t{1} << 40U;
        if (field <= -limit || field >= limit) return;
    }
    const auto next = TimecodeFrame(lenient, {60000, 1001}).incremented();
    require(!lenient.isDropFrame() || next.components().isDropFrame(), "drop frame was lost");
}

}  // namespace

/// The strict parser against its rule under every choice of checks; what it takes prints and parses to itself.
void corvex::fuzz(std::string_view input) {
    for (const TimecodeFormChecks checks :
         {TimecodeFormChecks{false, false}, {false, true}, {true, false}, {true, true}}) {
        std::optional<TimecodeComponents> found;
        const bool isProper = TimecodeComponents::timecodeHasProperForm(
            input, checks, [&found](const TimecodeComponents& components) { found = components; });
        require(isProper == found.has_value() && found == expected(input, checks), "the form is judged otherwise");
    }
    const auto strict = TimecodeComponents::fromTimecode(input);
    require(strict == expected(input, {true, true}), "the strict parser reads otherwise");
    require(!strict || TimecodeComponents::fromTimecode(strict->timecodeString()) == strict, "it does not print so");
    checkLenient(input);
}

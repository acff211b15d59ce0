#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include <Corvex/timing/TimecodeComponents.h>

using corvex::TimecodeComponents;

namespace {

/// What proper form is, written without a look at the parser: the fields as decomposed, if the text has nothing else.
std::optional<TimecodeComponents> expected(std::string_view text, corvex::TimecodeFormChecks checks) {
    if (text.find_first_not_of("0123456789:;") != std::string_view::npos) return std::nullopt;
    const auto isSeparator = [](char character) { return character == ':' || character == ';'; };
    if (std::count_if(text.begin(), text.end(), isSeparator) != 3) return std::nullopt;
    const auto parts = TimecodeComponents::decomposeTimecodeString(text);
    if (!parts.hours || !parts.minutes || !parts.seconds || !parts.frames) return std::nullopt;
    std::size_t shortest = text.size();
    for (auto start = text.begin();; ++start) {
        const auto end = std::find_if(start, text.end(), isSeparator);
        shortest = std::min(shortest, static_cast<std::size_t>(end - start));
        if (end == text.end()) break;
        start = end;
    }
    if (checks.forceProperComponentLength && shortest < 2) return std::nullopt;
    if (checks.forceComponentBounds && (*parts.minutes > 60 || *parts.seconds > 60)) return std::nullopt;
    return TimecodeComponents(*parts.hours, *parts.minutes, *parts.seconds, *parts.frames, parts.dropFrameState);
}

void check(bool holds) {
    if (!holds) std::abort();
}

}  // namespace

/// The strict parser against its rule under every choice of checks; what it takes prints and parses to itself.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): bytes as characters
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    for (const bool length : {false, true}) {
        for (const bool bounds : {false, true}) {
            const corvex::TimecodeFormChecks checks{length, bounds};
            std::optional<TimecodeComponents> found;
            const bool isProper = TimecodeComponents::timecodeHasProperForm(
                text, checks, [&found](const TimecodeComponents& components) { found = components; });
            check(isProper == found.has_value() && found == expected(text, checks));
        }
    }
    const auto strict = TimecodeComponents::fromTimecode(text);
    check(strict == expected(text, {true, true}));
    if (strict) check(TimecodeComponents::fromTimecode(strict->timecodeString()) == strict);
    return 0;
}

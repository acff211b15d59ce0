#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include <Corvex/color/ColorCase.h>
#include <Corvex/exported/OAVTranscodeVideoArgumentFlag.h>
#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

class Number;

/// Whether the components use all code values, or the video (narrow) range that leaves room below and above: of 8 bits
/// 16 to 235 for Y' and R'G'B', 16 to 240 for colour differences; the same times a power of two of more bits. Coded as
/// the raw integer.
enum class OrvanePixelColorRange : std::uint8_t { full, video };

/// A row of the table: the name of the case, the text that follows "-v_colrange" and the VideoFullRangeFlag of
/// ISO/IEC 23091-2, which counts the other way round.
struct PixelColorRangeCase : Case<OrvanePixelColorRange, std::int64_t> {
    std::string_view caseName;
    std::string_view cliFlag;
    std::optional<std::uint8_t> codePoint;
};

// Source: ITU-R BT.2100-2, table 9: "full range" and "narrow range", which video people call video range.
template <>
inline constexpr auto caseTable<OrvanePixelColorRange> = std::to_array<PixelColorRangeCase>({
    {{OrvanePixelColorRange::full, 0, "Full range"}, "full", "f", 1},
    {{OrvanePixelColorRange::video, 1, "Video range"}, "video", "v", 0},
});
static_assert(isComplete<OrvanePixelColorRange>(caseTable<OrvanePixelColorRange>));

/// The flag under which the value is given.
[[nodiscard]] constexpr OAVTranscodeVideoArgumentFlag videoFlag(OrvanePixelColorRange) noexcept {
    return OAVVideoColorRangeFlag;
}

/// The value's text, "f" or "v": deliberately not the flag, unlike that of the other colour enumerations.
[[nodiscard]] constexpr std::string_view cliFlag(OrvanePixelColorRange range) noexcept { return caseOf(range).cliFlag; }

/// "f" or "v" in either case; none for anything else.
[[nodiscard]] constexpr std::optional<OrvanePixelColorRange> colorRangeFromCliFlag(std::string_view text) noexcept {
    if (text == "f" || text == "F") return OrvanePixelColorRange::full;
    if (text == "v" || text == "V") return OrvanePixelColorRange::video;
    return std::nullopt;
}

/// The range of a VideoFullRangeFlag (ISO/IEC 23091-2), or none for a number that is no flag.
[[nodiscard]] constexpr std::optional<OrvanePixelColorRange> colorRangeFromCodePoint(int point) noexcept {
    return fromListedCodePoint<OrvanePixelColorRange>(point);
}

/// The raw integer as an object.
[[nodiscard]] CORVEX_EXPORT Number wrappedValue(OrvanePixelColorRange range) noexcept;

}  // namespace corvex::inline v0

#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include <Corvex/lut/LutDimensions.h>
#include <Corvex/lut/LutDomain.h>
#include <Corvex/platform/CaseTable.h>

namespace corvex::inline v0 {

/// Why a line with text in it gave no entry. The first three look like entries, and a user wants to hear of them: a
/// table with one of them may have lost values. Empty lines are none of these.
enum class SkippedLutLine : std::uint8_t { columnCount, paddedColumns, notANumber, tooLong, inputRange, comment, text };

template <>
inline constexpr auto caseTable<SkippedLutLine> = std::to_array<Case<SkippedLutLine>>({
    {SkippedLutLine::columnCount, "columnCount", "numbers only, but not three"},
    {SkippedLutLine::paddedColumns, "paddedColumns", "three numbers with more than one blank between two"},
    {SkippedLutLine::notANumber, "notANumber", "three columns, of which one or two are no numbers"},
    {SkippedLutLine::tooLong, "tooLong", "longer than 4 MiB"},
    {SkippedLutLine::inputRange, "inputRange", "an input range, which is taken from the data instead"},
    {SkippedLutLine::comment, "comment", "begins with a hash sign"},
    {SkippedLutLine::text, "text", "other text"},
});
static_assert(isComplete<SkippedLutLine>(caseTable<SkippedLutLine>));

/// What the lines of a LUT text were, for people who wonder why a file looks different. Lines count from 1; a CR LF
/// ends one line.
struct LutLineReport {
    /// Lines of one kind that were skipped.
    struct Skipped {
        std::uint64_t count = 0;
        std::uint64_t firstLine = 0;  ///< 0 where there is none.
    };

    std::uint64_t lineCount = 0;
    /// Lines that declared dimensions or a size.
    std::uint64_t headerLineCount = 0;
    /// Lines that gave an entry.
    std::uint64_t dataLineCount = 0;
    /// By LUT_1D_SIZE or LUT_3D_SIZE, or by a header line with 1D or 3D in it; none where nothing declares them.
    std::optional<LutDimensions> declaredDimensions;
    /// Those lines count as skipped, too: they declare no dimensions.
    std::optional<LutDomain> declaredDomain;
    std::array<Skipped, allCases<SkippedLutLine>.size()> skippedLines;  ///< By the number of their kind.

    /// Those of one kind.
    [[nodiscard]] const Skipped& skipped(SkippedLutLine kind) const noexcept {
        return skippedLines[static_cast<std::size_t>(kind)];
    }
    /// Counts the current line.
    void skip(SkippedLutLine kind) noexcept {
        Skipped& entry = skippedLines[static_cast<std::size_t>(kind)];
        if (entry.count++ == 0) entry.firstLine = lineCount;
    }
};

}  // namespace corvex::inline v0

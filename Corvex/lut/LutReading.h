#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <Corvex/lut/LutLineReport.h>
#include <Corvex/platform/CaseTable.h>

namespace corvex::inline v0 {

class ParsedLutFile;
enum class LogLevel : std::uint8_t;

/// Why a file is no LUT, in the order in which they are found. docs/LUTS.md says what to do about each.
enum class LutReadProblem : std::uint8_t {
    /// The file was not opened.
    extension,
    /// Missing, not permitted, or no regular file.
    cannotOpen,
    /// After it was opened; what came before is counted.
    cannotRead,
    /// 2^24, those of a cube of 256 points.
    tooManyEntries,
    /// Also of a file that is empty.
    noEntries,
    /// Cubes of 17, 33 and 65 points are known by their numbers of entries, tables by powers of two.
    unknownDimensions,
    /// Entries are numbered by the bits of an input.
    notAPowerOfTwo,
    tooFewEntries,
    /// Code values above 2^62, which no depth has.
    valueTooLarge,
};

template <>
inline constexpr auto caseTable<LutReadProblem> = std::to_array<Case<LutReadProblem>>({
    {LutReadProblem::extension, "extension", "The name has no extension of a LUT file"},
    {LutReadProblem::cannotOpen, "cannotOpen", "The file cannot be opened, or is no regular file"},
    {LutReadProblem::cannotRead, "cannotRead", "Reading the file failed"},
    {LutReadProblem::tooManyEntries, "tooManyEntries", "The file has more than 16777216 entries"},
    {LutReadProblem::noEntries, "noEntries", "No line of the file is three numbers"},
    {LutReadProblem::unknownDimensions, "unknownDimensions",
     "Nothing declares a cube or a 1D table, and the number of entries is of neither"},
    {LutReadProblem::notAPowerOfTwo, "notAPowerOfTwo", "The entries of a 1D table are not a power of two"},
    {LutReadProblem::tooFewEntries, "tooFewEntries", "A 1D table has fewer than 256 entries"},
    {LutReadProblem::valueTooLarge, "valueTooLarge", "The largest value is above every bit depth"},
});
static_assert(isComplete<LutReadProblem>(caseTable<LutReadProblem>));

/// What came of reading a file: the table, or the problem, and in either case what its lines were. A plain value;
/// copies share the table.
struct LutReading {
    /// A line of the log.
    struct Message {
        LogLevel level;
        std::string text;

        friend bool operator==(const Message&, const Message&) = default;
    };

    /// Null where there is a problem.
    std::shared_ptr<const ParsedLutFile> file;
    std::optional<LutReadProblem> problem;
    bool isValidText = true;  ///< False: not UTF-8; what stands before the fault was read.
    LutLineReport lines;
    std::vector<Message> messages;  ///< What ParsedLutFactory::parsedLut writes to the log.
};

}  // namespace corvex::inline v0

#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include <Corvex/lut/LutDimensions.h>
#include <Corvex/lut/LutLineReport.h>
#include <Corvex/lut/LutValueTriplet.h>
#include <Corvex/platform/Decimal.h>
#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

/// Gathers the entries of a LUT text, line by line, and infers from them what the text does not declare. One grammar
/// serves all dialects: header words count before the first entry only; after it a line is three numbers or nothing.
/// For one text; not synchronised.
class CORVEX_EXPORT GenericTextLutInterpreter {
public:
    static constexpr std::int64_t seventeenGridCubeSize = 4913;
    static constexpr std::int64_t thrityThreeGridCubeSize = 35937;
    static constexpr std::int64_t sixtyFiveGridCubeSize = 274625;
    static constexpr LutMarkupType markupType = LutMarkupType::genericText;
    /// A 256-point cube. What comes after so many entries is not kept.
    static constexpr std::size_t maximumEntryCount = 16'777'216;

    /// Takes the next line, without its newline.
    void interpret(std::string_view line);

    /// The same for as many lines at the front of `text` as are plain entries; says how many bytes they take. Lines are
    /// whole: `text` ends with a newline. Reads up to 8 bytes beyond its end, which must be there.
    [[nodiscard]] std::size_t interpretPlainEntries(std::string_view text);

    /// Makes room for what `bytesLeft` more bytes give if they are like the `bytesTaken` so far; for no more than eight
    /// times of what there is, as a file may hold less than it is long.
    void expectMore(std::uint64_t bytesTaken, std::uint64_t bytesLeft);

    /// Counts a line that is not shown because of its length.
    void skipLongLine() noexcept;

    /// What the text declares. A size is only taken from before its keyword, so the usual layout gives none.
    [[nodiscard]] std::optional<LutDimensions> explicitDimensions() const noexcept {
        return report_.declaredDimensions;
    }
    [[nodiscard]] std::optional<std::uint64_t> explicitLutSize() const noexcept { return explicitLutSize_; }

    /// The smallest and the largest value of all entries; the first of equal ones.
    [[nodiscard]] const std::optional<Decimal>& explicitMinValue() const noexcept { return explicitMinValue_; }
    [[nodiscard]] const std::optional<Decimal>& explicitMaxValue() const noexcept { return explicitMaxValue_; }

    /// The entries in the order of the text.
    [[nodiscard]] const std::vector<LutValueTriplet>& triplets() const noexcept { return triplets_; }
    [[nodiscard]] std::vector<LutValueTriplet> takeTriplets() noexcept { return std::move(triplets_); }
    [[nodiscard]] bool hasTooManyEntries() const noexcept { return hasTooManyEntries_; }

    /// Inferred from the number of entries: the cubes of 17, 33 and 65, and one dimension for powers of two.
    [[nodiscard]] std::optional<LutDimensions> dimensions() const noexcept;
    /// The points of that cube or table, else the smallest power of two not below the largest value, if there is one.
    [[nodiscard]] std::optional<std::uint64_t> lutSize() const noexcept;

    [[nodiscard]] const LutLineReport& report() const noexcept { return report_; }

private:
    bool interpretHeader(std::string_view line);
    void interpretData(std::string_view text);
    void append(const LutValueTriplet& triplet, const std::string_view (&columns)[3]);
    void readSize(std::string_view line, std::size_t keyword) noexcept;
    void readDomain(std::string_view text);

    std::vector<LutValueTriplet> triplets_;
    double minimum_ = std::numeric_limits<double>::infinity();
    double maximum_ = -std::numeric_limits<double>::infinity();
    std::optional<Decimal> explicitMinValue_, explicitMaxValue_;
    std::optional<std::uint64_t> explicitLutSize_;
    LutLineReport report_;
    bool hasTooManyEntries_ = false;
};

}  // namespace corvex::inline v0

#include <Corvex/lut/GenericTextLutInterpreter.h>

#include <algorithm>
#include <array>
#include <bit>

#include <Corvex/lut/internal/scanDecimal.h>
#include <Corvex/platform/Number.h>
#include <Corvex/platform/Text.h>

namespace corvex::inline v0 {
namespace {

constexpr std::string_view blanks = " \t";
constexpr bool isBlank(char character) noexcept { return character == ' ' || character == '\t'; }

/// Where `part`, given in capitals, stands in `text` without regard to the case of ASCII letters.
std::size_t findKeyword(std::string_view text, std::string_view part) noexcept {
    const auto found = std::search(text.begin(), text.end(), part.begin(), part.end(), [](char x, char capital) {
        return x == capital || (x >= 'a' && x <= 'z' && x - ('a' - 'A') == capital);
    });
    return found == text.end() ? std::string_view::npos : static_cast<std::size_t>(found - text.begin());
}

bool holdsKeyword(std::string_view text, std::string_view part) noexcept {
    return findKeyword(text, part) != std::string_view::npos;
}

/// What a line is that is no entry.
SkippedLutLine skippedKind(std::string_view text) noexcept {
    if (text.starts_with('#')) return SkippedLutLine::comment;
    std::size_t columns = 0, numbers = 0, pieces = 0;
    forEachPiece(text, blanks, [&](std::string_view piece) {
        ++pieces;
        if (piece.empty()) return;
        ++columns;
        // Text soon shows itself: a line of words is not read to its end as numbers.
        if (columns <= 3 || numbers == columns - 1) numbers += Decimal::fromPrefix(piece) ? 1U : 0U;
    });
    if (numbers == columns) return columns == 3 ? SkippedLutLine::paddedColumns : SkippedLutLine::columnCount;
    return pieces == 3 && columns == 3 && numbers > 0 ? SkippedLutLine::notANumber : SkippedLutLine::text;
}

}  // namespace

void GenericTextLutInterpreter::interpret(std::string_view line) {
    ++report_.lineCount;
    const std::string_view text = trimmed(line);
    if (text.empty()) return;
    if (triplets_.empty()) {
        readDomain(text);
        if (interpretHeader(line)) return;
    }
    interpretData(text);
}

bool GenericTextLutInterpreter::interpretHeader(std::string_view line) {
    const auto declare = [this](LutDimensions dimensions) {
        report_.declaredDimensions = dimensions;
        ++report_.headerLineCount;
    };
    if (const auto keyword = findKeyword(line, "LUT_1D_SIZE"); keyword != std::string_view::npos) {
        declare(LutDimensions::oneD);
        readSize(line, keyword);
        return true;
    }
    if (const auto keyword = findKeyword(line, "LUT_3D_SIZE"); keyword != std::string_view::npos) {
        declare(LutDimensions::cube);
        readSize(line, keyword);
        return true;
    }
    if (holdsKeyword(line, "INPUT_RANGE")) {
        report_.skip(SkippedLutLine::inputRange);
        return true;
    }
    if (report_.declaredDimensions) return false;
    const bool isCube = holdsKeyword(line, "3D");
    if (!isCube && !holdsKeyword(line, "1D")) return false;
    declare(isCube ? LutDimensions::cube : LutDimensions::oneD);
    return true;
}

void GenericTextLutInterpreter::readSize(std::string_view line, std::size_t keyword) noexcept {
    // The keyword's first letter belongs to the text that is read, as in "33 L".
    if (const auto size = Decimal::fromPrefix(line.substr(0, keyword + 1))) explicitLutSize_ = size->uint64Value();
}

void GenericTextLutInterpreter::readDomain(std::string_view text) {
    const std::size_t keywordEnd = std::min(text.find_first_of(blanks), text.size());
    const std::string_view keyword = text.substr(0, keywordEnd);
    const auto is = [&](std::string_view name) { return keyword.size() == name.size() && holdsKeyword(keyword, name); };
    const bool isMinimum = is("DOMAIN_MIN"), isMaximum = is("DOMAIN_MAX");
    const bool isRange = is("LUT_1D_INPUT_RANGE") || is("LUT_3D_INPUT_RANGE");
    if (!isMinimum && !isMaximum && !isRange) return;
    std::array<double, 3> values{};
    std::size_t count = 0;
    bool areNumbers = true;
    forEachPiece(text.substr(keywordEnd), blanks, [&](std::string_view piece) {
        if (piece.empty()) return;
        const auto number = Decimal::fromPrefix(piece);
        areNumbers = areNumbers && number.has_value();
        if (number && count < values.size()) values[count] = number->doubleValue();
        ++count;
    });
    if (!areNumbers || count != (isRange ? 2U : 3U)) return;
    LutDomain domain = report_.declaredDomain.value_or(LutDomain());
    if (isRange) {
        domain = {{values[0], values[0], values[0]}, {values[1], values[1], values[1]}};
    } else {
        (isMinimum ? domain.minimum : domain.maximum) = {values[0], values[1], values[2]};
    }
    report_.declaredDomain = domain;
}

void GenericTextLutInterpreter::interpretData(std::string_view text) {
    std::string_view columns[3];
    std::size_t count = 0;
    for (std::string_view rest = text;; ++count) {
        const std::size_t end = rest.find_first_of(blanks);
        if (count < 3) columns[count] = rest.substr(0, end);
        if (end == std::string_view::npos || count == 3) break;
        rest.remove_prefix(end + 1);
    }
    if (count != 2) return report_.skip(skippedKind(text));
    std::array<double, 3> values{};
    for (std::size_t i = 0; i < 3; ++i) {
        const auto number = Decimal::fromPrefix(columns[i]);
        if (!number) return report_.skip(skippedKind(text));
        values[i] = number->doubleValue();
    }
    append({values[0], values[1], values[2]}, columns);
}

std::size_t GenericTextLutInterpreter::interpretPlainEntries(std::string_view text) {
    const char* const end = text.data() + text.size();
    const char* lineStart = text.data();
    while (lineStart < end) {
        const char* at = lineStart;
        LutValueTriplet triplet;
        while (isBlank(*at)) ++at;
        const char* const first = at;
        const char* const firstEnd = scanDecimal(first, triplet.first);
        if (firstEnd == nullptr || !isBlank(*firstEnd)) break;
        const char* const secondEnd = scanDecimal(firstEnd + 1, triplet.second);
        if (secondEnd == nullptr || !isBlank(*secondEnd)) break;
        const char* const thirdEnd = scanDecimal(secondEnd + 1, triplet.third);
        if (thirdEnd == nullptr) break;
        at = thirdEnd;
        while (isBlank(*at)) ++at;
        if (*at == '\r' && at + 1 < end && at[1] == '\n') ++at;
        if (*at != '\n' && *at != '\r') break;
        lineStart = at + 1;
        ++report_.lineCount;
        // Few entries move the bounds; the others need nothing but a place.
        const bool isWithinBounds = triplet.smallest() >= minimum_ && triplet.largest() <= maximum_;
        if (isWithinBounds && triplets_.size() < triplets_.capacity() && triplets_.size() < maximumEntryCount) {
            triplets_.push_back(triplet);
            ++report_.dataLineCount;
            continue;
        }
        const auto piece = [](const char* from, const char* to) {
            return std::string_view(from, static_cast<std::size_t>(to - from));
        };
        append(triplet, {piece(first, firstEnd), piece(firstEnd + 1, secondEnd), piece(secondEnd + 1, thirdEnd)});
    }
    return static_cast<std::size_t>(lineStart - text.data());
}

void GenericTextLutInterpreter::expectMore(std::uint64_t bytesTaken, std::uint64_t bytesLeft) {
    constexpr double margin = 1.02;  // lines differ in length
    const std::size_t count = triplets_.size();
    const double share = 1.0 + margin * static_cast<double>(bytesLeft) / static_cast<double>(bytesTaken);
    const std::size_t expected =
        std::min(static_cast<std::size_t>(static_cast<double>(count) * std::min(share, 8.0)), maximumEntryCount);
    // In steps, so that an estimate that creeps upwards does not move the entries at every chunk.
    if (expected > triplets_.capacity()) triplets_.reserve(std::max(expected, triplets_.capacity() / 2 * 3));
}

void GenericTextLutInterpreter::skipLongLine() noexcept {
    ++report_.lineCount;
    report_.skip(SkippedLutLine::tooLong);
}

void GenericTextLutInterpreter::append(const LutValueTriplet& triplet, const std::string_view (&columns)[3]) {
    if (triplets_.size() == maximumEntryCount) {
        hasTooManyEntries_ = true;
        return;
    }
    // The bounds keep the exact readings of their texts, so those are read again, which a table asks for seldom.
    const auto exact = [&](double value) {
        return Decimal::fromPrefix(columns[triplet.first == value ? 0 : triplet.second == value ? 1 : 2]);
    };
    if (const double smallest = triplet.smallest(); smallest < minimum_) {
        minimum_ = smallest;
        explicitMinValue_ = exact(smallest);
    }
    if (const double largest = triplet.largest(); largest > maximum_) {
        maximum_ = largest;
        explicitMaxValue_ = exact(largest);
    }
    triplets_.push_back(triplet);
    ++report_.dataLineCount;
}

std::optional<LutDimensions> GenericTextLutInterpreter::dimensions() const noexcept {
    switch (triplets_.size()) {
        case 0: return std::nullopt;
        case seventeenGridCubeSize:
        case thrityThreeGridCubeSize:
        case sixtyFiveGridCubeSize: return LutDimensions::cube;
        default: break;
    }
    return std::has_single_bit(triplets_.size()) ? std::optional(LutDimensions::oneD) : std::nullopt;
}

std::optional<std::uint64_t> GenericTextLutInterpreter::lutSize() const noexcept {
    switch (triplets_.size()) {
        case 0: return std::nullopt;
        case seventeenGridCubeSize: return 17;
        case thrityThreeGridCubeSize: return 33;
        case sixtyFiveGridCubeSize: return 65;
        default: break;
    }
    if (std::has_single_bit(triplets_.size())) return triplets_.size();
    return explicitMaxValue_ ? Number::powerOfTwoCeiling(explicitMaxValue_->int64Value()) : std::nullopt;
}

}  // namespace corvex::inline v0

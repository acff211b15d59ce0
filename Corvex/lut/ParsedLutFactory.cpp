#include <Corvex/lut/ParsedLutFactory.h>

#include <algorithm>
#include <bit>
#include <filesystem>
#include <string>
#include <utility>

#include <Corvex/lut/ParsedLutFile.h>
#include <Corvex/lut/internal/LutTextReader.h>
#include <Corvex/platform/InputFile.h>
#include <Corvex/platform/Log.h>
#include <Corvex/platform/Number.h>

namespace corvex::inline v0 {
namespace {

constexpr std::size_t smallestTable = 256;

/// One reading on its way: adds to the result and to its messages.
class Reading {
public:
    explicit Reading(const std::filesystem::path& path) : path_(path) {}

    /// Reads chunks of a text of about `size` bytes with `fill`, which takes the room for one and says how many bytes it
    /// filled, none for an error.
    template <class Fill>
    void readLines(std::uint64_t size, Fill&& fill) {
        for (std::uint64_t taken = 0;;) {
            const std::optional<std::size_t> count = fill(reader_.room());
            if (!count) return fail(LutReadProblem::cannotRead, "CVX_CLUT_PTFB-Failed to read from " + path_.string());
            const bool isValid = *count == 0 ? reader_.finish() : reader_.take(*count);
            if (!isValid) {
                result_.isValidText = false;
                say("CVX_CLUT_PTFB-Failed to decode data from " + path_.string() + " into UTF8 data");
            }
            if (interpreter_.hasTooManyEntries()) {
                return fail(LutReadProblem::tooManyEntries,
                            "CVX_CLUT_PTFB-More than " + std::to_string(GenericTextLutInterpreter::maximumEntryCount) +
                                " entries in " + path_.string());
            }
            if (!isValid || *count == 0) return;
            taken += *count;
            if (size > taken) interpreter_.expectMore(taken, size - taken);
        }
    }

    void fail(LutReadProblem problem) { result_.problem = problem; }
    void fail(LutReadProblem problem, std::string message, LogLevel level = LogLevel::error) {
        fail(problem);
        result_.messages.push_back({level, std::move(message)});
    }
    void say(std::string message) { result_.messages.push_back({LogLevel::error, std::move(message)}); }

    [[nodiscard]] LutReading finish() {
        result_.lines = interpreter_.report();
        const auto& longLines = result_.lines.skipped(SkippedLutLine::tooLong);
        if (longLines.count > 0) {
            say("CVX_CLUT_PTFB-Dropped " + std::to_string(longLines.count) + " lines longer than " +
                std::to_string(LutTextReader::maximumLineLength) + " bytes from " + path_.string());
        }
        if (!result_.problem) build();
        return std::move(result_);
    }

private:
    void build();
    [[nodiscard]] LutDomain domain() const noexcept { return result_.lines.declaredDomain.value_or(LutDomain()); }
    void buildTable(std::vector<LutValueTriplet> entries);
    void buildCube(std::vector<LutValueTriplet> entries);

    const std::filesystem::path& path_;
    GenericTextLutInterpreter interpreter_;
    LutTextReader reader_{interpreter_};
    LutReading result_;
};

void Reading::build() {
    const auto declared = interpreter_.explicitDimensions();
    const auto dimensions = declared ? declared : interpreter_.dimensions();
    if (interpreter_.triplets().empty()) return fail(LutReadProblem::noEntries);
    if (!dimensions) return fail(LutReadProblem::unknownDimensions);
    // The interpreter's own readings depend on its entries, so they are taken before the entries are.
    const bool hasSize = interpreter_.explicitLutSize() || interpreter_.lutSize();
    const std::size_t count = interpreter_.triplets().size();
    if (*dimensions == LutDimensions::cube) return buildCube(interpreter_.takeTriplets());
    if (!std::has_single_bit(count) || !hasSize) return fail(LutReadProblem::notAPowerOfTwo);
    if (count < smallestTable) {
        return fail(LutReadProblem::tooFewEntries, "CVX_PLF_PLWV-Lut file " + fileUrlText(path_) + " only containts " +
                                                       std::to_string(count) + " entries.  Considered not a LUT");
    }
    buildTable(interpreter_.takeTriplets());
}

void Reading::buildTable(std::vector<LutValueTriplet> entries) {
    const Decimal& largest = *interpreter_.explicitMaxValue();
    std::unique_ptr<const OneDimensionConverter> converter;
    if (largest.int64Value() < 2) {
        converter = std::make_unique<OneDimensionFloatingPointConverter>(
            std::move(entries), interpreter_.explicitMinValue()->doubleValue(), largest.doubleValue());
    } else {
        const auto ceiling = Number::powerOfTwoCeiling(largest.int64Value());
        if (!ceiling) return fail(LutReadProblem::valueTooLarge);
        converter =
            std::make_unique<OneDimensionsUnsignedIntegerConverter>(std::move(entries), std::countr_zero(*ceiling));
    }
    result_.file = std::make_shared<ParsedOneDimensionLutFile>(path_, GenericTextLutInterpreter::markupType,
                                                               std::move(converter), domain());
}

void Reading::buildCube(std::vector<LutValueTriplet> entries) {
    const Decimal& largest = *interpreter_.explicitMaxValue();
    const std::int64_t whole = largest.int64Value();
    const bool isInteger = largest.floatValue() > 1.0F && static_cast<float>(whole) == largest.floatValue();
    const auto ceiling = isInteger ? Number::powerOfTwoCeiling(whole) : std::nullopt;
    if (isInteger && !ceiling) return fail(LutReadProblem::valueTooLarge);
    LutCube cube(std::move(entries), interpreter_.explicitMinValue()->doubleValue(), largest.doubleValue());
    auto interpolator = std::make_shared<TrilinearLutInterpolator>();
    if (ceiling) {
        result_.file = std::make_shared<ParsedThreeDimensionalIntegerFile>(
            path_, GenericTextLutInterpreter::markupType,
            Integer3DSampleConverter(std::move(cube), std::move(interpolator), std::countr_zero(*ceiling)), domain());
    } else {
        result_.file = std::make_shared<ParsedThreeDimensionalFloatingPointFile>(
            path_, GenericTextLutInterpreter::markupType,
            NormalizedFloatingPoint3DSampleConverter(std::move(cube), std::move(interpolator)), domain());
    }
}

/// The reading of a path whose extension is permitted by `read`, which gathers the lines.
template <class Read>
LutReading readPermitted(const std::filesystem::path& path, Read&& read) {
    Reading reading(path);
    if (!ParsedLutFactory::extensionFilter.permitsExtension(path)) {
        reading.fail(LutReadProblem::extension,
                     "CVX_PLF_PLWV-Lut file " + fileUrlText(path) + " is not a supported format", LogLevel::info);
    } else {
        read(reading);
    }
    return reading.finish();
}

}  // namespace

std::shared_ptr<const ParsedLutFile> ParsedLutFactory::parsedLut(const std::filesystem::path& lutFilePath) {
    const LutReading reading = read(lutFilePath);
    for (const auto& message : reading.messages) log(message.level, message.text);
    return reading.file;
}

LutReading ParsedLutFactory::read(const std::filesystem::path& lutFilePath) {
    return readPermitted(lutFilePath, [&](Reading& reading) {
        auto file = InputFile::open(lutFilePath);
        if (!file) {
            return reading.fail(LutReadProblem::cannotOpen,
                                "CVX_CLUT_PTFB-Failed to open lut file " + lutFilePath.string());
        }
        reading.readLines(file->size(), [&](std::span<char> room) { return file->read(room); });
        if (!file->close()) reading.say("CVX_CLUT_PTFB-Failed to close " + lutFilePath.string());
    });
}

LutReading ParsedLutFactory::readText(std::string_view bytes, const std::filesystem::path& name) {
    return readPermitted(name, [&](Reading& reading) {
        reading.readLines(bytes.size(), [&](std::span<char> room) {
            const std::size_t count = std::min(bytes.size(), room.size());
            std::copy_n(bytes.data(), count, room.data());
            bytes.remove_prefix(count);
            return std::optional(count);
        });
    });
}

}  // namespace corvex::inline v0

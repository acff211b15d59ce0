#include <filesystem>
#include <fstream>
#include <optional>
#include <random>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <Corvex/lut/GenericTextLutInterpreter.h>
#include <Corvex/lut/ObjcLutDetail.h>
#include <Corvex/lut/ParsedLutFactory.h>
#include <Corvex/lut/ParsedLutFile.h>
#include <Corvex/lut/internal/LutTextReader.h>
#include <Corvex/platform/Text.h>
#include <tests/LoggedBy.h>
#include <tests/TemporaryDirectory.h>

namespace corvex::lutReadingTests {
namespace {

using Triplets = std::vector<LutValueTriplet>;

/// `count` lines of three equal numbers: `last` in the last line and 0 in the others.
std::string entryLines(std::size_t count, std::string_view last) {
    std::string text;
    for (std::size_t i = 1; i < count; ++i) text += "0 0 0\n";
    for (int column = 0; column < 3; ++column) text.append(last).append(column < 2 ? " " : "\n");
    return text;
}

LutReading readLut(std::string_view text) { return ParsedLutFactory::readText(text, "look.cube"); }

Triplets entriesOf(const LutReading& reading) {
    if (!reading.file) return {};
    const auto entries = reading.file->orderedEntries();
    return {entries.begin(), entries.end()};
}
Triplets entriesOf(std::string_view text) { return entriesOf(readLut("3D\n" + std::string(text))); }

/// What a file turned out to be, as "converter entries depth" or "problem".
std::string verdict(const LutReading& reading) {
    if (!reading.file) return std::string(rawValue(*reading.problem));
    const auto& converter = reading.file->converter();
    std::string text(converter.className());
    text += ' ' + std::to_string(reading.file->orderedEntries().size());
    if (const auto* integer = dynamic_cast<const Integer3DSampleConverter*>(&converter)) {
        text += ' ' + std::to_string(integer->bitDepth());
    }
    return text;
}

TEST(LutReading, linesBecomeEntriesOrNothing) {
    const Triplets one{{1, 2, 3}};
    const std::tuple<const char*, std::string, Triplets> rows[] = {
        {"tabs", "1\t2\t3", one},
        {"tabAndBlank", "1\t 2 3", {}},
        {"indented", " \t\u00a0\u20031 2 3 \u3000\t ", one},
        {"noBreakSpaceSeparates", "1\u00a02 3", {}},
        {"noBreakSpaceLeads", "1 \u00a02 3", one},
        {"suffixes", "1x 2, 3L", one},
        {"hexadecimalIsItsZero", "1 2 0x3", {{1, 2, 0}}},
        {"forms", "+.5 5. -1e-1", {{0.5, 5, -0.1}}},
        {"brokenExponents", "1e 2e+ 3E-x", one},
        {"noDigits", ". 1 2\n- 3 4\ne5 6 7", {}},
        {"minusZero", "-0 -0.0 -1e-999", {{0, 0, 0}}},
        {"beyondDouble", "1e309 0 0\n1 2 1" + std::string(400, '0'), {}},
        {"long", "0.1000000000000000055511151231257827021181583404541015625 0 0", {{0.1, 0, 0}}},
        {"aboveHalfway", "9007199254740993.00000000000000000000000000001 0 0", {{9007199254740994, 0, 0}}},
        {"manyZeros", std::string(60, '0') + "1." + std::string(40, '0') + " 2 3", one},
        {"byteOrderMark", "\uFEFF1 2 3", {}},
        {"nulBytes", std::string("1 2 3\0", 6), one},
    };
    for (const auto& [name, text, expected] : rows) EXPECT_EQ(entriesOf(text), expected) << name;
}

TEST(LutReading, everyNewlineEndsALineAndOthersDoNot) {
    for (const char* newline : {"\n", "\v", "\f", "\r", "\r\n", "\u0085", "\u2028", "\u2029", "\n\n\r"}) {
        std::string text = std::string("0 0 1") + newline + "0 0 2" + newline + "0 0 3";
        EXPECT_EQ(entriesOf(text), (Triplets{{0, 0, 1}, {0, 0, 2}, {0, 0, 3}})) << testing::PrintToString(newline);
    }
    EXPECT_EQ(entriesOf("0 0 1\x1c\x1d\x1e"), (Triplets{{0, 0, 1}}));
    EXPECT_EQ(readLut("a\r\nb\r\n\r\nc\rd").lines.lineCount, 5U);
}

TEST(LutReading, headersCountBeforeTheFirstEntryOnly) {
    const std::tuple<const char*, const char*, std::optional<LutDimensions>, std::optional<std::uint64_t>> rows[] = {
        {"keywordFirst", "LUT_3D_SIZE 33", LutDimensions::cube, std::nullopt},
        {"numberFirst", "33 LUT_3D_SIZE", LutDimensions::cube, 33},
        {"numberGlued", "\t17.9lut_1d_Size", LutDimensions::oneD, 17},
        {"billions", "99999999999999999999999 LUT_3D_SIZE", LutDimensions::cube, UINT64_MAX},
        {"sizeStays", "8 LUT_1D_SIZE\nLUT_3D_SIZE 9", LutDimensions::cube, 8},
        {"bothIsACube", "title: 1d and 3d", LutDimensions::cube, std::nullopt},
        {"markersDoNotOverrule", "1D\n3D", LutDimensions::oneD, std::nullopt},
        {"keywordOverrules", "1D\nLUT_3D_SIZE 2", LutDimensions::cube, std::nullopt},
        {"rangeIsNoMarker", "LUT_3D_INPUT_RANGE 0 1", std::nullopt, std::nullopt},
        {"comment", "# a 3d table", LutDimensions::cube, std::nullopt},
        {"afterAnEntry", "0 0 0\n3D\nLUT_1D_SIZE 4\n5 LUT_1D_SIZE", std::nullopt, std::nullopt},
        {"entryWithAMarker", "1d 2 3", LutDimensions::oneD, std::nullopt},
        {"longS", "LUT_3D_\u017fIZE", LutDimensions::cube, std::nullopt},
    };
    for (const auto& [name, text, dimensions, size] : rows) {
        GenericTextLutInterpreter interpreter;
        forEachPiece(text, "\n", [&](std::string_view line) { interpreter.interpret(line); });
        EXPECT_EQ(interpreter.explicitDimensions(), dimensions) << name;
        EXPECT_EQ(interpreter.explicitLutSize(), size) << name;
    }
}

TEST(LutReading, kindSizeAndDepthComeFromTheEntries) {
    const std::tuple<const char*, std::string, std::string> rows[] = {
        {"declaredNothing", "3D\n", "noEntries"},
        {"32IsATable", entryLines(32768, "1"), "OneDimensionFloatingPointConverter 32768"},
        {"16IsDeclared", "3d\n" + entryLines(4096, "1"), "NormalizedFloatingPoint3DSampleConverter 4096"},
        {"noPower", entryLines(300, "1"), "unknownDimensions"},
        {"declaredNoPower", "1D\n" + entryLines(300, "1"), "notAPowerOfTwo"},
        {"tableBelowTwo", entryLines(256, "1.99999999999999999999"), "OneDimensionFloatingPointConverter 256"},
        {"tableOfTwo", entryLines(256, "2"), "OneDimensionsUnsignedIntegerConverter 256"},
        {"tableNegative", entryLines(256, "-7"), "OneDimensionFloatingPointConverter 256"},
        {"tableHuge", entryLines(256, "1e300"), "valueTooLarge"},
        {"cube4096", "3D\n" + entryLines(8, "4096"), "Integer3DSampleConverter 8 12"},
        {"cube4097", "3D\n" + entryLines(8, "4097"), "Integer3DSampleConverter 8 13"},
        {"cubeFraction", "3D\n" + entryLines(8, "1.5"), "NormalizedFloatingPoint3DSampleConverter 8"},
        // The fraction is lost in single precision, which decides.
        {"cubeTinyFraction", "3D\n" + entryLines(8, "1.00000001"), "NormalizedFloatingPoint3DSampleConverter 8"},
        {"cubeLostFraction", "3D\n" + entryLines(8, "65535.0000001"), "Integer3DSampleConverter 8 16"},
        {"cubeLargest", "3D\n" + entryLines(8, "4611686018427387904"), "Integer3DSampleConverter 8 62"},
        {"cubeTooLarge", "3D\n" + entryLines(8, "4611686018427387905"), "valueTooLarge"},
        {"cubeBeyondIntegers", "3D\n" + entryLines(8, "1e30"), "NormalizedFloatingPoint3DSampleConverter 8"},
        {"hugeDeclared", "99999999999 LUT_3D_SIZE\n0 0 0", "NormalizedFloatingPoint3DSampleConverter 1"},
        {"tooMany", entryLines(GenericTextLutInterpreter::maximumEntryCount + 1, "1"), "tooManyEntries"},
    };
    for (const auto& [name, text, expected] : rows) EXPECT_EQ(verdict(readLut(text)), expected) << name;
}

TEST(LutReading, interpreterInfersSizes) {
    const std::tuple<std::size_t, const char*, std::optional<std::uint64_t>> rows[] = {
        {0, "1", {}}, {4913, "1", 17}, {274625, "1", 65}, {1024, "1", 1024}, {3, "5.9", 8}, {3, "0.9", {}}};
    for (const auto& [count, largest, size] : rows) {
        GenericTextLutInterpreter interpreter;
        for (std::size_t i = 0; i < count; ++i) interpreter.interpret(std::string("0 0 ") + largest);
        EXPECT_EQ(interpreter.lutSize(), size) << count << ' ' << largest;
    }
}

TEST(LutReading, linesAndCharactersMayLieAcrossChunks) {
    constexpr std::size_t chunk = LutTextReader::chunkSize;
    for (const std::string tail : {"0.25 0.5 0.75\n1 1 1\n", "0.25 0.5 0.75\r\n1 1 1", "0.25 0.5 0.75\u20281 1 1",
                                   "0.25 0.5 0.75\u00851 1 1\u2029", "\u00a0\u30000.25 0.5 0.75\u3000\n1 1 1"}) {
        for (std::size_t before = 0; before <= tail.size(); ++before) {
            const auto reading = readLut("3D\n#" + std::string(chunk - before - 5, '-') + '\n' + tail);
            EXPECT_EQ(reading.lines.lineCount, 4U) << before << tail;
            EXPECT_EQ(entriesOf(reading), (Triplets{{0.25, 0.5, 0.75}, {1, 1, 1}})) << before << tail;
        }
    }
}

TEST(LutReading, badUtf8EndsTheTextAtItsChunk) {
    constexpr std::size_t chunk = LutTextReader::chunkSize;
    const std::string first = "3D\n1 1 1\n#" + std::string(chunk - 12, '-') + "\n2";
    ASSERT_EQ(first.size(), chunk);
    const std::tuple<const char*, std::string, std::size_t, bool> rows[] = {
        {"valid", first + " 2 2\n3 3 3\n\xF0\x9F\x8E\xA8", 3, true},
        {"faultInSecondChunk", first + " 2 2\n3 3 3\n\xFF", 1, false},
        {"faultInFirstChunk", "\xC3(" + first, 0, false},
        {"cutOffAtTheEnd", "3D\n1 1 1\n2 2 2\n3 3 3\xE2\x80", 2, false},
        {"cutOffThenWrong", first.substr(0, chunk - 1) + "\xE2" + "2 2 2\n3 3 3\n", 1, false},
    };
    for (const auto& [name, text, entries, isValid] : rows) {
        const auto reading = readLut(text);
        EXPECT_EQ(reading.lines.dataLineCount, entries) << name;
        EXPECT_EQ(reading.isValidText, isValid) << name;
        EXPECT_EQ(reading.messages.size(), isValid ? 0U : 1U) << name;
        for (const auto& message : reading.messages) {
            EXPECT_EQ(message.text, "CVX_CLUT_PTFB-Failed to decode data from look.cube into UTF8 data") << name;
        }
    }
}

TEST(LutReading, longLinesAreDroppedAtTheirLimit) {
    constexpr std::size_t limit = LutTextReader::maximumLineLength;
    const std::string atLimit = "1 1 1" + std::string(limit - 5, ' ');
    EXPECT_EQ(entriesOf("2 2 2\n" + atLimit + "\n3 3 3").size(), 3U);
    const auto reading = readLut("3D\n2 2 2\n" + atLimit + " \n3 3 3\n" + atLimit + " ");
    EXPECT_EQ(reading.lines.dataLineCount, 2U);
    EXPECT_EQ(reading.lines.skipped(SkippedLutLine::tooLong).firstLine, 3U);
    const std::string_view message = "CVX_CLUT_PTFB-Dropped 2 lines longer than 4194304 bytes from look.cube";
    EXPECT_EQ(reading.messages, (std::vector<LutReading::Message>{{LogLevel::error, std::string(message)}}));
}

TEST(LutReading, lookAlikesAreCountedByKind) {
    const auto lines = readLut(
                           "# note\n\nLUT_3D_INPUT_RANGE 0 1\nTITLE x\n3D\n1  2 3\n1 2 3 4\n9 8\n1 nan 3\n"
                           "DOMAIN_MIN 0 0 0\na b c\n1 2 3\n")
                           .lines;
    const std::tuple<SkippedLutLine, std::uint64_t, std::uint64_t> rows[] = {
        {SkippedLutLine::comment, 1, 1},       {SkippedLutLine::inputRange, 1, 3},  {SkippedLutLine::text, 3, 4},
        {SkippedLutLine::paddedColumns, 1, 6}, {SkippedLutLine::columnCount, 2, 7}, {SkippedLutLine::notANumber, 1, 9}};
    for (const auto& [kind, count, firstLine] : rows) {
        EXPECT_EQ(lines.skipped(kind).count, count) << rawValue(kind);
        EXPECT_EQ(lines.skipped(kind).firstLine, firstLine) << rawValue(kind);
    }
    EXPECT_EQ(lines.lineCount, 12U);
    EXPECT_EQ(lines.headerLineCount, 1U);
}

/// Numbers of every length, read by the library's fast path and, each with a suffix, by its careful one.
TEST(LutReading, bothWaysOfReadingNumbersAgreeBitForBit) {
    std::mt19937_64 random(7);
    std::string plain = "3D\n", suffixed = "3D\n";
    for (int i = 0; i < 30'000; ++i) {
        std::string number(random() % 3 == 0 ? "-" : "");
        for (auto count = random() % 12; count > 0; --count) number += static_cast<char>('0' + random() % 10);
        number += '.';
        for (auto count = 1 + random() % 24; count > 0; --count) number += static_cast<char>('0' + random() % 10);
        if (random() % 4 == 0) number += "e-" + std::to_string(random() % 330);
        plain += number + (i % 3 == 2 ? "\n" : " ");
        suffixed += number + (i % 3 == 2 ? "x\n" : "x ");
    }
    const auto entries = entriesOf(readLut(plain));
    EXPECT_EQ(entries.size(), 10'000U);
    EXPECT_TRUE(entries == entriesOf(readLut(suffixed)));
}

TEST(LutFile, failuresAreLoggedAndGiveNothing) {
    const test::TemporaryDirectory directory;
    const std::string root = directory.path().string();
    std::filesystem::create_directory(root + "/directory.cube");
    ASSERT_EQ(::mkfifo((root + "/pipe.cube").c_str(), 0600), 0);
    std::filesystem::create_symlink("/dev/zero", root + "/device.cube");
    std::filesystem::create_symlink("/proc/self/mem", root + "/unreadable.cube");  // regular, and reading it fails
    std::ofstream(root + "/few ü.lut") << entryLines(128, "7");
    std::ofstream(root + "/look.png") << entryLines(256, "7");
    const std::string open = "CVX_CLUT_PTFB-Failed to open lut file " + root;
    const std::pair<const char*, std::string> rows[] = {
        {"absent.cube", open + "/absent.cube"},
        {"directory.cube", open + "/directory.cube"},
        {"pipe.cube", open + "/pipe.cube"},
        {"device.cube", open + "/device.cube"},
        {"unreadable.cube", "CVX_CLUT_PTFB-Failed to read from " + root + "/unreadable.cube"},
        {"look.png", "CVX_PLF_PLWV-Lut file file://" + root + "/look.png is not a supported format"},
        {"few ü.lut", "CVX_PLF_PLWV-Lut file file://" + root +
                          "/few%20%C3%BC.lut only containts 128 entries.  Considered not a LUT"},
    };
    for (const auto& [name, expected] : rows) {
        const auto log = test::loggedBy(
            [&, file = directory.path() / name] { EXPECT_EQ(ParsedLutFactory::parsedLut(file), nullptr) << file; });
        EXPECT_EQ(log, std::vector{expected}) << name;
    }
    EXPECT_EQ(ParsedLutFactory::readText("", "look.png").messages.front().level, LogLevel::info);
}

TEST(LutFile, extensionsDecideWhatIsReadInAnyCase) {
    for (const char* name : {"a.alut", "a.CMS", "a.Cube", "a.dat", "a.ilut", "a.lut", "a.mga", "a.olut", "a.1dlut",
                             "a.3DL", "a.3dmesh", "a.txt", "a.xml", "a.b.cube"}) {
        EXPECT_TRUE(ParsedLutFactory::extensionFilter.permitsExtension(name)) << name;
    }
    for (const char* name : {"cube", ".cube", "a.cub", "a.cube~", "a.cube.bak", "a.", "a.cm\u017f"}) {
        EXPECT_FALSE(ParsedLutFactory::extensionFilter.permitsExtension(name)) << name;
    }
}

std::optional<ObjcLutDetail> built(std::string_view text) {
    const test::TemporaryDirectory directory;
    std::ofstream(directory.path() / "look.cube", std::ios::binary) << text;
    return ObjcLutConversionFactory::buildParsedLut(directory.path() / "look.cube");
}

TEST(ObjcLut, eachKindHasItsDescriptors) {
    const std::tuple<const char*, std::string, std::string> rows[] = {
        {"integerTable", entryLines(1024, "4095"), "1D table, 1024 entries, 10 bits, 0 to 1023"},
        {"floatTable", entryLines(256, "-0.5"), "1D table, 256 entries, -0.5 to 0.0"},
        {"floatCube", entryLines(35937, "0.75"), "cube of 33 points, 0.0 to 0.75, 35937 entries, 0.0 to 0.75"},
        {"integerCube", "3D\n" + entryLines(9, "900"), "cube of 2 points, 0.0 to 900.0, 9 entries, 10 bits, 0 to 900"},
    };
    for (const auto& [name, text, expected] : rows) {
        const auto detail = built(text);
        ASSERT_TRUE(detail) << name;
        EXPECT_EQ(detail->description(), expected) << name;
        EXPECT_NE(detail->integerDescriptor().has_value(), detail->floatingPointDescriptor().has_value()) << name;
    }
    EXPECT_FALSE(built("3D\n"));
}

TEST(ObjcLut, equalFilesAreEqualObjects) {
    const auto a = built("3D\n0 0 0\n1 2 3"), b = built("3d\n0 0 0\n1\t2\t3"), c = built("3D\n0 0 0\n2 1 3");
    EXPECT_TRUE(a->isEqual(*b));
    EXPECT_EQ(a->hash(), b->hash());
    EXPECT_FALSE(a->isEqual(*c));
    EXPECT_FALSE(a->isEqual(a->dimensionDescriptor()));
    ObjcLutRGBNumericTriplet entry = a->orderedLutValues()[1];
    entry.setR(Number(2));
    entry.setG(Number(1));
    EXPECT_TRUE(entry.isEqual(c->orderedLutValues()[1]));
}

TEST(ObjcLutDeathTest, negativeCodeValuesStopTheProcess) {
    EXPECT_DEATH((void)built("3D\n-5 0 0\n0 0 9"), "does not fit into an unsigned integer");
}

}  // namespace
}  // namespace corvex::lutReadingTests

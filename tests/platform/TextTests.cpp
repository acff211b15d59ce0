#include <Corvex/platform/Text.h>

#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

using namespace std::string_view_literals;

namespace corvex::textTests {
namespace {

/// A name, a text and what becomes of it.
using MappingRow = std::tuple<const char*, std::string_view, std::string_view>;

constexpr MappingRow lowercaseRows[] = {
    {"asciiOnly", "-VCodec_[@Z`{09]", "-vcodec_[@z`{09]"},
    {"capitalSigmaNeedsNoContext", "ÄΣ", "äσ"},
    {"dottedCapitalIHasTwo", "İN", "i\u0307n"},
    {"fourByteCharacters", "\U00010400", "\U00010428"},
    {"strayBytesStay", "A\xFF\xC3(B\xE2\x82", "a\xFF\xC3(b\xE2\x82"},
    {"nulIsACharacter", "A\0B"sv, "a\0b"sv},
};

TEST(Text, lowercaseMapsEachCharacter) {
    for (const auto& [name, text, expected] : lowercaseRows) {
        std::string inPlace(text);
        makeLowercase(inPlace);
        EXPECT_EQ(inPlace, expected) << name;
        EXPECT_EQ(lowercased(text), expected) << name;
    }
}

constexpr MappingRow trimmedRows[] = {
    {"onlySpace", " \t\r\n\u00A0\u3000", ""},
    {"asciiControls", "\t\n\v\f\r x y \n", "x y"},
    {"informationSeparatorsStay", "\x1C\x1Fx\x1E", "\x1C\x1Fx\x1E"},
    {"spacesBeyondAscii", "\u0085\u00A0\u2003\u3000x\u2028\u2029\u202F", "x"},
    {"nulStays", "\0 "sv, "\0"sv},
    {"cutSpaceIsNone", " x\xE3\x80 ", "x\xE3\x80"},
    {"continuationAfterSpace", "x\u3000\x80", "x\u3000\x80"},
};

TEST(Text, trimmedRemovesWhiteSpaceAndNewlinesOnly) {
    for (const auto& [name, text, expected] : trimmedRows) EXPECT_EQ(trimmed(text), expected) << name;
}

/// Whether a text equals another, begins with it and has it within.
constexpr std::tuple<const char*, std::string_view, std::string_view, bool, bool, bool> compareRows[] = {
    {"emptyPart", "x", "", false, true, true},
    {"partIsLonger", "-i", "-in", false, false, false},
    {"ascii", "-VN", "-vn", true, true, true},
    {"inFront", "-IN_0_1", "-in", false, true, true},
    {"within", "x-Tc_Burn-y", "-tc_burN", false, false, true},
    {"caseBitAloneIsNotCase", "[", "{", false, false, false},
    {"sharpSIsTwoS", "STRASSE", "straße", true, true, true},
    {"longSIsS", "-preſets", "-PRESET", false, true, true},
    {"accentsCount", "resume", "résumé", false, false, false},
    {"strayByteEqualsItself", "\xFFx", "\xFFX", true, true, true},
    {"strayByteIsNoCharacter", "ÿ", "\xFF", false, false, false},
};

TEST(Text, comparisonsIgnoreCase) {
    for (const auto& [name, text, part, equals, hasPrefix, contains] : compareRows) {
        EXPECT_EQ(equalsIgnoringCase(text, part), equals) << name;
        EXPECT_EQ(hasPrefixIgnoringCase(text, part), hasPrefix) << name;
        EXPECT_EQ(containsIgnoringCase(text, part), contains) << name;
    }
}

TEST(Text, newlinesAreAClassOfTheirOwn) {
    const std::u32string newlines = U"\u000A\u000B\u000C\u000D\u0085\u2028\u2029";
    for (char32_t character = 0; character < 0x3001; ++character) {
        const bool expected = newlines.find(character) != std::u32string::npos;
        ASSERT_EQ(isNewline(character), expected) << std::hex << std::uint32_t{character};
        ASSERT_TRUE(!expected || isWhitespaceOrNewline(character)) << std::hex << std::uint32_t{character};
    }
}

TEST(Text, firstCharacterAcceptsUtf8Only) {
    // Beyond Unicode, a surrogate, too long, cut.
    for (const std::string_view text : {"\xF4\x90\x80\x80", "\xED\xA0\x80", "\xC0\xAF", "\xE2\x82"}) {
        const auto found = firstCharacter(text);
        EXPECT_EQ(std::pair(found.isValid, found.byteCount), std::pair(false, 1)) << testing::PrintToString(text);
    }
    EXPECT_EQ(firstCharacter("\U0010FFFF.").codePoint, 0x10FFFFU);
}

TEST(Text, piecesKeepEmptyOnes) {
    const std::tuple<std::string_view, std::string_view, std::vector<std::string_view>> rows[] = {
        {"", " ", {""}}, {"a,b c", ", ", {"a", "b", "c"}}, {"_a__", "_", {"", "a", "", ""}}, {"a b", "", {"a b"}}};
    for (const auto& [text, separators, expected] : rows) {
        std::vector<std::string_view> pieces;
        forEachPiece(text, separators, [&](std::string_view piece) { pieces.push_back(piece); });
        EXPECT_EQ(pieces, expected) << '"' << text << '"';
    }
}

}  // namespace
}  // namespace corvex::textTests

#include <Corvex/platform/Text.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

#include <utf8proc.h>

namespace corvex::inline v0 {
namespace {

constexpr char asciiLower(char character) noexcept {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character + ('a' - 'A')) : character;
}

constexpr bool isAsciiSpace(char character) noexcept {
    return character == ' ' || (character >= '\t' && character <= '\r');
}

void appendCharacter(std::string& out, char32_t codePoint) {
    std::array<utf8proc_uint8_t, 4> bytes{};
    const auto count = utf8proc_encode_char(static_cast<utf8proc_int32_t>(codePoint), bytes.data());
    for (utf8proc_ssize_t i = 0; i < count; ++i) out += static_cast<char>(bytes[static_cast<std::size_t>(i)]);
}

/// Appends the mapping of each character by `map(out, codePoint)`; ASCII is lowered directly, other bytes are copied.
template <class Map>
std::string mapped(std::string_view text, Map map) {
    std::string out;
    out.reserve(text.size());
    while (!text.empty()) {
        if (static_cast<unsigned char>(text.front()) < 0x80) {
            out += asciiLower(text.front());
            text.remove_prefix(1);
            continue;
        }
        const DecodedCharacter next = firstCharacter(text);
        if (next.isValid) {
            map(out, next.codePoint);
        } else {
            out += text.front();
        }
        text.remove_prefix(static_cast<std::size_t>(next.byteCount));
    }
    return out;
}

void appendFolded(std::string& out, char32_t codePoint) {
    std::array<utf8proc_int32_t, 8> folded{};
    int boundary = 0;
    const auto count =
        utf8proc_decompose_char(static_cast<utf8proc_int32_t>(codePoint), folded.data(),
                                static_cast<utf8proc_ssize_t>(folded.size()), UTF8PROC_CASEFOLD, &boundary);
    if (count <= 0) {
        appendCharacter(out, codePoint);
        return;
    }
    for (utf8proc_ssize_t i = 0; i < count; ++i) {
        appendCharacter(out, static_cast<char32_t>(folded[static_cast<std::size_t>(i)]));
    }
}

bool equalsAsciiIgnoringCase(std::string_view a, std::string_view b) noexcept {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return asciiLower(x) == asciiLower(y); });
}

}  // namespace

bool isAscii(std::string_view text) noexcept {
    std::uint64_t seen = 0;
    while (text.size() >= sizeof seen) {
        std::uint64_t word = 0;
        std::memcpy(&word, text.data(), sizeof word);
        seen |= word;
        text.remove_prefix(sizeof word);
    }
    for (const char character : text) seen |= static_cast<unsigned char>(character);
    return (seen & 0x8080808080808080U) == 0;
}

DecodedCharacter firstCharacter(std::string_view text) noexcept {
    utf8proc_int32_t codePoint = -1;
    const auto count = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                                        static_cast<utf8proc_ssize_t>(text.size()), &codePoint);
    if (count <= 0) return {0, 1, false};
    return {static_cast<char32_t>(codePoint), static_cast<int>(count), true};
}

bool isWhitespaceOrNewline(char32_t character) noexcept {
    if (character < 0x80) return isAsciiSpace(static_cast<char>(character));
    if (character == 0x85) return true;
    const auto category = utf8proc_category(static_cast<utf8proc_int32_t>(character));
    return category == UTF8PROC_CATEGORY_ZS || category == UTF8PROC_CATEGORY_ZL || category == UTF8PROC_CATEGORY_ZP;
}

std::string lowercased(std::string_view text) {
    return mapped(text, [](std::string& out, char32_t codePoint) {
        if (codePoint == 0x130) {  // the one character whose lower case is two, whatever its context or language
            out += "i\u0307";
        } else {
            appendCharacter(out, static_cast<char32_t>(utf8proc_tolower(static_cast<utf8proc_int32_t>(codePoint))));
        }
    });
}

void makeLowercase(std::string& text) {
    unsigned char seen = 0;
    for (char& character : text) {
        seen |= static_cast<unsigned char>(character);
        character = asciiLower(character);
    }
    if (seen >= 0x80) text = lowercased(text);  // what is lowered already stays so
}

std::string_view trimmedEnds(std::string_view text) noexcept {
    while (!text.empty()) {
        if (static_cast<unsigned char>(text.front()) < 0x80) {
            if (!isAsciiSpace(text.front())) break;
            text.remove_prefix(1);
            continue;
        }
        const DecodedCharacter next = firstCharacter(text);
        if (!next.isValid || !isWhitespaceOrNewline(next.codePoint)) break;
        text.remove_prefix(static_cast<std::size_t>(next.byteCount));
    }
    while (!text.empty()) {
        if (static_cast<unsigned char>(text.back()) < 0x80) {
            if (!isAsciiSpace(text.back())) break;
            text.remove_suffix(1);
            continue;
        }
        // Step back over continuation bytes; a tail that is no whole valid character is no white space either.
        std::size_t start = text.size() - 1;
        while (start > 0 && text.size() - start < 4 && (static_cast<unsigned char>(text[start]) & 0xC0U) == 0x80U) {
            --start;
        }
        const DecodedCharacter last = firstCharacter(text.substr(start));
        const bool isWhole = last.isValid && start + static_cast<std::size_t>(last.byteCount) == text.size();
        if (!isWhole || !isWhitespaceOrNewline(last.codePoint)) break;
        text.remove_suffix(static_cast<std::size_t>(last.byteCount));
    }
    return text;
}

std::string caseFolded(std::string_view text) { return mapped(text, appendFolded); }

bool equalsIgnoringCase(std::string_view a, std::string_view b) {
    if (isAscii(a) && isAscii(b)) return equalsAsciiIgnoringCase(a, b);
    return caseFolded(a) == caseFolded(b);
}

bool hasPrefixIgnoringCase(std::string_view text, std::string_view prefix) {
    if (isAscii(text) && isAscii(prefix)) return equalsAsciiIgnoringCase(text.substr(0, prefix.size()), prefix);
    return caseFolded(text).starts_with(caseFolded(prefix));
}

bool containsIgnoringCase(std::string_view text, std::string_view part) {
    if (isAscii(text) && isAscii(part)) {
        const auto isSame = [](char x, char y) { return asciiLower(x) == asciiLower(y); };
        return part.empty() || std::search(text.begin(), text.end(), part.begin(), part.end(), isSame) != text.end();
    }
    return caseFolded(text).find(caseFolded(part)) != std::string::npos;
}

}  // namespace corvex::inline v0

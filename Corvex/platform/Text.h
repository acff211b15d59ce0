#pragma once

#include <string>
#include <string_view>

#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

// Texts are UTF-8. Bytes that are no UTF-8 pass through every function unchanged and are compared as they are.
// No function depends on the process's locale; all are pure and may run on any thread.
// Source: the Unicode Standard, chapters 3.13 (case) and 4.5 (general category), by utf8proc.

/// Lower case by each character's own full mapping (U+0130 becomes "i" and U+0307); context is not looked at, so a
/// capital sigma always becomes U+03C3.
[[nodiscard]] CORVEX_EXPORT std::string lowercased(std::string_view text);

/// The same in place; leaves the text's storage alone where it is all ASCII.
CORVEX_EXPORT void makeLowercase(std::string& text);

/// White space and newlines: general category Z*, U+0009 to U+000D, U+0085.
[[nodiscard]] CORVEX_EXPORT bool isWhitespaceOrNewline(char32_t character) noexcept;

/// A newline: U+000A to U+000D, U+0085, U+2028, U+2029.
[[nodiscard]] constexpr bool isNewline(char32_t character) noexcept {
    return (character >= 0x0A && character <= 0x0D) || character == 0x85 || character == 0x2028 || character == 0x2029;
}

/// trimmed() for a text that has something else than visible ASCII at one of its ends.
[[nodiscard]] CORVEX_EXPORT std::string_view trimmedEnds(std::string_view text) noexcept;

/// The part of `text` without the white space and newlines at both ends.
[[nodiscard]] inline std::string_view trimmed(std::string_view text) noexcept {
    const auto isVisible = [](char character) { return character > ' ' && character <= '~'; };
    return text.empty() || (isVisible(text.front()) && isVisible(text.back())) ? text : trimmedEnds(text);
}

/// Equal, begins with, contains: without regard to case, that is after full case folding of both.
[[nodiscard]] CORVEX_EXPORT bool equalsIgnoringCase(std::string_view a, std::string_view b);
/// By Unicode case folding, as the following.
[[nodiscard]] CORVEX_EXPORT bool hasPrefixIgnoringCase(std::string_view text, std::string_view prefix);
/// By Unicode case folding.
[[nodiscard]] CORVEX_EXPORT bool containsIgnoringCase(std::string_view text, std::string_view part);

/// The text with full case folding (Unicode 3.13, toCasefold): the form in which two texts that differ only in case
/// are equal. For comparison only, not for display.
[[nodiscard]] CORVEX_EXPORT std::string caseFolded(std::string_view text);

/// Whether every byte is below 128.
[[nodiscard]] CORVEX_EXPORT bool isAscii(std::string_view text) noexcept;

/// One character at the front of a text: its code point, and how many bytes it takes. A byte that begins no valid
/// character counts as one byte and is reported as not valid.
struct DecodedCharacter {
    char32_t codePoint = 0;
    int byteCount = 0;
    bool isValid = false;
};

/// The character at the front of `text`, which must not be empty.
[[nodiscard]] CORVEX_EXPORT DecodedCharacter firstCharacter(std::string_view text) noexcept;

/// The pieces of `text` between the bytes of `separators`; empty pieces are kept, so n separators give n + 1 calls.
/// `visit` takes each piece as std::string_view, in order.
template <class Visitor>
void forEachPiece(std::string_view text, std::string_view separators, Visitor&& visit) {
    for (;;) {
        const std::size_t end = text.find_first_of(separators);
        visit(text.substr(0, end));
        if (end == std::string_view::npos) return;
        text.remove_prefix(end + 1);
    }
}

}  // namespace corvex::inline v0

#pragma once

#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

/// A set of Unicode characters, told by a rule that must be pure. A value; any thread.
class CharacterSet {
public:
    using Rule = bool (*)(char32_t character) noexcept;

    constexpr explicit CharacterSet(Rule rule) noexcept : rule_(rule) {}

    /// What is no character (above U+10FFFF, or a surrogate) is in no set.
    [[nodiscard]] constexpr bool contains(char32_t character) const noexcept {
        const bool isCharacter = character <= 0x10FFFF && (character < 0xD800 || character > 0xDFFF);
        return isCharacter && rule_(character);
    }

private:
    Rule rule_;
};

/// The decimal digits of all scripts (general category Nd) and ".": what a field for decimals lets its user type. Signs
/// and exponents are not in it.
[[nodiscard]] CORVEX_EXPORT CharacterSet floatingPointDigitCharacterSet() noexcept;

}  // namespace corvex::inline v0

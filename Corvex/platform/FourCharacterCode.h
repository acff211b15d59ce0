#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace corvex::inline v0 {

/// Four characters as one number, the first in the highest byte: how QuickTime and its relatives name formats. A value:
/// any number is legal, also one whose bytes are no characters. Shorter names are filled with blanks at their end ("aac
/// "). Order and hash are those of the number.
class FourCharacterCode {
public:
    /// The number is in the machine's byte order: swap what was read from a big-endian file as bytes.
    constexpr explicit FourCharacterCode(std::uint32_t value) noexcept : value_(value) {}

    // NOLINTNEXTLINE(google-explicit-constructor,hicpp-explicit-conversions): a literal of four characters is one
    /// From a literal of exactly four characters; another does not compile.
    consteval FourCharacterCode(const char (&literal)[5]) noexcept : value_(valueOf(literal)) {}

    /// For a text from outside: none unless it has exactly four bytes. Blanks are not filled in.
    [[nodiscard]] static constexpr std::optional<FourCharacterCode> make(std::string_view text) noexcept {
        return text.size() == 4 ? std::optional(FourCharacterCode(valueOf(text))) : std::nullopt;
    }

    /// The first character is the most significant byte.
    [[nodiscard]] constexpr std::uint32_t value() const noexcept { return value_; }

    /// The four characters where all are printable ASCII ("aac "), else the number ("0x00000011"). Allocates.
    [[nodiscard]] std::string description() const {
        std::string characters, number = "0x";
        for (int shift = 24; shift >= 0; shift -= 8) characters += static_cast<char>(value_ >> shift & 0xFFU);
        for (int shift = 28; shift >= 0; shift -= 4) number += "0123456789abcdef"[value_ >> shift & 15U];
        for (const char character : characters) {
            if (character < ' ' || character > '~') return number;
        }
        return characters;
    }

    /// Of texts it is the order of their bytes.
    friend constexpr auto operator<=>(FourCharacterCode, FourCharacterCode) noexcept = default;

private:
    /// Of the first four bytes, which must be there.
    static constexpr std::uint32_t valueOf(std::string_view text) noexcept {
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < 4; ++i) value = value << 8U | static_cast<unsigned char>(text[i]);
        return value;
    }

    std::uint32_t value_;
};

}  // namespace corvex::inline v0

template <>
struct std::hash<corvex::FourCharacterCode> {
    std::size_t operator()(corvex::FourCharacterCode code) const noexcept {
        return std::hash<std::uint32_t>{}(code.value());
    }
};

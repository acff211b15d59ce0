#pragma once

#include <cstddef>
#include <cstdint>

namespace corvex::inline v0 {

/// Four characters as one number, the first in the highest byte: how QuickTime and its relatives name formats.
using FourCharacterCode = std::uint32_t;

[[nodiscard]] consteval FourCharacterCode fourCharacterCode(const char (&text)[5]) noexcept {
    FourCharacterCode code = 0;
    for (std::size_t i = 0; i < 4; ++i) code = code << 8U | static_cast<unsigned char>(text[i]);
    return code;
}

}  // namespace corvex::inline v0

#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

/// What stands where the valid characters of a text end: nothing, the start of a character that is cut off by the end
/// of the text, or bytes that can begin no character.
enum class Utf8End : std::uint8_t { complete, cutOff, invalid };

/// How many bytes are valid, and what ends them.
struct Utf8Extent {
    std::size_t validLength = 0;
    Utf8End end = Utf8End::complete;
};

/// How far `bytes` is valid UTF-8 (strictly: no overlong forms, no surrogates, nothing above U+10FFFF), and why it ends
/// there. Pure; time linear, 8 bytes at a time over ASCII. Source: RFC 3629.
[[nodiscard]] CORVEX_EXPORT Utf8Extent utf8Extent(std::string_view bytes) noexcept;

}  // namespace corvex::inline v0

#include <Corvex/platform/Utf8.h>

#include <cstring>

#include <Corvex/platform/Text.h>

namespace corvex::inline v0 {
namespace {

constexpr std::uint64_t highBits = 0x8080808080808080U;

std::size_t skipAscii(std::string_view bytes, std::size_t at) noexcept {
    std::uint64_t word = 0;
    while (at + sizeof word <= bytes.size()) {
        std::memcpy(&word, bytes.data() + at, sizeof word);
        if ((word & highBits) != 0) break;
        at += sizeof word;
    }
    while (at < bytes.size() && static_cast<unsigned char>(bytes[at]) < 0x80) ++at;
    return at;
}

/// Whether more bytes could make a character of `bytes`, which begin none that is whole.
bool isCutOff(std::string_view bytes) noexcept {
    const auto byte = [bytes](std::size_t index) { return static_cast<unsigned char>(bytes[index]); };
    const unsigned lead = byte(0);
    if (lead < 0xC2 || lead > 0xF4) return false;
    const std::size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    if (bytes.size() >= length) return false;
    if (bytes.size() == 1) return true;
    const unsigned lowest = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;   // below: overlong
    const unsigned highest = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;  // above: surrogate, beyond U+10FFFF
    if (byte(1) < lowest || byte(1) > highest) return false;
    return bytes.size() == 2 || (byte(2) & 0xC0U) == 0x80U;
}

}  // namespace

Utf8Extent utf8Extent(std::string_view bytes) noexcept {
    for (std::size_t at = skipAscii(bytes, 0);; at = skipAscii(bytes, at)) {
        const std::string_view rest = bytes.substr(at);
        if (rest.empty()) return {at, Utf8End::complete};
        const DecodedCharacter next = firstCharacter(rest);
        if (!next.isValid) return {at, isCutOff(rest) ? Utf8End::cutOff : Utf8End::invalid};
        at += static_cast<std::size_t>(next.byteCount);
    }
}

}  // namespace corvex::inline v0

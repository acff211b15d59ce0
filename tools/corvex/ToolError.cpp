#include <tools/corvex/ToolError.h>

#include <algorithm>
#include <cstdio>

#include <fmt/format.h>

#include <Corvex/platform/Utf8.h>

namespace corvex::tool {
namespace {

/// How many bytes the control character takes with which valid UTF-8 begins: 2 for U+0080 to U+009F, 0 if there is none.
std::size_t controlLength(std::string_view text) noexcept {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    if (byte(0) < 0x20 || byte(0) == 0x7F) return 1;
    return byte(0) == 0xC2 && byte(1) < 0xA0 ? 2 : 0;
}

void appendEscaped(std::string_view bytes, std::string& shown) {
    for (const char byte : bytes) shown += fmt::format("\\x{:02x}", static_cast<unsigned char>(byte));
}

/// The text with control characters and bytes that are no UTF-8 as "\x1b".
std::string withoutControls(std::string_view text) {
    std::string shown;
    while (!text.empty()) {
        std::string_view valid = text.substr(0, utf8Extent(text).validLength);
        text.remove_prefix(valid.size());
        while (!valid.empty()) {
            const std::size_t length = controlLength(valid);
            appendEscaped(valid.substr(0, length), shown);
            if (length == 0) shown += valid.front();
            valid.remove_prefix(std::max<std::size_t>(length, 1));
        }
        appendEscaped(text.substr(0, 1), shown);
        text.remove_prefix(std::min<std::size_t>(text.size(), 1));
    }
    return shown;
}

}  // namespace

std::string inQuotes(std::string_view text) { return "'" + withoutControls(text) + "'"; }

void printError(const std::string& message) {
    std::string line = message;
    for (char& character : line) {
        if (character == '\n' || character == '\r') character = ' ';  // a library's text may hold several lines
    }
    line = "corvex: " + withoutControls(line) + "\n";
    std::fwrite(line.data(), 1, line.size(), stderr);
    std::fflush(stderr);
}

}  // namespace corvex::tool

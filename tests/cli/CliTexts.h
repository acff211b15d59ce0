#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <Corvex/cli/ArgumentLookup.h>
#include <Corvex/platform/Text.h>

namespace corvex {

using Words = std::vector<std::string>;

/// What stands between "|" in a text; the empty text has nothing.
inline Words pieces(std::string_view text) {
    Words result;
    if (!text.empty()) forEachPiece(text, "|", [&](std::string_view piece) { result.emplace_back(piece); });
    return result;
}

/// "-flag=value|-switch=" as a lookup.
inline ArgumentLookup entries(std::string_view text) {
    std::vector<ArgumentLookup::Entry> result;
    for (const std::string& piece : pieces(text)) {
        const std::size_t sign = piece.find('=');
        result.emplace_back(piece.substr(0, sign), piece.substr(sign + 1));
    }
    return ArgumentLookup(std::move(result));
}

}  // namespace corvex

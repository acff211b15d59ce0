#pragma once

#include <string>
#include <string_view>

#include <Corvex/lut/ParsedLutFactory.h>
#include <Corvex/lut/ParsedLutFile.h>
#include <Corvex/lut/internal/LutTextReader.h>
#include <Corvex/platform/Text.h>

namespace corvex {

/// `count` lines of three equal numbers: `last` in the last line and 0 in the others.
inline std::string entryLines(std::size_t count, std::string_view last) {
    std::string text;
    for (std::size_t i = 1; i < count; ++i) text += "0 0 0\n";
    for (int column = 0; column < 3; ++column) text.append(last).append(column < 2 ? " " : "\n");
    return text;
}

inline LutReading readLut(std::string_view text) { return ParsedLutFactory::readText(text, "look.cube"); }

}  // namespace corvex

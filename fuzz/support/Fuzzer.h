#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <Corvex/platform/Checked.h>
#include <Corvex/platform/Text.h>

namespace corvex {

/// What a fuzzer does with an input; each defines it. A fault stops the process.
void fuzz(std::string_view input);

/// The words of an input, each ended by one of `separators`.
inline std::vector<std::string> wordsOf(std::string_view input, std::string_view separators) {
    std::vector<std::string> words;
    forEachPiece(input, separators, [&](std::string_view word) { words.emplace_back(word); });
    return words;
}

}  // namespace corvex

#pragma once

#include <string>
#include <vector>

namespace corvex::tool {

/// Answers the informational commands ("-codecs", "-h", ...) that stand among the words, each once, in their order, on
/// standard output. False when there is none. They are looked for in the raw words, as an argument model would take
/// "-presets" for a preset. Throws UsageError when one of them has a value.
bool answerInformationCommands(const std::vector<std::string>& words);

}  // namespace corvex::tool

#pragma once

#include <map>
#include <string>
#include <string_view>

#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

/// Reads "key=value:key=value". A backslash takes the next character as it is. A pair without "=" has the empty value, one
/// with an empty key is dropped, of equal keys the last counts; the empty text is the empty dictionary.
[[nodiscard]] CORVEX_EXPORT std::map<std::string, std::string> parseDictionary(std::string_view text);

/// The text that reads back as `dictionary`, keys ascending, also after a way through an argument vector: one that would
/// begin with "-" or with white space begins with a backslash, one that would end in white space ends in ":".
[[nodiscard]] CORVEX_EXPORT std::string dictionaryText(const std::map<std::string, std::string>& dictionary);

}  // namespace corvex::inline v0

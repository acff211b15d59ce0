#include <Corvex/cli/CLISanitizationOptions.h>

#include <Corvex/platform/Text.h>

namespace corvex::inline v0 {

std::string CLISanitizationOptions::sanitize(std::string_view word) const {
    // Trimming first gives the same text, as case mapping neither makes nor removes white space, and copies less.
    if (contains(trimWhiteSpace)) word = trimmed(word);
    std::string sanitized(word);
    if (contains(lowercase)) makeLowercase(sanitized);
    return sanitized;
}

}  // namespace corvex::inline v0

#include <Corvex/cli/transcode/optionDictionary.h>

#include <utility>

#include <Corvex/platform/Text.h>

namespace corvex::inline v0 {
namespace {

void appendEscaped(std::string& text, std::string_view part) {
    for (const char character : part) {
        if (character == '\\' || character == '=' || character == ':') text += '\\';
        text += character;
    }
}

}  // namespace

std::map<std::string, std::string> parseDictionary(std::string_view text) {
    std::map<std::string, std::string> dictionary;
    std::string key;
    std::string value;
    bool isInValue = false;
    const auto finishPair = [&] {
        if (!key.empty()) dictionary.insert_or_assign(std::exchange(key, {}), std::exchange(value, {}));
        value.clear();
        isInValue = false;
    };
    for (std::size_t i = 0; i < text.size(); ++i) {
        std::string& part = isInValue ? value : key;
        if (text[i] == '\\' && i + 1 < text.size()) {
            part += text[++i];
        } else if (text[i] == ':') {
            finishPair();
        } else if (text[i] == '=' && !isInValue) {
            isInValue = true;
        } else {
            part += text[i];
        }
    }
    finishPair();
    return dictionary;
}

std::string dictionaryText(const std::map<std::string, std::string>& dictionary) {
    std::string text;
    for (const auto& [key, value] : dictionary) {
        if (!text.empty()) text += ':';
        appendEscaped(text, key);
        text += '=';
        appendEscaped(text, value);
    }
    // Parsing an argument vector trims, and takes what then begins with "-" for a flag.
    const std::string_view rest = trimmed(text);
    const bool endsInBlank = !rest.empty() && rest.data() + rest.size() != text.data() + text.size();
    if (rest.starts_with('-') || rest.data() != text.data()) text.insert(0, 1, '\\');
    if (endsInBlank) text += ':';  // begins a pair without a key, which is dropped
    return text;
}

}  // namespace corvex::inline v0

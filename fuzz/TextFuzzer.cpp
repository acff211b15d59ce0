#include <Corvex/cli/transcode/optionDictionary.h>
#include <Corvex/media/PathEnumeration.h>
#include <Corvex/platform/FourCharacterCode.h>
#include <Corvex/platform/Utf8.h>

#include "support/Fuzzer.h"

namespace {

using namespace corvex;

/// The valid characters at the front, one by one.
std::size_t validLength(std::string_view text) {
    std::size_t length = 0;
    while (length < text.size()) {
        const DecodedCharacter next = firstCharacter(text.substr(length));
        require(next.byteCount > 0, "a character of no bytes");
        if (!next.isValid) break;
        length += static_cast<std::size_t>(next.byteCount);
    }
    return length;
}

void checkText(std::string_view text) {
    const Utf8Extent extent = utf8Extent(text);
    require(extent.validLength == validLength(text), "two readings of UTF-8 disagree");
    require((extent.end == Utf8End::complete) == (extent.validLength == text.size()), "an end that is none");
    require(lowercased(lowercased(text)) == lowercased(text), "lower case is not final");
    require(trimmed(trimmed(text)) == trimmed(text) && text.find(trimmed(text)) != std::string_view::npos,
            "trimming is not final");
    require(!isAscii(text) || extent.end == Utf8End::complete, "ASCII that is no UTF-8");
}

void checkPair(std::string_view text, std::string_view part) {
    require(equalsIgnoringCase(text, part) == equalsIgnoringCase(part, text), "equality has a direction");
    require(!hasPrefixIgnoringCase(text, part) || containsIgnoringCase(text, part), "a prefix that is no part");
    const std::string joined = std::string(part) + std::string(text);
    if (utf8Extent(part).end == Utf8End::complete) {
        require(containsIgnoringCase(joined, part), "a text does not contain its own beginning");
    }
    const std::vector<std::string> extensions{std::string(part), "mov"};
    const std::string* match = matchingExtension(text, extensions);
    require(match == nullptr || lastPathComponentContainsExtension(text, *match), "the extension is another's");
}

void checkDictionary(std::string_view text) {
    const auto dictionary = parseDictionary(text);
    require(!dictionary.contains(""), "an empty key");
    require(parseDictionary(dictionaryText(dictionary)) == dictionary, "a dictionary does not print as it is read");
    require(parseDictionary(trimmed(dictionaryText(dictionary))) == dictionary, "it does not survive an argument");
}

}  // namespace

/// Texts from outside, whatever their bytes: characters, case, paths, dictionaries. A NUL byte parts a text from another.
void corvex::fuzz(std::string_view input) {
    checkText(input);
    const std::size_t mark = input.find('\0');
    if (mark != std::string_view::npos) checkPair(input.substr(0, mark), input.substr(mark + 1));
    checkDictionary(input);
    if (const auto code = FourCharacterCode::make(input)) {
        require(code->description() == input || code->description().starts_with("0x"), "a code has another's name");
    }
}

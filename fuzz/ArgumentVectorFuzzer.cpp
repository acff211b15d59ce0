#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

#include <Corvex/cli/CLIArgumentSanitizer.h>
#include <Corvex/cli/transcode/TranscodeCliArguments.h>
#include <Corvex/platform/Checked.h>
#include <Corvex/platform/Json.h>
#include <Corvex/platform/Text.h>

namespace {

using namespace corvex;
using Words = std::vector<std::string>;

/// The words of the input, which a newline or NUL ends.
Words wordsOf(std::string_view bytes) {
    Words words;
    forEachPiece(bytes, std::string_view("\n\0", 2), [&](std::string_view word) { words.emplace_back(word); });
    return words;
}

void checkRoundTrips(const TranscodeCliArguments& parsed) {
    const Words rendered = parsed.commandLineArguments();
    const TranscodeCliArguments again(rendered, true);
    require(again.flagValueLookup() == parsed.flagValueLookup(), "rendered words parse to another lookup");
    require(again.commandLineArguments() == rendered, "rendered words parse to another order");
    require(again.allFlagsAreValid(), "an unknown flag was rendered");
    require(TranscodeCliArguments(parsed.flagValueLookup()).flagValueLookup() == parsed.flagValueLookup(),
            "a normalised lookup is not normal");
    require(Json(parsed).get<TranscodeCliArguments>() == parsed, "the coded form lost something");
    // The text of the coded form replaces bytes that are no UTF-8, which may merge or reorder keys, but it can be read.
    static_cast<void>(Json::parse(jsonText(Json(parsed))).get<TranscodeCliArguments>());
}

void checkReadyLookup(const Words& words) {
    ArgumentLookup lookup;
    for (std::size_t i = 0; i + 1 < words.size(); i += 2) lookup.insert_or_assign(words[i], words[i + 1]);
    const TranscodeCliArguments normalised(lookup);
    for (const auto& [key, value] : normalised.flagValueLookup()) {
        require(trimmed(value).size() == value.size(), "a value was not trimmed");
        require(lowercased(key) == key && trimmed(key).starts_with('-'), "a key is not in its test form");
    }
    const auto groups = normalised.inputFileGroups();
    require(groups.has_value() == normalised.firstInputFile().has_value(), "groups and files differ");

    auto rewritten = normalised;
    rewritten.setInputFiles(normalised.inputFiles());
    require(rewritten.inputFiles() == normalised.inputFiles(), "input files are not read back as they were stored");
}

void checkSanitizer(const Words& words) {
    const CLIArgumentSanitizer sanitizer({"-in", "-vcodec"}, CLISanitizationOptions::trimWhiteSpace);
    std::set<std::string, std::less<>> asked;
    std::string_view current;
    const auto report = [&](bool isValid) {
        return [&, isValid](std::string_view flag, std::string_view value) {
            require(flag == current, "a value was reported for a flag that was not asked for");
            require(value == trimmed(value), "a value was not cleaned");
            const bool holdsFlag = containsIgnoringCase(flag, "-in") || containsIgnoringCase(flag, "-vcodec");
            require(isValid == holdsFlag, "a flag was sorted wrongly");
        };
    };
    sanitizer.enumerateSanitizedCLIEntries(
        words,
        [&](std::string_view flag) {
            const auto [entry, isNew] = asked.emplace(flag);
            require(isNew, "a flag was asked for twice");
            current = *entry;
            return CLISanitizationOptions::trimWhiteSpace;
        },
        report(true), report(false));
    std::set<std::string_view> flags;
    for (const std::string& word : words) {
        if (trimmed(word).starts_with('-')) flags.insert(trimmed(word));
    }
    require(asked.size() == flags.size(), "a flag was left out");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Words words = wordsOf({reinterpret_cast<const char*>(data), size});
    const TranscodeCliArguments ordered(words, true);
    checkRoundTrips(ordered);
    require(TranscodeCliArguments(words).flagValueLookup() == ordered.flagValueLookup(), "order changed the lookup");
    checkReadyLookup(words);
    checkSanitizer(words);
    return 0;
}

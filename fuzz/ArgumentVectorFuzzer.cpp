#include <nlohmann/json.hpp>

#include <Corvex/cli/transcode/TranscodeCliArguments.h>
#include <Corvex/platform/Json.h>

#include "support/Fuzzer.h"

namespace {

using namespace corvex;
using Words = std::vector<std::string>;

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

}  // namespace

void corvex::fuzz(std::string_view input) {
    const Words words = wordsOf(input, std::string_view("\n\0", 2));
    const TranscodeCliArguments ordered(words, true);
    checkRoundTrips(ordered);
    require(TranscodeCliArguments(words).flagValueLookup() == ordered.flagValueLookup(), "order changed the lookup");
    checkReadyLookup(words);
}

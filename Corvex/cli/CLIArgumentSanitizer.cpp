#include <Corvex/cli/CLIArgumentSanitizer.h>

#include <algorithm>
#include <unordered_map>
#include <utility>

#include <Corvex/platform/Text.h>

namespace corvex::inline v0 {

CLIArgumentSanitizer::CLIArgumentSanitizer(std::vector<std::string> validCommandFlags,
                                           std::optional<CLISanitizationOptions> flagSanitizationOptions)
    : validCommandFlags_(std::move(validCommandFlags)), flagSanitizationOptions_(flagSanitizationOptions) {}

bool CLIArgumentSanitizer::isValid(std::string_view flag) const {
    return validCommandFlags_.empty() ||
           std::any_of(validCommandFlags_.begin(), validCommandFlags_.end(),
                       [&](const std::string& valid) { return containsIgnoringCase(flag, valid); });
}

void CLIArgumentSanitizer::enumerateSanitizedCLIEntries(std::span<const std::string> cliArgs,
                                                        const OptionsCallback& sanitizationOptionsCallback,
                                                        const PairBlock& validPairBlock,
                                                        const PairBlock& invalidPairBlock) const {
    struct Occurrence {
        std::size_t position;
        std::string flag;
    };
    std::vector<Occurrence> occurrences;
    std::unordered_map<std::string_view, std::size_t> lastPosition;
    for (std::size_t i = 0; i < cliArgs.size(); ++i) {
        std::string flag = flagSanitizationOptions_ ? flagSanitizationOptions_->sanitize(cliArgs[i]) : cliArgs[i];
        if (flag.starts_with('-')) occurrences.push_back({i, std::move(flag)});
    }
    // Only now: the views need the texts to stay where they are.
    for (const Occurrence& occurrence : occurrences) lastPosition[occurrence.flag] = occurrence.position;

    for (std::size_t i = 0; i < occurrences.size(); ++i) {
        const auto& [position, flag] = occurrences[i];
        if (lastPosition[flag] != position) continue;
        const std::size_t end = i + 1 < occurrences.size() ? occurrences[i + 1].position : cliArgs.size();
        const PairBlock& block = isValid(flag) ? validPairBlock : invalidPairBlock;
        const CLISanitizationOptions options = sanitizationOptionsCallback(flag);
        if (position + 1 == end) block(flag, {});
        for (std::size_t value = position + 1; value < end; ++value) block(flag, options.sanitize(cliArgs[value]));
    }
}

}  // namespace corvex::inline v0

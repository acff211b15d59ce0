#include <Corvex/cli/CliArgumentStore.h>

namespace corvex::inline v0 {

std::vector<std::string> renderArguments(const ArgumentLookup& lookup) {
    std::vector<std::string> words;
    words.reserve(lookup.size() * 2);
    for (const auto& [flag, value] : lookup) {
        words.push_back(flag);
        words.push_back(value);
    }
    return words;
}

std::string joinedWithoutSeparator(std::span<const std::string> words) {
    std::size_t size = 0;
    for (const std::string& word : words) size += word.size();
    std::string joined;
    joined.reserve(size);
    for (const std::string& word : words) joined += word;
    return joined;
}

}  // namespace corvex::inline v0

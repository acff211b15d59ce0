// The input files of TranscodeCliArguments: one plain "-in", or numbered inputs in groups.

#include <algorithm>
#include <array>
#include <set>
#include <utility>

#include <Corvex/cli/transcode/TranscodeCliArguments.h>
#include <Corvex/platform/NumberText.h>

namespace corvex::inline v0 {
namespace {

constexpr std::string_view inputFlag = OAVInputPrefixFlag.rawValue();

struct InputNumbers {
    std::int64_t group = 0;
    std::int64_t position = 0;
};

/// The numbers of "-in<anything>_<group>_<position>"; none for a key of any other form.
std::optional<InputNumbers> inputNumbersOf(std::string_view key) {
    if (!key.starts_with(inputFlag)) return std::nullopt;
    std::array<std::string_view, 3> pieces;
    std::size_t count = 0;
    forEachPiece(key, "_", [&](std::string_view piece) {
        if (count < pieces.size()) pieces[count] = piece;
        ++count;
    });
    if (count != pieces.size()) return std::nullopt;
    const auto group = parseInteger<std::int64_t>(pieces[1]);
    const auto position = parseInteger<std::int64_t>(pieces[2]);
    return group && position ? std::optional(InputNumbers{*group, *position}) : std::nullopt;
}

}  // namespace

std::optional<TranscodeCliArguments::InputFileGroups> TranscodeCliArguments::inputFileGroups() const {
    if (const auto plain = argumentFlagValue(inputFlag)) return InputFileGroups{{0, {std::string(*plain)}}};
    std::map<std::int64_t, std::multimap<std::int64_t, std::string_view>> positions;
    // All that begin with the flag lie next to each other.
    for (auto entry = flagValueLookup_.lower_bound(inputFlag);
         entry != flagValueLookup_.end() && entry->first.starts_with(inputFlag); ++entry) {
        if (const auto numbers = inputNumbersOf(entry->first)) {
            positions[numbers->group].emplace(numbers->position, entry->second);
        }
    }
    if (positions.empty()) return std::nullopt;
    InputFileGroups groups;
    for (const auto& [group, paths] : positions) {
        auto& list = groups[group];
        for (const auto& [position, path] : paths) list.emplace_back(path);
    }
    return groups;
}

std::optional<std::vector<std::string>> TranscodeCliArguments::inputFiles() const {
    const auto groups = inputFileGroups();
    if (!groups) return std::nullopt;
    std::vector<std::string> files;
    std::set<std::string_view> seen;
    for (const auto& [group, paths] : *groups) {
        for (const std::string& path : paths) {
            if (seen.insert(path).second) files.push_back(path);
        }
    }
    return files;
}

void TranscodeCliArguments::setInputFiles(const std::optional<std::vector<std::string>>& files) {
    flagValueLookup_.eraseIf(
        [](const auto& entry) { return entry.first == inputFlag || inputNumbersOf(entry.first).has_value(); });
    if (!files) return;
    std::vector<ArgumentLookup::Entry> entries;
    entries.reserve(files->size());
    for (const std::string& file : *files) {
        entries.emplace_back(std::string(inputFlag) + "_0_" + std::to_string(entries.size()), file);
    }
    flagValueLookup_.insertAll(std::move(entries));
}

std::optional<std::string> TranscodeCliArguments::firstInputFile() const {
    const auto groups = inputFileGroups();
    return groups ? std::optional(groups->begin()->second.front()) : std::nullopt;
}

}  // namespace corvex::inline v0

#include <tools/corvex/manual/CommandTree.h>

#include <algorithm>
#include <array>
#include <string_view>

#include <CLI/CLI.hpp>

#include <tools/corvex/FileUrl.h>
#include <tools/corvex/vocabulary/FlagVocabulary.h>

namespace corvex::tool {
namespace {

/// "INT" of "INT:INT in [1 - 63]", and the choices of "TEXT:{boolean,integer}".
void readTypeName(const std::string& type, CommandWord& word) {
    word.valueName = type.substr(0, type.find_first_of(": "));
    if (word.valueName.empty()) word.valueName = "VALUE";
    const std::size_t begin = type.find('{');
    const std::size_t end = type.find('}');
    if (begin == std::string::npos || end == std::string::npos) return;
    for (std::size_t at = begin + 1; at <= end;) {
        const std::size_t next = std::min(type.find(',', at), end);
        word.values.push_back(type.substr(at, next - at));
        at = next + 1;
    }
}

bool namesPath(const std::string& name) {
    constexpr std::array<std::string_view, 5> names{"FILE", "DIR", "IN", "OUT", "OUT.png"};
    return std::find(names.begin(), names.end(), name) != names.end();
}

CommandWord wordOf(const CLI::Option& option) {
    CommandWord word;
    word.meaning = option.get_description();
    if (option.get_positional()) {
        word.text = option.get_name(true);
        word.takesPath = namesPath(word.text);
        return word;
    }
    word.text = option.get_lnames().empty() ? "-" + option.get_snames().front() : "--" + option.get_lnames().front();
    if (option.get_items_expected_max() != 0) readTypeName(option.get_type_name(), word);
    word.takesPath = namesPath(word.valueName);
    return word;
}

CommandWord wordOf(const VocabularyFlag& flag) {
    CommandWord word;
    word.text = flag.flag;
    word.meaning = flag.meaning;
    word.group = flag.group;
    word.valueFacts = flag.type;
    if (!flag.unit.empty()) word.valueFacts += ", " + std::string(flag.unit);
    if (!flag.isCarriedOut) word.meaning += " (not carried out here)";
    if (flag.wantsValue()) word.valueName = "VALUE";
    word.values.assign(flag.values.begin(), flag.values.end());
    word.takesPath = flag.takesPath;
    return word;
}

std::string synopsisOf(const CommandPlace& place, const CLI::App& app) {
    std::string text = place.path;
    if (!place.options.empty() && !place.options.back().group.empty()) return text + " FLAG [VALUE...]...";
    for (const CLI::Option* option : app.get_options()) {
        if (option->get_positional()) continue;
        const CommandWord word = wordOf(*option);
        if (word.text == "--help") continue;
        const std::string shown = word.text + (word.valueName.empty() ? "" : " " + word.valueName);
        text += option->get_required() ? " " + shown : " [" + shown + "]";
    }
    for (const CLI::Option* option : app.get_options()) {
        if (!option->get_positional()) continue;
        const int count = option->get_items_expected_max();
        for (int i = 0; i < std::min(count, 3); ++i) {
            if (i > 0 && count > 3) break;
            text += " " + option->get_name(true) + (count > 3 ? "..." : "");
        }
    }
    if (!place.subcommands.empty()) text += " COMMAND";
    if (app.get_allow_extras()) text += " -- WORD...";
    return text;
}

void add(const CLI::App& app, const std::string& path, std::vector<CommandPlace>& places) {
    const std::size_t at = places.size();
    {
        CommandPlace& place = places.emplace_back();
        place.path = path;
        place.purpose = app.get_description();
        place.notes = app.get_footer();
        for (const CLI::Option* option : app.get_options()) {
            (option->get_positional() ? place.operands : place.options).push_back(wordOf(*option));
        }
        for (const VocabularyFlag& flag : flagVocabulary()) {
            if (place.path == "corvex " + std::string(flag.command)) place.options.push_back(wordOf(flag));
        }
    }
    for (const CLI::App* child : app.get_subcommands([](const CLI::App*) { return true; })) {
        places[at].subcommands.push_back(child->get_name());
        add(*child, path + " " + child->get_name(), places);
    }
    places[at].synopsis = synopsisOf(places[at], app);
}

}  // namespace

void acceptFileUrls(CLI::App& app) {
    for (CLI::Option* option : app.get_options()) {
        if (wordOf(*option).takesPath) option->transform(pathOf);
    }
    for (CLI::App* child : app.get_subcommands([](const CLI::App*) { return true; })) acceptFileUrls(*child);
}

std::vector<CommandPlace> commandPlaces(const CLI::App& app) {
    std::vector<CommandPlace> places;
    add(app, app.get_name(), places);
    return places;
}

}  // namespace corvex::tool

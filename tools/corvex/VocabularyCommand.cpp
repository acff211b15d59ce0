// corvex vocabulary: every flag of the argument vectors.

#include <fmt/format.h>
#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <tools/corvex/Subcommand.h>
#include <tools/corvex/jsonOutput.h>
#include <tools/corvex/vocabulary/FlagVocabulary.h>

namespace corvex::tool {
namespace {

Json textOrNull(std::string_view text) { return text.empty() ? Json(nullptr) : Json(std::string(text)); }

Json jsonOf(const VocabularyFlag& flag) {
    return {
        {"flag", std::string(flag.flag)}, {"command", std::string(flag.command)}, {"group", std::string(flag.group)},
        {"takesValue", flag.takesValue},  {"type", std::string(flag.type)},       {"unit", textOrNull(flag.unit)},
        {"values", flag.values},          {"meaning", std::string(flag.meaning)}, {"isCarriedOut", flag.isCarriedOut}};
}

/// The text in lines of at most 80 columns, `indent` blanks before each.
void printWrapped(std::string_view text, std::size_t indent) {
    constexpr std::size_t columns = 80;
    while (!text.empty()) {
        std::size_t end = text.size();
        if (indent + end > columns) {
            end = text.rfind(' ', columns - indent);
            if (end == std::string_view::npos) end = std::min(text.find(' '), text.size());
        }
        fmt::print("{:{}}{}\n", "", indent, text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

void printText() {
    std::string_view group;
    for (const VocabularyFlag& flag : flagVocabulary()) {
        if (flag.group != group) fmt::print("{}{}: {}\n", group.empty() ? "" : "\n", flag.command, flag.group);
        group = flag.group;
        fmt::print("  {} {}{}{}{}\n", flag.flag, flag.wantsValue() ? "VALUE: " : "(", flag.type,
                   flag.unit.empty() ? "" : fmt::format(", {}", flag.unit), flag.wantsValue() ? "" : ")");
        constexpr std::size_t indent = 6;
        printWrapped(fmt::format("{}{}", flag.meaning, flag.isCarriedOut ? "" : " (not carried out here)"), indent);
        if (!flag.values.empty()) printWrapped(fmt::format("values: {}", fmt::join(flag.values, " ")), indent);
    }
}

}  // namespace

void addVocabularyCommand(CLI::App& app, const Invocation& /*invocation*/, Action& action) {
    auto isJson = std::make_shared<bool>(false);
    CLI::App* command = app.add_subcommand("vocabulary", "Every flag of the argument vectors: type, unit, values");
    command->add_flag("--json", *isJson, "Print one JSON array");
    command->footer("Example:\n  corvex vocabulary --json");
    command->callback([isJson, &action] {
        action = [isJson] {
            if (!*isJson) {
                printText();
                return ExitStatus::success;
            }
            Json flags = Json::array();
            for (const VocabularyFlag& flag : flagVocabulary()) flags.push_back(jsonOf(flag));
            printJson(flags);
            return ExitStatus::success;
        };
    });
}

}  // namespace corvex::tool

// corvex args: shows what an argument vector means to the worker.

#include <fmt/format.h>
#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <Corvex/cli/transcode/TranscodeCliArguments.h>
#include <tools/corvex/Subcommand.h>
#include <tools/corvex/SuggestedFlag.h>
#include <tools/corvex/TypedOptions.h>
#include <tools/corvex/jsonOutput.h>

namespace corvex::tool {
namespace {

template <class Value>
Json orNull(const std::optional<Value>& value) {
    return value ? Json(*value) : Json(nullptr);
}

Json groupsJson(const TranscodeCliArguments& arguments) {
    const auto groups = arguments.inputFileGroups();
    if (!groups) return nullptr;
    Json json = Json::object();
    for (const auto& [number, paths] : *groups) json[std::to_string(number)] = paths;
    return json;
}

/// A member for each option that is set, and one for the mistakes, if there are any.
void addOptions(Json& json, const TranscodeCliArguments& arguments) {
    const TypedOptions options = typedOptions(arguments);
    json["options"] = Json::object();
    for (const TypedOption& option : options.readable) json["options"][std::string(option.accessor)] = option.value;
    for (const auto& [flag, problem] : options.unreadable) json["unreadableOptions"][std::string(flag)] = problem;
}

void printAsJson(const TranscodeCliArguments& arguments) {
    Json json;
    json["arguments"] = arguments;
    json["allFlagsAreValid"] = arguments.allFlagsAreValid();
    json["unknownFlags"] = orNull(arguments.unknownFlags());
    json["commandLineArguments"] = arguments.commandLineArguments();
    json["cliString"] = arguments.cliString();
    json["inputFileGroups"] = groupsJson(arguments);
    json["inputFiles"] = orNull(arguments.inputFiles());
    json["firstInputFile"] = orNull(arguments.firstInputFile());
    addOptions(json, arguments);
    printJson(json);
}

std::string shellLike(std::string_view word) {
    const bool isPlain = !word.empty() && word.find_first_of(" \t\n\"'\\") == std::string_view::npos;
    return isPlain ? std::string(word) : jsonText(Json(std::string(word)));
}

void printOptions(const TranscodeCliArguments& arguments) {
    const TypedOptions options = typedOptions(arguments);
    if (!options.readable.empty()) fmt::print("Options\n");
    for (const TypedOption& option : options.readable) {
        fmt::print("  {:<31} {:<31} {}\n", option.accessor, option.text(), fmt::join(option.flags, " "));
    }
    if (!options.unreadable.empty()) fmt::print("Options that cannot be read\n");
    for (const auto& [flag, problem] : options.unreadable) fmt::print("  {} {}\n", flag, problem);
}

void printText(const TranscodeCliArguments& arguments) {
    fmt::print("Lookup\n");
    for (const auto& [flag, value] : arguments.flagValueLookup()) fmt::print("  {:<24} {}\n", flag, shellLike(value));
    if (!arguments.allFlagsAreValid()) {
        fmt::print("Unknown flags\n");
        arguments.enumerateUnknownFlags([](std::string_view key, std::string_view value) {
            const auto suggestion = suggestedFlag(key);
            fmt::print("  {:<24} {}{}\n", key, shellLike(value),
                       suggestion ? fmt::format("  (did you mean {}?)", *suggestion) : std::string());
        });
    }
    fmt::print("Rendered\n ");
    for (const std::string& word : arguments.commandLineArguments()) fmt::print(" {}", shellLike(word));
    fmt::print("\n");
    if (const auto groups = arguments.inputFileGroups()) {
        fmt::print("Input groups\n");
        for (const auto& [number, paths] : *groups) {
            for (const std::string& path : paths) fmt::print("  {:<24} {}\n", number, shellLike(path));
        }
    }
    printOptions(arguments);
}

}  // namespace

void addArgsCommand(CLI::App& app, const Invocation& invocation, Action& action) {
    struct ArgsChoices {
        bool ordered = false;
        bool json = false;
    };
    auto choices = std::make_shared<ArgsChoices>();
    CLI::App* command = app.add_subcommand("args", "Show what an argument vector means to the transcode worker");
    command->add_flag("--ordered", choices->ordered, "Keep the order of the words when rendering");
    command->add_flag("--json", choices->json, "Print one JSON object");
    command->footer(
        "The words of the job stand after --.\n"
        "Example:\n"
        "  corvex args --ordered -- -preset orvane_cloud -in A001.mov -out A001_proxy.mov");
    command->allow_extras();  // only to say what is wrong with them
    command->callback([choices, command, &invocation, &action] {
        action = [choices, extras = command->remaining(), &invocation] {
            if (!extras.empty()) {
                throw UsageError("args: unexpected " + inQuotes(extras.front()) +
                                 "; the words of the job stand after --, the tool's own options before");
            }
            if (!invocation.hasWords) {
                throw UsageError("args: expected -- and then the words of the job, as: corvex args -- -vcodec h264");
            }
            const TranscodeCliArguments arguments(invocation.words, choices->ordered);
            choices->json ? printAsJson(arguments) : printText(arguments);
            return ExitStatus::success;
        };
    });
}

}  // namespace corvex::tool

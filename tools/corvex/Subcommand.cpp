#include <tools/corvex/Subcommand.h>

#include <algorithm>
#include <string_view>

#include <fmt/format.h>
#include <CLI/CLI.hpp>

#include <Corvex/platform/Version.h>
#include <tools/corvex/SuggestedFlag.h>
#include <tools/corvex/manual/CommandTree.h>

namespace corvex::tool {
namespace {

constexpr AddSubcommand subcommands[] = {
    addAnalyzeCommand,  addArgsCommand,     addAudioCommand,     addColorCommand,
    addGenerateCommand, addLutCommand,      addMediaCommand,     addRateCommand,
    addSettingsCommand, addTimecodeCommand, addTranscodeCommand, addVocabularyCommand,
};

/// Begins each word that stood behind "--", in place of that mark, at which CLI11 would end a command that has as many
/// operands as it needs. No word of a command line holds it, no option and no command begins with it.
constexpr char operandMark = '\0';

std::string withoutMark(const std::string& word) { return word.starts_with(operandMark) ? word.substr(1) : word; }

void acceptMarkedOperands(CLI::App& app) {
    for (CLI::Option* option : app.get_options()) {
        if (option->get_items_expected_max() != 0) option->transform(withoutMark);
    }
    for (CLI::App* child : app.get_subcommands([](const CLI::App*) { return true; })) acceptMarkedOperands(*child);
}

/// What is wrong with a word of `command` that nobody took.
std::string problemOfUnexpected(const std::string& given, const CLI::App& command, const std::string& synopsis) {
    const std::string word = withoutMark(given);
    const auto children = command.get_subcommands([](const CLI::App*) { return true; });
    const bool isOption = word == given && word.starts_with('-');
    if (!isOption && children.empty()) return fmt::format("unexpected {}; expected {}", inQuotes(word), synopsis);
    std::vector<std::string> texts;
    texts.reserve(children.size());
    for (const CLI::App* child : children) texts.push_back(child->get_name());
    for (const CLI::Option* option : command.get_options()) {
        for (const std::string& name : option->get_lnames()) texts.push_back("--" + name);
    }
    const std::vector<std::string_view> known(texts.begin(), texts.end());
    const auto suggestion = suggestedWord(word.substr(0, word.find('=')), known);
    return fmt::format("unknown {} {}; {}", isOption ? "option" : "command", inQuotes(word),
                       suggestion ? fmt::format("did you mean {}?", *suggestion)
                                  : fmt::format("expected one of {}", fmt::join(known, ", ")));
}

/// Throws UsageError with what was wrong, the command that it was wrong for and that command's own help.
[[noreturn]] void refuse(const CLI::App& app, const CLI::ParseError& error) {
    const CLI::App* command = &app;
    std::string path = app.get_name();
    std::string problem = error.what();
    for (;;) {
        if (const auto rest = command->remaining(); !rest.empty()) {
            const auto places = commandPlaces(app);
            const auto place = std::find_if(places.begin(), places.end(),
                                            [&](const CommandPlace& candidate) { return candidate.path == path; });
            problem = problemOfUnexpected(rest.front(), *command, place->synopsis);
            break;
        }
        const auto chosen = command->get_subcommands();
        if (chosen.empty()) break;
        command = chosen.front();
        path += " " + command->get_name();
    }
    const std::string own = command == &app ? "" : path.substr(app.get_name().size() + 1) + ": ";
    throw UsageError(own + problem + " (" + path + " --help shows how)");
}

}  // namespace

ExitStatus runSubcommand(std::vector<std::string> own) {
    Invocation invocation;
    const auto separator = std::find(own.begin(), own.end(), "--");
    if (separator != own.end() && own.front() == "args") {
        invocation.hasWords = true;
        invocation.words.assign(separator + 1, own.end());
        own.erase(separator, own.end());
    } else if (separator != own.end()) {
        for (auto word = own.erase(separator); word != own.end(); ++word) word->insert(0, 1, operandMark);
    }

    CLI::App app("Command lines, transcodes and media facts for people on set and in post.", "corvex");
    app.set_version_flag("--version", std::string("corvex ") + std::string(versionString));
    app.require_subcommand(1);
    Action action;
    for (const auto add : subcommands) add(app, invocation, action);
    acceptFileUrls(app);
    acceptMarkedOperands(app);
    try {
        std::reverse(own.begin(), own.end());  // that is how CLI11 takes a vector
        app.parse(std::move(own));
    } catch (const CLI::Success& success) {
        app.exit(success);
        return ExitStatus::success;
    } catch (const CLI::ParseError& error) {
        refuse(app, error);
    }
    return action();
}

}  // namespace corvex::tool

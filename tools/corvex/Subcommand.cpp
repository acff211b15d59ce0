#include <tools/corvex/Subcommand.h>

#include <algorithm>

#include <CLI/CLI.hpp>

#include <Corvex/platform/Version.h>
#include <tools/corvex/manual/CommandTree.h>

namespace corvex::tool {
namespace {

constexpr AddSubcommand subcommands[] = {
    addAnalyzeCommand,  addArgsCommand,     addAudioCommand,     addColorCommand,
    addGenerateCommand, addLutCommand,      addMediaCommand,     addRateCommand,
    addSettingsCommand, addTimecodeCommand, addTranscodeCommand, addVocabularyCommand,
};

}  // namespace

ExitStatus runSubcommand(std::vector<std::string> own) {
    Invocation invocation;
    const auto separator = std::find(own.begin(), own.end(), "--");
    if (separator != own.end()) {
        invocation.hasWords = true;
        invocation.words.assign(separator + 1, own.end());
        own.erase(separator, own.end());
    }

    CLI::App app("Command lines, transcodes and media facts for people on set and in post.", "corvex");
    app.set_version_flag("--version", std::string("corvex ") + std::string(versionString));
    app.require_subcommand(1);
    Action action;
    for (const auto add : subcommands) add(app, invocation, action);
    acceptFileUrls(app);
    try {
        std::reverse(own.begin(), own.end());  // that is how CLI11 takes a vector
        app.parse(std::move(own));
    } catch (const CLI::Success& success) {
        app.exit(success);
        return ExitStatus::success;
    } catch (const CLI::ParseError& error) {
        std::string message = error.what();
        if (const auto chosen = app.get_subcommands(); !chosen.empty()) {
            message = chosen.front()->get_name() + ": " + message;
        }
        throw UsageError(message + " (corvex --help shows how)");
    }
    return action();
}

}  // namespace corvex::tool

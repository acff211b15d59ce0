#include <algorithm>
#include <csignal>
#include <cstdio>
#include <exception>
#include <string_view>

#include <CLI/CLI.hpp>

#include <Corvex/cli/CLIExitCodeError.h>
#include <Corvex/cli/transcode/TranscodeCliArguments.h>
#include <Corvex/platform/Localization.h>
#include <Corvex/platform/Log.h>
#include <Corvex/platform/Version.h>
#include <tools/corvex/Subcommand.h>
#include <tools/corvex/analysis/AnalysisWorker.h>
#include <tools/corvex/host/AnalysisHost.h>
#include <tools/corvex/host/TranscodeHost.h>
#include <tools/corvex/worker/TranscodeWorker.h>

namespace {

using corvex::tool::ExitStatus;

constexpr corvex::tool::AddSubcommand subcommands[] = {
    corvex::tool::addAnalyzeCommand,  corvex::tool::addArgsCommand,      corvex::tool::addAudioCommand,
    corvex::tool::addColorCommand,    corvex::tool::addGenerateCommand,  corvex::tool::addLutCommand,
    corvex::tool::addMediaCommand,    corvex::tool::addRateCommand,      corvex::tool::addSettingsCommand,
    corvex::tool::addTimecodeCommand, corvex::tool::addTranscodeCommand, corvex::tool::addVocabularyCommand,
};

/// Everything up to "--" is the tool's own; what follows is taken as it stands.
ExitStatus runSubcommand(std::vector<std::string> own) {
    corvex::tool::Invocation invocation;
    const auto separator = std::find(own.begin(), own.end(), "--");
    if (separator != own.end()) {
        invocation.hasWords = true;
        invocation.words.assign(separator + 1, own.end());
        own.erase(separator, own.end());
    }

    CLI::App app("Command lines, transcodes and media facts for people on set and in post.", "corvex");
    app.set_version_flag("--version", std::string("corvex ") + std::string(corvex::versionString));
    app.require_subcommand(1);
    corvex::tool::Action action;
    for (const auto add : subcommands) add(app, invocation, action);
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
        throw corvex::tool::UsageError(message + " (corvex --help shows how)");
    }
    return action();
}

ExitStatus run(std::vector<std::string> words) {
    // A worker's words, and a transcode's, are the argument vector's language; they never pass through the tool's own.
    if (!words.empty() && words.front() == corvex::TranscodeCliArguments::runInTranscodeModeFlag) {
        return corvex::tool::runTranscodeWorker({words.begin() + 1, words.end()});
    }
    if (!words.empty() && words.front() == "transcode" && !(words.size() == 2 && words[1] == "--help")) {
        return corvex::tool::runTranscodeHost({words.begin() + 1, words.end()});
    }
    if (!words.empty() && words.front() == corvex::tool::runInAnalysisModeFlag) {
        return corvex::tool::runAnalysisWorker({words.begin() + 1, words.end()});
    }
    const bool asksForHelp = words.size() == 2 && (words[1] == "--help" || words[1] == "-h");
    if (!words.empty() && words.front() == "analyze" && !asksForHelp) {
        return corvex::tool::runAnalysisHost({words.begin() + 1, words.end()});
    }
    return runSubcommand(std::move(words));
}

}  // namespace

int main(int argc, char** argv) {
    corvex::followUserLanguage();
    corvex::setMinimumLogLevel(corvex::LogLevel::error);  // standard error is for what the user must know
    std::signal(SIGPIPE, SIG_IGN);                        // a reader that left is a write error like any other
    ExitStatus status = ExitStatus::jobFailed;
    try {
        status = run({argv + 1, argv + argc});
    } catch (const corvex::tool::UsageError& error) {
        corvex::tool::printError(error.what());
        status = ExitStatus::usage;
    } catch (const corvex::CLIExitCodeError& error) {
        corvex::tool::printError(error.what());
        status = static_cast<ExitStatus>(error.exitCode());
    } catch (const std::exception& error) {
        corvex::tool::printError(error.what());
    }
    if (std::fflush(stdout) != 0 && status == ExitStatus::success) {
        corvex::tool::printError("cannot write to standard output");
        status = ExitStatus::jobFailed;
    }
    return static_cast<int>(status);
}

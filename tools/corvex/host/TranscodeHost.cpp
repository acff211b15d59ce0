#include <tools/corvex/host/TranscodeHost.h>

#include <cstring>

#include <unistd.h>
#include <CLI/CLI.hpp>

#include <Corvex/cli/CLICustodialFlag.h>
#include <Corvex/cli/transcode/TranscodeCliArguments.h>
#include <Corvex/platform/Text.h>
#include <tools/corvex/Subcommand.h>
#include <tools/corvex/SuggestedFlag.h>
#include <tools/corvex/host/InformationCommands.h>
#include <tools/corvex/host/ProgressDisplay.h>
#include <tools/corvex/host/WorkerProcess.h>
#include <tools/corvex/worker/OutputFile.h>

namespace corvex::tool {
namespace {

/// The tool's own number among the applications that start workers.
constexpr int toolAppNumber = 0;

/// Unknown words that begin with "-": a slip in a flag's name, or a value that the vector cannot carry because any word
/// that begins with "-" is read as a flag.
void refuseUnknownFlags(const TranscodeCliArguments& arguments, const std::vector<std::string>& words) {
    if (arguments.allFlagsAreValid()) return;
    std::string message;
    arguments.enumerateUnknownFlags([&](std::string_view key, std::string_view) {
        message += message.empty() ? "unknown flag '" : ", '";
        message += std::string(key) + "'";
        if (const auto suggestion = suggestedFlag(key)) message += " (did you mean " + std::string(*suggestion) + "?)";
    });
    for (std::size_t i = 1; i < words.size(); ++i) {
        const TranscodeCliArguments word(std::vector<std::string>{words[i]});
        const TranscodeCliArguments before(std::vector<std::string>{words[i - 1]});
        if (word.allFlagsAreValid() || before.flagValueLookup().empty()) continue;
        if (suggestedFlag(words[i])) continue;
        message += "; a value cannot begin with '-', so '" + words[i] + "' is no value of " +
                   before.flagValueLookup().begin()->first;
        break;
    }
    throw UsageError(message + "; corvex transcode -h lists the flags");
}

void refuseValuesThatReadAsFlags(const TranscodeCliArguments& arguments) {
    for (const auto& [flag, value] : arguments.flagValueLookup()) {
        if (trimmed(value).starts_with('-')) {
            throw UsageError(flag + " " + inQuotes(value) +
                             ": a value cannot begin with '-', as it would be read as a flag");
        }
    }
}

std::vector<std::string> workerWords(const TranscodeCliArguments& arguments) {
    std::vector<std::string> words{std::string(TranscodeCliArguments::runInTranscodeModeFlag)};
    for (std::string& word : arguments.commandLineArguments()) words.push_back(std::move(word));
    words.emplace_back(cliFlag(CLICustodialFlag::parentPid));
    words.push_back(std::to_string(getpid()));
    words.emplace_back(cliFlag(CLICustodialFlag::parentAppNumber));
    words.push_back(std::to_string(toolAppNumber));
    return words;
}

}  // namespace

ExitStatus runTranscodeHost(const std::vector<std::string>& words) {
    if (answerInformationCommands(words)) return ExitStatus::success;
    const TranscodeCliArguments arguments(words, true);
    refuseUnknownFlags(arguments, words);
    refuseValuesThatReadAsFlags(arguments);
    if (!arguments.firstInputFile()) throw UsageError("transcode: -in is missing: expected the file to transcode");
    if (!arguments.outputFile()) throw UsageError("transcode: -out is missing: expected the file to write");

    ProgressDisplay display(std::string(arguments.progressOutputPrefix().value_or("")));
    WorkerProcess worker(workerWords(arguments));
    const pid_t process = worker.processIdentifier();
    const WorkerEnd end = worker.wait([&](std::string_view line) { display.takeLine(line); },
                                      [&](std::string_view line) {
                                          display.clear();
                                          std::fprintf(stderr, "%.*s\n", static_cast<int>(line.size()), line.data());
                                      });
    display.clear();
    if (end.signal != 0) {
        OutputFile::removeLeftovers(*arguments.outputFile(), arguments.workDirectory().value_or(""), process);
        throw JobError("the worker was ended by signal " + std::to_string(end.signal) + " (" + strsignal(end.signal) +
                       "); '" + std::string(*arguments.outputFile()) + "' was not written");
    }
    return static_cast<ExitStatus>(end.exitStatus);
}

void addTranscodeCommand(CLI::App& app, const Invocation&, Action& action) {
    // Its words never come here: main() hands them over before the tool's own options are looked at. What is left is to
    // name the command in the tool's help, and its own --help.
    CLI::App* command = app.add_subcommand("transcode", "Transcode a clip in a worker process");
    command->footer(
        "Usage: corvex transcode WORD...\n"
        "The words are flags and values of the transcode vocabulary; corvex transcode -h lists them.\n"
        "Examples:\n"
        "  corvex transcode -in A001.mov -out A001_proxy.mov -preset orvane_cloud\n"
        "  corvex transcode -in_0_0 A.mov -in_0_1 B.mov -out AB.mov -vcodec prores422 -acopy -overwrite\n"
        "  corvex transcode -codecs");
    command->callback([&action] { action = [] { return ExitStatus::success; }; });
}

}  // namespace corvex::tool

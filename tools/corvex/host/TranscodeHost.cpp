#include <tools/corvex/host/TranscodeHost.h>

#include <algorithm>

#include <CLI/CLI.hpp>

#include <Corvex/cli/transcode/TranscodeCliArguments.h>
#include <Corvex/filesystem/ProcessInfoSleepManager.h>
#include <Corvex/platform/Text.h>
#include <Corvex/settings/TranscodeSettings.h>
#include <tools/corvex/FileUrl.h>
#include <tools/corvex/Subcommand.h>
#include <tools/corvex/SuggestedFlag.h>
#include <tools/corvex/host/InformationCommands.h>
#include <tools/corvex/host/TranscodeQueue.h>
#include <tools/corvex/vocabulary/FlagVocabulary.h>

namespace corvex::tool {
namespace {

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

/// What the vector's reader would pass over without a word.
void refuseWordsWithoutEffect(const TranscodeCliArguments& arguments, const std::vector<std::string>& words) {
    if (!words.empty() && !trimmed(words.front()).starts_with('-')) {
        throw UsageError(inQuotes(words.front()) + ": expected a flag before it, as -in");
    }
    const ArgumentLookup& lookup = arguments.flagValueLookup();
    const auto numbered =
        std::find_if(lookup.begin(), lookup.end(), [](const auto& entry) { return entry.first.starts_with("-in_"); });
    if (numbered != lookup.end() && arguments.hasArgumentFlag("-in")) {
        throw UsageError("-in and " + numbered->first + ": expected one of the two ways to name inputs");
    }
    for (const VocabularyFlag& flag : flagVocabulary()) {
        if (flag.takesValue || flag.command != "transcode") continue;
        const auto value = arguments.argumentFlagValue(flag.flag);
        if (value && !value->empty()) {
            throw UsageError(std::string(flag.flag) + " " + inQuotes(*value) + ": the flag takes no value");
        }
    }
}

}  // namespace

ExitStatus runTranscodeHost(const std::vector<std::string>& words) {
    if (answerInformationCommands(words)) return ExitStatus::success;
    TranscodeCliArguments arguments(words, true);
    refuseUnknownFlags(arguments, words);
    refuseWordsWithoutEffect(arguments, words);
    replaceFileUrls(arguments);
    refuseValuesThatReadAsFlags(arguments);
    if (!arguments.firstInputFile()) throw UsageError("transcode: -in is missing: expected the file to transcode");
    if (!arguments.outputFile()) throw UsageError("transcode: -out is missing: expected the file to write");

    const TranscodePreferences preferences = TranscodePreferences::ofUser();
    const bool handsLegacyOn = preferences.usesLegacyPipeline && !arguments.useLegacyPipeline();
    if (handsLegacyOn) arguments.setUseLegacyPipeline(true);
    if (preferences.usesGpu) {
        printError("the setting " + TranscodeSettings::kUseTranscodeGPUAcceleration() +
                   " asks for a GPU; there is none that this worker can use, so the processor computes");
    }
    ProcessInfoSleepManager awake;  // until all are done
    awake.prevent();
    const ExitStatus status = TranscodeQueue(jobsOf(arguments), preferences).run();
    if (status == ExitStatus::usage && handsLegacyOn) {
        printError("-legacy-pipeline comes from the setting " +
                   std::string(TranscodeSettings::kUseLegacyTranscodePipeline) + "; 'corvex settings unset " +
                   std::string(TranscodeSettings::kUseLegacyTranscodePipeline) + "' takes it back");
    }
    return status;
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
        "  corvex transcode -in_0_0 A.mov -in_1_0 B.mov -out PROXIES/ -preset orvane_cloud\n"
        "  corvex transcode -codecs");
    command->callback([&action] { action = [] { return ExitStatus::success; }; });
}

}  // namespace corvex::tool

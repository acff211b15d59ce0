#include <Corvex/cli/transcode/TranscodeCliArguments.h>
#include <Corvex/platform/Json.h>
#include <tools/corvex/SuggestedFlag.h>
#include <tools/corvex/ToolError.h>
#include <tools/corvex/TypedOptions.h>
#include <tools/corvex/worker/TranscodeJob.h>

#include "support/Fuzzer.h"

/// The words of a job, which a newline ends, through every typed option, and made into what the worker would do.
void corvex::fuzz(std::string_view input) {
    std::vector<std::string> words{"-in", "in.mov", "-out", "out.mov"};
    for (std::string& word : wordsOf(input, std::string_view("\n\0", 2))) words.push_back(std::move(word));
    const TranscodeCliArguments arguments(words);
    const auto options = tool::typedOptions(arguments);
    for (const auto& option : options.readable) {
        require(!option.text().empty() || jsonText(option.value) == "\"\"", "an option that says nothing");
    }
    for (const auto& option : options.unreadable) require(!option.problem.empty(), "no reason is given");
    if (const auto unknown = arguments.unknownFlags()) static_cast<void>(tool::suggestedFlag(unknown->front()));
    try {
        const auto job = tool::TranscodeJob::make(arguments);
        require(!job.inputs.empty() && !job.output.empty(), "a job without files");
    } catch (const tool::UsageError& error) {
        require(*error.what() != '\0', "no reason is given");
    } catch (const tool::JobError& error) {
        require(*error.what() != '\0', "no reason is given");
    }
}

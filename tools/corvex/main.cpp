#include <pthread.h>

#include <csignal>
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include <Corvex/cli/CLIExitCodeError.h>
#include <Corvex/cli/transcode/TranscodeCliArguments.h>
#include <Corvex/platform/Localization.h>
#include <Corvex/platform/Log.h>
#include <tools/corvex/Subcommand.h>
#include <tools/corvex/analysis/AnalysisWorker.h>
#include <tools/corvex/host/AnalysisHost.h>
#include <tools/corvex/host/TranscodeHost.h>
#include <tools/corvex/worker/TranscodeWorker.h>

namespace {

using corvex::tool::ExitStatus;

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
    return corvex::tool::runSubcommand(std::move(words));
}

}  // namespace

int main(int argc, char** argv) {
    pthread_setname_np(pthread_self(), "corvex");  // a worker would be called "exe", after the link that it starts from
    corvex::followUserLanguage();
    corvex::setMinimumLogLevel(corvex::LogLevel::error);  // standard error is for what the user must know
    // A reader that left and a file that may not grow are write errors like any other.
    for (const int signal : {SIGPIPE, SIGXFSZ}) std::signal(signal, SIG_IGN);
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

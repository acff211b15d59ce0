#include <tools/corvex/host/AnalysisHost.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>

#include <fmt/format.h>
#include <unistd.h>
#include <CLI/CLI.hpp>

#include <Corvex/cli/analysis/MediaAnalysisCLIArgumentFactory.h>
#include <Corvex/cli/analysis/MediaAnalysisRequest.h>
#include <Corvex/filesystem/ProcessInfoSleepManager.h>
#include <Corvex/platform/NumberText.h>
#include <tools/corvex/FileUrl.h>
#include <tools/corvex/Subcommand.h>
#include <tools/corvex/analysis/AnalysisResults.h>
#include <tools/corvex/analysis/AnalysisWorker.h>
#include <tools/corvex/host/ProgressDisplay.h>
#include <tools/corvex/host/WorkerProcess.h>
#include <tools/corvex/worker/OutputFile.h>

namespace corvex::tool {
namespace {

std::string trackText(const TrackResult& track) {
    std::string text = fmt::format("  {:<3}{:<10}{}", track.index, track.kind, track.codec.value_or(track.codecName));
    if (track.video) {
        const VideoResult& video = *track.video;
        text += fmt::format(", {}x{}", video.width, video.height);
        if (video.frameRate) text += fmt::format(", {:.5g} fps", video.frameRate->value);
        if (video.color.transferFunction) text += ", " + *video.color.transferFunction;
    }
    if (track.audio) {
        const AudioResult& audio = *track.audio;
        text += fmt::format(", {}, {} Hz, writable as {}", audio.channelLayout, audio.sampleRate, audio.replacement);
    }
    return text;
}

void printFile(const FileResult& file) {
    fmt::print("{}\n", file.path);
    if (file.problem) return fmt::print("  not analysed: {}\n", *file.problem);
    fmt::print("  {}", file.container.value_or(file.format.value_or("")));
    if (file.durationInSeconds) fmt::print(", {:.3f} s", *file.durationInSeconds);
    if (file.startTimecode) fmt::print(", from {}", file.startTimecode->text);
    fmt::print("\n");
    for (const TrackResult& track : file.tracks) fmt::print("{}\n", trackText(track));
    for (const SnapshotResult& snapshot : file.snapshots) {
        fmt::print("  at {}: {}\n", shortestText(snapshot.location),
                   snapshot.file.value_or(snapshot.problem.value_or("")));
    }
    if (!file.deep) return;
    for (const DecodedTrackResult& track : file.deep->tracks) {
        fmt::print("  {:<3}decoded {}, errors {}, sha256 {}\n", track.index, track.frames, track.decodeErrors,
                   track.sha256);
    }
    if (file.deep->problem) fmt::print("  not read to its end: {}\n", *file.deep->problem);
}

AnalysisResults readResults(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    if (!file) throw JobError("cannot read the results " + inQuotes(path));
    return AnalysisResults::parse(text.str());
}

std::vector<std::string> workerWords(const std::vector<std::string>& words) {
    std::vector<std::string> all{std::string(runInAnalysisModeFlag)};
    all.insert(all.end(), words.begin(), words.end());
    for (std::string& word : MediaAnalysisCLIArgumentFactory::custodialOptions(getpid()).commandLineArguments()) {
        all.push_back(std::move(word));
    }
    return all;
}

}  // namespace

ExitStatus runAnalysisHost(const std::vector<std::string>& words) {
    MediaAnalysisRequest request = MediaAnalysisRequest::fromWords(words);
    replaceFileUrls(request);
    ProcessInfoSleepManager awake;  // until it is done
    awake.prevent();
    ProgressDisplay display("");
    WorkerProcess worker(workerWords(words));
    const pid_t process = worker.processIdentifier();
    const WorkerEnd end = worker.wait([&](std::string_view line) { display.takeLine(line); },
                                      [&](std::string_view line) {
                                          display.clear();
                                          std::fprintf(stderr, "%.*s\n", static_cast<int>(line.size()), line.data());
                                      });
    display.clear();
    if (end.signal != 0) {
        OutputFile::removeLeftovers(request.resultsFilePath, "", process);
        throw JobError("the worker was ended by signal " + std::to_string(end.signal) + " (" + strsignal(end.signal) +
                       "); " + inQuotes(request.resultsFilePath) + " was not written");
    }
    const auto status = static_cast<ExitStatus>(end.exitStatus);
    std::error_code error;  // of what was not written
    const bool isWritten = status == ExitStatus::success || status == ExitStatus::jobFailed;
    if (isWritten && std::filesystem::exists(request.resultsFilePath, error)) {
        for (const FileResult& file : readResults(request.resultsFilePath).files) printFile(file);
    }
    return status;
}

void addAnalyzeCommand(CLI::App& app, const Invocation& /*invocation*/, Action& action) {
    // Its words never come here, as those of a transcode do not.
    CLI::App* command = app.add_subcommand("analyze", "Say what media files hold, and take pictures of them");
    command->footer(
        "Usage: corvex analyze -pathToAnalyze FILE... -workDirectory DIR -resultsFilePath FILE [-analysisId ID]\n"
        "  [-deepAnalysis] [-snapshotLocation 0..1... -maxImageWidth PIXELS [-imageHeight PIXELS]\n"
        "  [-compressionFactor 0..1] [-lutFile FILE] [-allowFinderImages]]\n"
        "The results file is JSON; pictures go to the work directory.\n"
        "Examples:\n"
        "  corvex analyze -pathToAnalyze A001.mov -workDirectory /tmp -resultsFilePath A001.json\n"
        "  corvex analyze -pathToAnalyze A001.mov A002.mov -workDirectory THUMBS -resultsFilePath card.json \\\n"
        "    -snapshotLocation 0 0.5 1 -maxImageWidth 320 -allowFinderImages\n"
        "  corvex analyze -pathToAnalyze A001.mov -workDirectory /tmp -resultsFilePath deep.json -deepAnalysis");
    command->callback([&action] { action = [] { return ExitStatus::success; }; });
}

}  // namespace corvex::tool

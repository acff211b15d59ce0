#include <tools/corvex/analysis/AnalysisWorker.h>

#include <algorithm>
#include <memory>
#include <optional>

#include <Corvex/cli/analysis/MediaAnalysisCLIError.h>
#include <Corvex/cli/analysis/MediaAnalysisRequest.h>
#include <Corvex/filesystem/ApplicationIOTrackingDelegate.h>
#include <Corvex/platform/Version.h>
#include <tools/corvex/FileUrl.h>
#include <tools/corvex/analysis/AnalysisResults.h>
#include <tools/corvex/analysis/DeepAnalysis.h>
#include <tools/corvex/analysis/FileAnalysis.h>
#include <tools/corvex/analysis/Snapshots.h>
#include <tools/corvex/worker/OutputFile.h>
#include <tools/corvex/worker/ProgressReporter.h>
#include <tools/corvex/worker/StopRequest.h>
#include <tools/corvex/worker/TransferReporter.h>
#include <tools/corvex/writeBytes.h>

namespace corvex::tool {
namespace {

/// What the names of pictures begin with: the analysis identifier in characters that every file system takes.
std::string stemOf(const std::optional<std::string>& analysisId) {
    constexpr std::size_t longest = 100;
    std::string stem = analysisId.value_or("").substr(0, longest);
    for (char& character : stem) {
        const bool isPlain = (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
                             (character >= '0' && character <= '9') || character == '-';
        if (!isPlain) character = '_';
    }
    return stem.empty() ? "snapshot" : stem;
}

class Analysis {
public:
    Analysis(const MediaAnalysisRequest& request, PendingFiles& pictures) : request_(request) {
        if (request.images) {
            snapshots_.emplace(*request.images, request.workDirectory, stemOf(request.analysisId), pictures);
        }
        ApplicationIOTrackingDelegate::shared().setupIOTrackingBehavior(
            [transfers = transfers_](const IOActivityUpdate& update) { transfers->take(update); });
    }

    AnalysisResults run() {
        AnalysisResults results;
        results.writer = "corvex " + std::string(versionString);
        results.analysisId = request_.analysisId;
        results.deepAnalysis = request_.deepAnalysis;
        for (const std::string& path : request_.pathsToAnalyze) {
            results.files.push_back(fileResult(path, results.files.size() + 1));
        }
        return results;
    }

private:
    FileResult fileResult(const std::string& path, std::size_t number) {
        std::unique_ptr<MediaInput> input;
        FileResult file;
        try {
            input = std::make_unique<MediaInput>(path);
            file = describeFile(*input);
        } catch (const JobError& error) {
            throwIfStopRequested();
            input.reset();
            file.path = path;
            file.problem = error.what();
        }
        if (snapshots_) file.snapshots = snapshots_->take(path, input.get(), number);
        if (input && request_.deepAnalysis) file.deep = deepResult(*input);
        return file;
    }

    DeepResult deepResult(MediaInput& input) {
        ProgressReporter progress("", "");
        progress.setTransfers(transfers_);
        progress.setTotal(input.expectedFrames(), input.duration());
        TransferReporter transfers(request_.resultsFilePath);
        DeepResult result = decodeFile(input, [&](std::int64_t frames, double seconds) {
            transfers.report(input.path(), input.bytesRead(), 0);
            progress.update(frames, seconds);
        });
        transfers.endInput(input.path(), input.bytesRead(), 0);
        progress.report("done");
        return result;
    }

    const MediaAnalysisRequest& request_;
    std::shared_ptr<TransferMeter> transfers_ = std::make_shared<TransferMeter>();
    std::optional<Snapshots> snapshots_;
};

void writeResults(OutputFile& file, const AnalysisResults& results) {
    const std::string text = results.text();
    writeBytes(file, std::as_bytes(std::span(text)));
    file.publish();
}

}  // namespace

ExitStatus runAnalysisWorker(const std::vector<std::string>& words) {
    const LibraryMessages messages;
    MediaAnalysisRequest request = MediaAnalysisRequest::fromWords(words);
    replaceFileUrls(request);
    watchForStopRequests(request.parentPid);
    request.requireFiles();
    const auto notCreated = [&](const JobError& error) {
        return MediaAnalysisCLIError(MediaAnalysisCLIErrorCase::resultsFilePathNotCreated, request.resultsFilePath,
                                     error.what());
    };
    std::optional<OutputFile> file;  // tried first: an analysis must not fail in the end for a wrong path
    try {
        file.emplace(request.resultsFilePath, "", false);
    } catch (const JobError& error) {
        throw notCreated(error);
    }
    PendingFiles pictures;
    const AnalysisResults results = Analysis(request, pictures).run();
    throwIfStopRequested();
    try {
        writeResults(*file, results);
    } catch (const JobError& error) {
        throw notCreated(error);
    }
    pictures.keep();
    const bool hasProblem = std::any_of(results.files.begin(), results.files.end(),
                                        [](const FileResult& result) { return result.hasProblem(); });
    return hasProblem ? ExitStatus::jobFailed : ExitStatus::success;
}

}  // namespace corvex::tool

#include <optional>
#include <utility>

#include <Corvex/cli/CLIExitCodeError.h>
#include <Corvex/cli/analysis/MediaAnalysisCLIArgumentFactory.h>
#include <Corvex/cli/analysis/MediaAnalysisRequest.h>

#include "support/Fuzzer.h"

namespace {

using namespace corvex;
using Factory = MediaAnalysisCLIArgumentFactory;

/// What was read, as a parent would ask for it.
std::vector<std::string> rebuilt(const MediaAnalysisRequest& request) {
    auto words = Factory::buildBasicOptions(request.pathsToAnalyze, request.workDirectory, request.resultsFilePath,
                                            request.analysisId, request.deepAnalysis)
                     .commandLineArguments();
    if (const auto& images = request.images) {
        const std::optional<std::string> lut = images->lutFile.empty() ? std::nullopt : std::optional(images->lutFile);
        const auto options =
            images->imageHeight
                ? Factory::buildImageOptions(images->snapshotLocations, images->maxImageWidth, *images->imageHeight,
                                             images->compressionFactor, images->allowFinderImages, lut)
                : Factory::buildImageOptions(images->snapshotLocations, images->maxImageWidth,
                                             images->compressionFactor, images->allowFinderImages, lut);
        for (std::string& word : options.commandLineArguments()) words.push_back(std::move(word));
    }
    return words;
}

}  // namespace

void corvex::fuzz(std::string_view input) {
    try {
        const auto request = MediaAnalysisRequest::fromWords(wordsOf(input, std::string_view("\r\0", 2)));
        require(!request.pathsToAnalyze.empty(), "a request without paths");
        // A list cannot carry a newline among several paths, and one path that looks like a list is read as one.
        for (const std::string& path : request.pathsToAnalyze) {
            if (path.find('\n') != std::string::npos) return;
        }
        const auto words = rebuilt(request);
        const auto again = MediaAnalysisRequest::fromWords(words);
        require(again.pathsToAnalyze == request.pathsToAnalyze, "the paths changed on their way");
        require(rebuilt(again) == words, "an option changed on its way");
    } catch (const CLIExitCodeError& error) {
        require(error.exitCode() == exitCode::unusableWords, "words alone gave another status");
    }
}

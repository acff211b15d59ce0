#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <Corvex/cli/CLIExitCodeError.h>
#include <Corvex/cli/analysis/MediaAnalysisCLIArgumentFactory.h>
#include <Corvex/cli/analysis/MediaAnalysisRequest.h>
#include <Corvex/platform/Checked.h>
#include <Corvex/platform/Text.h>

namespace {

using namespace corvex;
using Words = std::vector<std::string>;

/// What was read, as a parent would ask for it.
Words rebuilt(const MediaAnalysisRequest& request) {
    Words words = MediaAnalysisCLIArgumentFactory::buildBasicOptions(request.pathsToAnalyze, request.workDirectory,
                                                                     request.resultsFilePath, request.analysisId,
                                                                     request.deepAnalysis)
                      .commandLineArguments();
    if (const auto& images = request.images) {
        const std::optional<std::string> lut = images->lutFile.empty() ? std::nullopt : std::optional(images->lutFile);
        const auto options = images->imageHeight
                                 ? MediaAnalysisCLIArgumentFactory::buildImageOptions(
                                       images->snapshotLocations, images->maxImageWidth, *images->imageHeight,
                                       images->compressionFactor, images->allowFinderImages, lut)
                                 : MediaAnalysisCLIArgumentFactory::buildImageOptions(
                                       images->snapshotLocations, images->maxImageWidth, images->compressionFactor,
                                       images->allowFinderImages, lut);
        for (std::string& word : options.commandLineArguments()) words.push_back(std::move(word));
    }
    return words;
}

void requireSame(const MediaAnalysisRequest& a, const MediaAnalysisRequest& b) {
    require(a.pathsToAnalyze == b.pathsToAnalyze, "the paths changed on their way");
    require(a.workDirectory == b.workDirectory && a.resultsFilePath == b.resultsFilePath, "a path changed");
    require(a.analysisId == b.analysisId && a.deepAnalysis == b.deepAnalysis, "an option changed");
    require(a.images.has_value() == b.images.has_value(), "the pictures were lost");
    if (!a.images) return;
    require(a.images->snapshotLocations == b.images->snapshotLocations, "the locations changed");
    require(a.images->maxImageWidth == b.images->maxImageWidth && a.images->imageHeight == b.images->imageHeight &&
                a.images->compressionFactor == b.images->compressionFactor,
            "a number changed");
    require(a.images->lutFile == b.images->lutFile && a.images->allowFinderImages == b.images->allowFinderImages,
            "an option for pictures changed");
}

/// A list cannot carry a newline among several paths, and one path that looks like a list is read as one.
bool canBeWritten(const MediaAnalysisRequest& request) {
    const auto holdsNewline = [](const std::string& path) { return path.find('\n') != std::string::npos; };
    return std::none_of(request.pathsToAnalyze.begin(), request.pathsToAnalyze.end(), holdsNewline);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Words words;
    forEachPiece({reinterpret_cast<const char*>(data), size}, std::string_view("\r\0", 2),
                 [&](std::string_view word) { words.emplace_back(word); });
    try {
        const auto request = MediaAnalysisRequest::fromWords(words);
        require(!request.pathsToAnalyze.empty(), "a request without paths");
        if (canBeWritten(request)) requireSame(request, MediaAnalysisRequest::fromWords(rebuilt(request)));
    } catch (const CLIExitCodeError& error) {
        require(error.exitCode() == exitCode::unusableWords, "words alone gave another status");
    }
    return 0;
}

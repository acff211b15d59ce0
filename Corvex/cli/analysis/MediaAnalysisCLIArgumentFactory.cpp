#include <Corvex/cli/analysis/MediaAnalysisCLIArgumentFactory.h>

#include <utility>
#include <vector>

#include <Corvex/cli/CLICustodialFlag.h>
#include <Corvex/cli/CLIExitCodeError.h>
#include <Corvex/cli/analysis/MediaAnalysisCLIFlag.h>
#include <Corvex/cli/analysis/MediaAnalysisImageCLIFlags.h>
#include <Corvex/platform/NumberText.h>

namespace corvex::inline v0 {
namespace {

using Flag = MediaAnalysisCLIFlag;
using ImageFlag = MediaAnalysisImageCLIFlags;
using Entries = std::vector<ArgumentLookup::Entry>;

void add(Entries& entries, auto flag, std::string value) {
    entries.emplace_back(std::string(cliFlag(flag)), std::move(value));
}

std::string pathsValue(std::span<const std::string> paths) {
    if (paths.size() == 1) return paths.front();
    for (const std::string& path : paths) {
        if (path.find('\n') != std::string::npos) {
            throw CLIWordError(std::string(cliFlag(Flag::pathToAnalyze)), path,
                               "a path that holds a newline cannot stand among others");
        }
    }
    return BasicMediaAnalysisCLIOptions({}).buildCLIList(paths);
}

}  // namespace

BasicMediaAnalysisCLIOptions MediaAnalysisCLIArgumentFactory::buildBasicOptions(
    std::span<const std::string> pathsToAnalyze, const std::string& workDirectory, const std::string& resultsFilePath,
    const std::optional<std::string>& analysisId, bool deepAnalysis) {
    Entries entries;
    add(entries, Flag::pathToAnalyze, pathsValue(pathsToAnalyze));
    add(entries, Flag::workDirectory, workDirectory);
    add(entries, Flag::resultsFilePath, resultsFilePath);
    if (analysisId) add(entries, Flag::analysisId, *analysisId);
    if (deepAnalysis) add(entries, Flag::deepAnalysis, "");
    return BasicMediaAnalysisCLIOptions(ArgumentLookup(std::move(entries)));
}

MediaAnalysisImageCLIOptions MediaAnalysisCLIArgumentFactory::buildImageOptions(
    std::span<const float> snapshotLocations, float maxImageWidth, std::optional<float> compressionFactor,
    bool allowFinderImages, const std::optional<std::string>& lutToApply) {
    std::vector<std::string> locations;
    for (const float location : snapshotLocations) locations.push_back(shortestText(location));
    Entries entries;
    add(entries, ImageFlag::snapshotLocation, MediaAnalysisImageCLIOptions({}).buildCLIList(locations));
    add(entries, ImageFlag::maxImageWidth, shortestText(maxImageWidth));
    if (compressionFactor) add(entries, ImageFlag::compressionFactor, shortestText(*compressionFactor));
    if (allowFinderImages) add(entries, ImageFlag::allowFinderImages, "");
    if (lutToApply) add(entries, ImageFlag::lutFile, *lutToApply);
    return MediaAnalysisImageCLIOptions(ArgumentLookup(std::move(entries)));
}

MediaAnalysisImageCLIOptions MediaAnalysisCLIArgumentFactory::buildImageOptions(
    std::span<const float> snapshotLocations, float imageWidth, float imageHeight,
    std::optional<float> compressionFactor, bool allowFinderImages, const std::optional<std::string>& lutToApply) {
    ArgumentLookup lookup =
        buildImageOptions(snapshotLocations, imageWidth, compressionFactor, allowFinderImages, lutToApply)
            .argumentLookup();
    lookup.insert_or_assign(cliFlag(ImageFlag::imageHeight), shortestText(imageHeight));
    return MediaAnalysisImageCLIOptions(std::move(lookup));
}

CustodialCLIOptions MediaAnalysisCLIArgumentFactory::custodialOptions(std::int32_t forParentProcessId) {
    Entries entries;
    add(entries, CLICustodialFlag::parentPid, std::to_string(forParentProcessId));
    return CustodialCLIOptions(ArgumentLookup(std::move(entries)));
}

bool MediaAnalysisImageCLIOptions::limitsHeight() const noexcept {
    return lookup_.contains(cliFlag(ImageFlag::imageHeight));
}

}  // namespace corvex::inline v0

#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include <Corvex/cli/analysis/MediaAnalysisCLIOptions.h>
#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

/// Builds what a parent hands to the media analysis that it starts. What is optional and absent gives no flag, a switch
/// that is on the empty value. A value that begins with "-" would be read as a flag: paths are best absolute.
struct MediaAnalysisCLIArgumentFactory {
    /// One path is written as it is, several as a list. Throws CLIWordError for a path among several that holds a
    /// newline, which no list can carry.
    [[nodiscard]] CORVEX_EXPORT static BasicMediaAnalysisCLIOptions buildBasicOptions(
        std::span<const std::string> pathsToAnalyze, const std::string& workDirectory,
        const std::string& resultsFilePath, const std::optional<std::string>& analysisId, bool deepAnalysis);

    /// Pictures no wider than `maxImageWidth` pixels. Numbers are finite.
    [[nodiscard]] CORVEX_EXPORT static MediaAnalysisImageCLIOptions buildImageOptions(
        std::span<const float> snapshotLocations, float maxImageWidth, std::optional<float> compressionFactor,
        bool allowFinderImages, const std::optional<std::string>& lutToApply);
    /// Pictures that fit into `imageWidth` by `imageHeight` pixels.
    [[nodiscard]] CORVEX_EXPORT static MediaAnalysisImageCLIOptions buildImageOptions(
        std::span<const float> snapshotLocations, float imageWidth, float imageHeight,
        std::optional<float> compressionFactor, bool allowFinderImages, const std::optional<std::string>& lutToApply);

    /// "-parentPid" with the number.
    [[nodiscard]] CORVEX_EXPORT static CustodialCLIOptions custodialOptions(std::int32_t forParentProcessId);
};

}  // namespace corvex::inline v0

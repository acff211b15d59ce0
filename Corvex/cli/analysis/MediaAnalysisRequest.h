#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

/// Which pictures a media analysis is to make. Numbers of a request that was read are in range; one that is filled by
/// hand is not checked.
struct MediaAnalysisImageRequest {
    std::vector<float> snapshotLocations;  ///< 0 (the first frame) to 1 (the last one); never empty.
    float maxImageWidth = 0;               ///< Pixels, from 1.
    std::optional<float> imageHeight;      ///< Pixels, from 1: the largest height.
    float compressionFactor = 0.8F;        ///< 0 (the smallest file) to 1 (the best picture).
    bool allowFinderImages = false;        ///< A picture that somebody made before may stand in for a snapshot.
    std::string lutFile;                   ///< Empty: none.
};

/// What a child reads from the words that its parent has built with MediaAnalysisCLIArgumentFactory. As any value type.
struct MediaAnalysisRequest {
    std::vector<std::string> pathsToAnalyze;
    std::string workDirectory, resultsFilePath;
    std::optional<std::string> analysisId;
    bool deepAnalysis = false;
    std::optional<MediaAnalysisImageRequest> images;
    std::int32_t parentPid = 0;  ///< 0: not stated.

    /// Flags count in any case. A flag that is given again outranks the earlier one. Paths and locations may be lists, or
    /// follow as several words. An empty value counts as not supplied.
    /// Throws MediaAnalysisCLIError or MediaAnalysisCLIImageError for what is missing, CLIWordError for what has no place.
    [[nodiscard]] CORVEX_EXPORT static MediaAnalysisRequest fromWords(std::span<const std::string> words);

    /// Looks whether what must exist does, and what must not does not. Throws MediaAnalysisCLIError.
    CORVEX_EXPORT void requireFiles() const;
};

}  // namespace corvex::inline v0

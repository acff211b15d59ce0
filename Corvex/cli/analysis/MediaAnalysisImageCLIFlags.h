#pragma once

#include <cstdint>
#include <span>
#include <string>

#include <Corvex/cli/CLIFlagCase.h>
#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

/// The flags by which a media analysis is asked for pictures.
enum class MediaAnalysisImageCLIFlags : std::uint8_t {
    compressionFactor,
    snapshotLocation,
    maxImageWidth,
    imageHeight,
    allowFinderImages,
    lutFile,
};

template <>
inline constexpr auto caseTable<MediaAnalysisImageCLIFlags> = std::to_array<CLIFlagCase<MediaAnalysisImageCLIFlags>>({
    {{MediaAnalysisImageCLIFlags::compressionFactor, "compressionFactor", "quality, 0 to 1"},
     "-compressionFactor",
     true},
    {{MediaAnalysisImageCLIFlags::snapshotLocation, "snapshotLocation", "where in the clip, 0 to 1"},
     "-snapshotLocation",
     true},
    {{MediaAnalysisImageCLIFlags::maxImageWidth, "maxImageWidth", "the largest width in pixels"},
     "-maxImageWidth",
     true},
    {{MediaAnalysisImageCLIFlags::imageHeight, "imageHeight", "the largest height in pixels"}, "-imageHeight", true},
    {{MediaAnalysisImageCLIFlags::allowFinderImages, "allowFinderImages", "let a ready-made picture stand in"},
     "-allowFinderImages",
     false},
    {{MediaAnalysisImageCLIFlags::lutFile, "lutFile", "the look-up table to apply"}, "-lutFile", true},
});
static_assert(isComplete<MediaAnalysisImageCLIFlags>(caseTable<MediaAnalysisImageCLIFlags>) &&
              flagsMatchRawValues<MediaAnalysisImageCLIFlags>());

/// One flag cleaned by `options`.
[[nodiscard]] CORVEX_EXPORT std::string sanitizedFlag(MediaAnalysisImageCLIFlags flag, CLISanitizationOptions options);

/// For each location the flag, a blank and the location's shortest text, with nothing between one and the next. A text to
/// compare by; a vector for a child comes from MediaAnalysisCLIArgumentFactory.
[[nodiscard]] CORVEX_EXPORT std::string snapShotLocationsCLIValue(std::span<const float> locations);

}  // namespace corvex::inline v0

#pragma once

#include <cstdint>
#include <span>
#include <string>

#include <Corvex/cli/CLIFlagCase.h>
#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

/// The flags by which a media analysis is asked for pictures. Any of them asks for some, and then the second and the
/// third are needed. Numbers are decimals.
enum class MediaAnalysisImageCLIFlags : std::uint8_t {
    /// 0 (the smallest file) to 1 (the best picture).
    compressionFactor,
    /// A part of the clip's length, 0 to 1, or a list of them.
    snapshotLocation,
    /// Pixels, 1 to 65535 (what a JPEG picture can have); a smaller source is not enlarged.
    maxImageWidth,
    /// Pixels in the same range; a picture fits into both and keeps its shape.
    imageHeight,
    /// A switch: where no picture can be decoded, one that was made before (a cover, the desktop's thumbnail) may stand
    /// in.
    allowFinderImages,
    /// Path of a look-up table to apply to each picture.
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

/// One flag cleaned by `options`. sanitizeAllCLIFlags() gives all of them at once.
[[nodiscard]] CORVEX_EXPORT std::string sanitizedFlag(MediaAnalysisImageCLIFlags flag, CLISanitizationOptions options);

/// For each location the flag, a blank and the location's shortest text, with nothing between one and the next. A text to
/// compare by; a vector for a child comes from MediaAnalysisCLIArgumentFactory.
[[nodiscard]] CORVEX_EXPORT std::string snapShotLocationsCLIValue(std::span<const float> locations);

}  // namespace corvex::inline v0

#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include <Corvex/cli/analysis/MediaAnalysisRequest.h>
#include <tools/corvex/worker/ColorConversion.h>
#include <tools/corvex/worker/FrameGeometry.h>
#include <tools/corvex/worker/LookUpTable.h>

namespace corvex::tool {

/// A JPEG file (ITU-T T.81) of a picture.
struct StillPicture {
    std::vector<std::uint8_t> bytes;
    PixelSize size;
};

/// What becomes of a decoded picture.
struct StillRequest {
    float maxWidth = 0;              ///< Pixels.
    std::optional<float> maxHeight;  ///< Pixels.
    float quality = 0.8F;            ///< 0 (the smallest file) to 1 (the best picture).
    std::optional<LookUpTable> table;
};

/// The size in square pixels that a picture has within the limits: upright, of its own shape, never enlarged.
[[nodiscard]] PixelSize stillSize(const SourcePicture& source, float maxWidth, std::optional<float> maxHeight);

/// `picture` says how the frame lies. The colours are those of the frame after the table, without conversion to another
/// transfer function; alpha is dropped. Throws JobError.
[[nodiscard]] StillPicture makeStill(const AVFrame& frame, const SourcePicture& picture, const StillRequest& request);

}  // namespace corvex::tool

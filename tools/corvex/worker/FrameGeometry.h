#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include <Corvex/exported/OAVTranscodeArgumentAspectRatioValue.h>
#include <Corvex/exported/OAVTranscodeArgumentOverlayAnchorValue.h>

namespace corvex::tool {

struct PixelSize {
    int width = 0;
    int height = 0;
    friend bool operator==(PixelSize, PixelSize) = default;
};

/// Numerator over denominator of a pixel's width to its height.
struct PixelAspect {
    int numerator = 1;
    int denominator = 1;
    friend bool operator==(PixelAspect, PixelAspect) = default;
};

/// What the user asks of the picture's size.
struct FrameRequest {
    std::optional<PixelSize> box;  ///< Absent: the source's own size.
    OAVTranscodeArgumentAspectRatioValue scaling = OAVMatchSourceRatio;
    OAVTranscodeArgumentOverlayAnchorValue anchor = OAVAnchorCenter;
};

/// What sets a picture upright: a mirroring from left to right if any, then a clockwise turn (0, 90, 180, 270 degrees).
struct Orientation {
    int turn = 0;
    bool isMirrored = false;
    friend bool operator==(Orientation, Orientation) = default;

    /// The nearest one to a display matrix as QuickTime files have it (ISO/IEC 14496-12, 8.3.2): nine numbers by rows,
    /// x' = a x + c y, y' = b x + d y for a, b in the first row and c, d in the second.
    [[nodiscard]] static Orientation fromDisplayMatrix(const std::int32_t* matrix) noexcept;

    /// The libavfilter filters that do it; "null" for a picture that is upright.
    [[nodiscard]] const char* filterText() const noexcept;
};

/// A source picture as it lies in the file.
struct SourcePicture {
    PixelSize size;
    PixelAspect pixelAspect;
    Orientation orientation;
};

/// How a source picture becomes one of the output: turn, then crop, scale and pad, each only where needed.
struct FrameGeometry {
    PixelSize upright;         ///< After the turn.
    Orientation orientation;   ///< Of the source.
    PixelSize crop;            ///< Part of the upright picture that is used.
    int cropX = 0, cropY = 0;  ///< Its upper left corner.
    PixelSize scaled;          ///< Size to which that part is scaled.
    PixelSize output;          ///< Size of the output; larger than `scaled` where black bars are added.
    PixelAspect pixelAspect;   ///< Of the output.

    /// `stretch` fills the box; `letterbox` fits into it and adds bars; `crop` fills it and cuts off what stands out, as
    /// the anchor says; `match` fits into it and lets the output be smaller on one side. Without a box the picture keeps
    /// its size and pixel aspect. Sides are even, an odd one raised by one, as sub-sampled chroma needs.
    [[nodiscard]] static FrameGeometry make(const SourcePicture& source, const FrameRequest& request);

    /// The same for a further source whose output must have the size of the first: `output` and `pixelAspect` are given.
    [[nodiscard]] static FrameGeometry makeForOutput(const SourcePicture& source, const FrameRequest& request,
                                                     PixelSize output);

    /// The chain of libavfilter filters that does it; the last one states the pixel aspect.
    /// `scaleOptions` are further options of the scale filter, as ":out_range=tv"; they force a scale step.
    [[nodiscard]] std::string filterText(const std::string& scaleOptions) const;
};

}  // namespace corvex::tool

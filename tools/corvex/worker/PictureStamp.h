#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include <tools/corvex/worker/FFmpeg.h>
#include <tools/corvex/worker/OverlayImage.h>

namespace corvex::tool {

/// An image in the samples of a planar Y'CbCr format, ready to be blended into pictures of that format.
/// Pixels below a wholly transparent part stay as they are. Immutable; any number of threads.
class PictureStamp {
public:
    /// What pictures it goes onto.
    struct Target {
        AVPixelFormat format = AV_PIX_FMT_NONE;
        AVColorSpace matrix = AVCOL_SPC_UNSPECIFIED;
        AVColorRange range = AVCOL_RANGE_UNSPECIFIED;
    };

    /// Throws JobError for a format or a matrix that it cannot draw in.
    PictureStamp(const OverlayImage& image, const Target& target);

    /// In pixels of the picture: those of the image, made even where chroma needs it.
    [[nodiscard]] int width() const noexcept { return width_; }
    [[nodiscard]] int height() const noexcept { return height_; }
    /// Positions have to be multiples of these.
    [[nodiscard]] int horizontalStep() const noexcept { return 1 << chromaShiftX_; }
    [[nodiscard]] int verticalStep() const noexcept { return 1 << chromaShiftY_; }

    /// Blends the image into a writable picture, its upper left corner at (x, y). What lies outside of the picture is
    /// left out.
    void apply(AVFrame& frame, int x, int y) const;

private:
    /// One component: its samples and how much of each covers the picture, 0 to 65535.
    struct Plane {
        int index = 0;  ///< Of the frame's planes.
        int shiftX = 0, shiftY = 0;
        int width = 0, height = 0;
        std::vector<std::uint16_t> samples, coverage;
    };

    [[nodiscard]] Plane makePlane(const OverlayImage& image, int component, const std::array<double, 3>& weights,
                                  AVColorRange range) const;
    template <class Sample>
    void blend(AVFrame& frame, const Plane& plane, int x, int y) const;
    template <class Sample>
    void cover(AVFrame& frame, int x, int y) const;

    int width_ = 0, height_ = 0;
    int chromaShiftX_ = 0, chromaShiftY_ = 0;
    int depth_ = 8;
    int alphaIndex_ = -1;  ///< Of the frame's planes; -1 where the format has no alpha.
    std::array<Plane, 3> planes_;
};

}  // namespace corvex::tool

#include <tools/corvex/worker/PictureStamp.h>

#include <algorithm>
#include <bit>
#include <cmath>

extern "C" {
#include <libavutil/csp.h>
#include <libavutil/pixdesc.h>
}

namespace corvex::tool {
namespace {

constexpr double one = 65535;  ///< Of an overlay's pixels, and of coverage.
constexpr std::uint32_t whole = 65535;

int roundedUp(int value, int shift) { return ((value + (1 << shift) - 1) >> shift) << shift; }

/// What red, green and blue weigh in luma and in the two colour differences: those of ITU-R BT.709, for instance, by
/// its E'Y, E'CB and E'CR.
std::array<std::array<double, 3>, 3> weightsOf(AVColorSpace matrix) {
    const AVLumaCoefficients* luma = av_csp_luma_coeffs_from_avcsp(matrix);
    if (luma == nullptr || matrix == AVCOL_SPC_RGB) {
        const char* name = av_color_space_name(matrix);
        throw JobError(std::string("cannot draw in pictures of the colour matrix '") +
                       (name == nullptr ? std::to_string(matrix) : name) + "'");
    }
    const double red = av_q2d(luma->cr), green = av_q2d(luma->cg), blue = av_q2d(luma->cb);
    const double forBlue = 0.5 / (1 - blue), forRed = 0.5 / (1 - red);
    return {{{red, green, blue},
             {-red * forBlue, -green * forBlue, (1 - blue) * forBlue},
             {(1 - red) * forRed, -green * forRed, -blue * forRed}}};
}

/// What covers a sample of a picture that has alpha itself (A over B of Porter and Duff, colours not multiplied).
std::uint32_t shareOver(std::uint32_t coverage, std::uint32_t alphaBelow) {
    const std::uint64_t below = static_cast<std::uint64_t>(alphaBelow) * (whole - coverage) / whole;
    const std::uint64_t sum = coverage + below;
    return sum == 0 ? 0 : static_cast<std::uint32_t>(static_cast<std::uint64_t>(coverage) * whole / sum);
}

template <class Sample>
Sample* rowOf(AVFrame& frame, int plane, int y) {
    return reinterpret_cast<Sample*>(frame.data[plane] + static_cast<std::ptrdiff_t>(y) * frame.linesize[plane]);
}

}  // namespace

PictureStamp::PictureStamp(const OverlayImage& image, const Target& target) {
    const AVPixFmtDescriptor* format = av_pix_fmt_desc_get(target.format);
    constexpr std::uint64_t unfit = AV_PIX_FMT_FLAG_RGB | AV_PIX_FMT_FLAG_PAL | AV_PIX_FMT_FLAG_HWACCEL |
                                    AV_PIX_FMT_FLAG_FLOAT | AV_PIX_FMT_FLAG_BITSTREAM;
    const bool isBigEndian = format != nullptr && (format->flags & AV_PIX_FMT_FLAG_BE) != 0;
    const auto isPlane = [](const AVComponentDescriptor& component) {
        return component.shift == 0 && component.offset == 0 && component.step == (component.depth > 8 ? 2 : 1);
    };
    if (format == nullptr || (format->flags & AV_PIX_FMT_FLAG_PLANAR) == 0 || (format->flags & unfit) != 0 ||
        format->nb_components < 3 || !std::all_of(format->comp, format->comp + format->nb_components, isPlane) ||
        (format->comp[0].depth > 8 && isBigEndian != (std::endian::native == std::endian::big))) {
        throw JobError(std::string("cannot draw in pictures of the format '") +
                       (format == nullptr ? "none" : format->name) + "'");
    }
    chromaShiftX_ = format->log2_chroma_w;
    chromaShiftY_ = format->log2_chroma_h;
    depth_ = format->comp[0].depth;
    width_ = roundedUp(image.width, chromaShiftX_);
    height_ = roundedUp(image.height, chromaShiftY_);
    if ((format->flags & AV_PIX_FMT_FLAG_ALPHA) != 0) alphaIndex_ = format->comp[format->nb_components - 1].plane;
    const auto weights = weightsOf(target.matrix);
    for (int component = 0; component < 3; ++component) {
        const auto index = static_cast<std::size_t>(component);
        planes_[index] = makePlane(image, component, weights[index], target.range);
        planes_[index].index = format->comp[component].plane;
    }
}

PictureStamp::Plane PictureStamp::makePlane(const OverlayImage& image, int component,
                                            const std::array<double, 3>& weights, AVColorRange range) const {
    const bool isChroma = component != 0;
    Plane plane;
    plane.shiftX = isChroma ? chromaShiftX_ : 0;
    plane.shiftY = isChroma ? chromaShiftY_ : 0;
    plane.width = width_ >> plane.shiftX;
    plane.height = height_ >> plane.shiftY;
    const double largest = std::ldexp(1.0, depth_) - 1, step = std::ldexp(1.0, depth_ - 8);
    const bool isFull = range == AVCOL_RANGE_JPEG;
    const double origin = isChroma ? 128 * step : isFull ? 0 : 16 * step;
    const double extent = isFull ? largest : isChroma ? 224 * step : 219 * step;
    const double blockSize = std::ldexp(1.0, plane.shiftX + plane.shiftY);
    for (int y = 0; y < plane.height; ++y) {
        for (int x = 0; x < plane.width; ++x) {
            // Colours count by how much they cover, or a transparent pixel's would bleed into its neighbours.
            double covered = 0, sum = 0;
            for (int row = y << plane.shiftY; row < std::min((y + 1) << plane.shiftY, image.height); ++row) {
                for (int column = x << plane.shiftX; column < std::min((x + 1) << plane.shiftX, image.width);
                     ++column) {
                    const auto& pixel = image.at(column, row);
                    covered += pixel[3];
                    sum += pixel[3] * (weights[0] * pixel[0] + weights[1] * pixel[1] + weights[2] * pixel[2]) / one;
                }
            }
            const double value = covered == 0 ? 0 : sum / covered;
            plane.samples.push_back(
                static_cast<std::uint16_t>(std::lround(std::clamp(origin + extent * value, 0.0, largest))));
            plane.coverage.push_back(static_cast<std::uint16_t>(std::lround(covered / blockSize)));
        }
    }
    return plane;
}

template <class Sample>
void PictureStamp::blend(AVFrame& frame, const Plane& plane, int x, int y) const {
    const int left = x >> plane.shiftX, top = y >> plane.shiftY;
    const int frameWidth = (frame.width + (1 << plane.shiftX) - 1) >> plane.shiftX;
    const int frameHeight = (frame.height + (1 << plane.shiftY) - 1) >> plane.shiftY;
    const std::uint32_t opaque = (1U << depth_) - 1;
    for (int row = std::max(0, -top); row < std::min(plane.height, frameHeight - top); ++row) {
        Sample* below = rowOf<Sample>(frame, plane.index, top + row);
        const Sample* alpha =
            alphaIndex_ < 0 ? nullptr : rowOf<Sample>(frame, alphaIndex_, (top + row) << plane.shiftY);
        const std::size_t start = static_cast<std::size_t>(row) * static_cast<std::size_t>(plane.width);
        for (int column = std::max(0, -left); column < std::min(plane.width, frameWidth - left); ++column) {
            std::uint32_t coverage = plane.coverage[start + static_cast<std::size_t>(column)];
            if (alpha != nullptr) {
                coverage = shareOver(coverage, alpha[(left + column) << plane.shiftX] * whole / opaque);
            }
            const std::uint32_t sample = plane.samples[start + static_cast<std::size_t>(column)];
            Sample& target = below[left + column];
            target = static_cast<Sample>((target * (whole - coverage) + sample * coverage + whole / 2) / whole);
        }
    }
}

template <class Sample>
void PictureStamp::cover(AVFrame& frame, int x, int y) const {
    const Plane& luma = planes_[0];
    const std::uint32_t opaque = (1U << depth_) - 1;
    for (int row = std::max(0, -y); row < std::min(luma.height, frame.height - y); ++row) {
        Sample* alpha = rowOf<Sample>(frame, alphaIndex_, y + row);
        for (int column = std::max(0, -x); column < std::min(luma.width, frame.width - x); ++column) {
            const std::uint32_t coverage =
                luma.coverage[static_cast<std::size_t>(row) * static_cast<std::size_t>(luma.width) +
                              static_cast<std::size_t>(column)];
            Sample& target = alpha[x + column];
            target = static_cast<Sample>((target * (whole - coverage) + opaque * coverage + whole / 2) / whole);
        }
    }
}

void PictureStamp::apply(AVFrame& frame, int x, int y) const {
    const auto applyAs = [&]<class Sample>(Sample) {
        for (const Plane& plane : planes_) blend<Sample>(frame, plane, x, y);
        if (alphaIndex_ >= 0) cover<Sample>(frame, x, y);
    };
    if (depth_ > 8) {
        applyAs(std::uint16_t{});
    } else {
        applyAs(std::uint8_t{});
    }
}

}  // namespace corvex::tool

#include <tools/corvex/worker/FrameGeometry.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace corvex::tool {
namespace {

int even(int side) noexcept { return std::max(2, side + side % 2); }
int nearestEven(double side) noexcept { return std::max(2, 2 * static_cast<int>(std::lround(side / 2))); }

/// The largest size of the aspect width : height that fits into the box.
PixelSize fitted(double width, double height, PixelSize box) noexcept {
    const double scale = std::min(box.width / width, box.height / height);
    return {std::min(nearestEven(width * scale), box.width), std::min(nearestEven(height * scale), box.height)};
}

/// Where a part of size `part` starts in `whole`: -1 at the start, 0 in the middle, 1 at the end.
int placed(int whole, int part, int place) noexcept {
    const int room = whole - part;
    return place < 0 ? 0 : place > 0 ? room : room / 2;
}

int horizontalPlace(const OAVTranscodeArgumentOverlayAnchorValue& anchor) {
    if (anchor == OAVAnchorTopLeft || anchor == OAVAnchorCenterLeft || anchor == OAVAnchorBottomLeft) return -1;
    return anchor == OAVAnchorTopRight || anchor == OAVAnchorCenterRight || anchor == OAVAnchorBottomRight ? 1 : 0;
}

int verticalPlace(const OAVTranscodeArgumentOverlayAnchorValue& anchor) {
    if (anchor == OAVAnchorTopLeft || anchor == OAVAnchorTopCenter || anchor == OAVAnchorTopRight) return -1;
    return anchor == OAVAnchorBottomLeft || anchor == OAVAnchorBottomCenter || anchor == OAVAnchorBottomRight ? 1 : 0;
}

/// The picture turned upright, whole, at its own size and pixel aspect.
FrameGeometry uprightGeometry(const SourcePicture& source) {
    FrameGeometry geometry;
    geometry.orientation = source.orientation;
    geometry.upright = source.size;
    geometry.pixelAspect = source.pixelAspect;
    if (source.orientation.turn % 180 != 0) {
        std::swap(geometry.upright.width, geometry.upright.height);
        std::swap(geometry.pixelAspect.numerator, geometry.pixelAspect.denominator);
    }
    geometry.crop = geometry.upright;
    geometry.scaled = {even(geometry.upright.width), even(geometry.upright.height)};
    geometry.output = geometry.scaled;
    return geometry;
}

void cropToAspect(FrameGeometry& geometry, double pixelAspect, PixelSize box,
                  const OAVTranscodeArgumentOverlayAnchorValue& anchor) {
    // The box's aspect, in the source's own pixels.
    const double aspect = static_cast<double>(box.width) / box.height / pixelAspect;
    const PixelSize whole = geometry.upright;
    geometry.crop = {std::clamp(static_cast<int>(std::lround(whole.height * aspect)), 1, whole.width),
                     std::clamp(static_cast<int>(std::lround(whole.width / aspect)), 1, whole.height)};
    geometry.cropX = placed(whole.width, geometry.crop.width, horizontalPlace(anchor));
    geometry.cropY = placed(whole.height, geometry.crop.height, verticalPlace(anchor));
}

}  // namespace

Orientation Orientation::fromDisplayMatrix(const std::int32_t* matrix) noexcept {
    const std::int64_t a = matrix[0], b = matrix[1], c = matrix[3], d = matrix[4];
    Orientation orientation;
    orientation.isMirrored = a * d - b * c < 0;
    // Where the picture's upper edge comes to lie after the turn: c and d say where "down" points.
    if (std::abs(d) >= std::abs(c)) {
        orientation.turn = d < 0 ? 180 : 0;
    } else {
        orientation.turn = c < 0 ? 90 : 270;
    }
    return orientation;
}

FrameGeometry FrameGeometry::make(const SourcePicture& source, const FrameRequest& request) {
    FrameGeometry geometry = uprightGeometry(source);
    if (!request.box) return geometry;
    const PixelSize box{even(request.box->width), even(request.box->height)};
    const double pixelAspect = static_cast<double>(geometry.pixelAspect.numerator) / geometry.pixelAspect.denominator;
    const double displayWidth = geometry.upright.width * pixelAspect;
    geometry.pixelAspect = {1, 1};
    geometry.scaled = box;
    geometry.output = box;
    if (request.scaling == OAVLetterboxAspect) {
        geometry.scaled = fitted(displayWidth, geometry.upright.height, box);
    } else if (request.scaling == OAVCropAspect) {
        cropToAspect(geometry, pixelAspect, box, request.anchor);
    } else if (request.scaling == OAVMatchSourceRatio) {
        geometry.scaled = fitted(displayWidth, geometry.upright.height, box);
        geometry.output = geometry.scaled;
    }
    return geometry;
}

FrameGeometry FrameGeometry::makeForOutput(const SourcePicture& source, const FrameRequest& request, PixelSize output) {
    FrameGeometry own = make(source, request);
    if (own.output == output) return own;
    // The first source fixed the raster; one of another shape is fitted into it with bars rather than distorted.
    FrameRequest fitting = request;
    fitting.box = output;
    if (request.scaling == OAVMatchSourceRatio) fitting.scaling = OAVLetterboxAspect;
    return make(source, fitting);
}

const char* Orientation::filterText() const noexcept {
    static constexpr const char* filters[2][4] = {{"null", "transpose=clock", "hflip,vflip", "transpose=cclock"},
                                                  {"hflip", "transpose=clock_flip", "vflip", "transpose=cclock_flip"}};
    return filters[isMirrored ? 1 : 0][turn / 90];
}

std::string FrameGeometry::filterText(const std::string& scaleOptions) const {
    std::string text;
    const auto append = [&](const std::string& filter) { text += (text.empty() ? "" : ",") + filter; };
    const auto sizeText = [](PixelSize size) { return std::to_string(size.width) + ":" + std::to_string(size.height); };
    if (orientation != Orientation{}) append(orientation.filterText());
    if (crop != upright) {
        append("crop=" + sizeText(crop) + ":" + std::to_string(cropX) + ":" + std::to_string(cropY) + ":exact=1");
    }
    if (scaled != crop || !scaleOptions.empty()) {
        // Of a picture that is flagged as interlaced each field is scaled for itself. One line has no two fields.
        const std::string fields = crop.height > 1 ? ":interl=-1" : "";
        append("scale=" + sizeText(scaled) + ":flags=bicubic" + fields + scaleOptions);
    }
    if (output != scaled) append("pad=" + sizeText(output) + ":(ow-iw)/2:(oh-ih)/2:color=black");
    append("setsar=" + std::to_string(pixelAspect.numerator) + "/" + std::to_string(pixelAspect.denominator));
    return text;
}

}  // namespace corvex::tool

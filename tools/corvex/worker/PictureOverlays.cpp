#include <tools/corvex/worker/PictureOverlays.h>

#include <algorithm>
#include <utility>

namespace corvex::tool {
namespace {

constexpr int linesPerText = 20;  ///< How many lines of text of the usual size fill a picture's height.
constexpr int smallestText = 4;

TextStyle withSize(TextStyle style, int pictureHeight) {
    if (style.size == 0) style.size = std::max(smallestText, pictureHeight / linesPerText);
    return style;
}

}  // namespace

PictureOverlays::PictureOverlays(const OverlayRequest& request, const PictureStamp::Target& target, int pictureWidth,
                                 int pictureHeight, const std::optional<TimecodeCount>& timecodes) {
    const auto place = [&](PictureStamp stamp, const auto& anchor, const char* what, const char* remedy) {
        if (stamp.width() > pictureWidth || stamp.height() > pictureHeight) {
            throw JobError(std::string(what) + " would take " + std::to_string(stamp.width()) + "x" +
                           std::to_string(stamp.height()) + " pixels; expected no more than the " +
                           std::to_string(pictureWidth) + "x" + std::to_string(pictureHeight) + " of the picture; " +
                           remedy + " makes it smaller");
        }
        const OverlayPlace at = OverlayPlace::make(anchor, stamp.width(), stamp.height(), pictureWidth, pictureHeight,
                                                   stamp.horizontalStep(), stamp.verticalStep());
        marks_.push_back({std::move(stamp), at});
    };
    if (request.image) {
        place(PictureStamp(OverlayImage::read(request.image->path, request.image->scale), target),
              request.image->anchor, "the image watermark", "-wmf_scale");
    }
    if (request.text) {
        TextStyle style = withSize(request.text->style, pictureHeight);
        style.padding = style.box ? style.size / 2 : 0;
        place(PictureStamp(textImage(request.text->text, style), target), request.text->anchor, "the text watermark",
              "-wmt_size");
    }
    if (request.timecode && timecodes) {
        timecode_.emplace(*timecodes, request.timecode->anchor, withSize(request.timecode->style, pictureHeight),
                          target, pictureWidth, pictureHeight);
    }
}

void PictureOverlays::apply(AVFrame& frame, std::int64_t picture) const {
    check(av_frame_make_writable(&frame), "overlay");
    for (const Placed& mark : marks_) mark.stamp.apply(frame, mark.place.x, mark.place.y);
    if (timecode_) timecode_->apply(frame, picture);
}

}  // namespace corvex::tool

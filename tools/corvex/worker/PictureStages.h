#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include <tools/corvex/worker/PictureGraph.h>
#include <tools/corvex/worker/PictureOverlays.h>
#include <tools/corvex/worker/PicturePipeline.h>
#include <tools/corvex/worker/PictureWork.h>
#include <tools/corvex/worker/VideoRequest.h>

namespace corvex::tool {

/// What happens to pictures between decoder and encoder, in this order: change of rate; turn, crop, scale and bars;
/// look-up table; image, text and timecode laid over them. From the table on several pictures are worked on at once;
/// they leave in the order in which they came. One thread at a time.
class PictureStages {
public:
    /// The pictures that leave.
    struct Output {
        AVPixelFormat format = AV_PIX_FMT_NONE;
        PixelSize size;
        AVColorRange usualRange = AVCOL_RANGE_MPEG;  ///< Unless the request asks for another one.
    };
    /// Gives a scaled picture its time, from the one it has in `timeBase`, which may be none. False: it is left out.
    using Admission = std::function<bool(AVFrame& picture, AVRational timeBase)>;
    using Delivery = std::function<void(AVFrame& picture)>;

    /// `overlays` may be null. Up to `picturesAtWork` are worked on or wait for it. `request` must outlive this.
    PictureStages(const VideoRequest& request, const Output& output, std::shared_ptr<const PictureOverlays> overlays,
                  std::size_t picturesAtWork, Admission admit, Delivery deliver);

    /// Pictures of another file follow, with times in `timeBase`. Those of the one before must have been flushed.
    void beginFile(const SourcePicture& source, AVRational timeBase);
    /// Takes the contents of a picture, which is shown for `length` of the file's time base unless another one follows: a
    /// change of rate may repeat it. Throws JobError.
    void push(AVFrame& picture, std::int64_t length);
    /// Delivers all that is inside. Throws JobError.
    void flush();

private:
    /// What a filter graph was made for; a picture that differs needs another one.
    struct GraphInput {
        int width = 0, height = 0, format = -1;
        AVRational pixelAspect{0, 1};
        AVColorRange range = AVCOL_RANGE_UNSPECIFIED;
        friend bool operator==(const GraphInput& a, const GraphInput& b) noexcept {
            return a.width == b.width && a.height == b.height && a.format == b.format && a.range == b.range &&
                   av_cmp_q(a.pixelAspect, b.pixelAspect) == 0;
        }
    };

    void buildGraph(const AVFrame& picture);
    void startWork(const std::optional<PictureWork::Settings>& settings);
    void pullAll();
    void deliverOldest();

    const VideoRequest& request_;
    const Output output_;
    const std::shared_ptr<const PictureOverlays> overlays_;
    const std::size_t picturesAtWork_;
    const Admission admit_;
    const Delivery deliver_;

    SourcePicture source_;
    AVRational timeBase_{};
    std::int64_t admittedCount_ = 0;
    std::int64_t end_ = 0;  ///< Of the last picture, in that time base.
    std::optional<PictureGraph> graph_;
    GraphInput graphInput_;
    std::optional<PicturePipeline> work_;  ///< None where pictures are only scaled.
    FramePointer scaled_;
};

}  // namespace corvex::tool

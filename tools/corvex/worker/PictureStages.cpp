#include <tools/corvex/worker/PictureStages.h>

#include <algorithm>
#include <utility>

extern "C" {
#include <libavutil/cpu.h>
#include <libavutil/pixdesc.h>
}

namespace corvex::tool {
namespace {

ColorTags tagsOf(const AVFrame& frame) {
    return {frame.color_primaries, frame.color_trc, frame.colorspace, frame.color_range};
}

}  // namespace

PictureStages::PictureStages(const VideoRequest& request, const Output& output,
                             std::shared_ptr<const PictureOverlays> overlays, std::size_t picturesAtWork,
                             Admission admit, Delivery deliver)
    : request_(request),
      output_(output),
      overlays_(std::move(overlays)),
      picturesAtWork_(picturesAtWork),
      admit_(std::move(admit)),
      deliver_(std::move(deliver)),
      scaled_(makeFrame()) {}

void PictureStages::beginFile(const SourcePicture& source, AVRational timeBase) {
    source_ = source;
    timeBase_ = timeBase;
    end_ = 0;
    graph_.reset();
}

void PictureStages::push(AVFrame& picture, std::int64_t length) {
    const GraphInput now{picture.width, picture.height, picture.format, picture.sample_aspect_ratio,
                         picture.color_range};
    if (graph_ && now != graphInput_) flush();
    if (!graph_) buildGraph(picture);
    if (picture.pts != AV_NOPTS_VALUE) end_ = picture.pts + length;
    graph_->push(picture);
    pullAll();
}

void PictureStages::flush() {
    if (!graph_) return;
    graph_->close(end_);
    pullAll();
    while (work_ && !work_->isEmpty()) deliverOldest();
    graph_.reset();
}

void PictureStages::buildGraph(const AVFrame& picture) {
    graphInput_ = {picture.width, picture.height, picture.format, picture.sample_aspect_ratio, picture.color_range};
    // A picture may change its size within a file; the turn and the pixel aspect are the container's word.
    source_.size = {picture.width, picture.height};
    const FrameGeometry geometry = FrameGeometry::makeForOutput(source_, request_.frame, output_.size);

    const ColorConversion color =
        request_.colorConversion(picture.format, picture.height, tagsOf(picture), output_.usualRange);
    std::string text;
    if (request_.frameRate) {
        text = "fps=" + std::to_string(request_.frameRate->num) + "/" + std::to_string(request_.frameRate->den) + ",";
    }
    text += geometry.filterText(color.scaleOptions);
    if (!color.filter.empty()) text += "," + color.filter;
    // Work on pictures takes them as they are and gives them the output's format.
    const int workInput = PictureWork::inputFormat(picture.format);
    text += std::string(",format=pix_fmts=") +
            av_get_pix_fmt_name(request_.table ? static_cast<AVPixelFormat>(workInput) : output_.format);

    const PictureGraph::Input input{picture.width,
                                    picture.height,
                                    picture.format,
                                    timeBase_,
                                    {source_.pixelAspect.numerator, source_.pixelAspect.denominator}};
    graph_.emplace(input, text);
    if (!request_.table && !overlays_) return;
    std::optional<PictureWork::Settings> colors;
    if (request_.table) {
        const PictureGraph::Input scaled{
            output_.size.width, output_.size.height, workInput, graph_->timeBase(), {0, 1}};
        colors.emplace(PictureWork::Settings{scaled, color.source, color.tags, output_.format, request_.table});
    }
    startWork(colors);
}

void PictureStages::startWork(const std::optional<PictureWork::Settings>& settings) {
    const auto processors = static_cast<std::size_t>(std::max(1, av_cpu_count()));
    std::vector<PicturePipeline::Work> works;
    for (std::size_t i = 0; i < std::min(processors, picturesAtWork_); ++i) {
        const auto colors = settings ? std::make_shared<PictureWork>(*settings) : nullptr;
        works.emplace_back(
            [colors, overlays = overlays_, first = admittedCount_](AVFrame& picture, std::uint64_t number) {
                if (colors) colors->apply(picture);
                if (overlays) overlays->apply(picture, first + static_cast<std::int64_t>(number));
            });
    }
    work_.emplace(std::move(works), picturesAtWork_);
}

void PictureStages::pullAll() {
    while (graph_->pull(*scaled_)) {
        if (admit_(*scaled_, graph_->timeBase())) {
            ++admittedCount_;
            if (!work_) {
                deliver_(*scaled_);
            } else {
                if (work_->isFull()) deliverOldest();
                work_->push(*scaled_);
            }
        }
        av_frame_unref(scaled_.get());
    }
}

void PictureStages::deliverOldest() {
    const FramePointer done = work_->take();
    deliver_(*done);
}

}  // namespace corvex::tool

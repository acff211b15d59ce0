#include <tools/corvex/worker/PictureGraph.h>

extern "C" {
#include <libavfilter/buffersink.h>
#include <libavfilter/buffersrc.h>
}

namespace corvex::tool {
namespace {

constexpr const char* what = "video filter";

std::string textOf(AVRational value, char separator) {
    return std::to_string(value.num) + separator + std::to_string(value.den);
}

}  // namespace

PictureGraph::PictureGraph(const Input& input, const std::string& filters, int threads)
    : graph_(checkAllocated(avfilter_graph_alloc())) {
    graph_->nb_threads = threads;
    // Of scalers that the graph adds itself: fields of interlaced pictures for themselves. One line has no two fields.
    graph_->scale_sws_opts = av_strdup(input.height > 1 ? "flags=bicubic:interl=-1" : "flags=bicubic");
    const std::string source = "video_size=" + std::to_string(input.width) + "x" + std::to_string(input.height) +
                               ":pix_fmt=" + std::to_string(input.format) +
                               ":time_base=" + textOf(input.timeBase, '/') +
                               ":pixel_aspect=" + textOf(input.pixelAspect, '/');
    check(avfilter_graph_create_filter(&source_, avfilter_get_by_name("buffer"), "in", source.c_str(), nullptr,
                                       graph_.get()),
          what);
    check(
        avfilter_graph_create_filter(&sink_, avfilter_get_by_name("buffersink"), "out", nullptr, nullptr, graph_.get()),
        what);
    AVFilterInOut* outputs = checkAllocated(avfilter_inout_alloc());
    AVFilterInOut* inputs = avfilter_inout_alloc();
    if (inputs == nullptr) avfilter_inout_free(&outputs);
    checkAllocated(inputs);
    *outputs = {av_strdup("in"), source_, 0, nullptr};
    *inputs = {av_strdup("out"), sink_, 0, nullptr};
    const int result = avfilter_graph_parse_ptr(graph_.get(), filters.c_str(), &inputs, &outputs, nullptr);
    avfilter_inout_free(&inputs);
    avfilter_inout_free(&outputs);
    const std::string whole = std::string(what) + " '" + filters + "'";
    check(result, whole);
    check(avfilter_graph_config(graph_.get(), nullptr), whole);
}

void PictureGraph::push(AVFrame& frame) { check(av_buffersrc_add_frame(source_, &frame), what); }

void PictureGraph::close(std::int64_t end) { check(av_buffersrc_close(source_, end, 0), what); }

bool PictureGraph::pull(AVFrame& frame) {
    const int result = av_buffersink_get_frame(sink_, &frame);
    if (result == AVERROR(EAGAIN) || result == AVERROR_EOF) return false;
    check(result, what);
    return true;
}

AVRational PictureGraph::timeBase() const noexcept { return av_buffersink_get_time_base(sink_); }

}  // namespace corvex::tool

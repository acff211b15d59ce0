#include <tools/corvex/worker/PictureWork.h>

extern "C" {
#include <libavutil/pixdesc.h>
}

namespace corvex::tool {
namespace {

/// R'G'B' of 16 bits, so that neither conversion costs a code value of a source of up to 12 bits.
AVPixelFormat workingFormat(const PictureWork::Settings& settings) {
    return hasAlpha(settings.input.format) && hasAlpha(settings.outputFormat) ? AV_PIX_FMT_GBRAP16 : AV_PIX_FMT_GBRP16;
}

std::string rangeText(AVColorRange range) { return range == AVCOL_RANGE_JPEG ? "full" : "limited"; }

std::string conversionText(const ColorTags& from, const ColorTags& to, int format) {
    return "zscale=matrixin=" + std::to_string(from.matrix) + ":rangein=" + rangeText(from.range) +
           ":matrix=" + std::to_string(to.matrix) + ":range=" + rangeText(to.range) +
           ",format=pix_fmts=" + av_get_pix_fmt_name(static_cast<AVPixelFormat>(format));
}

ColorTags rgbTags() {
    ColorTags tags;
    tags.matrix = AVCOL_SPC_RGB;
    tags.range = AVCOL_RANGE_JPEG;
    return tags;
}

PictureGraph::Input workingInput(const PictureWork::Settings& settings) {
    PictureGraph::Input input = settings.input;
    input.format = workingFormat(settings);
    return input;
}

}  // namespace

int PictureWork::inputFormat(int format) {
    // The J formats are of full range, which another format would cost them on the way in.
    static constexpr AVPixelFormat planar[] = {
        AV_PIX_FMT_YUVJ420P,   AV_PIX_FMT_YUVJ422P,   AV_PIX_FMT_YUVJ444P,   AV_PIX_FMT_YUV420P,
        AV_PIX_FMT_YUV422P,    AV_PIX_FMT_YUV444P,    AV_PIX_FMT_YUV420P10,  AV_PIX_FMT_YUV422P10,
        AV_PIX_FMT_YUV444P10,  AV_PIX_FMT_YUV420P12,  AV_PIX_FMT_YUV422P12,  AV_PIX_FMT_YUV444P12,
        AV_PIX_FMT_YUV420P16,  AV_PIX_FMT_YUV422P16,  AV_PIX_FMT_YUV444P16,  AV_PIX_FMT_YUVA420P,
        AV_PIX_FMT_YUVA422P,   AV_PIX_FMT_YUVA444P,   AV_PIX_FMT_YUVA422P10, AV_PIX_FMT_YUVA444P10,
        AV_PIX_FMT_YUVA444P12, AV_PIX_FMT_YUVA444P16, AV_PIX_FMT_GBRP,       AV_PIX_FMT_GBRP10,
        AV_PIX_FMT_GBRP12,     AV_PIX_FMT_GBRP16,     AV_PIX_FMT_GBRAP,      AV_PIX_FMT_GBRAP12,
        AV_PIX_FMT_GBRAP16,    AV_PIX_FMT_NONE};
    return avcodec_find_best_pix_fmt_of_list(planar, static_cast<AVPixelFormat>(format), hasAlpha(format) ? 1 : 0,
                                             nullptr);
}

PictureWork::PictureWork(const Settings& settings)
    : toRgb_(settings.input, conversionText(settings.from, rgbTags(), workingFormat(settings)), 1),
      fromRgb_(workingInput(settings), conversionText(rgbTags(), settings.to, settings.outputFormat), 1),
      table_(settings.table) {}

void PictureWork::apply(AVFrame& frame) {
    const auto passThrough = [&frame](PictureGraph& graph) {
        graph.push(frame);
        if (!graph.pull(frame)) throw JobError("video filter: a picture was kept back");
    };
    passThrough(toRgb_);
    if (table_) table_->apply(frame);
    passThrough(fromRgb_);
}

}  // namespace corvex::tool

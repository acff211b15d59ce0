#include <tools/corvex/analysis/StillPicture.h>

extern "C" {
#include <libavutil/pixdesc.h>
}

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include <tools/corvex/worker/PictureWork.h>
#include <tools/corvex/worker/Track.h>

namespace corvex::tool {
namespace {

/// Formats that the colour work reads, all without sub-sampled chroma, so that a side may be odd.
int workFormat(int format) {
    static constexpr AVPixelFormat formats[] = {AV_PIX_FMT_YUV444P,   AV_PIX_FMT_YUV444P10, AV_PIX_FMT_YUV444P12,
                                                AV_PIX_FMT_YUV444P16, AV_PIX_FMT_GBRP,      AV_PIX_FMT_GBRP10,
                                                AV_PIX_FMT_GBRP12,    AV_PIX_FMT_GBRP16,    AV_PIX_FMT_NONE};
    return avcodec_find_best_pix_fmt_of_list(formats, static_cast<AVPixelFormat>(format), 0, nullptr);
}

ColorTags jpegTags() {
    ColorTags tags;  // JFIF (ITU-T T.871): Y'CbCr of ITU-R BT.601, full range
    tags.matrix = AVCOL_SPC_SMPTE170M;
    tags.range = AVCOL_RANGE_JPEG;
    return tags;
}

/// The picture upright, of the final size and in a format that the colour work reads.
FramePointer scaled(const AVFrame& frame, Orientation orientation, PixelSize size, const ColorTags& tags) {
    PictureGraph::Input input;
    input.width = frame.width;
    input.height = frame.height;
    input.format = frame.format;
    const std::string range = tags.range == AVCOL_RANGE_JPEG ? "pc" : "tv";
    const std::string format = av_get_pix_fmt_name(static_cast<AVPixelFormat>(workFormat(frame.format)));
    PictureGraph graph(input, std::string(orientation.filterText()) + ",scale=" + std::to_string(size.width) + ":" +
                                  std::to_string(size.height) + ":in_range=" + range + ":out_range=" + range +
                                  ",format=pix_fmts=" + format + ",setsar=1");
    FramePointer copy(checkAllocated(av_frame_clone(&frame)));
    graph.push(*copy);
    FramePointer result = makeFrame();
    graph.close(0);
    if (!graph.pull(*result)) throw JobError("video filter: a picture was kept back");
    return result;
}

std::vector<std::uint8_t> encodedJpeg(AVFrame& frame, float quality) {
    constexpr float bestScale = 2;  // of the encoder's quantiser, which goes up to 31
    constexpr float worstScale = 31;
    const AVCodec* codec = avcodec_find_encoder(AV_CODEC_ID_MJPEG);
    if (codec == nullptr) throw JobError("no encoder for JPEG on this machine");
    const CodecContextPointer encoder(checkAllocated(avcodec_alloc_context3(codec)));
    encoder->width = frame.width;
    encoder->height = frame.height;
    encoder->pix_fmt = static_cast<AVPixelFormat>(frame.format);
    encoder->color_range = AVCOL_RANGE_JPEG;
    encoder->time_base = {1, 25};
    encoder->thread_count = 1;
    encoder->flags |= AV_CODEC_FLAG_QSCALE;
    const long scale = std::lround(worstScale + quality * (bestScale - worstScale));
    encoder->global_quality = static_cast<int>(scale) * FF_QP2LAMBDA;
    check(avcodec_open2(encoder.get(), codec, nullptr), "JPEG");
    frame.quality = encoder->global_quality;
    frame.pict_type = AV_PICTURE_TYPE_I;
    frame.pts = 0;
    std::vector<std::uint8_t> bytes;
    const PacketPointer packet = makePacket();
    const auto take = [&](const AVPacket& made) { bytes.insert(bytes.end(), made.data, made.data + made.size); };
    encode(*encoder, &frame, *packet, take);
    encode(*encoder, nullptr, *packet, take);
    return bytes;
}

}  // namespace

PixelSize stillSize(const SourcePicture& source, float maxWidth, std::optional<float> maxHeight) {
    double width =
        static_cast<double>(source.size.width) * source.pixelAspect.numerator / source.pixelAspect.denominator;
    double height = source.size.height;
    // Square pixels without making up any: the longer side of a pixel gives way.
    if (width > source.size.width) {
        height = height * source.pixelAspect.denominator / source.pixelAspect.numerator;
        width = source.size.width;
    }
    if (source.orientation.turn % 180 != 0) std::swap(width, height);
    double factor = std::min(1.0, static_cast<double>(maxWidth) / width);
    if (maxHeight) factor = std::min(factor, static_cast<double>(*maxHeight) / height);
    const auto side = [&](double length, double limit) {
        return static_cast<int>(std::max(1.0, std::min(std::round(length * factor), std::floor(limit))));
    };
    constexpr double mostPixels = 65535;
    return {side(width, maxWidth), side(height, maxHeight ? static_cast<double>(*maxHeight) : mostPixels)};
}

StillPicture makeStill(const AVFrame& frame, const SourcePicture& picture, const StillRequest& request) {
    StillPicture still;
    still.size = stillSize(picture, request.maxWidth, request.maxHeight);
    const ColorTags stated{frame.color_primaries, frame.color_trc, frame.colorspace, frame.color_range};
    const ColorTags tags =
        ColorConversion::makeAroundTable(frame.format, frame.height, stated, {}, AVCOL_RANGE_JPEG).source;
    const FramePointer upright = scaled(frame, picture.orientation, still.size, tags);
    PictureWork::Settings settings;
    settings.input.width = upright->width;
    settings.input.height = upright->height;
    settings.input.format = upright->format;
    settings.from = tags;
    settings.to = jpegTags();
    settings.outputFormat = AV_PIX_FMT_YUV444P;
    settings.table = request.table;
    PictureWork(settings).apply(*upright);
    upright->format = AV_PIX_FMT_YUVJ444P;  // the encoder's name for the same at full range
    still.bytes = encodedJpeg(*upright, request.quality);
    return still;
}

}  // namespace corvex::tool

#include <tools/corvex/worker/ColorConversion.h>

extern "C" {
#include <libavutil/pixdesc.h>
}

namespace corvex::tool {
namespace {

constexpr int linesOf525 = 525;
constexpr int linesOf625 = 576;

bool isRgb(int format) {
    const AVPixFmtDescriptor* description = av_pix_fmt_desc_get(static_cast<AVPixelFormat>(format));
    return description != nullptr && (description->flags & (AV_PIX_FMT_FLAG_RGB | AV_PIX_FMT_FLAG_PAL)) != 0;
}

bool isFullRange(int format, AVColorRange range) {
    return range == AVCOL_RANGE_JPEG || format == AV_PIX_FMT_YUVJ420P || format == AV_PIX_FMT_YUVJ422P ||
           format == AV_PIX_FMT_YUVJ444P || isRgb(format);
}

/// The source's tags, with what is missing filled in by what its kind usually is.
ColorTags assumedTags(int format, int height, ColorTags tags) {
    const bool isSmall = height <= linesOf625;
    if (tags.primaries == AVCOL_PRI_UNSPECIFIED) {
        tags.primaries = !isSmall ? AVCOL_PRI_BT709 : height <= linesOf525 ? AVCOL_PRI_SMPTE170M : AVCOL_PRI_BT470BG;
    }
    if (tags.transfer == AVCOL_TRC_UNSPECIFIED) {
        tags.transfer = isRgb(format) ? AVCOL_TRC_IEC61966_2_1 : AVCOL_TRC_BT709;
    }
    if (isRgb(format)) {
        tags.matrix = AVCOL_SPC_RGB;
    } else if (tags.matrix == AVCOL_SPC_UNSPECIFIED) {
        tags.matrix = isSmall ? AVCOL_SPC_SMPTE170M : AVCOL_SPC_BT709;
    }
    tags.range = isFullRange(format, tags.range) ? AVCOL_RANGE_JPEG : AVCOL_RANGE_MPEG;
    return tags;
}

const char* scaleRange(AVColorRange range) { return range == AVCOL_RANGE_JPEG ? "pc" : "tv"; }

}  // namespace

ColorConversion ColorConversion::make(int format, int height, const ColorTags& source, const ColorRequest& request,
                                      AVColorRange codecRange) {
    const ColorTags from = assumedTags(format, height, source);
    ColorConversion conversion;
    conversion.source = from;
    conversion.tags = source;
    conversion.tags.range = request.range.value_or(codecRange);
    if (isRgb(format)) conversion.tags.matrix = AVCOL_SPC_BT709;  // codecs of video carry Y'CbCr
    conversion.tags.primaries = request.primaries.value_or(conversion.tags.primaries);
    conversion.tags.transfer = request.transfer.value_or(conversion.tags.transfer);
    conversion.tags.matrix = request.matrix.value_or(conversion.tags.matrix);

    if (!request.primaries && !request.transfer && !request.matrix) {
        if (isRgb(format)) conversion.scaleOptions = ":out_color_matrix=bt709";
        if (isRgb(format) || from.range != conversion.tags.range) {
            conversion.scaleOptions +=
                std::string(":in_range=") + scaleRange(from.range) + ":out_range=" + scaleRange(conversion.tags.range);
        }
        return conversion;
    }
    ColorTags to = from;
    to.primaries = request.primaries.value_or(from.primaries);
    to.transfer = request.transfer.value_or(from.transfer);
    to.matrix = request.matrix.value_or(from.matrix == AVCOL_SPC_RGB ? AVCOL_SPC_BT709 : from.matrix);
    to.range = conversion.tags.range;
    conversion.tags = to;  // once converted, what was assumed is true
    if (to == from) return conversion;
    const auto pair = [](const char* name, int input, int output) {
        return std::string(name) + "in=" + std::to_string(input) + ":" + name + "=" + std::to_string(output);
    };
    const auto range = [](AVColorRange value) { return value == AVCOL_RANGE_JPEG ? "full" : "limited"; };
    conversion.filter = "zscale=" + pair("primaries", from.primaries, to.primaries) + ":" +
                        pair("transfer", from.transfer, to.transfer) + ":" + pair("matrix", from.matrix, to.matrix) +
                        ":rangein=" + range(from.range) + ":range=" + range(to.range);
    return conversion;
}

ColorConversion ColorConversion::makeAroundTable(int format, int height, const ColorTags& source,
                                                 const ColorRequest& request, AVColorRange codecRange) {
    ColorConversion conversion;
    conversion.source = assumedTags(format, height, source);
    conversion.tags = source;
    conversion.tags.primaries = request.primaries.value_or(source.primaries);
    conversion.tags.transfer = request.transfer.value_or(source.transfer);
    conversion.tags.matrix =
        request.matrix.value_or(conversion.source.matrix == AVCOL_SPC_RGB ? AVCOL_SPC_BT709 : conversion.source.matrix);
    conversion.tags.range = request.range.value_or(codecRange);
    return conversion;
}

}  // namespace corvex::tool

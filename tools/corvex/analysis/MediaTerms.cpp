#include <tools/corvex/analysis/MediaTerms.h>

#include <algorithm>
#include <iterator>
#include <string_view>

#include <Corvex/platform/Text.h>

namespace corvex::tool {
namespace {

struct ContainerTerm {
    std::string_view format;  ///< Among the comma-separated names of the media library's format.
    const ORVMediaFileContainer* term;
};
constexpr ContainerTerm containers[] = {
    {"avi", &ORVMediaFileContainerAVI},
    {"mxf", &ORVMediaFileContainerMXF},
    {"mxf_opatom", &ORVMediaFileContainerMXF},
    {"r3d", &ORVMediaFileContainerR3D},
    {"cine", &ORVMediaFileContainerCINE},
    {"dpx_pipe", &ORVMediaFileContainerDPX},
    {"image2", &ORVMediaFileContainerImageSequence},
};

struct CodecTerm {
    AVCodecID codec;
    const ORVVideoCodec* term;
};
constexpr CodecTerm codecs[] = {
    {AV_CODEC_ID_MPEG1VIDEO, &ORVVideoCodecMpeg}, {AV_CODEC_ID_MPEG2VIDEO, &ORVVideoCodecMpeg2},
    {AV_CODEC_ID_MPEG4, &ORVVideoCodecMpeg4},     {AV_CODEC_ID_CFHD, &ORVVideoCodecCineform},
    {AV_CODEC_ID_H264, &ORVVideoCodecH264},       {AV_CODEC_ID_HEVC, &ORVVideoCodecH265},
    {AV_CODEC_ID_MJPEG, &ORVVideoCodecJPEG},      {AV_CODEC_ID_MJPEGB, &ORVVideoCodecJPEG},
    {AV_CODEC_ID_S302M, &ORVVideoCodecAes},
};

/// Files of the ISO base media family (ISO/IEC 14496-12) say by their major brand what they are; QuickTime's is "qt  ",
/// and old QuickTime files have none.
const ORVMediaFileContainer& isoContainer(const AVFormatContext& context) {
    const AVDictionaryEntry* brand = av_dict_get(context.metadata, "major_brand", nullptr, 0);
    const bool isQuickTime = brand == nullptr || std::string_view(brand->value) == "qt  ";
    return isQuickTime ? ORVMediaFileContainerQuickTimeMovie : ORVMediaFileContainerMP4;
}

std::string_view tagText(std::uint32_t tag, char (&text)[4]) {
    for (int i = 0; i < 4; ++i) text[i] = static_cast<char>(tag >> (8 * i) & 0xFFU);
    return {text, 4};
}

/// Apple ProRes by its sample description (Apple ProRes in QuickTime): ap4h and ap4x are 4444.
const ORVVideoCodec& proResTerm(std::uint32_t tag) {
    char text[4];
    const std::string_view code = tagText(tag, text);
    if (code == "ap4h" || code == "ap4x") return ORVVideoCodecProRes4444;
    if (code == "aprn" || code == "aprh") return ORVVideoCodecProResRaw;
    return code.starts_with("apc") ? ORVVideoCodecProRes422 : ORVVideoCodecProRes;
}

}  // namespace

std::optional<ORVMediaFileContainer> containerOf(const AVFormatContext& context) {
    const std::string_view names = context.iformat->name;
    std::optional<ORVMediaFileContainer> found;
    forEachPiece(names, ",", [&](std::string_view name) {
        if (name == "mov") found = isoContainer(context);
        for (const auto& [format, term] : containers) {
            if (format == name) found = *term;
        }
    });
    return found;
}

std::optional<ORVVideoCodec> codecTermOf(const AVCodecParameters& parameters) {
    if (parameters.codec_id == AV_CODEC_ID_PRORES) return proResTerm(parameters.codec_tag);
    if (parameters.codec_id == AV_CODEC_ID_DNXHD) {
        // SMPTE ST 2019-1: the resolution-independent compression identifiers are those of DNxHR.
        const bool isHr = parameters.profile >= FF_PROFILE_DNXHR_LB && parameters.profile <= FF_PROFILE_DNXHR_444;
        return isHr ? ORVVideoCodecAvidDNxHR : ORVVideoCodecAvidDNxHD;
    }
    const auto* found = std::find_if(std::begin(codecs), std::end(codecs),
                                     [&](const CodecTerm& row) { return row.codec == parameters.codec_id; });
    return found == std::end(codecs) ? std::nullopt : std::optional(*found->term);
}

}  // namespace corvex::tool

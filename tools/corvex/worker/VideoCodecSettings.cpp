#include <tools/corvex/worker/VideoCodecSettings.h>

#include <algorithm>
#include <iterator>

namespace corvex::tool {
namespace {

constexpr AVPixelFormat noAlpha = AV_PIX_FMT_NONE;

// Pixel formats: DNxHD and DNxHR are 4:2:2 at 8 bits but for HQX and 444 (SMPTE ST 2019-1); ProRes codes 10 bits, its
// 4444 profiles with alpha; "hvc1" is the entry that players of MPEG-4 files expect (ISO/IEC 14496-15).
constexpr VideoCodecSettings settings[] = {
    {OAVDnxhdCodec, "dnxhd", "dnxhd", AV_PIX_FMT_YUV422P, noAlpha, RateChoice::classes, nullptr},
    {OAVDnxhrLBCodec, "dnxhd", "dnxhr_lb", AV_PIX_FMT_YUV422P, noAlpha, RateChoice::fixed, nullptr},
    {OAVDnxhrSQCodec, "dnxhd", "dnxhr_sq", AV_PIX_FMT_YUV422P, noAlpha, RateChoice::fixed, nullptr},
    {OAVDnxhrHQCodec, "dnxhd", "dnxhr_hq", AV_PIX_FMT_YUV422P, noAlpha, RateChoice::fixed, nullptr},
    {OAVDnxhrHQXCodec, "dnxhd", "dnxhr_hqx", AV_PIX_FMT_YUV422P10, noAlpha, RateChoice::fixed, nullptr},
    {OAVDnxhr444Codec, "dnxhd", "dnxhr_444", AV_PIX_FMT_YUV444P10, noAlpha, RateChoice::fixed, nullptr},
    {OAVAvcH264Codec, "libx264", nullptr, AV_PIX_FMT_YUV420P, noAlpha, RateChoice::free, nullptr},
    {OAVHevcCodec, "libx265", nullptr, AV_PIX_FMT_YUV420P, noAlpha, RateChoice::free, "hvc1"},
    {OAVMotionJpegCodec, "mjpeg", nullptr, AV_PIX_FMT_YUVJ422P, noAlpha, RateChoice::free, nullptr},
    {OAVMpeg4Codec, "mpeg4", nullptr, AV_PIX_FMT_YUV420P, noAlpha, RateChoice::free, nullptr},
    {OAVProRes4444, "prores_ks", "4444", AV_PIX_FMT_YUV444P10, AV_PIX_FMT_YUVA444P10, RateChoice::fixed, nullptr},
    {OAVProRes4444XQ, "prores_ks", "4444xq", AV_PIX_FMT_YUV444P10, AV_PIX_FMT_YUVA444P10, RateChoice::fixed, nullptr},
    {OAVProRes422, "prores_ks", "standard", AV_PIX_FMT_YUV422P10, noAlpha, RateChoice::fixed, nullptr},
    {OAVProRes422HQ, "prores_ks", "hq", AV_PIX_FMT_YUV422P10, noAlpha, RateChoice::fixed, nullptr},
    {OAVProRes422LT, "prores_ks", "lt", AV_PIX_FMT_YUV422P10, noAlpha, RateChoice::fixed, nullptr},
    {OAVProRes422Proxy, "prores_ks", "proxy", AV_PIX_FMT_YUV422P10, noAlpha, RateChoice::fixed, nullptr},
};
static_assert(std::size(settings) == OAVTranscodeArgumentVideoCodecValue::allCases().size());

std::string namesOfAll() {
    std::string names;
    for (const auto& codec : OAVTranscodeArgumentVideoCodecValue::allCases()) {
        names += names.empty() ? "" : ", ";
        names += codec.rawValue();
    }
    return names;
}

}  // namespace

std::span<const VideoCodecSettings> allVideoCodecSettings() noexcept { return settings; }

const VideoCodecSettings& videoCodecSettings(const OAVTranscodeArgumentVideoCodecValue& codec) {
    const auto found =
        std::find_if(std::begin(settings), std::end(settings), [&](const auto& row) { return row.codec == codec; });
    const std::string name(codec.rawValue());
    if (found == std::end(settings)) throw UsageError("-vcodec '" + name + "': expected one of " + namesOfAll());
    if (!canEncode(*found)) {
        throw JobError("-vcodec " + name + ": the media libraries of this machine lack its encoder '" + found->encoder +
                       "'");
    }
    return *found;
}

bool canEncode(const VideoCodecSettings& row) noexcept { return avcodec_find_encoder_by_name(row.encoder) != nullptr; }

}  // namespace corvex::tool

#include <tools/corvex/worker/VideoCodecSettings.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace corvex::tool {
namespace {

constexpr AVPixelFormat noAlpha = AV_PIX_FMT_NONE;

// Pixel formats: DNxHD and DNxHR are 4:2:2 at 8 bits but for HQX and 444 (SMPTE ST 2019-1); ProRes codes 10 bits, its
// 4444 profiles with alpha; "hvc1" is the entry that players of MPEG-4 files expect (ISO/IEC 14496-15).
constexpr PictureFormats chroma420{AV_PIX_FMT_YUV420P, AV_PIX_FMT_YUV420P10, AV_PIX_FMT_YUV420P12};
constexpr PictureFormats chroma420To10{AV_PIX_FMT_YUV420P, AV_PIX_FMT_YUV420P10};
constexpr PictureFormats chroma422To10{AV_PIX_FMT_YUV422P, AV_PIX_FMT_YUV422P10};
constexpr PictureFormats only8{AV_PIX_FMT_YUV420P};
constexpr PictureFormats dnxhr8{AV_PIX_FMT_YUV422P};
constexpr PictureFormats only422At10{noAlpha, AV_PIX_FMT_YUV422P10};
constexpr PictureFormats only444At10{noAlpha, AV_PIX_FMT_YUV444P10};
constexpr PictureFormats motionJpeg{AV_PIX_FMT_YUVJ422P};

constexpr VideoCodecSettings videoCodecs[] = {
    {OAVDnxhdCodec, "dnxhd", "dnxhd", chroma422To10, noAlpha, RateChoice::classes, false, nullptr},
    {OAVDnxhrLBCodec, "dnxhd", "dnxhr_lb", dnxhr8, noAlpha, RateChoice::fixed, false, nullptr},
    {OAVDnxhrSQCodec, "dnxhd", "dnxhr_sq", dnxhr8, noAlpha, RateChoice::fixed, false, nullptr},
    {OAVDnxhrHQCodec, "dnxhd", "dnxhr_hq", dnxhr8, noAlpha, RateChoice::fixed, false, nullptr},
    {OAVDnxhrHQXCodec, "dnxhd", "dnxhr_hqx", only422At10, noAlpha, RateChoice::fixed, false, nullptr},
    {OAVDnxhr444Codec, "dnxhd", "dnxhr_444", only444At10, noAlpha, RateChoice::fixed, false, nullptr},
    {OAVAvcH264Codec, "libx264", nullptr, chroma420To10, noAlpha, RateChoice::free, true, nullptr},
    {OAVHevcCodec, "libx265", nullptr, chroma420, noAlpha, RateChoice::free, true, "hvc1"},
    {OAVMotionJpegCodec, "mjpeg", nullptr, motionJpeg, noAlpha, RateChoice::free, false, nullptr},
    {OAVMpeg4Codec, "mpeg4", nullptr, only8, noAlpha, RateChoice::free, true, nullptr},
    {OAVProRes4444, "prores_ks", "4444", only444At10, AV_PIX_FMT_YUVA444P10, RateChoice::fixed, false, nullptr},
    {OAVProRes4444XQ, "prores_ks", "4444xq", only444At10, AV_PIX_FMT_YUVA444P10, RateChoice::fixed, false, nullptr},
    {OAVProRes422, "prores_ks", "standard", only422At10, noAlpha, RateChoice::fixed, false, nullptr},
    {OAVProRes422HQ, "prores_ks", "hq", only422At10, noAlpha, RateChoice::fixed, false, nullptr},
    {OAVProRes422LT, "prores_ks", "lt", only422At10, noAlpha, RateChoice::fixed, false, nullptr},
    {OAVProRes422Proxy, "prores_ks", "proxy", only422At10, noAlpha, RateChoice::fixed, false, nullptr},
};
static_assert(std::size(videoCodecs) == OAVTranscodeArgumentVideoCodecValue::allCases().size());

// ITU-T H.264 annex A, H.265 annex A; names as the encoders take them.
constexpr CodecProfile profiles[] = {
    {OAVAvcH264Codec, "baseline", {AV_PIX_FMT_YUV420P}},
    {OAVAvcH264Codec, "main", {AV_PIX_FMT_YUV420P}},
    {OAVAvcH264Codec, "high", {AV_PIX_FMT_YUV420P}},
    {OAVAvcH264Codec, "high10", {noAlpha, AV_PIX_FMT_YUV420P10}},
    {OAVAvcH264Codec, "high422", {AV_PIX_FMT_YUV422P, AV_PIX_FMT_YUV422P10}},
    {OAVAvcH264Codec, "high444", {AV_PIX_FMT_YUV444P, AV_PIX_FMT_YUV444P10}},
    {OAVHevcCodec, "main", {AV_PIX_FMT_YUV420P}},
    {OAVHevcCodec, "main10", {noAlpha, AV_PIX_FMT_YUV420P10}},
    {OAVHevcCodec, "main12", {noAlpha, noAlpha, AV_PIX_FMT_YUV420P12}},
    {OAVHevcCodec, "main422-10", {noAlpha, AV_PIX_FMT_YUV422P10}},
    {OAVHevcCodec, "main422-12", {noAlpha, noAlpha, AV_PIX_FMT_YUV422P12}},
    {OAVHevcCodec, "main444-8", {AV_PIX_FMT_YUV444P}},
    {OAVHevcCodec, "main444-10", {noAlpha, AV_PIX_FMT_YUV444P10}},
    {OAVHevcCodec, "main444-12", {noAlpha, noAlpha, AV_PIX_FMT_YUV444P12}},
};

std::string namesOfAll() {
    std::string names;
    for (const auto& codec : OAVTranscodeArgumentVideoCodecValue::allCases()) {
        names += names.empty() ? "" : ", ";
        names += codec.rawValue();
    }
    return names;
}

}  // namespace

std::span<const VideoCodecSettings> allVideoCodecSettings() noexcept { return videoCodecs; }

std::span<const CodecProfile> allCodecProfiles() noexcept { return profiles; }

const VideoCodecSettings& videoCodecSettings(const OAVTranscodeArgumentVideoCodecValue& codec) {
    const auto found = std::find_if(std::begin(videoCodecs), std::end(videoCodecs),
                                    [&](const auto& row) { return row.codec == codec; });
    const std::string name(codec.rawValue());
    if (found == std::end(videoCodecs)) throw UsageError("-vcodec '" + name + "': expected one of " + namesOfAll());
    if (!canEncode(*found)) {
        throw JobError("-vcodec " + name + ": the media libraries of this machine lack its encoder '" + found->encoder +
                       "'");
    }
    return *found;
}

std::optional<AVPixelFormat> PictureFormats::format(std::optional<int> bitDepth) const noexcept {
    for (const auto& [depth, format] : {std::pair(8, bits8), std::pair(10, bits10), std::pair(12, bits12)}) {
        if (format != AV_PIX_FMT_NONE && (!bitDepth || *bitDepth == depth)) return format;
    }
    return std::nullopt;
}

std::string PictureFormats::depths() const {
    std::string text;
    for (const int depth : {8, 10, 12}) {
        if (format(depth)) text += (text.empty() ? "" : ", ") + std::to_string(depth);
    }
    return text;
}

const CodecProfile& codecProfile(const VideoCodecSettings& row, std::string_view name) {
    std::string names;
    for (const CodecProfile& profile : profiles) {
        if (profile.codec != row.codec) continue;
        if (profile.name == name) return profile;
        names += (names.empty() ? "" : ", ") + std::string(profile.name);
    }
    throw UsageError("-vprofile " + inQuotes(name) + ": " +
                     (names.empty() ? "-vcodec " + std::string(row.codec.rawValue()) + " leaves no profile to choose"
                                    : "expected one of " + names));
}

bool canEncode(const VideoCodecSettings& row) noexcept { return avcodec_find_encoder_by_name(row.encoder) != nullptr; }

}  // namespace corvex::tool

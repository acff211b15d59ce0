#include <tools/corvex/image/StillImage.h>

#include <algorithm>
#include <array>
#include <climits>
#include <cstring>
#include <filesystem>
#include <span>
#include <utility>
#include <vector>

extern "C" {
#include <libavutil/pixdesc.h>
}

#include <Corvex/platform/Checked.h>
#include <Corvex/platform/InputFile.h>
#include <Corvex/platform/Text.h>
#include <tools/corvex/writeBytes.h>

namespace corvex::tool {
namespace {

constexpr std::size_t channelCount = 4;
constexpr std::size_t planeOf[channelCount] = {2, 0, 1, 3};  // red, green, blue, alpha

struct PlanarFormat {
    SampleFormat samples;
    AVPixelFormat opaque, withAlpha;
};
constexpr PlanarFormat planarFormats[] = {
    {SampleFormat::unsigned8, AV_PIX_FMT_GBRP, AV_PIX_FMT_GBRAP},
    {SampleFormat::unsigned10, AV_PIX_FMT_GBRP10, AV_PIX_FMT_GBRAP10},
    {SampleFormat::unsigned12, AV_PIX_FMT_GBRP12, AV_PIX_FMT_GBRAP12},
    {SampleFormat::unsigned16, AV_PIX_FMT_GBRP16, AV_PIX_FMT_GBRAP16},
};

const PlanarFormat& planarFormat(SampleFormat samples) noexcept {
    return *std::ranges::find(planarFormats, samples, &PlanarFormat::samples);
}

AVCodecID codecOf(StillFileKind kind) noexcept {
    switch (kind) {
        case StillFileKind::png: return AV_CODEC_ID_PNG;
        case StillFileKind::tiff: return AV_CODEC_ID_TIFF;
        case StillFileKind::dpx: return AV_CODEC_ID_DPX;
    }
    return AV_CODEC_ID_NONE;
}

/// The depth of pixels of whole R'G'B' or grey samples, all of the same depth; none for others.
std::optional<SampleFormat> samplesOf(const AVPixFmtDescriptor& pixels) noexcept {
    constexpr std::uint64_t others =
        AV_PIX_FMT_FLAG_FLOAT | AV_PIX_FMT_FLAG_BAYER | AV_PIX_FMT_FLAG_BITSTREAM | AV_PIX_FMT_FLAG_HWACCEL;
    if ((pixels.flags & others) != 0) return std::nullopt;
    const bool isGrey = pixels.nb_components < 3;
    if ((pixels.flags & (AV_PIX_FMT_FLAG_RGB | AV_PIX_FMT_FLAG_PAL)) == 0 && !isGrey) return std::nullopt;
    for (int i = 1; i < pixels.nb_components && (pixels.flags & AV_PIX_FMT_FLAG_PAL) == 0; ++i) {
        if (pixels.comp[i].depth != pixels.comp[0].depth) return std::nullopt;
    }
    const auto found = std::ranges::find(planarFormats, pixels.comp[0].depth,
                                         [](const PlanarFormat& format) { return int(bitDepth(format.samples)); });
    return found == std::end(planarFormats) ? std::nullopt : std::optional(found->samples);
}

FramePointer makePicture(int width, int height, AVPixelFormat format) {
    FramePointer frame = makeFrame();
    frame->width = width;
    frame->height = height;
    frame->format = format;
    check(av_frame_get_buffer(frame.get(), 0), "picture");
    for (const AVBufferRef* buffer : frame->buf) {
        if (buffer != nullptr) std::memset(buffer->data, 0, buffer->size);
    }
    return frame;
}

std::uint8_t* rowOf(const AVFrame& frame, std::size_t plane, int row) noexcept {
    return frame.data[plane] + static_cast<std::ptrdiff_t>(row) * frame.linesize[plane];
}

/// Puts 16-bit samples into a row of a plane.
void storeRow(const std::vector<std::uint16_t>& samples, SampleFormat format, std::uint8_t* row) noexcept {
    if (format == SampleFormat::unsigned8) {
        std::ranges::transform(samples, row, [](std::uint16_t sample) { return static_cast<std::uint8_t>(sample); });
    } else {
        std::memcpy(row, samples.data(), samples.size() * sizeof(std::uint16_t));
    }
}

void loadRow(const std::uint8_t* row, SampleFormat format, std::vector<std::uint16_t>& samples) noexcept {
    if (format == SampleFormat::unsigned8) {
        std::copy_n(row, samples.size(), samples.begin());
    } else {
        std::memcpy(samples.data(), row, samples.size() * sizeof(std::uint16_t));
    }
}

/// The component of a pixel format that holds a channel, alpha being the last one there is.
int componentOf(const AVPixFmtDescriptor& pixels, std::size_t channel) noexcept {
    if (channel == 3) return pixels.nb_components - 1;
    return pixels.nb_components < 3 ? 0 : static_cast<int>(channel);
}

/// Colours of a palette stand in its second plane, as 32-bit words of alpha, red, green and blue.
std::uint8_t paletteSample(const AVFrame& frame, std::uint8_t index, std::size_t channel) noexcept {
    constexpr unsigned shifts[channelCount] = {16, 8, 0, 24};
    std::uint32_t word = 0;
    std::memcpy(&word, frame.data[1] + std::size_t{index} * sizeof word, sizeof word);
    return static_cast<std::uint8_t>(word >> shifts[channel]);
}

bool isPalette(const AVFrame& frame) noexcept { return frame.format == AV_PIX_FMT_PAL8; }

/// Whether some pixel can be transparent.
bool carriesAlpha(const AVFrame& frame) noexcept {
    if (!isPalette(frame)) return hasAlpha(frame.format);
    for (int row = 0; row < frame.height; ++row) {
        const std::uint8_t* const indices = rowOf(frame, 0, row);
        const bool isOpaque = std::all_of(indices, indices + frame.width,
                                          [&](std::uint8_t index) { return paletteSample(frame, index, 3) == 255; });
        if (!isOpaque) return true;
    }
    return false;
}

/// Copies all channels of a decoded picture to planes.
void unpack(const AVFrame& from, SampleFormat format, AVFrame& to) {
    const AVPixFmtDescriptor& pixels = *av_pix_fmt_desc_get(static_cast<AVPixelFormat>(from.format));
    const std::uint8_t* planes[channelCount] = {from.data[0], from.data[1], from.data[2], from.data[3]};
    std::vector<std::uint16_t> samples(static_cast<std::size_t>(from.width));
    for (std::size_t channel = 0; channel < (hasAlpha(to.format) ? 4U : 3U); ++channel) {
        for (int row = 0; row < from.height; ++row) {
            if (isPalette(from)) {
                std::transform(planes[0] + static_cast<std::ptrdiff_t>(row) * from.linesize[0],
                               planes[0] + static_cast<std::ptrdiff_t>(row) * from.linesize[0] + from.width,
                               samples.begin(),
                               [&](std::uint8_t index) { return paletteSample(from, index, channel); });
            } else {
                av_read_image_line2(samples.data(), planes, from.linesize, &pixels, 0, row,
                                    componentOf(pixels, channel), from.width, 0, sizeof(std::uint16_t));
            }
            storeRow(samples, format, rowOf(to, planeOf[channel], row));
        }
    }
}

/// The other way round. `to` is zero: the library adds bits to what is there.
void pack(const AVFrame& from, SampleFormat format, AVFrame& to) {
    const AVPixFmtDescriptor& pixels = *av_pix_fmt_desc_get(static_cast<AVPixelFormat>(to.format));
    std::vector<std::uint16_t> samples(static_cast<std::size_t>(from.width));
    for (std::size_t channel = 0; channel < (hasAlpha(to.format) ? 4U : 3U); ++channel) {
        for (int row = 0; row < from.height; ++row) {
            loadRow(rowOf(from, planeOf[channel], row), format, samples);
            av_write_image_line2(samples.data(), to.data, to.linesize, &pixels, 0, row, componentOf(pixels, channel),
                                 from.width, sizeof(std::uint16_t));
        }
    }
}

PacketPointer readWhole(const std::string& path) {
    auto file = InputFile::open(path);
    if (!file) throw JobError(inQuotes(path) + " cannot be opened, or is no regular file");
    constexpr std::uint64_t largest = INT_MAX - AV_INPUT_BUFFER_PADDING_SIZE;
    if (file->size() > largest) throw JobError(inQuotes(path) + " is larger than 2 GiB");
    PacketPointer packet = makePacket();
    check(av_new_packet(packet.get(), static_cast<int>(file->size())), inQuotes(path));
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): bytes as characters
    const std::span room(reinterpret_cast<char*>(packet->data), static_cast<std::size_t>(packet->size));
    if (file->read(room) != room.size()) throw JobError("reading " + inQuotes(path) + " failed");
    return packet;
}

CodecContextPointer makeContext(const AVCodec* codec, StillFileKind kind) {
    if (codec == nullptr) throw JobError(std::string(avcodec_get_name(codecOf(kind))) + " is unknown on this machine");
    CodecContextPointer context(checkAllocated(avcodec_alloc_context3(codec)));
    context->thread_count = 1;
    return context;
}

FramePointer decode(const std::string& path, const AVPacket& packet, StillFileKind kind) {
    const AVCodec* const codec = avcodec_find_decoder(codecOf(kind));
    const CodecContextPointer context = makeContext(codec, kind);
    // Half a picture is none. The reader of TIFF would also refuse tags that it does not know, which are many, so there
    // the errors that it tells count.
    if (kind != StillFileKind::tiff) context->err_recognition = AV_EF_EXPLODE | AV_EF_CRCCHECK;
    (void)LibraryMessages::takeHadError();
    const std::string what = inQuotes(path) + " is damaged";
    check(avcodec_open2(context.get(), codec, nullptr), what);
    check(avcodec_send_packet(context.get(), &packet), what);
    FramePointer frame = makeFrame();
    check(avcodec_receive_frame(context.get(), frame.get()), what);
    const bool isMarked = frame->decode_error_flags != 0 || (frame->flags & AV_FRAME_FLAG_CORRUPT) != 0;
    if (LibraryMessages::takeHadError() || isMarked) throw JobError(what + ": " + LibraryMessages::takeLast());
    return frame;
}

/// The pixels in which a kind of file keeps a picture: no less deep, with alpha if there is any, and of these the least
/// deep; big-endian ones first, which is what most readers of DPX expect.
AVPixelFormat encodedFormat(StillFileKind kind, SampleFormat samples, bool withAlpha) {
    const AVCodec* const codec = avcodec_find_encoder(codecOf(kind));
    AVPixelFormat best = AV_PIX_FMT_NONE;
    const auto rank = [](AVPixelFormat format) {
        const AVPixFmtDescriptor& pixels = *av_pix_fmt_desc_get(format);
        return std::pair(pixels.comp[0].depth, (pixels.flags & AV_PIX_FMT_FLAG_BE) == 0);
    };
    for (const AVPixelFormat* at = codec ? codec->pix_fmts : nullptr; at && *at != AV_PIX_FMT_NONE; ++at) {
        const AVPixFmtDescriptor& pixels = *av_pix_fmt_desc_get(*at);
        const auto depth = samplesOf(pixels);
        if (!depth || (pixels.flags & AV_PIX_FMT_FLAG_RGB) == 0 || hasAlpha(*at) != withAlpha) continue;
        if (bitDepth(*depth) < bitDepth(samples)) continue;
        if (best == AV_PIX_FMT_NONE || rank(*at) < rank(best)) best = *at;
    }
    if (best == AV_PIX_FMT_NONE)
        throw JobError(std::string(avcodec_get_name(codecOf(kind))) + " holds no such picture");
    return best;
}

}  // namespace

std::optional<StillFileKind> stillFileKindOf(const std::string& path) {
    struct Extension {
        std::string_view name;
        StillFileKind kind;
    };
    constexpr Extension extensions[] = {{".png", StillFileKind::png},
                                        {".tif", StillFileKind::tiff},
                                        {".tiff", StillFileKind::tiff},
                                        {".dpx", StillFileKind::dpx}};
    const std::string extension = std::filesystem::path(path).extension().string();
    for (const auto& [name, kind] : extensions) {
        if (isAscii(extension) && equalsIgnoringCase(extension, name)) return kind;
    }
    return std::nullopt;
}

std::optional<StillFileKind> stillFileKindOfBytes(std::string_view bytes) noexcept {
    struct Signature {
        std::string_view bytes;
        StillFileKind kind;
    };
    using namespace std::string_view_literals;
    constexpr Signature signatures[] = {{"\x89PNG\r\n\x1A\n"sv, StillFileKind::png},
                                        {"II*\0"sv, StillFileKind::tiff},
                                        {"MM\0*"sv, StillFileKind::tiff},
                                        {"SDPX"sv, StillFileKind::dpx},
                                        {"XPDS"sv, StillFileKind::dpx}};
    for (const auto& [start, kind] : signatures) {
        if (bytes.starts_with(start)) return kind;
    }
    return std::nullopt;
}

StillImage::StillImage(int width, int height, SampleFormat format, bool hasAlpha) : format_(format) {
    const PlanarFormat& planar = planarFormat(format);
    frame_ = makePicture(width, height, hasAlpha ? planar.withAlpha : planar.opaque);
}

StillImage StillImage::read(const std::string& path) {
    const PacketPointer packet = readWhole(path);
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): bytes as characters
    const auto* const bytes = reinterpret_cast<const char*>(packet->data);
    const auto kind = stillFileKindOfBytes({bytes, static_cast<std::size_t>(packet->size)});
    if (!kind) throw JobError(inQuotes(path) + " is no picture of PNG, TIFF or DPX");
    const FramePointer decoded = decode(path, *packet, *kind);
    const AVPixFmtDescriptor* const pixels = av_pix_fmt_desc_get(static_cast<AVPixelFormat>(decoded->format));
    const auto format = pixels ? samplesOf(*pixels) : std::nullopt;
    if (!format) {
        throw JobError(inQuotes(path) + " has pixels of the sort '" + (pixels ? pixels->name : "unknown") +
                       "'; expected RGB or grey of 8, 10, 12 or 16 bits");
    }
    StillImage image(decoded->width, decoded->height, *format, carriesAlpha(*decoded));
    check(av_frame_copy_props(image.frame_.get(), decoded.get()), inQuotes(path));
    unpack(*decoded, *format, *image.frame_);
    return image;
}

StillImage StillImage::blankCopy(SampleFormat format) const {
    StillImage copy(width(), height(), format, hasAlpha());
    check(av_frame_copy_props(copy.frame_.get(), frame_.get()), "picture");
    return copy;
}

PixelBuffer StillImage::pixels() noexcept {
    const auto plane = [&](std::size_t channel) {
        return PixelBuffer::Plane{frame_->data[planeOf[channel]], frame_->linesize[planeOf[channel]]};
    };
    return PixelBuffer::planar(plane(0), plane(1), plane(2), hasAlpha() ? plane(3) : PixelBuffer::Plane(), format_,
                               static_cast<std::size_t>(width()), static_cast<std::size_t>(height()));
}

SampleFormat StillImage::formatIn(StillFileKind kind) const {
    return *samplesOf(*av_pix_fmt_desc_get(encodedFormat(kind, format_, hasAlpha())));
}

void StillImage::write(const OutputFile& file, StillFileKind kind) const {
    const AVPixelFormat format = encodedFormat(kind, format_, hasAlpha());
    require(samplesOf(*av_pix_fmt_desc_get(format)) == format_, "the file keeps pictures of this depth in another one");
    const AVCodec* const codec = avcodec_find_encoder(codecOf(kind));
    const CodecContextPointer context = makeContext(codec, kind);
    context->width = width();
    context->height = height();
    context->pix_fmt = format;
    context->time_base = {1, 1};
    context->sample_aspect_ratio = frame_->sample_aspect_ratio;
    context->color_primaries = frame_->color_primaries;
    context->color_trc = frame_->color_trc;
    const std::string what = "encoding the picture";
    check(avcodec_open2(context.get(), codec, nullptr), what);
    const FramePointer frame = makePicture(width(), height(), format);
    check(av_frame_copy_props(frame.get(), frame_.get()), what);
    pack(*frame_, format_, *frame);
    check(avcodec_send_frame(context.get(), frame.get()), what);
    check(avcodec_send_frame(context.get(), nullptr), what);
    const PacketPointer packet = makePacket();
    check(avcodec_receive_packet(context.get(), packet.get()), what);
    writeBytes(file, std::as_bytes(std::span(packet->data, static_cast<std::size_t>(packet->size))));
}

}  // namespace corvex::tool

#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include <Corvex/exported/OAVTranscodeVideoArgumentFlag.h>
#include <Corvex/platform/Export.h>
#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

enum class FileExtension : std::uint8_t;

/// The video codec that a transcode encodes with ("-vcodec"). Any text is legal.
class OAVTranscodeArgumentVideoCodecValue : public TypedString<OAVTranscodeArgumentVideoCodecValue> {
public:
    using TypedString::TypedString;

    /// The flag under which the value stands, "-vcodec", typed and as text.
    [[nodiscard]] static constexpr OAVTranscodeVideoArgumentFlag videoFlag() noexcept { return OAVVideoFormatFlag; }
    [[nodiscard]] constexpr std::string_view cliFlag() const noexcept { return OAVVideoFormatFlag.rawValue(); }

    // Lists that the whole process shares and a host may replace. Any thread.
    /// Default: the six DNx values. A copy; allocates.
    [[nodiscard]] CORVEX_EXPORT static std::vector<OAVTranscodeArgumentVideoCodecValue> allAvidDNxFormats();
    CORVEX_EXPORT static void setAllAvidDNxFormats(std::vector<OAVTranscodeArgumentVideoCodecValue> formats);
    /// Default: h264, h265, mjpeg.
    [[nodiscard]] CORVEX_EXPORT static std::vector<OAVTranscodeArgumentVideoCodecValue> allWebFormats();
    CORVEX_EXPORT static void setAllWebFormats(std::vector<OAVTranscodeArgumentVideoCodecValue> formats);
    /// Default: the six ProRes values.
    [[nodiscard]] CORVEX_EXPORT static std::vector<OAVTranscodeArgumentVideoCodecValue> allProResFormats();
    CORVEX_EXPORT static void setAllProResFormats(std::vector<OAVTranscodeArgumentVideoCodecValue> formats);

    /// The extensions of the files that the codec may be written into, the usual one first; empty for a codec that is
    /// neither known by itself nor a member of the lists above. The view is of a constant and never ends, but what it
    /// holds follows the lists: a codec that a host has taken out of allProResFormats() has none.
    [[nodiscard]] CORVEX_EXPORT std::span<const FileExtension> permittedExtensions() const;
};

/// Avid DNxHD (SMPTE ST 2019-1): high-definition rasters at the data rates of the standard's table, 8 or 10 bits.
inline constexpr OAVTranscodeArgumentVideoCodecValue OAVDnxhdCodec{"dnxhd"};
/// DNxHR takes any raster (SMPTE ST 2019-1). Low bandwidth: 8 bits 4:2:2, for proxies.
inline constexpr OAVTranscodeArgumentVideoCodecValue OAVDnxhrLBCodec{"dnxhrlb"};
/// Standard quality: 8 bits 4:2:2.
inline constexpr OAVTranscodeArgumentVideoCodecValue OAVDnxhrSQCodec{"dnxhrsq"};
/// High quality: 8 bits 4:2:2.
inline constexpr OAVTranscodeArgumentVideoCodecValue OAVDnxhrHQCodec{"dnxhrhq"};
/// High quality of more than 8 bits: 4:2:2.
inline constexpr OAVTranscodeArgumentVideoCodecValue OAVDnxhrHQXCodec{"dnxhrhqx"};
/// 4:4:4.
inline constexpr OAVTranscodeArgumentVideoCodecValue OAVDnxhr444Codec{"dnxhr444"};
/// Advanced video coding (ITU-T H.264, ISO/IEC 14496-10).
inline constexpr OAVTranscodeArgumentVideoCodecValue OAVAvcH264Codec{"h264"};
/// High-efficiency video coding (ITU-T H.265, ISO/IEC 23008-2).
inline constexpr OAVTranscodeArgumentVideoCodecValue OAVHevcCodec{"h265"};
/// A JPEG (ISO/IEC 10918-1) for each picture.
inline constexpr OAVTranscodeArgumentVideoCodecValue OAVMotionJpegCodec{"mjpeg"};
/// MPEG-4 Visual (ISO/IEC 14496-2): the codec, not the container of the same name.
inline constexpr OAVTranscodeArgumentVideoCodecValue OAVMpeg4Codec{"mp4"};
/// ProRes codes each picture for itself (SMPTE RDD 36), in six steps of data rate. 4:4:4 with alpha.
inline constexpr OAVTranscodeArgumentVideoCodecValue OAVProRes4444{"prores4444"};
/// 4:4:4 with alpha, at the highest data rate of the family.
inline constexpr OAVTranscodeArgumentVideoCodecValue OAVProRes4444XQ{"prores4444xq"};
/// From here on 4:2:2: the ordinary data rate.
inline constexpr OAVTranscodeArgumentVideoCodecValue OAVProRes422{"prores422"};
/// Higher.
inline constexpr OAVTranscodeArgumentVideoCodecValue OAVProRes422HQ{"prores422hq"};
/// Lower.
inline constexpr OAVTranscodeArgumentVideoCodecValue OAVProRes422LT{"prores422lt"};
/// The lowest, for offline editing.
inline constexpr OAVTranscodeArgumentVideoCodecValue OAVProRes422Proxy{"prores422proxy"};

/// The known values in their fixed order.
template <>
inline constexpr std::array knownValues<OAVTranscodeArgumentVideoCodecValue>{
    OAVDnxhdCodec,   OAVDnxhrLBCodec, OAVDnxhrSQCodec,    OAVDnxhrHQCodec,   OAVDnxhrHQXCodec, OAVDnxhr444Codec,
    OAVAvcH264Codec, OAVHevcCodec,    OAVMotionJpegCodec, OAVMpeg4Codec,     OAVProRes4444,    OAVProRes4444XQ,
    OAVProRes422,    OAVProRes422HQ,  OAVProRes422LT,     OAVProRes422Proxy,
};

static_assert(CLIArgumentOption<OAVTranscodeArgumentVideoCodecValue>);

}  // namespace corvex::inline v0

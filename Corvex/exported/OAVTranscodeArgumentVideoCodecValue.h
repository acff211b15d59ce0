#pragma once

#include <array>
#include <span>
#include <vector>

#include <Corvex/exported/FileExtension.h>
#include <Corvex/exported/OAVTranscodeVideoArgumentFlag.h>
#include <Corvex/platform/Export.h>
#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// The video codec that a transcode encodes with. Any text is legal.
class OAVTranscodeArgumentVideoCodecValue : public TypedString<OAVTranscodeArgumentVideoCodecValue> {
public:
    using TypedString::TypedString;

    /// The known values in their fixed order.
    [[nodiscard]] static constexpr std::span<const OAVTranscodeArgumentVideoCodecValue> allCases() noexcept;

    [[nodiscard]] static constexpr OAVTranscodeVideoArgumentFlag videoFlag() noexcept { return OAVVideoFormatFlag; }
    [[nodiscard]] constexpr std::string_view cliFlag() const noexcept { return OAVVideoFormatFlag.rawValue(); }

    // Lists that the whole process shares and a host may replace. Any thread.
    /// Default: the six DNx values.
    [[nodiscard]] CORVEX_EXPORT static std::vector<OAVTranscodeArgumentVideoCodecValue> allAvidDNxFormats();
    CORVEX_EXPORT static void setAllAvidDNxFormats(std::vector<OAVTranscodeArgumentVideoCodecValue> formats);
    /// Default: h264, h265, mjpeg.
    [[nodiscard]] CORVEX_EXPORT static std::vector<OAVTranscodeArgumentVideoCodecValue> allWebFormats();
    CORVEX_EXPORT static void setAllWebFormats(std::vector<OAVTranscodeArgumentVideoCodecValue> formats);
    /// Default: the six ProRes values.
    [[nodiscard]] CORVEX_EXPORT static std::vector<OAVTranscodeArgumentVideoCodecValue> allProResFormats();
    CORVEX_EXPORT static void setAllProResFormats(std::vector<OAVTranscodeArgumentVideoCodecValue> formats);

    /// The extensions of the files that the codec may be written into, the usual one first; empty for a codec that is
    /// neither known by itself nor a member of the lists above.
    [[nodiscard]] CORVEX_EXPORT std::span<const FileExtension> permittedExtensions() const;
};

inline constexpr OAVTranscodeArgumentVideoCodecValue OAVDnxhdCodec{"dnxhd"};
inline constexpr OAVTranscodeArgumentVideoCodecValue OAVDnxhrLBCodec{"dnxhrlb"};
inline constexpr OAVTranscodeArgumentVideoCodecValue OAVDnxhrSQCodec{"dnxhrsq"};
inline constexpr OAVTranscodeArgumentVideoCodecValue OAVDnxhrHQCodec{"dnxhrhq"};
inline constexpr OAVTranscodeArgumentVideoCodecValue OAVDnxhrHQXCodec{"dnxhrhqx"};
inline constexpr OAVTranscodeArgumentVideoCodecValue OAVDnxhr444Codec{"dnxhr444"};
inline constexpr OAVTranscodeArgumentVideoCodecValue OAVAvcH264Codec{"h264"};
inline constexpr OAVTranscodeArgumentVideoCodecValue OAVHevcCodec{"h265"};
inline constexpr OAVTranscodeArgumentVideoCodecValue OAVMotionJpegCodec{"mjpeg"};
inline constexpr OAVTranscodeArgumentVideoCodecValue OAVMpeg4Codec{"mp4"};
inline constexpr OAVTranscodeArgumentVideoCodecValue OAVProRes4444{"prores4444"};
inline constexpr OAVTranscodeArgumentVideoCodecValue OAVProRes4444XQ{"prores4444xq"};
inline constexpr OAVTranscodeArgumentVideoCodecValue OAVProRes422{"prores422"};
inline constexpr OAVTranscodeArgumentVideoCodecValue OAVProRes422HQ{"prores422hq"};
inline constexpr OAVTranscodeArgumentVideoCodecValue OAVProRes422LT{"prores422lt"};
inline constexpr OAVTranscodeArgumentVideoCodecValue OAVProRes422Proxy{"prores422proxy"};

inline constexpr std::array allTranscodeArgumentVideoCodecValues{
    OAVDnxhdCodec,   OAVDnxhrLBCodec, OAVDnxhrSQCodec,    OAVDnxhrHQCodec,   OAVDnxhrHQXCodec, OAVDnxhr444Codec,
    OAVAvcH264Codec, OAVHevcCodec,    OAVMotionJpegCodec, OAVMpeg4Codec,     OAVProRes4444,    OAVProRes4444XQ,
    OAVProRes422,    OAVProRes422HQ,  OAVProRes422LT,     OAVProRes422Proxy,
};

constexpr std::span<const OAVTranscodeArgumentVideoCodecValue>
OAVTranscodeArgumentVideoCodecValue::allCases() noexcept {
    return allTranscodeArgumentVideoCodecValues;
}

static_assert(CLIArgumentOption<OAVTranscodeArgumentVideoCodecValue>);

}  // namespace corvex::inline v0

#pragma once

#include <array>
#include <span>

#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// The codec of a video track, as users read it and metadata store it. Any text is legal.
class ORVVideoCodec : public TypedString<ORVVideoCodec> {
public:
    using TypedString::TypedString;

    /// The known codecs in their fixed order.
    [[nodiscard]] static constexpr std::span<const ORVVideoCodec> allCases() noexcept;
};

inline constexpr ORVVideoCodec ORVVideoCodecMpeg{"MPEG"};
inline constexpr ORVVideoCodec ORVVideoCodecAes{"AES"};
inline constexpr ORVVideoCodec ORVVideoCodecArriRaw{"ARRIRAW"};
inline constexpr ORVVideoCodec ORVVideoCodecArriRawHde{"ARRIRAW HDE"};
inline constexpr ORVVideoCodec ORVVideoCodecArriRdd18{"RDD 18"};
inline constexpr ORVVideoCodec ORVVideoCodecArricoreCbe{"ARRICORE CBE"};
inline constexpr ORVVideoCodec ORVVideoCodecArricoreVbe{"ARRICORE VBE"};
inline constexpr ORVVideoCodec ORVVideoCodecAvidDNxHD{"Avid DNxHD"};
inline constexpr ORVVideoCodec ORVVideoCodecAvidDNxHR{"Avid DNxHR"};
inline constexpr ORVVideoCodec ORVVideoCodecBlackmagicRaw{"Blackmagic RAW"};
inline constexpr ORVVideoCodec ORVVideoCodecCanonRaw{"Canon RAW"};
inline constexpr ORVVideoCodec ORVVideoCodecCineform{"Cineform"};
inline constexpr ORVVideoCodec ORVVideoCodecH264{"H.264"};
inline constexpr ORVVideoCodec ORVVideoCodecH265{"H.265"};
inline constexpr ORVVideoCodec ORVVideoCodecJPEG{"JPEG"};
inline constexpr ORVVideoCodec ORVVideoCodecMpeg2{"MP2"};
inline constexpr ORVVideoCodec ORVVideoCodecMpeg4{"MP4"};
inline constexpr ORVVideoCodec ORVVideoCodecProRes{"ProRes"};
inline constexpr ORVVideoCodec ORVVideoCodecProRes422{"ProRes 422"};
inline constexpr ORVVideoCodec ORVVideoCodecProRes4444{"ProRes 4444"};
inline constexpr ORVVideoCodec ORVVideoCodecProResRaw{"ProRes RAW"};
inline constexpr ORVVideoCodec ORVVideoCodecRedcodeRaw{"REDCODE RAW"};

inline constexpr std::array allVideoCodecs{
    ORVVideoCodecMpeg,      ORVVideoCodecAes,           ORVVideoCodecArriRaw,     ORVVideoCodecArriRawHde,
    ORVVideoCodecArriRdd18, ORVVideoCodecArricoreCbe,   ORVVideoCodecArricoreVbe, ORVVideoCodecAvidDNxHD,
    ORVVideoCodecAvidDNxHR, ORVVideoCodecBlackmagicRaw, ORVVideoCodecCanonRaw,    ORVVideoCodecCineform,
    ORVVideoCodecH264,      ORVVideoCodecH265,          ORVVideoCodecJPEG,        ORVVideoCodecMpeg2,
    ORVVideoCodecMpeg4,     ORVVideoCodecProRes,        ORVVideoCodecProRes422,   ORVVideoCodecProRes4444,
    ORVVideoCodecProResRaw, ORVVideoCodecRedcodeRaw,
};

constexpr std::span<const ORVVideoCodec> ORVVideoCodec::allCases() noexcept { return allVideoCodecs; }

}  // namespace corvex::inline v0

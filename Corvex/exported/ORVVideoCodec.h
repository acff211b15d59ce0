#pragma once

#include <array>

#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// The codec of a video track, as users read it and metadata store it. Any text is legal. What a transcode can encode
/// is OAVTranscodeArgumentVideoCodecValue.
class ORVVideoCodec : public TypedString<ORVVideoCodec> {
public:
    using TypedString::TypedString;
};

/// A codec of the MPEG family that is not told apart further.
inline constexpr ORVVideoCodec ORVVideoCodecMpeg{"MPEG"};
inline constexpr ORVVideoCodec ORVVideoCodecAes{"AES"};
/// Uncompressed sensor data (SMPTE RDD 30).
inline constexpr ORVVideoCodec ORVVideoCodecArriRaw{"ARRIRAW"};
/// The same, losslessly coded by Codex High Density Encoding.
inline constexpr ORVVideoCodec ORVVideoCodecArriRawHde{"ARRIRAW HDE"};
inline constexpr ORVVideoCodec ORVVideoCodecArriRdd18{"RDD 18"};
inline constexpr ORVVideoCodec ORVVideoCodecArricoreCbe{"ARRICORE CBE"};
inline constexpr ORVVideoCodec ORVVideoCodecArricoreVbe{"ARRICORE VBE"};
/// SMPTE ST 2019-1 (VC-3), high-definition rasters.
inline constexpr ORVVideoCodec ORVVideoCodecAvidDNxHD{"Avid DNxHD"};
/// SMPTE ST 2019-1 (VC-3), any raster.
inline constexpr ORVVideoCodec ORVVideoCodecAvidDNxHR{"Avid DNxHR"};
inline constexpr ORVVideoCodec ORVVideoCodecBlackmagicRaw{"Blackmagic RAW"};
/// Cinema RAW Light.
inline constexpr ORVVideoCodec ORVVideoCodecCanonRaw{"Canon RAW"};
/// Wavelets (SMPTE ST 2073-1, VC-5).
inline constexpr ORVVideoCodec ORVVideoCodecCineform{"Cineform"};
/// ITU-T H.264, ISO/IEC 14496-10.
inline constexpr ORVVideoCodec ORVVideoCodecH264{"H.264"};
/// ITU-T H.265, ISO/IEC 23008-2.
inline constexpr ORVVideoCodec ORVVideoCodecH265{"H.265"};
/// ISO/IEC 10918-1, a picture at a time.
inline constexpr ORVVideoCodec ORVVideoCodecJPEG{"JPEG"};
/// MPEG-2 video (ITU-T H.262, ISO/IEC 13818-2); "MP2" is no audio layer here.
inline constexpr ORVVideoCodec ORVVideoCodecMpeg2{"MP2"};
/// MPEG-4 Visual (ISO/IEC 14496-2); "MP4" is no container here.
inline constexpr ORVVideoCodec ORVVideoCodecMpeg4{"MP4"};
/// SMPTE RDD 36, of a data rate that is not told apart.
inline constexpr ORVVideoCodec ORVVideoCodecProRes{"ProRes"};
/// ProRes of 4:2:2 sampling.
inline constexpr ORVVideoCodec ORVVideoCodecProRes422{"ProRes 422"};
/// ProRes of 4:4:4 sampling, with alpha if wanted.
inline constexpr ORVVideoCodec ORVVideoCodecProRes4444{"ProRes 4444"};
/// Sensor data coded in the manner of ProRes.
inline constexpr ORVVideoCodec ORVVideoCodecProResRaw{"ProRes RAW"};
/// Sensor data coded by wavelets.
inline constexpr ORVVideoCodec ORVVideoCodecRedcodeRaw{"REDCODE RAW"};

/// The known codecs in their fixed order.
template <>
inline constexpr std::array knownValues<ORVVideoCodec>{
    ORVVideoCodecMpeg,      ORVVideoCodecAes,           ORVVideoCodecArriRaw,     ORVVideoCodecArriRawHde,
    ORVVideoCodecArriRdd18, ORVVideoCodecArricoreCbe,   ORVVideoCodecArricoreVbe, ORVVideoCodecAvidDNxHD,
    ORVVideoCodecAvidDNxHR, ORVVideoCodecBlackmagicRaw, ORVVideoCodecCanonRaw,    ORVVideoCodecCineform,
    ORVVideoCodecH264,      ORVVideoCodecH265,          ORVVideoCodecJPEG,        ORVVideoCodecMpeg2,
    ORVVideoCodecMpeg4,     ORVVideoCodecProRes,        ORVVideoCodecProRes422,   ORVVideoCodecProRes4444,
    ORVVideoCodecProResRaw, ORVVideoCodecRedcodeRaw,
};

}  // namespace corvex::inline v0

#pragma once

#include <array>

#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// The audio format that a transcode writes ("-acodec"). Any text is legal. OrvaneAudioFormat is the closed enumeration
/// of the same formats, with their four-character codes.
class OAVTranscodeArgumentAudioFormatValue : public TypedString<OAVTranscodeArgumentAudioFormatValue> {
public:
    using TypedString::TypedString;
};

/// Linear PCM: samples as numbers, nothing lost. The only format of wav files here.
inline constexpr OAVTranscodeArgumentAudioFormatValue OAVLpcmAudioFormatValue{"lpcm"};
/// AAC, low complexity (ISO/IEC 14496-3); "-abr" or "-aqual" choose its data rate.
inline constexpr OAVTranscodeArgumentAudioFormatValue OAVAacAudioFormatValue{"aac"};
/// Apple Lossless, which packs PCM without loss.
inline constexpr OAVTranscodeArgumentAudioFormatValue OAVAppleLosslessAudioFormatValue{"apple_lossless"};
/// High-efficiency AAC: with spectral band replication, for low data rates.
inline constexpr OAVTranscodeArgumentAudioFormatValue OAVAacHEAudioFormatValue{"aac_he"};
/// Enhanced low-delay AAC, for conversation. Lossy, whatever the constant's name says.
inline constexpr OAVTranscodeArgumentAudioFormatValue OAVAacELDLosslessAudioFormatValue{"aac_eld"};
/// IMA ADPCM at 4:1: four bits a sample, found in old QuickTime movies.
inline constexpr OAVTranscodeArgumentAudioFormatValue OAVAppleIMA41ADPCMAudioFormatValue{"apple_ima4"};

/// The known values in their fixed order.
template <>
inline constexpr std::array knownValues<OAVTranscodeArgumentAudioFormatValue>{
    OAVLpcmAudioFormatValue,           OAVAacAudioFormatValue,
    OAVAppleLosslessAudioFormatValue,  OAVAacHEAudioFormatValue,
    OAVAacELDLosslessAudioFormatValue, OAVAppleIMA41ADPCMAudioFormatValue,
};

}  // namespace corvex::inline v0

#pragma once

#include <array>
#include <span>

#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// The audio format that a transcode writes ("-acodec"). Any text is legal.
class OAVTranscodeArgumentAudioFormatValue : public TypedString<OAVTranscodeArgumentAudioFormatValue> {
public:
    using TypedString::TypedString;

    /// The known values in their fixed order.
    [[nodiscard]] static constexpr std::span<const OAVTranscodeArgumentAudioFormatValue> allCases() noexcept;
};

inline constexpr OAVTranscodeArgumentAudioFormatValue OAVLpcmAudioFormatValue{"lpcm"};
inline constexpr OAVTranscodeArgumentAudioFormatValue OAVAacAudioFormatValue{"aac"};
inline constexpr OAVTranscodeArgumentAudioFormatValue OAVAppleLosslessAudioFormatValue{"apple_lossless"};
inline constexpr OAVTranscodeArgumentAudioFormatValue OAVAacHEAudioFormatValue{"aac_he"};
inline constexpr OAVTranscodeArgumentAudioFormatValue OAVAacELDLosslessAudioFormatValue{"aac_eld"};
inline constexpr OAVTranscodeArgumentAudioFormatValue OAVAppleIMA41ADPCMAudioFormatValue{"apple_ima4"};

inline constexpr std::array allTranscodeArgumentAudioFormatValues{
    OAVLpcmAudioFormatValue,           OAVAacAudioFormatValue,
    OAVAppleLosslessAudioFormatValue,  OAVAacHEAudioFormatValue,
    OAVAacELDLosslessAudioFormatValue, OAVAppleIMA41ADPCMAudioFormatValue,
};

constexpr std::span<const OAVTranscodeArgumentAudioFormatValue>
OAVTranscodeArgumentAudioFormatValue::allCases() noexcept {
    return allTranscodeArgumentAudioFormatValues;
}

}  // namespace corvex::inline v0

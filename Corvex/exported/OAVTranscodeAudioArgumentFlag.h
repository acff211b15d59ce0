#pragma once

#include <array>
#include <span>

#include <Corvex/exported/CliFlag.h>
#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// Flags of the audio that a transcode writes.
class OAVTranscodeAudioArgumentFlag : public TypedString<OAVTranscodeAudioArgumentFlag> {
public:
    using TypedString::TypedString;

    /// The known flags in their fixed order.
    [[nodiscard]] static constexpr std::span<const OAVTranscodeAudioArgumentFlag> allCases() noexcept;
    [[nodiscard]] constexpr std::string_view cliFlag() const noexcept { return rawValue(); }
    /// False exactly for the flags that are switches; true for any other text, known or not.
    [[nodiscard]] constexpr bool acceptsArguments() const noexcept;
};

inline constexpr OAVTranscodeAudioArgumentFlag OAVNoAudioFlag{"-an"};
inline constexpr OAVTranscodeAudioArgumentFlag OAVCopyAudioFlag{"-acopy"};
inline constexpr OAVTranscodeAudioArgumentFlag OAVAudioIgnoreTracksPrefixFlag{"-ac_omit"};
inline constexpr OAVTranscodeAudioArgumentFlag OAVDiscreteAudioFlag{"-adiscrete"};
inline constexpr OAVTranscodeAudioArgumentFlag OAVAudioChannelMatchSourceFlag{"-a_ch_match"};
inline constexpr OAVTranscodeAudioArgumentFlag OAVAudioFormatFlag{"-acodec"};
inline constexpr OAVTranscodeAudioArgumentFlag OAVAudioBitsPerChannelFlag{"-abpc"};
inline constexpr OAVTranscodeAudioArgumentFlag OAVAudioSampleRateFlag{"-asr"};
inline constexpr OAVTranscodeAudioArgumentFlag OAVAudioChannelLayoutFlag{"-acl"};
inline constexpr OAVTranscodeAudioArgumentFlag OAVAudioChannelLayoutTagFlag{"-acl_tag"};
inline constexpr OAVTranscodeAudioArgumentFlag OAVAudioBitRateFlag{"-abr"};
inline constexpr OAVTranscodeAudioArgumentFlag OAVAudioQualityFlag{"-aqual"};
inline constexpr OAVTranscodeAudioArgumentFlag OAVAudioLanguageCodeFlag{"-alang_code"};
inline constexpr OAVTranscodeAudioArgumentFlag OAVAudioDecodeEngineFlag{"-a_decoder"};

/// Deliberately not in allCases; an argument vector recognises both, because they contain "-acl".
inline constexpr OAVTranscodeAudioArgumentFlag OAVAudioChannelLayoutDescriptionsFlag{"-acl_descs"};
inline constexpr OAVTranscodeAudioArgumentFlag OAVAudioChannelLayoutBitmapFlag{"-acl_bitmap"};

inline constexpr std::array allTranscodeAudioArgumentFlags{
    OAVNoAudioFlag,
    OAVCopyAudioFlag,
    OAVAudioIgnoreTracksPrefixFlag,
    OAVDiscreteAudioFlag,
    OAVAudioChannelMatchSourceFlag,
    OAVAudioFormatFlag,
    OAVAudioBitsPerChannelFlag,
    OAVAudioSampleRateFlag,
    OAVAudioChannelLayoutFlag,
    OAVAudioChannelLayoutTagFlag,
    OAVAudioBitRateFlag,
    OAVAudioQualityFlag,
    OAVAudioLanguageCodeFlag,
    OAVAudioDecodeEngineFlag,
};

constexpr std::span<const OAVTranscodeAudioArgumentFlag> OAVTranscodeAudioArgumentFlag::allCases() noexcept {
    return allTranscodeAudioArgumentFlags;
}

constexpr bool OAVTranscodeAudioArgumentFlag::acceptsArguments() const noexcept {
    return !(*this == OAVNoAudioFlag || *this == OAVCopyAudioFlag || *this == OAVDiscreteAudioFlag ||
             *this == OAVAudioChannelMatchSourceFlag);
}

static_assert(CliFlag<OAVTranscodeAudioArgumentFlag>);

}  // namespace corvex::inline v0

#pragma once

#include <array>

#include <Corvex/exported/CliFlag.h>
#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// Flags of the audio that a transcode writes. Without any of them each track is encoded anew in a format that suits
/// its source and the container.
class OAVTranscodeAudioArgumentFlag : public TypedString<OAVTranscodeAudioArgumentFlag> {
public:
    using TypedString::TypedString;

    [[nodiscard]] constexpr std::string_view cliFlag() const noexcept { return rawValue(); }
    /// False exactly for the flags that are switches; true for any other text, known or not.
    [[nodiscard]] constexpr bool acceptsArguments() const noexcept;
};

/// A switch: no audio.
inline constexpr OAVTranscodeAudioArgumentFlag OAVNoAudioFlag{"-an"};
/// A switch: copy the tracks as they are coded.
inline constexpr OAVTranscodeAudioArgumentFlag OAVCopyAudioFlag{"-acopy"};
/// Tracks to leave out, a list of numbers from 0; "-ac_omit_2" does it for the third source.
inline constexpr OAVTranscodeAudioArgumentFlag OAVAudioIgnoreTracksPrefixFlag{"-ac_omit"};
/// A switch: each channel becomes a mono track.
inline constexpr OAVTranscodeAudioArgumentFlag OAVDiscreteAudioFlag{"-adiscrete"};
/// A switch: as many channels as the source has.
inline constexpr OAVTranscodeAudioArgumentFlag OAVAudioChannelMatchSourceFlag{"-a_ch_match"};
/// An OAVTranscodeArgumentAudioFormatValue.
inline constexpr OAVTranscodeAudioArgumentFlag OAVAudioFormatFlag{"-acodec"};
/// Bits of a sample of linear PCM or Apple Lossless.
inline constexpr OAVTranscodeAudioArgumentFlag OAVAudioBitsPerChannelFlag{"-abpc"};
/// Samples a second.
inline constexpr OAVTranscodeAudioArgumentFlag OAVAudioSampleRateFlag{"-asr"};
/// A number of channels, or an OAVTranscodeArgumentAudioChannelLayoutValue.
inline constexpr OAVTranscodeAudioArgumentFlag OAVAudioChannelLayoutFlag{"-acl"};
/// The number of a Core Audio layout tag, whose low 16 bits are the count of channels.
inline constexpr OAVTranscodeAudioArgumentFlag OAVAudioChannelLayoutTagFlag{"-acl_tag"};
/// Bits a second, of coded formats.
inline constexpr OAVTranscodeAudioArgumentFlag OAVAudioBitRateFlag{"-abr"};
/// A TranscodeAudioQuality by its text, instead of a data rate.
inline constexpr OAVTranscodeAudioArgumentFlag OAVAudioQualityFlag{"-aqual"};
/// Language of the audio tracks, three letters of ISO 639-2.
inline constexpr OAVTranscodeAudioArgumentFlag OAVAudioLanguageCodeFlag{"-alang_code"};
/// An OAVUnifiedCodecDecoderValue.
inline constexpr OAVTranscodeAudioArgumentFlag OAVAudioDecodeEngineFlag{"-a_decoder"};

/// Deliberately not in allCases; an argument vector recognises both, because they contain "-acl".
inline constexpr OAVTranscodeAudioArgumentFlag OAVAudioChannelLayoutDescriptionsFlag{"-acl_descs"};
inline constexpr OAVTranscodeAudioArgumentFlag OAVAudioChannelLayoutBitmapFlag{"-acl_bitmap"};

/// The known flags in their fixed order.
template <>
inline constexpr std::array knownValues<OAVTranscodeAudioArgumentFlag>{
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

constexpr bool OAVTranscodeAudioArgumentFlag::acceptsArguments() const noexcept {
    return !(*this == OAVNoAudioFlag || *this == OAVCopyAudioFlag || *this == OAVDiscreteAudioFlag ||
             *this == OAVAudioChannelMatchSourceFlag);
}

static_assert(CliFlag<OAVTranscodeAudioArgumentFlag>);

}  // namespace corvex::inline v0

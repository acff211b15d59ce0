#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include <Corvex/exported/OAVTranscodeArgumentAudioFormatValue.h>
#include <Corvex/platform/CaseTable.h>
#include <Corvex/platform/Export.h>
#include <Corvex/platform/FourCharacterCode.h>

namespace corvex::inline v0 {

/// The audio formats that can stand in a written file. Raw value: the text that follows "-acodec".
/// OAVTranscodeArgumentAudioFormatValue says what each is.
enum class OrvaneAudioFormat : std::uint8_t { lpcm, appleLossless, aac, aacHe, aacEld, appleIma4 };

/// What a media writer can do about a format. Named after the framework that hosts use; the tool encodes with FFmpeg
/// and offers what that has.
enum class AVFoundationAudioEncodingSupportLevel : std::uint8_t {
    /// From samples.
    fullyEncodable,
    /// Only packets that are coded already go into a file.
    passthroughCapable,
    /// Neither.
    unencodable,
    /// Not known before a writer is asked. No format of the table is.
    unknown,
};

template <>
inline constexpr auto caseTable<AVFoundationAudioEncodingSupportLevel> =
    std::to_array<Case<AVFoundationAudioEncodingSupportLevel>>({
        {AVFoundationAudioEncodingSupportLevel::fullyEncodable, "fullyEncodable", "can be encoded"},
        {AVFoundationAudioEncodingSupportLevel::passthroughCapable, "passthroughCapable", "can be passed through only"},
        {AVFoundationAudioEncodingSupportLevel::unencodable, "unencodable", "cannot be written"},
        {AVFoundationAudioEncodingSupportLevel::unknown, "unknown", "unknown"},
    });
static_assert(isComplete<AVFoundationAudioEncodingSupportLevel>(caseTable<AVFoundationAudioEncodingSupportLevel>));

/// A row of the table: the format's code in QuickTime and Core Audio, its value of "-acodec" and its support level. The
/// equivalents differ: the code "aac " has a blank, the value has not.
struct AudioFormatCase : Case<OrvaneAudioFormat> {
    FourCharacterCode coreAudioEquivalent;
    const OAVTranscodeArgumentAudioFormatValue* outputFormat;
    AVFoundationAudioEncodingSupportLevel avEncodingSupportLevel;
};

template <>
inline constexpr auto caseTable<OrvaneAudioFormat> = std::to_array<AudioFormatCase>({
    {{OrvaneAudioFormat::lpcm, OAVLpcmAudioFormatValue.rawValue(), "Linear PCM"},
     "lpcm",
     &OAVLpcmAudioFormatValue,
     AVFoundationAudioEncodingSupportLevel::fullyEncodable},
    {{OrvaneAudioFormat::appleLossless, OAVAppleLosslessAudioFormatValue.rawValue(), "Apple Lossless"},
     "alac",
     &OAVAppleLosslessAudioFormatValue,
     AVFoundationAudioEncodingSupportLevel::fullyEncodable},
    {{OrvaneAudioFormat::aac, OAVAacAudioFormatValue.rawValue(), "AAC"},
     "aac ",
     &OAVAacAudioFormatValue,
     AVFoundationAudioEncodingSupportLevel::fullyEncodable},
    {{OrvaneAudioFormat::aacHe, OAVAacHEAudioFormatValue.rawValue(), "HE-AAC"},
     "aach",
     &OAVAacHEAudioFormatValue,
     AVFoundationAudioEncodingSupportLevel::fullyEncodable},
    {{OrvaneAudioFormat::aacEld, OAVAacELDLosslessAudioFormatValue.rawValue(), "AAC-ELD"},
     "aace",
     &OAVAacELDLosslessAudioFormatValue,
     AVFoundationAudioEncodingSupportLevel::passthroughCapable},
    {{OrvaneAudioFormat::appleIma4, OAVAppleIMA41ADPCMAudioFormatValue.rawValue(), "IMA 4:1 ADPCM"},
     "ima4",
     &OAVAppleIMA41ADPCMAudioFormatValue,
     AVFoundationAudioEncodingSupportLevel::passthroughCapable},
});
static_assert(isComplete<OrvaneAudioFormat>(caseTable<OrvaneAudioFormat>));

/// The format's code in QuickTime and Core Audio; audioFormatFromCoreAudio() is the way back.
[[nodiscard]] constexpr FourCharacterCode coreAudioEquivalent(OrvaneAudioFormat format) noexcept {
    return caseOf(format).coreAudioEquivalent;
}
/// The value of "-acodec", a constant.
[[nodiscard]] constexpr const OAVTranscodeArgumentAudioFormatValue& outputFormat(OrvaneAudioFormat format) noexcept {
    return *caseOf(format).outputFormat;
}
/// What a media writer can do with the format; `fullyEncodable` is what encodingReplacement() asks for.
[[nodiscard]] constexpr AVFoundationAudioEncodingSupportLevel avEncodingSupportLevel(
    OrvaneAudioFormat format) noexcept {
    return caseOf(format).avEncodingSupportLevel;
}
/// The format's name for people.
[[nodiscard]] constexpr std::string_view formatDescription(OrvaneAudioFormat format) noexcept {
    return description(format);
}

/// The format with this code, or none.
[[nodiscard]] CORVEX_EXPORT std::optional<OrvaneAudioFormat> audioFormatFromCoreAudio(FourCharacterCode code) noexcept;

/// The format to encode where a source of the given code cannot be kept as it is. Linear PCM, Apple Lossless, AAC and
/// HE-AAC answer themselves.
/// `preserveLossless` asks that nothing more is lost: companded and ADPCM sources become linear PCM, AC-3 becomes Apple
/// Lossless. Without it they become AAC, as other coded sources do either way. A code that is not known becomes linear
/// PCM.
[[nodiscard]] CORVEX_EXPORT OrvaneAudioFormat encodingReplacement(FourCharacterCode coreAudioFormat,
                                                                  bool preserveLossless) noexcept;

}  // namespace corvex::inline v0

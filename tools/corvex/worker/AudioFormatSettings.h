#pragma once

#include <span>

#include <Corvex/exported/OAVTranscodeArgumentAudioFormatValue.h>
#include <tools/corvex/worker/FFmpeg.h>

namespace corvex::tool {

/// How an audio format value is encoded by the media libraries.
struct AudioFormatSettings {
    OAVTranscodeArgumentAudioFormatValue format;
    const char* encoder;      ///< The encoder's name in libavcodec; nullptr where they have none.
    const char* deepEncoder;  ///< For sources of more than 16 bits; nullptr: the same.
    int maximumChannels;
};

[[nodiscard]] std::span<const AudioFormatSettings> allAudioFormatSettings() noexcept;

/// The settings of a format value. Throws UsageError for an unknown one and JobError for one that cannot be encoded
/// here, naming it.
[[nodiscard]] const AudioFormatSettings& audioFormatSettings(const OAVTranscodeArgumentAudioFormatValue& format);

[[nodiscard]] bool canEncode(const AudioFormatSettings& settings) noexcept;

}  // namespace corvex::tool

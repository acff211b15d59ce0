#pragma once

#include <span>

#include <Corvex/exported/OAVTranscodeArgumentAudioFormatValue.h>
#include <tools/corvex/worker/FFmpeg.h>

namespace corvex::tool {

/// How an audio format value is encoded by the media libraries.
struct AudioFormatSettings {
    OAVTranscodeArgumentAudioFormatValue format;
    const char* encoder;    ///< The encoder's name in libavcodec; nullptr where they have none.
    const char* encoder24;  ///< That for 24 bits; nullptr: the same where `has24`.
    const char* encoder32;  ///< That for 32 bits, or nullptr.
    bool has24;             ///< Whether samples of 24 bits can be kept; otherwise the format has no depth to choose.
    bool hasBitRate;        ///< Whether its bit rate can be chosen.
    int maximumChannels;
};

/// The encoder for samples of 16, 24 or 32 bits; nullptr where the format has no such depth to choose.
[[nodiscard]] const char* encoderOf(const AudioFormatSettings& settings, int bitsPerSample) noexcept;
/// The depths that can be chosen, for a message.
[[nodiscard]] std::string depthsText(const AudioFormatSettings& settings);

[[nodiscard]] std::span<const AudioFormatSettings> allAudioFormatSettings() noexcept;

/// The settings of a format value. Throws UsageError for an unknown one and JobError for one that cannot be encoded
/// here, naming it.
[[nodiscard]] const AudioFormatSettings& audioFormatSettings(const OAVTranscodeArgumentAudioFormatValue& format);

[[nodiscard]] bool canEncode(const AudioFormatSettings& settings) noexcept;

}  // namespace corvex::tool

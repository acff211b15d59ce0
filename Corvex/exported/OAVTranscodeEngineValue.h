#pragma once

#include <array>
#include <span>

#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// The engine that runs a transcode. Any text is legal. No flag of the vocabulary carries it;
/// OAVUnifiedCodecDecoderValue is for decoders.
class OAVTranscodeEngineValue : public TypedString<OAVTranscodeEngineValue> {
public:
    using TypedString::TypedString;

    /// The known values in their fixed order.
    [[nodiscard]] static constexpr std::span<const OAVTranscodeEngineValue> allCases() noexcept;
};

/// The media framework of Apple's systems.
inline constexpr OAVTranscodeEngineValue OAVTranscodeEngineAVFoundation{"av_found"};
/// The FFmpeg libraries; any system.
inline constexpr OAVTranscodeEngineValue OAVTranscodeEngineFFmpeg{"ffmpeg"};

inline constexpr std::array allTranscodeEngineValues{
    OAVTranscodeEngineAVFoundation,
    OAVTranscodeEngineFFmpeg,
};

constexpr std::span<const OAVTranscodeEngineValue> OAVTranscodeEngineValue::allCases() noexcept {
    return allTranscodeEngineValues;
}

}  // namespace corvex::inline v0

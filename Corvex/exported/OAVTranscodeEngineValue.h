#pragma once

#include <array>

#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// The engine that runs a transcode. Any text is legal. No flag of the vocabulary carries it;
/// OAVUnifiedCodecDecoderValue is for decoders.
class OAVTranscodeEngineValue : public TypedString<OAVTranscodeEngineValue> {
public:
    using TypedString::TypedString;
};

/// The media framework of Apple's systems.
inline constexpr OAVTranscodeEngineValue OAVTranscodeEngineAVFoundation{"av_found"};
/// The FFmpeg libraries; any system.
inline constexpr OAVTranscodeEngineValue OAVTranscodeEngineFFmpeg{"ffmpeg"};

/// The known values in their fixed order.
template <>
inline constexpr std::array knownValues<OAVTranscodeEngineValue>{
    OAVTranscodeEngineAVFoundation,
    OAVTranscodeEngineFFmpeg,
};

}  // namespace corvex::inline v0

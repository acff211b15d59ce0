#pragma once

#include <array>

#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// The engine that decodes video ("-v_decoder") or audio ("-a_decoder"). Any text is legal.
class OAVUnifiedCodecDecoderValue : public TypedString<OAVUnifiedCodecDecoderValue> {
public:
    using TypedString::TypedString;
};

/// The media framework of Apple's systems.
inline constexpr OAVUnifiedCodecDecoderValue OAVUnifiedCodecDecoderAVFoundation{"av_found"};
/// The FFmpeg libraries; any system.
inline constexpr OAVUnifiedCodecDecoderValue OAVUnifiedCodecDecoderFFmpeg{"ffmpeg"};
/// The hardware codecs of Apple's systems; video only.
inline constexpr OAVUnifiedCodecDecoderValue OAVUnifiedCodecDecoderVideoToolkit{"vt"};
/// Sony's own kit for footage of its cameras.
inline constexpr OAVUnifiedCodecDecoderValue OAVUnifiedCodecDecoderSonySMDK{"smdk"};

/// The known values in their fixed order.
template <>
inline constexpr std::array knownValues<OAVUnifiedCodecDecoderValue>{
    OAVUnifiedCodecDecoderAVFoundation,
    OAVUnifiedCodecDecoderFFmpeg,
    OAVUnifiedCodecDecoderVideoToolkit,
    OAVUnifiedCodecDecoderSonySMDK,
};

}  // namespace corvex::inline v0

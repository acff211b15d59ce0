#pragma once

#include <array>
#include <span>

#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// The engine that decodes video ("-v_decoder") or audio ("-a_decoder"). Any text is legal.
class OAVUnifiedCodecDecoderValue : public TypedString<OAVUnifiedCodecDecoderValue> {
public:
    using TypedString::TypedString;

    /// The known values in their fixed order.
    [[nodiscard]] static constexpr std::span<const OAVUnifiedCodecDecoderValue> allCases() noexcept;
};

/// The media framework of Apple's systems.
inline constexpr OAVUnifiedCodecDecoderValue OAVUnifiedCodecDecoderAVFoundation{"av_found"};
/// The FFmpeg libraries; any system.
inline constexpr OAVUnifiedCodecDecoderValue OAVUnifiedCodecDecoderFFmpeg{"ffmpeg"};
/// The hardware codecs of Apple's systems; video only.
inline constexpr OAVUnifiedCodecDecoderValue OAVUnifiedCodecDecoderVideoToolkit{"vt"};
/// Sony's own kit for footage of its cameras.
inline constexpr OAVUnifiedCodecDecoderValue OAVUnifiedCodecDecoderSonySMDK{"smdk"};

inline constexpr std::array allUnifiedCodecDecoderValues{
    OAVUnifiedCodecDecoderAVFoundation,
    OAVUnifiedCodecDecoderFFmpeg,
    OAVUnifiedCodecDecoderVideoToolkit,
    OAVUnifiedCodecDecoderSonySMDK,
};

constexpr std::span<const OAVUnifiedCodecDecoderValue> OAVUnifiedCodecDecoderValue::allCases() noexcept {
    return allUnifiedCodecDecoderValues;
}

}  // namespace corvex::inline v0

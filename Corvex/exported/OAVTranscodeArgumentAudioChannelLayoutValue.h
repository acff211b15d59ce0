#pragma once

#include <array>
#include <span>

#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// The audio channel layout that a transcode writes ("-acl"). Any text is legal.
class OAVTranscodeArgumentAudioChannelLayoutValue : public TypedString<OAVTranscodeArgumentAudioChannelLayoutValue> {
public:
    using TypedString::TypedString;

    /// The known values in their fixed order.
    [[nodiscard]] static constexpr std::span<const OAVTranscodeArgumentAudioChannelLayoutValue> allCases() noexcept;
};

inline constexpr OAVTranscodeArgumentAudioChannelLayoutValue OAVMonoAudioLayout{"mono"};
inline constexpr OAVTranscodeArgumentAudioChannelLayoutValue OAVStereoAudioLayout{"stereo"};
inline constexpr OAVTranscodeArgumentAudioChannelLayoutValue OAVQuadraphonicAudioLayout{"quad"};
inline constexpr OAVTranscodeArgumentAudioChannelLayoutValue OAVPentagonalAudioLayout{"pent"};
inline constexpr OAVTranscodeArgumentAudioChannelLayoutValue OAVHexagonalAudioLayout{"hex"};
inline constexpr OAVTranscodeArgumentAudioChannelLayoutValue OAVOctagonalAudioLayout{"oct"};

inline constexpr std::array allTranscodeArgumentAudioChannelLayoutValues{
    OAVMonoAudioLayout,       OAVStereoAudioLayout,    OAVQuadraphonicAudioLayout,
    OAVPentagonalAudioLayout, OAVHexagonalAudioLayout, OAVOctagonalAudioLayout,
};

constexpr std::span<const OAVTranscodeArgumentAudioChannelLayoutValue>
OAVTranscodeArgumentAudioChannelLayoutValue::allCases() noexcept {
    return allTranscodeArgumentAudioChannelLayoutValues;
}

}  // namespace corvex::inline v0

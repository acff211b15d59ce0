#pragma once

#include <array>

#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// The audio channels that a transcode writes ("-acl"), by the name of a layout. The flag may also hold a number of
/// channels, and any text is legal.
class OAVTranscodeArgumentAudioChannelLayoutValue : public TypedString<OAVTranscodeArgumentAudioChannelLayoutValue> {
public:
    using TypedString::TypedString;
};

/// One channel.
inline constexpr OAVTranscodeArgumentAudioChannelLayoutValue OAVMonoAudioLayout{"mono"};
/// Two: left, right.
inline constexpr OAVTranscodeArgumentAudioChannelLayoutValue OAVStereoAudioLayout{"stereo"};
/// Four, in the corners of a square.
inline constexpr OAVTranscodeArgumentAudioChannelLayoutValue OAVQuadraphonicAudioLayout{"quad"};
/// Five, on a ring; unlike 5.1 without a channel of low frequencies.
inline constexpr OAVTranscodeArgumentAudioChannelLayoutValue OAVPentagonalAudioLayout{"pent"};
/// Six, on a ring.
inline constexpr OAVTranscodeArgumentAudioChannelLayoutValue OAVHexagonalAudioLayout{"hex"};
/// Eight, on a ring.
inline constexpr OAVTranscodeArgumentAudioChannelLayoutValue OAVOctagonalAudioLayout{"oct"};

/// The known values in their fixed order, by rising number of channels.
template <>
inline constexpr std::array knownValues<OAVTranscodeArgumentAudioChannelLayoutValue>{
    OAVMonoAudioLayout,       OAVStereoAudioLayout,    OAVQuadraphonicAudioLayout,
    OAVPentagonalAudioLayout, OAVHexagonalAudioLayout, OAVOctagonalAudioLayout,
};

}  // namespace corvex::inline v0

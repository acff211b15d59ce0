#pragma once

#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// The preset that a transcode starts from ("-preset"). Any text is legal; parsing expands those that
/// TranscodeCliPreset knows and keeps any other as it is.
class OAVTranscodePresetValue : public TypedString<OAVTranscodePresetValue> {
public:
    using TypedString::TypedString;
};

/// A small H.264 proxy for upload and review.
inline constexpr OAVTranscodePresetValue OAVOrvaneCloudPresetValue{"orvane_cloud"};
/// A master in ProRes 4444 XQ with linear PCM.
inline constexpr OAVTranscodePresetValue OAVOrvaneProRes4444XQPresetValue{"orvane_4444xq"};

}  // namespace corvex::inline v0

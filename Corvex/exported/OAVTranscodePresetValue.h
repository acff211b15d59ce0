#pragma once

#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// The preset that a transcode starts from ("-preset"). Any text is legal.
class OAVTranscodePresetValue : public TypedString<OAVTranscodePresetValue> {
public:
    using TypedString::TypedString;
};

inline constexpr OAVTranscodePresetValue OAVOrvaneCloudPresetValue{"orvane_cloud"};
inline constexpr OAVTranscodePresetValue OAVOrvaneProRes4444XQPresetValue{"orvane_4444xq"};

}  // namespace corvex::inline v0

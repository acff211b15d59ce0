#pragma once

#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// A GPU platform, as "-gpu_trans" may name one. Any text is legal.
class OAVGpuPlatformValue : public TypedString<OAVGpuPlatformValue> {
public:
    using TypedString::TypedString;
};

inline constexpr OAVGpuPlatformValue OAVGpuPlatformOpenCLFlag{"opencl"};
inline constexpr OAVGpuPlatformValue OAVGpuPlatformMetalFlag{"metal"};
inline constexpr OAVGpuPlatformValue OAVGpuPlatformDefaultPlatformFlag{"default"};

}  // namespace corvex::inline v0

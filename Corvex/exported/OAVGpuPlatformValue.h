#pragma once

#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// A GPU platform, as "-gpu_trans" may name one in its list beside the numbers of devices; reading the numbers skips
/// it. Any text is legal.
class OAVGpuPlatformValue : public TypedString<OAVGpuPlatformValue> {
public:
    using TypedString::TypedString;
};

/// OpenCL of the Khronos Group; any system.
inline constexpr OAVGpuPlatformValue OAVGpuPlatformOpenCLFlag{"opencl"};
/// Metal; Apple's systems only.
inline constexpr OAVGpuPlatformValue OAVGpuPlatformMetalFlag{"metal"};
/// Whatever the transcoder prefers on its machine.
inline constexpr OAVGpuPlatformValue OAVGpuPlatformDefaultPlatformFlag{"default"};

}  // namespace corvex::inline v0

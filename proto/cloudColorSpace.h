#pragma once

#include <optional>

#include <Corvex/color/OrvaneVideoColorSpace.h>
#include <proto/corvex_cloud.pb.h>

namespace corvex::inline v0 {

/// The colour space that a job's conversion options name; none for unspecified, unknown and unrecognised values.
[[nodiscard]] inline std::optional<OrvaneVideoColorSpace> colorSpaceOf(Cloud_ColorSpace colorSpace) noexcept {
    return colorSpaceFromCloudValue(static_cast<int>(colorSpace));
}

}  // namespace corvex::inline v0

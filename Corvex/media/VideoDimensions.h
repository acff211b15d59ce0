#pragma once

#include <cstdint>

namespace corvex::inline v0 {

/// Width and height of a picture in whole pixels, as a raster has them. Not checked: 0 and below are no raster. A plain
/// value.
struct VideoDimensions {
    std::int32_t width = 0;
    std::int32_t height = 0;

    constexpr VideoDimensions() noexcept = default;
    constexpr VideoDimensions(std::int32_t w, std::int32_t h) noexcept : width(w), height(h) {}
    friend constexpr bool operator==(VideoDimensions, VideoDimensions) noexcept = default;
};

}  // namespace corvex::inline v0

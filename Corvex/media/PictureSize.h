#pragma once

namespace corvex::inline v0 {

/// Width and height of a picture in pixels, as a user gives them: not necessarily whole, nor checked. VideoDimensions
/// is the checked, whole form. A plain value.
struct PictureSize {
    double width = 0;
    double height = 0;

    constexpr PictureSize() noexcept = default;
    constexpr PictureSize(double w, double h) noexcept : width(w), height(h) {}
    friend constexpr bool operator==(PictureSize, PictureSize) noexcept = default;
};

}  // namespace corvex::inline v0

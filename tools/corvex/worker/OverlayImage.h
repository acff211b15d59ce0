#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace corvex::tool {

/// A picture to be laid over others: rows of red, green, blue and alpha, each 0 to 65535, colours not multiplied by
/// alpha. Its R'G'B' is that of the pictures below it.
struct OverlayImage {
    using Pixel = std::array<std::uint16_t, 4>;

    OverlayImage() = default;
    OverlayImage(int imageWidth, int imageHeight)
        : width(imageWidth),
          height(imageHeight),
          pixels(static_cast<std::size_t>(imageWidth) * static_cast<std::size_t>(imageHeight)) {}

    /// Reads an image file (PNG, TIFF or DPX) and brings it to `scale` times its size. Throws JobError that names the
    /// file. A LibraryMessages must live.
    [[nodiscard]] static OverlayImage read(const std::string& path, double scale);

    [[nodiscard]] const Pixel& at(int x, int y) const {
        return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)];
    }
    [[nodiscard]] Pixel& at(int x, int y) {
        return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)];
    }

    int width = 0, height = 0;
    std::vector<Pixel> pixels;
};

}  // namespace corvex::tool

#pragma once

#include <optional>
#include <string_view>

#include <Corvex/color/Color.h>
#include <tools/corvex/worker/OverlayImage.h>

namespace corvex::tool {

/// How text is drawn. Colours are taken as R'G'B' of the picture below.
struct TextStyle {
    int size = 0;  ///< Height of the font's em square, in pixels.
    Color font = Color::gray(1);
    std::optional<Color> box;  ///< What is behind the text; none: the picture itself.
    int padding = 0;           ///< Room left and right of the text, in pixels.
    bool isMonospaced = false;
};

/// Draws text of one line or more. Throws JobError where the machine's fonts lack one of its characters.
[[nodiscard]] OverlayImage textImage(std::string_view text, const TextStyle& style);

}  // namespace corvex::tool

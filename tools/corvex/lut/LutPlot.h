#pragma once

#include <tools/corvex/image/StillImage.h>
#include <tools/corvex/lut/LutFacts.h>

namespace corvex::tool {

/// The places of what is drawn, in pixels from the top left corner.
struct LutPlotLayout {
    static constexpr int margin = 16, curveSide = 512;
    static constexpr int swatchWidth = 48, swatchHeight = curveSide / 8;
    static constexpr int swatchLeft = 2 * margin + curveSide;
    static constexpr int height = 2 * margin + curveSide;
    static constexpr int tableWidth = 2 * margin + curveSide, cubeWidth = tableWidth + 2 * swatchWidth + margin;
};

/// A table as a picture of 8 bits. Left: its answers to greys from black (left) to white (right), a curve for each
/// channel, which add up to white where they meet. Right, for cubes: a row for each corner in the order black, red, green,
/// yellow, blue, magenta, cyan, white; beside the corner's own colour the answer to it.
[[nodiscard]] StillImage plotted(const LutFacts& facts);

}  // namespace corvex::tool

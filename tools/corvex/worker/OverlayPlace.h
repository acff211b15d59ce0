#pragma once

#include <Corvex/exported/OAVTranscodeArgumentOverlayAnchorValue.h>

namespace corvex::tool {

/// The upper left corner of what is laid over a picture.
struct OverlayPlace {
    int x = 0, y = 0;

    /// Where `anchor` puts something of a size into a picture: within the safe title area, the inner 90 % of either
    /// axis (SMPTE ST 2046-1), or where it is too large for that, as near as the picture allows. Coordinates are
    /// multiples of the steps. Expects that it fits the picture.
    [[nodiscard]] static OverlayPlace make(const OAVTranscodeArgumentOverlayAnchorValue& anchor, int width, int height,
                                           int pictureWidth, int pictureHeight, int stepX, int stepY);
};

}  // namespace corvex::tool

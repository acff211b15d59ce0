#include <tools/corvex/worker/OverlayPlace.h>

#include <algorithm>
#include <string_view>

namespace corvex::tool {
namespace {

enum class Side { low, middle, high };

int along(Side side, int length, int whole, int step) {
    const int room = whole - length;
    const int margin = std::min(whole / 20, room / 2);
    const int position = side == Side::low ? margin : side == Side::high ? room - margin : room / 2;
    return position / step * step;
}

}  // namespace

OverlayPlace OverlayPlace::make(const OAVTranscodeArgumentOverlayAnchorValue& anchor, int width, int height,
                                int pictureWidth, int pictureHeight, int stepX, int stepY) {
    const auto isOneOf = [&](const auto&... anchors) { return ((anchor == anchors) || ...); };
    const Side horizontal = isOneOf(OAVAnchorTopLeft, OAVAnchorCenterLeft, OAVAnchorBottomLeft)      ? Side::low
                            : isOneOf(OAVAnchorTopRight, OAVAnchorCenterRight, OAVAnchorBottomRight) ? Side::high
                                                                                                     : Side::middle;
    const Side vertical = isOneOf(OAVAnchorTopLeft, OAVAnchorTopCenter, OAVAnchorTopRight)            ? Side::low
                          : isOneOf(OAVAnchorBottomLeft, OAVAnchorBottomCenter, OAVAnchorBottomRight) ? Side::high
                                                                                                      : Side::middle;
    return {along(horizontal, width, pictureWidth, stepX), along(vertical, height, pictureHeight, stepY)};
}

}  // namespace corvex::tool

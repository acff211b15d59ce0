#pragma once

#include <array>

#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// One of nine places in a picture: top, centre or bottom, then left, centre or right. For the crop, timecode burn-in
/// and watermark anchors. Any text is legal; left and right are the viewer's.
class OAVTranscodeArgumentOverlayAnchorValue : public TypedString<OAVTranscodeArgumentOverlayAnchorValue> {
public:
    using TypedString::TypedString;
};

/// The first letter is the row: t for top,
inline constexpr OAVTranscodeArgumentOverlayAnchorValue OAVAnchorTopLeft{"tl"};
inline constexpr OAVTranscodeArgumentOverlayAnchorValue OAVAnchorTopCenter{"tc"};
inline constexpr OAVTranscodeArgumentOverlayAnchorValue OAVAnchorTopRight{"tr"};
/// c for centre,
inline constexpr OAVTranscodeArgumentOverlayAnchorValue OAVAnchorCenterLeft{"cl"};
/// one letter alone for the middle of the picture,
inline constexpr OAVTranscodeArgumentOverlayAnchorValue OAVAnchorCenter{"c"};
inline constexpr OAVTranscodeArgumentOverlayAnchorValue OAVAnchorCenterRight{"cr"};
/// b for bottom; the second letter is l for left, c for centre or r for right.
inline constexpr OAVTranscodeArgumentOverlayAnchorValue OAVAnchorBottomLeft{"bl"};
inline constexpr OAVTranscodeArgumentOverlayAnchorValue OAVAnchorBottomCenter{"bc"};
inline constexpr OAVTranscodeArgumentOverlayAnchorValue OAVAnchorBottomRight{"br"};

/// The known values in their fixed order, row by row from the top.
template <>
inline constexpr std::array knownValues<OAVTranscodeArgumentOverlayAnchorValue>{
    OAVAnchorTopLeft,     OAVAnchorTopCenter,  OAVAnchorTopRight,     OAVAnchorCenterLeft,  OAVAnchorCenter,
    OAVAnchorCenterRight, OAVAnchorBottomLeft, OAVAnchorBottomCenter, OAVAnchorBottomRight,
};

}  // namespace corvex::inline v0

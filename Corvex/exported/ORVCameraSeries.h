#pragma once

#include <array>

#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// A family of cameras, as users read it and metadata store it. Any text is legal. Comparisons are letter for letter: a
/// text from a file is best compared without regard to case.
class ORVCameraSeries : public TypedString<ORVCameraSeries> {
public:
    using TypedString::TypedString;
};

/// Digital cinema: ProRes or ARRIRAW. "Arri" here, "ARRI" as a maker.
inline constexpr ORVCameraSeries ORVCameraSeriesArriAlexa{"Arri Alexa"};
/// Documentary sibling of the former.
inline constexpr ORVCameraSeries ORVCameraSeriesArriAmira{"Arri Amira"};
/// Blackmagic RAW or ProRes.
inline constexpr ORVCameraSeries ORVCameraSeriesBlackmagicUrsa{"Blackmagic URSA"};
/// Photo and cinema cameras with Canon's lens mount.
inline constexpr ORVCameraSeries ORVCameraSeriesCanonEOS{"Canon EOS"};
/// Action cameras: H.264 or H.265 in MP4.
inline constexpr ORVCameraSeries ORVCameraSeriesGoProHero{"GoPro Hero"};
/// Professional camcorders that record AVCHD.
inline constexpr ORVCameraSeries ORVCameraSeriesPanasonicAVCCAM{"Panasonic AVCCAM"};
/// Broadcast cameras that record on P2 cards.
inline constexpr ORVCameraSeries ORVCameraSeriesPanasonicP2{"Panasonic P2"};
/// Cinema cameras with variable frame rates.
inline constexpr ORVCameraSeries ORVCameraSeriesPanasonicVariCam{"Panasonic VariCam"};
/// RED's modular cameras of the second generation: REDCODE RAW.
inline constexpr ORVCameraSeries ORVCameraSeriesRedDSMC2{"RED DSMC2"};
/// Professional camcorders that record AVCHD.
inline constexpr ORVCameraSeries ORVCameraSeriesSonyNXCAM{"Sony NXCAM"};
/// Named after Sony's H.264 format, not after a body.
inline constexpr ORVCameraSeries ORVCameraSeriesSonyXAVC{"Sony XAVC"};
/// Broadcast cameras: MPEG-2 in MXF on discs or cards.
inline constexpr ORVCameraSeries ORVCameraSeriesSonyXDCAM{"Sony XDCAM"};

/// The known series in their fixed order.
template <>
inline constexpr std::array knownValues<ORVCameraSeries>{
    ORVCameraSeriesArriAlexa,   ORVCameraSeriesArriAmira,        ORVCameraSeriesBlackmagicUrsa,
    ORVCameraSeriesCanonEOS,    ORVCameraSeriesGoProHero,        ORVCameraSeriesPanasonicAVCCAM,
    ORVCameraSeriesPanasonicP2, ORVCameraSeriesPanasonicVariCam, ORVCameraSeriesRedDSMC2,
    ORVCameraSeriesSonyNXCAM,   ORVCameraSeriesSonyXAVC,         ORVCameraSeriesSonyXDCAM,
};

}  // namespace corvex::inline v0

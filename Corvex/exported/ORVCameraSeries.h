#pragma once

#include <array>
#include <span>

#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// A family of cameras, as users read it and metadata store it. Any text is legal.
class ORVCameraSeries : public TypedString<ORVCameraSeries> {
public:
    using TypedString::TypedString;

    /// The known series in their fixed order.
    [[nodiscard]] static constexpr std::span<const ORVCameraSeries> allCases() noexcept;
};

inline constexpr ORVCameraSeries ORVCameraSeriesArriAlexa{"Arri Alexa"};
inline constexpr ORVCameraSeries ORVCameraSeriesArriAmira{"Arri Amira"};
inline constexpr ORVCameraSeries ORVCameraSeriesBlackmagicUrsa{"Blackmagic URSA"};
inline constexpr ORVCameraSeries ORVCameraSeriesCanonEOS{"Canon EOS"};
inline constexpr ORVCameraSeries ORVCameraSeriesGoProHero{"GoPro Hero"};
inline constexpr ORVCameraSeries ORVCameraSeriesPanasonicAVCCAM{"Panasonic AVCCAM"};
inline constexpr ORVCameraSeries ORVCameraSeriesPanasonicP2{"Panasonic P2"};
inline constexpr ORVCameraSeries ORVCameraSeriesPanasonicVariCam{"Panasonic VariCam"};
inline constexpr ORVCameraSeries ORVCameraSeriesRedDSMC2{"RED DSMC2"};
inline constexpr ORVCameraSeries ORVCameraSeriesSonyNXCAM{"Sony NXCAM"};
inline constexpr ORVCameraSeries ORVCameraSeriesSonyXAVC{"Sony XAVC"};
inline constexpr ORVCameraSeries ORVCameraSeriesSonyXDCAM{"Sony XDCAM"};

inline constexpr std::array allCameraSeries{
    ORVCameraSeriesArriAlexa,   ORVCameraSeriesArriAmira,        ORVCameraSeriesBlackmagicUrsa,
    ORVCameraSeriesCanonEOS,    ORVCameraSeriesGoProHero,        ORVCameraSeriesPanasonicAVCCAM,
    ORVCameraSeriesPanasonicP2, ORVCameraSeriesPanasonicVariCam, ORVCameraSeriesRedDSMC2,
    ORVCameraSeriesSonyNXCAM,   ORVCameraSeriesSonyXAVC,         ORVCameraSeriesSonyXDCAM,
};

constexpr std::span<const ORVCameraSeries> ORVCameraSeries::allCases() noexcept { return allCameraSeries; }

}  // namespace corvex::inline v0

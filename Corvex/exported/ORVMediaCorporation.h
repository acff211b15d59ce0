#pragma once

#include <array>

#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// A maker of cameras, recorders or formats, as users read it and metadata store it. Any text is legal.
class ORVMediaCorporation : public TypedString<ORVMediaCorporation> {
public:
    using TypedString::TypedString;
};

/// CinemaDNG, Cube look-up tables.
inline constexpr ORVMediaCorporation ORVMediaCorporationAdobe{"Adobe"};
/// QuickTime, ProRes, Apple Lossless.
inline constexpr ORVMediaCorporation ORVMediaCorporationApple{"Apple"};
/// Cameras; ARRIRAW, LogC.
inline constexpr ORVMediaCorporation ORVMediaCorporationArri{"ARRI"};
/// Editing systems; DNxHD, DNxHR.
inline constexpr ORVMediaCorporation ORVMediaCorporationAvid{"Avid"};
/// Blackmagic Design: cameras, recorders; Blackmagic RAW.
inline constexpr ORVMediaCorporation ORVMediaCorporationBlackMagic{"Blackmagic"};
/// Cameras; Cinema RAW Light, Canon Log.
inline constexpr ORVMediaCorporation ORVMediaCorporationCanon{"Canon"};
/// Recorders and drives of ARRI cameras; High Density Encoding.
inline constexpr ORVMediaCorporation ORVMediaCorporationCodex{"CODEX"};
/// Recorders (Odyssey).
inline constexpr ORVMediaCorporation ORVMediaCorporationConvergentDesign{"Convergent Design"};
/// Drones and gimbal cameras.
inline constexpr ORVMediaCorporation ORVMediaCorporationDJI{"DJI"};
/// Panoramic and action cameras.
inline constexpr ORVMediaCorporation ORVMediaCorporationInsta360{"Insta360"};
/// Action cameras; CineForm.
inline constexpr ORVMediaCorporation ORVMediaCorporationGoPro{"GoPro"};
/// Camcorders.
inline constexpr ORVMediaCorporation ORVMediaCorporationJVC{"JVC"};
/// Cameras; N-RAW.
inline constexpr ORVMediaCorporation ORVMediaCorporationNikon{"Nikon"};
/// Cameras; P2, VariCam, AVCCAM.
inline constexpr ORVMediaCorporation ORVMediaCorporationPanasonic{"Panasonic"};
/// High-speed cameras of Vision Research; the brand stands for the maker.
inline constexpr ORVMediaCorporation ORVMediaCorporationPhantom{"Phantom"};
/// Cameras; REDCODE RAW.
inline constexpr ORVMediaCorporation ORVMediaCorporationRED{"RED"};
/// Cameras; XDCAM, XAVC, NXCAM.
inline constexpr ORVMediaCorporation ORVMediaCorporationSony{"Sony"};

/// The known makers in their fixed order. For people, MediaFormatConstants lists them by name.
template <>
inline constexpr std::array knownValues<ORVMediaCorporation>{
    ORVMediaCorporationAdobe,      ORVMediaCorporationApple,
    ORVMediaCorporationArri,       ORVMediaCorporationAvid,
    ORVMediaCorporationBlackMagic, ORVMediaCorporationCanon,
    ORVMediaCorporationCodex,      ORVMediaCorporationConvergentDesign,
    ORVMediaCorporationDJI,        ORVMediaCorporationInsta360,
    ORVMediaCorporationGoPro,      ORVMediaCorporationJVC,
    ORVMediaCorporationNikon,      ORVMediaCorporationPanasonic,
    ORVMediaCorporationPhantom,    ORVMediaCorporationRED,
    ORVMediaCorporationSony,
};

}  // namespace corvex::inline v0

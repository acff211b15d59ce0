#pragma once

#include <array>
#include <span>

#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// A maker of cameras, recorders or formats, as users read it and metadata store it. Any text is legal.
class ORVMediaCorporation : public TypedString<ORVMediaCorporation> {
public:
    using TypedString::TypedString;

    /// The known makers in their fixed order.
    [[nodiscard]] static constexpr std::span<const ORVMediaCorporation> allCases() noexcept;
};

inline constexpr ORVMediaCorporation ORVMediaCorporationAdobe{"Adobe"};
inline constexpr ORVMediaCorporation ORVMediaCorporationApple{"Apple"};
inline constexpr ORVMediaCorporation ORVMediaCorporationArri{"ARRI"};
inline constexpr ORVMediaCorporation ORVMediaCorporationAvid{"Avid"};
inline constexpr ORVMediaCorporation ORVMediaCorporationBlackMagic{"Blackmagic"};
inline constexpr ORVMediaCorporation ORVMediaCorporationCanon{"Canon"};
inline constexpr ORVMediaCorporation ORVMediaCorporationCodex{"CODEX"};
inline constexpr ORVMediaCorporation ORVMediaCorporationConvergentDesign{"Convergent Design"};
inline constexpr ORVMediaCorporation ORVMediaCorporationDJI{"DJI"};
inline constexpr ORVMediaCorporation ORVMediaCorporationInsta360{"Insta360"};
inline constexpr ORVMediaCorporation ORVMediaCorporationGoPro{"GoPro"};
inline constexpr ORVMediaCorporation ORVMediaCorporationJVC{"JVC"};
inline constexpr ORVMediaCorporation ORVMediaCorporationNikon{"Nikon"};
inline constexpr ORVMediaCorporation ORVMediaCorporationPanasonic{"Panasonic"};
inline constexpr ORVMediaCorporation ORVMediaCorporationPhantom{"Phantom"};
inline constexpr ORVMediaCorporation ORVMediaCorporationRED{"RED"};
inline constexpr ORVMediaCorporation ORVMediaCorporationSony{"Sony"};

inline constexpr std::array allMediaCorporations{
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

constexpr std::span<const ORVMediaCorporation> ORVMediaCorporation::allCases() noexcept { return allMediaCorporations; }

}  // namespace corvex::inline v0

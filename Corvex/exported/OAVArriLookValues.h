#pragma once

#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// Primaries that an ARRI look is rendered to ("-arri_cs"). Any text is legal, as cameras and looks outlive programs:
/// what is not known is passed on, not refused. The same holds for the three families below.
class OAVArriLookColorSpaceValue : public TypedString<OAVArriLookColorSpaceValue> {
public:
    using TypedString::TypedString;
};

/// ITU-R BT.709: high-definition television.
inline constexpr OAVArriLookColorSpaceValue OAVArriLookColorSpaceRec709{"rec709"};
/// ITU-R BT.2020: ultra-high-definition television.
inline constexpr OAVArriLookColorSpaceValue OAVArriLookColorSpaceRec2020{"rec2020"};
/// SMPTE RP 431-2: digital cinema projection. The white point is a flag of its own.
inline constexpr OAVArriLookColorSpaceValue OAVArriLookColorSpaceP3{"p3"};
/// ACES primaries 0 (SMPTE ST 2065-1): all that an eye can see, for archives and exchange.
inline constexpr OAVArriLookColorSpaceValue OAVArriLookColorSpaceAP0{"ap0"};
/// ARRI Wide Gamut 3, which goes with LogC3.
inline constexpr OAVArriLookColorSpaceValue OAVArriLookColorSpaceAWG3{"awg3"};
/// ARRI Wide Gamut 4, which goes with LogC4.
inline constexpr OAVArriLookColorSpaceValue OAVArriLookColorSpaceAWG4{"awg4"};

/// The tone curve that an ARRI look ends in ("-arri_curve"). Any text is legal.
class OAVArriLookCurveValue : public TypedString<OAVArriLookCurveValue> {
public:
    using TypedString::TypedString;
};

/// The display curve of ITU-R BT.1886, a power of 2.4: television in a dim room.
inline constexpr OAVArriLookCurveValue OAVArriCurveBT1886{"bt1886"};
/// The power of 2.6 of digital cinema (SMPTE RP 431-2).
inline constexpr OAVArriLookCurveValue OAVArriCurveDCI{"dci"};
/// SMPTE ST 2084: absolute luminance, up to 10,000 cd/m².
inline constexpr OAVArriLookCurveValue OAVArriCurvePQ{"pq"};
/// Hybrid log-gamma of ITU-R BT.2100: relative to the display's peak.
inline constexpr OAVArriLookCurveValue OAVArriCurveHLG{"hlg"};
/// The camera's own logarithm up to the ALEXA Mini LF; depends on the exposure index.
inline constexpr OAVArriLookCurveValue OAVArriCurveLogC3{"logc3"};
/// That of the ALEXA 35 and later ones; one curve for every exposure index.
inline constexpr OAVArriLookCurveValue OAVArriCurveLogC4{"logc4"};
/// Values in proportion to light.
inline constexpr OAVArriLookCurveValue OAVArriCurveLinear{"linear"};

/// White point of an ARRI look ("-arri_wp"). Any text is legal.
class OAVArriLookWhitePointValue : public TypedString<OAVArriLookWhitePointValue> {
public:
    using TypedString::TypedString;
};

/// About 6000 K, the white of ACES.
inline constexpr OAVArriLookWhitePointValue OAVArriWhitePointD60{"d60"};
/// The greenish white of cinema projectors, x 0.314, y 0.351 (SMPTE RP 431-2).
inline constexpr OAVArriLookWhitePointValue OAVArriWhitePointDCI{"dci"};
/// About 6500 K, x 0.3127, y 0.3290: television and computer displays.
inline constexpr OAVArriLookWhitePointValue OAVArriWhitePointD65{"d65"};

/// What to do with an invalid ARRI look ("-arri_inv_res"). Any text is legal.
class OAVArriLookResolutionValue : public TypedString<OAVArriLookResolutionValue> {
public:
    using TypedString::TypedString;
};

/// Render without a look.
inline constexpr OAVArriLookResolutionValue OAVArriLookResolutionIgnore{"ignore"};
/// Use      the first look that is valid.
inline constexpr OAVArriLookResolutionValue OAVArriLookResolutionFirst{"first"};

}  // namespace corvex::inline v0

#pragma once

#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// Colour space of an ARRI look ("-arri_cs"). Any text is legal.
class OAVArriLookColorSpaceValue : public TypedString<OAVArriLookColorSpaceValue> {
public:
    using TypedString::TypedString;
};

inline constexpr OAVArriLookColorSpaceValue OAVArriLookColorSpaceRec709{"rec709"};
inline constexpr OAVArriLookColorSpaceValue OAVArriLookColorSpaceRec2020{"rec2020"};
inline constexpr OAVArriLookColorSpaceValue OAVArriLookColorSpaceP3{"p3"};
inline constexpr OAVArriLookColorSpaceValue OAVArriLookColorSpaceAP0{"ap0"};
inline constexpr OAVArriLookColorSpaceValue OAVArriLookColorSpaceAWG3{"awg3"};
inline constexpr OAVArriLookColorSpaceValue OAVArriLookColorSpaceAWG4{"awg4"};

/// Curve of an ARRI look ("-arri_curve"). Any text is legal.
class OAVArriLookCurveValue : public TypedString<OAVArriLookCurveValue> {
public:
    using TypedString::TypedString;
};

inline constexpr OAVArriLookCurveValue OAVArriCurveBT1886{"bt1886"};
inline constexpr OAVArriLookCurveValue OAVArriCurveDCI{"dci"};
inline constexpr OAVArriLookCurveValue OAVArriCurvePQ{"pq"};
inline constexpr OAVArriLookCurveValue OAVArriCurveHLG{"hlg"};
inline constexpr OAVArriLookCurveValue OAVArriCurveLogC3{"logc3"};
inline constexpr OAVArriLookCurveValue OAVArriCurveLogC4{"logc4"};
inline constexpr OAVArriLookCurveValue OAVArriCurveLinear{"linear"};

/// White point of an ARRI look ("-arri_wp"). Any text is legal.
class OAVArriLookWhitePointValue : public TypedString<OAVArriLookWhitePointValue> {
public:
    using TypedString::TypedString;
};

inline constexpr OAVArriLookWhitePointValue OAVArriWhitePointD60{"d60"};
inline constexpr OAVArriLookWhitePointValue OAVArriWhitePointDCI{"dci"};
inline constexpr OAVArriLookWhitePointValue OAVArriWhitePointD65{"d65"};

/// What to do with an invalid ARRI look ("-arri_inv_res"). Any text is legal.
class OAVArriLookResolutionValue : public TypedString<OAVArriLookResolutionValue> {
public:
    using TypedString::TypedString;
};

inline constexpr OAVArriLookResolutionValue OAVArriLookResolutionIgnore{"ignore"};
inline constexpr OAVArriLookResolutionValue OAVArriLookResolutionFirst{"first"};

}  // namespace corvex::inline v0

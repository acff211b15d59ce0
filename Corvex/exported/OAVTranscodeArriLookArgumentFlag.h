#pragma once

#include <array>

#include <Corvex/exported/CliFlag.h>
#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// Flags of the look that a transcode renders from the metadata of ARRI footage: what colours it ends in, and what to
/// do where the look cannot be used. OAVArriLookValues.h has the values.
class OAVTranscodeArriLookArgumentFlag : public TypedString<OAVTranscodeArriLookArgumentFlag> {
public:
    using TypedString::TypedString;

    [[nodiscard]] constexpr std::string_view cliFlag() const noexcept { return rawValue(); }
    /// Always true: every flag of the family takes a value.
    [[nodiscard]] constexpr bool acceptsArguments() const noexcept;
};

/// Primaries: an OAVArriLookColorSpaceValue.
inline constexpr OAVTranscodeArriLookArgumentFlag OAVArriLookColorSpacePrimaryFlag{"-arri_cs"};
/// An OAVArriLookWhitePointValue.
inline constexpr OAVTranscodeArriLookArgumentFlag OAVArriLookColorSpaceWhitePointFlag{"-arri_wp"};
/// Tone curve: an OAVArriLookCurveValue.
inline constexpr OAVTranscodeArriLookArgumentFlag OAVArriLookColorSpaceCurveFlag{"-arri_curve"};
/// What to do where the look is invalid: an OAVArriLookResolutionValue.
inline constexpr OAVTranscodeArriLookArgumentFlag OAVArriLookInvalidLookResolutionFlag{"-arri_inv_res"};

/// The known flags in their fixed order.
template <>
inline constexpr std::array knownValues<OAVTranscodeArriLookArgumentFlag>{
    OAVArriLookColorSpacePrimaryFlag,
    OAVArriLookColorSpaceWhitePointFlag,
    OAVArriLookColorSpaceCurveFlag,
    OAVArriLookInvalidLookResolutionFlag,
};

constexpr bool OAVTranscodeArriLookArgumentFlag::acceptsArguments() const noexcept { return true; }

static_assert(CliFlag<OAVTranscodeArriLookArgumentFlag>);

}  // namespace corvex::inline v0

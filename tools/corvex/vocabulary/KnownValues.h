#pragma once

#include <array>
#include <span>
#include <string_view>
#include <vector>

#include <Corvex/color/OrvanePixelColorRange.h>
#include <Corvex/color/OrvanePixelTransferFunction.h>
#include <Corvex/color/OrvaneVideoColorMatrix.h>
#include <Corvex/color/OrvaneVideoColorSpace.h>
#include <Corvex/exported/TranscodeVocabulary.h>
#include <Corvex/platform/CaseTable.h>

namespace corvex::tool {

/// The known values of a family of texts in their fixed order. Families that have no list of their own get theirs here.
template <class Family>
inline constexpr auto knownValues = Family::allCases();

template <>
inline constexpr std::array knownValues<OAVTranscodeArgumentColorSpaceValue>{
    OAVRec2020ColorSpace, OAVRec2020HLGColorSpace, OAVRec2020PQColorSpace, OAVRec709ColorSpace,
    OAVSrgbColorSpace,    OAVSmptecColorSpace,     OAVEbu3213ColorSpace};
template <>
inline constexpr std::array knownValues<OAVTranscodeArgumentColorMatrixValue>{
    OAV_M_YCbCr_ITU_R_709_2, OAV_M_YCbCr_ITU_R_604_4, OAV_M_YCbCr_SMPTE_240M_1995, OAV_M_YCbCr_ITU_R_2020};
template <>
inline constexpr std::array knownValues<OAVTranscodeArgumentColorTransferFunctionValue>{
    OAV_T_ITU_R_709_2,    OAV_T_SMPTE_240M_1995,  OAV_T_UseGamma,       OAV_T_sRGB,  OAV_T_ITU_R_2020,
    OAV_T_SMPTE_ST_428_1, OAV_T_SMPTE_ST_2084_PQ, OAV_T_ITU_R_2100_HLG, OAV_T_Linear};
template <>
inline constexpr std::array knownValues<OAVTranscodePresetValue>{OAVOrvaneCloudPresetValue,
                                                                 OAVOrvaneProRes4444XQPresetValue};
template <>
inline constexpr std::array knownValues<OAVGpuPlatformValue>{OAVGpuPlatformOpenCLFlag, OAVGpuPlatformMetalFlag,
                                                             OAVGpuPlatformDefaultPlatformFlag};
template <>
inline constexpr std::array knownValues<OAVArriLookColorSpaceValue>{
    OAVArriLookColorSpaceRec709, OAVArriLookColorSpaceRec2020, OAVArriLookColorSpaceP3,
    OAVArriLookColorSpaceAP0,    OAVArriLookColorSpaceAWG3,    OAVArriLookColorSpaceAWG4};
template <>
inline constexpr std::array knownValues<OAVArriLookCurveValue>{OAVArriCurveBT1886, OAVArriCurveDCI,   OAVArriCurvePQ,
                                                               OAVArriCurveHLG,    OAVArriCurveLogC3, OAVArriCurveLogC4,
                                                               OAVArriCurveLinear};
template <>
inline constexpr std::array knownValues<OAVArriLookWhitePointValue>{OAVArriWhitePointD60, OAVArriWhitePointDCI,
                                                                    OAVArriWhitePointD65};
template <>
inline constexpr std::array knownValues<OAVArriLookResolutionValue>{OAVArriLookResolutionIgnore,
                                                                    OAVArriLookResolutionFirst};

/// The texts of a family's known values, or of a closed enumeration's cases.
template <class Value>
[[nodiscard]] std::vector<std::string_view> knownTexts() {
    std::vector<std::string_view> texts;
    if constexpr (ClosedEnumeration<Value>) {
        for (const auto& row : caseTable<Value>) texts.push_back(row.rawValue);
    } else {
        for (const auto& value : knownValues<Value>) texts.push_back(value.rawValue());
    }
    return texts;
}

}  // namespace corvex::tool

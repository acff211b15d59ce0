#pragma once

#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// The transfer function of the output ("-c_transfer"): how light becomes code values. Any text is legal. The capital M
/// of 240M is on purpose; parsing an argument vector lower-cases the value.
class OAVTranscodeArgumentColorTransferFunctionValue
    : public TypedString<OAVTranscodeArgumentColorTransferFunctionValue> {
public:
    using TypedString::TypedString;
};

/// ITU-R BT.709, and the same curve in BT.601.
inline constexpr OAVTranscodeArgumentColorTransferFunctionValue OAV_T_ITU_R_709_2{"tf_rec_709"};
/// SMPTE 240M.
inline constexpr OAVTranscodeArgumentColorTransferFunctionValue OAV_T_SMPTE_240M_1995{"tf_smpte_240M_1995"};
/// A pure power. No case of OrvanePixelTransferFunction maps to it, as the vector has no room for the exponent.
inline constexpr OAVTranscodeArgumentColorTransferFunctionValue OAV_T_UseGamma{"tf_gamma"};
/// IEC 61966-2-1.
inline constexpr OAVTranscodeArgumentColorTransferFunctionValue OAV_T_sRGB{"tf_srgb"};
/// ITU-R BT.2020, standard dynamic range.
inline constexpr OAVTranscodeArgumentColorTransferFunctionValue OAV_T_ITU_R_2020{"tf_rec_2020"};
/// SMPTE ST 428-1: the power of 2.6 of cinema masters.
inline constexpr OAVTranscodeArgumentColorTransferFunctionValue OAV_T_SMPTE_ST_428_1{"tf_smpte_st_428_1"};
/// SMPTE ST 2084, the perceptual quantiser.
inline constexpr OAVTranscodeArgumentColorTransferFunctionValue OAV_T_SMPTE_ST_2084_PQ{"tf_smpte_st_2084_pq"};
/// ITU-R BT.2100, hybrid log-gamma.
inline constexpr OAVTranscodeArgumentColorTransferFunctionValue OAV_T_ITU_R_2100_HLG{"tf_rec_2100_hlg"};
/// Code values in proportion to light.
inline constexpr OAVTranscodeArgumentColorTransferFunctionValue OAV_T_Linear{"tf_linear"};

}  // namespace corvex::inline v0

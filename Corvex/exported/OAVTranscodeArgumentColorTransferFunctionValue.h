#pragma once

#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// The transfer function of the output ("-c_transfer"). Any text is legal. The capital M is on purpose; parsing an
/// argument vector lower-cases the value.
class OAVTranscodeArgumentColorTransferFunctionValue
    : public TypedString<OAVTranscodeArgumentColorTransferFunctionValue> {
public:
    using TypedString::TypedString;
};

inline constexpr OAVTranscodeArgumentColorTransferFunctionValue OAV_T_ITU_R_709_2{"tf_rec_709"};
inline constexpr OAVTranscodeArgumentColorTransferFunctionValue OAV_T_SMPTE_240M_1995{"tf_smpte_240M_1995"};
inline constexpr OAVTranscodeArgumentColorTransferFunctionValue OAV_T_UseGamma{"tf_gamma"};
inline constexpr OAVTranscodeArgumentColorTransferFunctionValue OAV_T_sRGB{"tf_srgb"};
inline constexpr OAVTranscodeArgumentColorTransferFunctionValue OAV_T_ITU_R_2020{"tf_rec_2020"};
inline constexpr OAVTranscodeArgumentColorTransferFunctionValue OAV_T_SMPTE_ST_428_1{"tf_smpte_st_428_1"};
inline constexpr OAVTranscodeArgumentColorTransferFunctionValue OAV_T_SMPTE_ST_2084_PQ{"tf_smpte_st_2084_pq"};
inline constexpr OAVTranscodeArgumentColorTransferFunctionValue OAV_T_ITU_R_2100_HLG{"tf_rec_2100_hlg"};
inline constexpr OAVTranscodeArgumentColorTransferFunctionValue OAV_T_Linear{"tf_linear"};

}  // namespace corvex::inline v0

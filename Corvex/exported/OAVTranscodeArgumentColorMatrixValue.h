#pragma once

#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// The colour matrix of the output ("-c_matrix"). Any text is legal. The ITU-R BT.601 matrix is written with 604: that
/// is what transcoders accept.
class OAVTranscodeArgumentColorMatrixValue : public TypedString<OAVTranscodeArgumentColorMatrixValue> {
public:
    using TypedString::TypedString;
};

inline constexpr OAVTranscodeArgumentColorMatrixValue OAV_M_YCbCr_ITU_R_709_2{"cm_rec_709_2"};
inline constexpr OAVTranscodeArgumentColorMatrixValue OAV_M_YCbCr_ITU_R_604_4{"cm_rec_604_4"};
inline constexpr OAVTranscodeArgumentColorMatrixValue OAV_M_YCbCr_SMPTE_240M_1995{"cm_smpte_240m_1995"};
inline constexpr OAVTranscodeArgumentColorMatrixValue OAV_M_YCbCr_ITU_R_2020{"cm_rec_2020"};

}  // namespace corvex::inline v0

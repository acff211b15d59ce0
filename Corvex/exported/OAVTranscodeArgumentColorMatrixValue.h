#pragma once

#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// The matrix between R'G'B' and Y'CbCr of the output ("-c_matrix"). Any text is legal. The ITU-R BT.601 matrix is
/// written with 604: that is what transcoders accept.
class OAVTranscodeArgumentColorMatrixValue : public TypedString<OAVTranscodeArgumentColorMatrixValue> {
public:
    using TypedString::TypedString;
};

/// ITU-R BT.709: high definition.
inline constexpr OAVTranscodeArgumentColorMatrixValue OAV_M_YCbCr_ITU_R_709_2{"cm_rec_709_2"};
/// ITU-R BT.601: standard definition of 525 and of 625 lines.
inline constexpr OAVTranscodeArgumentColorMatrixValue OAV_M_YCbCr_ITU_R_604_4{"cm_rec_604_4"};
/// SMPTE 240M: high definition of the 1990s.
inline constexpr OAVTranscodeArgumentColorMatrixValue OAV_M_YCbCr_SMPTE_240M_1995{"cm_smpte_240m_1995"};
/// ITU-R BT.2020, non-constant luminance: ultra-high definition.
inline constexpr OAVTranscodeArgumentColorMatrixValue OAV_M_YCbCr_ITU_R_2020{"cm_rec_2020"};

}  // namespace corvex::inline v0

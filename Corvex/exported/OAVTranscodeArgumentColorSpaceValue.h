#pragma once

#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// The colour space of the output ("-c_space"): primaries, transfer function and matrix by one name. Any text is legal.
/// "sRGB" is mixed case on purpose; parsing an argument vector lower-cases the value, so a parsed one does not equal
/// the constant.
class OAVTranscodeArgumentColorSpaceValue : public TypedString<OAVTranscodeArgumentColorSpaceValue> {
public:
    using TypedString::TypedString;
};

/// ITU-R BT.2020: ultra-high definition, standard dynamic range.
inline constexpr OAVTranscodeArgumentColorSpaceValue OAVRec2020ColorSpace{"rec_2020"};
/// ITU-R BT.2100 with hybrid log-gamma.
inline constexpr OAVTranscodeArgumentColorSpaceValue OAVRec2020HLGColorSpace{"rec_2020_hlg"};
/// ITU-R BT.2100 with the perceptual quantiser of SMPTE ST 2084.
inline constexpr OAVTranscodeArgumentColorSpaceValue OAVRec2020PQColorSpace{"rec_2020_pq"};
/// ITU-R BT.709: high definition.
inline constexpr OAVTranscodeArgumentColorSpaceValue OAVRec709ColorSpace{"rec_709"};
/// IEC 61966-2-1: computer displays, as R'G'B'.
inline constexpr OAVTranscodeArgumentColorSpaceValue OAVSrgbColorSpace{"sRGB"};
/// ITU-R BT.601 with the primaries of SMPTE ST 170: 525 lines.
inline constexpr OAVTranscodeArgumentColorSpaceValue OAVSmptecColorSpace{"smpte_c"};
/// ITU-R BT.601 with the primaries of EBU Tech 3213: 625 lines.
inline constexpr OAVTranscodeArgumentColorSpaceValue OAVEbu3213ColorSpace{"ebu_3213"};

}  // namespace corvex::inline v0

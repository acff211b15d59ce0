#pragma once

#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// The colour space of the output ("-c_space"). Any text is legal. "sRGB" is mixed case on purpose; parsing an argument
/// vector lower-cases the value, so a parsed one does not equal the constant.
class OAVTranscodeArgumentColorSpaceValue : public TypedString<OAVTranscodeArgumentColorSpaceValue> {
public:
    using TypedString::TypedString;
};

inline constexpr OAVTranscodeArgumentColorSpaceValue OAVRec2020ColorSpace{"rec_2020"};
inline constexpr OAVTranscodeArgumentColorSpaceValue OAVRec2020HLGColorSpace{"rec_2020_hlg"};
inline constexpr OAVTranscodeArgumentColorSpaceValue OAVRec2020PQColorSpace{"rec_2020_pq"};
inline constexpr OAVTranscodeArgumentColorSpaceValue OAVRec709ColorSpace{"rec_709"};
inline constexpr OAVTranscodeArgumentColorSpaceValue OAVSrgbColorSpace{"sRGB"};
inline constexpr OAVTranscodeArgumentColorSpaceValue OAVSmptecColorSpace{"smpte_c"};
inline constexpr OAVTranscodeArgumentColorSpaceValue OAVEbu3213ColorSpace{"ebu_3213"};

}  // namespace corvex::inline v0

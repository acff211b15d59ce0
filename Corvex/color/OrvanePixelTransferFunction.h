#pragma once

#include <string_view>

#include <Corvex/color/ColorCase.h>
#include <Corvex/exported/OAVTranscodeArgumentColorTransferFunctionValue.h>
#include <Corvex/exported/OAVTranscodeVideoArgumentFlag.h>

namespace corvex::inline v0 {

/// The transfer function of a video signal: how light and code values, 0 to 1, belong together. Coded as the raw
/// integer.
enum class OrvanePixelTransferFunction : std::uint8_t {
    /// Hybrid log-gamma: high dynamic range relative to the display's peak.
    hlg,
    rec709,
    smpte240M,
    /// Of computer displays: a short line, then a power of 2.4.
    sRGB,
    rec2020,
    /// A power of 2.6 from cinema masters (48 cd/m² over 52.37).
    smpteST428,
    /// Perceptual quantiser: absolute luminance up to 10,000 cd/m².
    pq,
    linear,
    /// A pure power; its exponent travels in GammaColorSpaceSignal.
    gamma,
};

// Sources: ITU-R BT.2100-2 (HLG), BT.709-6, SMPTE ST 240M, IEC 61966-2-1, BT.2020-2, SMPTE ST 428-1, ST 2084.
// Deliberately nothing maps to OAV_T_UseGamma.
template <>
inline constexpr auto caseTable<OrvanePixelTransferFunction> =
    std::to_array<ColorCase<OrvanePixelTransferFunction, OAVTranscodeArgumentColorTransferFunctionValue>>({
        {{OrvanePixelTransferFunction::hlg, 1, "Rec. 2100 HLG"}, "hlg", &OAV_T_ITU_R_2100_HLG, 18},
        {{OrvanePixelTransferFunction::rec709, 2, "Rec. 709"}, "rec709", &OAV_T_ITU_R_709_2, 1},
        {{OrvanePixelTransferFunction::smpte240M, 3, "SMPTE 240M"}, "smpte240M", &OAV_T_SMPTE_240M_1995, 7},
        {{OrvanePixelTransferFunction::sRGB, 4, "sRGB"}, "sRGB", &OAV_T_sRGB, 13},
        {{OrvanePixelTransferFunction::rec2020, 5, "Rec. 2020"}, "rec2020", &OAV_T_ITU_R_2020, 14},
        {{OrvanePixelTransferFunction::smpteST428, 6, "SMPTE ST 428-1"}, "smpteST428", &OAV_T_SMPTE_ST_428_1, 17},
        {{OrvanePixelTransferFunction::pq, 7, "SMPTE ST 2084 PQ"}, "pq", &OAV_T_SMPTE_ST_2084_PQ, 16},
        {{OrvanePixelTransferFunction::linear, 8, "Linear"}, "linear", &OAV_T_Linear, 8},
        {{OrvanePixelTransferFunction::gamma, 9, "Gamma"}, "gamma", nullptr, {}},
    });
static_assert(isComplete<OrvanePixelTransferFunction>(caseTable<OrvanePixelTransferFunction>));

/// The flag under which the value is given.
[[nodiscard]] constexpr OAVTranscodeVideoArgumentFlag videoFlag(OrvanePixelTransferFunction) noexcept {
    return OAVVideoColorTransferFunctionFlag;
}
/// "-c_transfer", whatever the value.
[[nodiscard]] constexpr std::string_view cliFlag(OrvanePixelTransferFunction) noexcept {
    return OAVVideoColorTransferFunctionFlag.rawValue();
}

/// The transfer function of an ISO/IEC 23091-2 code point, or none. 6 (ST 170M) is the function of 1, 15 (12-bit
/// BT.2020) that of 14.
[[nodiscard]] constexpr std::optional<OrvanePixelTransferFunction> transferFunctionFromCodePoint(int point) noexcept {
    return fromListedCodePoint<OrvanePixelTransferFunction>(point == 6 ? 1 : point == 15 ? 14 : point);
}

}  // namespace corvex::inline v0

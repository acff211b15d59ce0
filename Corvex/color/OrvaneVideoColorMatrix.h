#pragma once

#include <string_view>

#include <Corvex/color/ColorCase.h>
#include <Corvex/exported/OAVTranscodeArgumentColorMatrixValue.h>
#include <Corvex/exported/OAVTranscodeVideoArgumentFlag.h>
#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

class Number;

/// The matrix between R'G'B' and Y'CbCr of a video signal; `none`: the components are R'G'B'. `rec2020` is that of
/// non-constant luminance. `custom5` and `custom6` are matrices that no standard names. Coded as the raw integer. Code
/// points differ from the raw integers: 1 is the same by chance.
enum class OrvaneVideoColorMatrix : std::uint8_t { none, rec709, rec2020, rec601, smpte240M, custom5, custom6 };

// Sources: ITU-R BT.709-6, BT.2020-2 (non-constant luminance), BT.601-7, SMPTE ST 240M.
template <>
inline constexpr auto caseTable<OrvaneVideoColorMatrix> =
    std::to_array<ColorCase<OrvaneVideoColorMatrix, OAVTranscodeArgumentColorMatrixValue>>({
        {{OrvaneVideoColorMatrix::none, 0, "None"}, "none", nullptr, 0},
        {{OrvaneVideoColorMatrix::rec709, 1, "Rec. 709"}, "rec709", &OAV_M_YCbCr_ITU_R_709_2, 1},
        {{OrvaneVideoColorMatrix::rec2020, 2, "Rec. 2020"}, "rec2020", &OAV_M_YCbCr_ITU_R_2020, 9},
        {{OrvaneVideoColorMatrix::rec601, 3, "Rec. 601"}, "rec601", &OAV_M_YCbCr_ITU_R_604_4, 6},
        {{OrvaneVideoColorMatrix::smpte240M, 4, "SMPTE 240M"}, "smpte240M", &OAV_M_YCbCr_SMPTE_240M_1995, 7},
        {{OrvaneVideoColorMatrix::custom5, 5, "Custom matrix 5"}, "custom5", nullptr, {}},
        {{OrvaneVideoColorMatrix::custom6, 6, "Custom matrix 6"}, "custom6", nullptr, {}},
    });
static_assert(isComplete<OrvaneVideoColorMatrix>(caseTable<OrvaneVideoColorMatrix>));

/// The flag under which the value is given.
[[nodiscard]] constexpr OAVTranscodeVideoArgumentFlag videoFlag(OrvaneVideoColorMatrix) noexcept {
    return OAVVideoColorMatrixFlag;
}
/// "-c_matrix", whatever the value.
[[nodiscard]] constexpr std::string_view cliFlag(OrvaneVideoColorMatrix) noexcept {
    return OAVVideoColorMatrixFlag.rawValue();
}

/// The raw integer as an object, as StandardColorSpaceSignal takes it.
[[nodiscard]] CORVEX_EXPORT Number wrappedValue(OrvaneVideoColorMatrix matrix) noexcept;

/// The matrix of an ISO/IEC 23091-2 code point, or none. 5 (BT.601 at 625 lines) is the matrix of 6.
[[nodiscard]] constexpr std::optional<OrvaneVideoColorMatrix> colorMatrixFromCodePoint(int point) noexcept {
    return fromListedCodePoint<OrvaneVideoColorMatrix>(point == 5 ? 6 : point);
}

}  // namespace corvex::inline v0

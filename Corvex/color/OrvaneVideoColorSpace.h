#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include <Corvex/color/ColorCase.h>
#include <Corvex/color/OrvaneVideoColorPrimaries.h>
#include <Corvex/exported/OAVTranscodeArgumentColorSpaceValue.h>
#include <Corvex/exported/OAVTranscodeVideoArgumentFlag.h>
#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

class OrvaneColorSpaceSignal;

/// A named combination of primaries, transfer function and matrix, which definedSignals() spells out. Coded as the raw
/// integer. The custom ones and `linear11` are numbers that stored data may hold and that no standard names.
enum class OrvaneVideoColorSpace : std::uint8_t {
    rec2020,
    rec709,
    /// 525 lines.
    rec601Smpte,
    /// 625 lines.
    rec601EBU,
    sRGB,
    /// Projection: a power of 2.6 and the projector's white.
    dciP3Cinema,
    /// Displays: the curve of sRGB, or as video that of BT.709.
    p3D65,
    custom8,
    custom9,
    custom10,
    linear11,
    rec2020HLG,
    rec2020PQ,
};

/// A row of the table: the primaries that the colour space has by default, too. sRGB deliberately has none. A colour
/// space has no code point of its own; its signals' parts have.
struct VideoColorSpaceCase : ColorCase<OrvaneVideoColorSpace, OAVTranscodeArgumentColorSpaceValue> {
    std::optional<OrvaneVideoColorPrimaries> defaultColorPrimaries;
};

// Sources: ITU-R BT.2020-2, BT.709-6, BT.601-7, IEC 61966-2-1, SMPTE RP 431-2, EG 432-1, ITU-R BT.2100-2.
// clang-format off
template <>
inline constexpr auto caseTable<OrvaneVideoColorSpace> = std::to_array<VideoColorSpaceCase>({
    {{{OrvaneVideoColorSpace::rec2020, 1, "Rec. 2020"}, "rec2020", &OAVRec2020ColorSpace, {}}, OrvaneVideoColorPrimaries::rec2020},
    {{{OrvaneVideoColorSpace::rec709, 2, "Rec. 709"}, "rec709", &OAVRec709ColorSpace, {}}, OrvaneVideoColorPrimaries::rec709},
    {{{OrvaneVideoColorSpace::rec601Smpte, 3, "Rec. 601 - SMPTE C"}, "rec601Smpte", &OAVSmptecColorSpace, {}}, OrvaneVideoColorPrimaries::smpteC},
    {{{OrvaneVideoColorSpace::rec601EBU, 4, "Rec. 601 - EBU 3213"}, "rec601EBU", &OAVEbu3213ColorSpace, {}}, OrvaneVideoColorPrimaries::ebu3213},
    {{{OrvaneVideoColorSpace::sRGB, 5, "sRGB"}, "sRGB", &OAVSrgbColorSpace, {}}, std::nullopt},
    {{{OrvaneVideoColorSpace::dciP3Cinema, 6, "DCI-P3 Cinema"}, "dciP3Cinema", nullptr, {}}, OrvaneVideoColorPrimaries::dciP3},
    {{{OrvaneVideoColorSpace::p3D65, 7, "P3 D65"}, "p3D65", nullptr, {}}, OrvaneVideoColorPrimaries::p3D65},
    {{{OrvaneVideoColorSpace::custom8, 8, "Custom colour space 8"}, "custom8", nullptr, {}}, std::nullopt},
    {{{OrvaneVideoColorSpace::custom9, 9, "Custom colour space 9"}, "custom9", nullptr, {}}, OrvaneVideoColorPrimaries::custom7},
    {{{OrvaneVideoColorSpace::custom10, 10, "Custom colour space 10"}, "custom10", nullptr, {}}, OrvaneVideoColorPrimaries::custom8},
    {{{OrvaneVideoColorSpace::linear11, 11, "Linear colour space 11"}, "linear11", nullptr, {}}, OrvaneVideoColorPrimaries::custom10},
    {{{OrvaneVideoColorSpace::rec2020HLG, 12, "Rec. 2020 HLG"}, "rec2020HLG", &OAVRec2020HLGColorSpace, {}}, OrvaneVideoColorPrimaries::rec2020},
    {{{OrvaneVideoColorSpace::rec2020PQ, 13, "Rec. 2020 PQ"}, "rec2020PQ", &OAVRec2020PQColorSpace, {}}, OrvaneVideoColorPrimaries::rec2020},
});
// clang-format on
static_assert(isComplete<OrvaneVideoColorSpace>(caseTable<OrvaneVideoColorSpace>));

/// None where it has none of its own.
[[nodiscard]] constexpr std::optional<OrvaneVideoColorPrimaries> defaultColorPrimaries(
    OrvaneVideoColorSpace space) noexcept {
    return caseOf(space).defaultColorPrimaries;
}

/// The colour space of a cloud job's conversion options, by the number that the message carries; none for 0
/// (unspecified), 1 (unknown) and numbers that the message does not know.
[[nodiscard]] CORVEX_EXPORT std::optional<OrvaneVideoColorSpace> colorSpaceFromCloudValue(int messageValue) noexcept;

/// The flag under which the value is given.
[[nodiscard]] constexpr OAVTranscodeVideoArgumentFlag videoFlag(OrvaneVideoColorSpace) noexcept {
    return OAVVideoColorSpaceFlag;
}
/// "-c_space", whatever the value.
[[nodiscard]] constexpr std::string_view cliFlag(OrvaneVideoColorSpace) noexcept {
    return OAVVideoColorSpaceFlag.rawValue();
}

}  // namespace corvex::inline v0

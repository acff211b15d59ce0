#pragma once

#include <Corvex/color/ColorCase.h>
#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// The primaries and white point of a video signal. There is no raw value 9. Coded as the raw integer. `custom7`,
/// `custom8` and `custom10` are the primaries of colour spaces 9, 10 and 11, which no standard names.
enum class OrvaneVideoColorPrimaries : std::uint8_t {
    rec2020,
    /// Those of sRGB, too.
    rec709,
    /// Of 525-line systems.
    smpteC,
    /// Of 625-line systems; ITU-R BT.601 has both.
    ebu3213,
    /// With the white point of cinema projectors.
    dciP3,
    /// The same primaries with the white point of television, as displays of computers have them.
    p3D65,
    custom7,
    custom8,
    custom10,
};

/// Primaries have no flag of their own, and so no value of one.
class NoCliValue : public TypedString<NoCliValue> {
public:
    using TypedString::TypedString;
};

// Sources: ITU-R BT.2020-2, BT.709-6, SMPTE ST 170M, EBU Tech 3213, SMPTE RP 431-2, SMPTE EG 432-1.
template <>
inline constexpr auto caseTable<OrvaneVideoColorPrimaries> =
    std::to_array<ColorCase<OrvaneVideoColorPrimaries, NoCliValue>>({
        {{OrvaneVideoColorPrimaries::rec2020, 1, "Rec. 2020"}, "rec2020", nullptr, 9},
        {{OrvaneVideoColorPrimaries::rec709, 2, "Rec. 709"}, "rec709", nullptr, 1},
        {{OrvaneVideoColorPrimaries::smpteC, 3, "SMPTE C"}, "smpteC", nullptr, 6},
        {{OrvaneVideoColorPrimaries::ebu3213, 4, "EBU 3213"}, "ebu3213", nullptr, 5},
        {{OrvaneVideoColorPrimaries::dciP3, 5, "DCI-P3"}, "dciP3", nullptr, 11},
        {{OrvaneVideoColorPrimaries::p3D65, 6, "P3 D65"}, "p3D65", nullptr, 12},
        {{OrvaneVideoColorPrimaries::custom7, 7, "Custom primaries 7"}, "custom7", nullptr, {}},
        {{OrvaneVideoColorPrimaries::custom8, 8, "Custom primaries 8"}, "custom8", nullptr, {}},
        {{OrvaneVideoColorPrimaries::custom10, 10, "Custom primaries 10"}, "custom10", nullptr, {}},
    });
static_assert(isComplete<OrvaneVideoColorPrimaries>(caseTable<OrvaneVideoColorPrimaries>));

/// The primaries of an ISO/IEC 23091-2 code point, or none. 7 (SMPTE ST 240) has the primaries of 6.
[[nodiscard]] constexpr std::optional<OrvaneVideoColorPrimaries> colorPrimariesFromCodePoint(int point) noexcept {
    return fromListedCodePoint<OrvaneVideoColorPrimaries>(point == 7 ? 6 : point);
}

}  // namespace corvex::inline v0

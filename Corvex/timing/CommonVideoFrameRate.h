#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <set>

#include <Corvex/platform/CaseTable.h>
#include <Corvex/timing/MediaRational.h>

namespace corvex::inline v0 {

/// The 36 standard frame rates, ascending, in frames per second. Order and values are those of the one table below.
/// Names are rounded: each rate with a fraction is a multiple of 1000 over 1001. Raw values ("fps29_97") are in stored
/// data.
enum class CommonVideoFrameRate : std::uint8_t {
    /// 24000/1001: film on NTSC television.
    fps23_976,
    /// Cinema.
    fps24,
    /// Half of PAL's fields.
    fps25,
    /// 30000/1001: half of NTSC's fields (SMPTE ST 12-1).
    fps29_97,
    fps30,
    /// 48000/1001.
    fps47_952,
    /// Cinema at high frame rate.
    fps48,
    /// Television where the mains have 50 Hz (ITU-R BT.709).
    fps50,
    /// 60000/1001: television where they have 60 Hz.
    fps59_94,
    fps60,
    fps72,
    fps75,
    fps90,
    fps96,
    fps100,
    /// 120000/1001 (ITU-R BT.2020).
    fps119_88,
    fps120,
    fps144,
    fps150,
    fps180,
    fps200,
    /// 240000/1001.
    fps239_76,
    fps240,
    fps300,
    fps360,
    fps400,
    /// 480000/1001.
    fps479_52,
    fps480,
    fps500,
    fps600,
    fps720,
    fps800,
    fps900,
    /// 960000/1001.
    fps959_04,
    fps960,
    fps1000,
};

/// A row of the table: the case, its name, what people call it, and its exact value in frames per second.
struct CommonVideoFrameRateCase : Case<CommonVideoFrameRate> {
    /// Frames in so many seconds as the next says; in lowest terms.
    std::int64_t timeValue;
    std::int64_t timeScale;
};

// clang-format off
template <>
inline constexpr auto caseTable<CommonVideoFrameRate> = std::to_array<CommonVideoFrameRateCase>({
    {{CommonVideoFrameRate::fps23_976, "fps23_976", "23.976 fps"},   24000, 1001},
    {{CommonVideoFrameRate::fps24,     "fps24",     "24 fps"},          24,    1},
    {{CommonVideoFrameRate::fps25,     "fps25",     "25 fps"},          25,    1},
    {{CommonVideoFrameRate::fps29_97,  "fps29_97",  "29.97 fps"},    30000, 1001},
    {{CommonVideoFrameRate::fps30,     "fps30",     "30 fps"},          30,    1},
    {{CommonVideoFrameRate::fps47_952, "fps47_952", "47.952 fps"},   48000, 1001},
    {{CommonVideoFrameRate::fps48,     "fps48",     "48 fps"},          48,    1},
    {{CommonVideoFrameRate::fps50,     "fps50",     "50 fps"},          50,    1},
    {{CommonVideoFrameRate::fps59_94,  "fps59_94",  "59.94 fps"},    60000, 1001},
    {{CommonVideoFrameRate::fps60,     "fps60",     "60 fps"},          60,    1},
    {{CommonVideoFrameRate::fps72,     "fps72",     "72 fps"},          72,    1},
    {{CommonVideoFrameRate::fps75,     "fps75",     "75 fps"},          75,    1},
    {{CommonVideoFrameRate::fps90,     "fps90",     "90 fps"},          90,    1},
    {{CommonVideoFrameRate::fps96,     "fps96",     "96 fps"},          96,    1},
    {{CommonVideoFrameRate::fps100,    "fps100",    "100 fps"},        100,    1},
    {{CommonVideoFrameRate::fps119_88, "fps119_88", "119.88 fps"},  120000, 1001},
    {{CommonVideoFrameRate::fps120,    "fps120",    "120 fps"},        120,    1},
    {{CommonVideoFrameRate::fps144,    "fps144",    "144 fps"},        144,    1},
    {{CommonVideoFrameRate::fps150,    "fps150",    "150 fps"},        150,    1},
    {{CommonVideoFrameRate::fps180,    "fps180",    "180 fps"},        180,    1},
    {{CommonVideoFrameRate::fps200,    "fps200",    "200 fps"},        200,    1},
    {{CommonVideoFrameRate::fps239_76, "fps239_76", "239.76 fps"},  240000, 1001},
    {{CommonVideoFrameRate::fps240,    "fps240",    "240 fps"},        240,    1},
    {{CommonVideoFrameRate::fps300,    "fps300",    "300 fps"},        300,    1},
    {{CommonVideoFrameRate::fps360,    "fps360",    "360 fps"},        360,    1},
    {{CommonVideoFrameRate::fps400,    "fps400",    "400 fps"},        400,    1},
    {{CommonVideoFrameRate::fps479_52, "fps479_52", "479.52 fps"},  480000, 1001},
    {{CommonVideoFrameRate::fps480,    "fps480",    "480 fps"},        480,    1},
    {{CommonVideoFrameRate::fps500,    "fps500",    "500 fps"},        500,    1},
    {{CommonVideoFrameRate::fps600,    "fps600",    "600 fps"},        600,    1},
    {{CommonVideoFrameRate::fps720,    "fps720",    "720 fps"},        720,    1},
    {{CommonVideoFrameRate::fps800,    "fps800",    "800 fps"},        800,    1},
    {{CommonVideoFrameRate::fps900,    "fps900",    "900 fps"},        900,    1},
    {{CommonVideoFrameRate::fps959_04, "fps959_04", "959.04 fps"},  960000, 1001},
    {{CommonVideoFrameRate::fps960,    "fps960",    "960 fps"},        960,    1},
    {{CommonVideoFrameRate::fps1000,   "fps1000",   "1000 fps"},      1000,    1},
});
// clang-format on
static_assert(isComplete<CommonVideoFrameRate>(caseTable<CommonVideoFrameRate>));

/// The exact value of a rate, in frames per second.
[[nodiscard]] constexpr MediaRational rational(CommonVideoFrameRate rate) noexcept {
    const auto& row = caseOf(rate);
    return {row.timeValue, row.timeScale};
}

/// The case whose value equals `rate` as a double after reduction, or none: 48/2 is fps24, 2400000/100100 fps23_976.
[[nodiscard]] CORVEX_EXPORT std::optional<CommonVideoFrameRate> definedFrameRate(const MediaRational& rate) noexcept;

/// The case nearest to `value` (frames per second), the earlier one of two that are equally near, if it is no further
/// off than `tolerance`, in frames per second too. None unless value is finite and above 0 and tolerance at least 0.
/// For rates that somebody has rounded: 29.97 is 0.00003 off 30000/1001.
[[nodiscard]] CORVEX_EXPORT std::optional<CommonVideoFrameRate> closestFrameRate(double value,
                                                                                 double tolerance) noexcept;

/// The rates that count as NTSC: at first the eight over 1001. Process-wide; any thread may read or replace it. A copy;
/// allocates.
[[nodiscard]] CORVEX_EXPORT std::set<CommonVideoFrameRate> ntscFrameRates();
CORVEX_EXPORT void setNtscFrameRates(std::set<CommonVideoFrameRate> rates);

}  // namespace corvex::inline v0

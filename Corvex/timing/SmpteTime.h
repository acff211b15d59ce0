#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace corvex::inline v0 {

/// The rates and countings that an SMPTE time names, by their numbers in the record. Names without "Drop" count every
/// label.
enum class SmpteTimeType : std::uint32_t {
    /// 24 frames a second, as cinema has them.
    type24 = 0,
    type25 = 1,
    /// 30 labels a second at a true 30 frames, of which some are skipped: of little use, and legal.
    type30Drop = 2,
    type30 = 3,
    /// 30000/1001 frames a second, 30 labels.
    type2997 = 4,
    type2997Drop = 5,
    type60 = 6,
    /// 60000/1001 frames a second, 60 labels.
    type5994 = 7
};

/// A moment in SMPTE timecode as media interfaces pass it, field by field in memory: 24 bytes, in the machine's byte
/// order. Fields are taken as they are: a type or flags without a name above are legal. A plain value.
/// TimecodeComponents reads its labels.
struct SmpteTime {
    std::int16_t subframes = 0;  ///< Part of the frame, in units of 1 / subframeDivisor.
    std::int16_t subframeDivisor = 0;
    std::uint32_t counter = 0;  ///< Frames or subframes counted in all.
    std::uint32_t type = 0;     ///< A SmpteTimeType, or a number that this library does not know.
    std::uint32_t flags = 0;    ///< Bit 0: the fields are valid. Bit 1: time is running.
    std::int16_t hours = 0;
    std::int16_t minutes = 0;
    std::int16_t seconds = 0;
    std::int16_t frames = 0;

    friend constexpr bool operator==(const SmpteTime&, const SmpteTime&) noexcept = default;
};
static_assert(sizeof(SmpteTime) == 24 && offsetof(SmpteTime, counter) == 4 && offsetof(SmpteTime, hours) == 16 &&
              std::is_trivially_copyable_v<SmpteTime>);

}  // namespace corvex::inline v0

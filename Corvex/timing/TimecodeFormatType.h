#pragma once

#include <cstdint>

#include <Corvex/platform/CaseTable.h>
#include <Corvex/platform/FourCharacterCode.h>

namespace corvex::inline v0 {

/// How a media sample carries timecode: a label or a plain counter, in 32 or 64 bits. Raw value: the format's code in a
/// QuickTime sample description. Files of today have `timecode32`; the others are read and written as well.
enum class TimecodeFormatType : std::uint8_t { timecode32, timecode64, counter32, counter64 };

template <>
inline constexpr auto caseTable<TimecodeFormatType> = std::to_array<Case<TimecodeFormatType, std::uint32_t>>({
    {TimecodeFormatType::timecode32, FourCharacterCode("tmcd").value(), "32-bit timecode"},
    {TimecodeFormatType::timecode64, FourCharacterCode("tc64").value(), "64-bit timecode"},
    {TimecodeFormatType::counter32, FourCharacterCode("cn32").value(), "32-bit counter"},
    {TimecodeFormatType::counter64, FourCharacterCode("cn64").value(), "64-bit counter"},
});
static_assert(isComplete<TimecodeFormatType>(caseTable<TimecodeFormatType>));

/// How a timecode counts and in which form a media sample carries it. A plain value.
struct TimecodeFormatOptions {
    /// Only rates that are NTSC drop-frame compliant drop frames.
    bool ensureValidDropFrameRates = true;
    /// For the caller: counting does not look at it.
    bool enforceBroadcastTimecode = true;
    /// Of the description that TimecodeFrame::formatDescription() makes.
    TimecodeFormatType formatType = TimecodeFormatType::timecode32;
    /// For the caller, too: counting takes any frame number.
    bool permitNegativeTimes = false;

    friend constexpr bool operator==(const TimecodeFormatOptions&, const TimecodeFormatOptions&) noexcept = default;
};

}  // namespace corvex::inline v0

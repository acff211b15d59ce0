#pragma once

#include <cstdint>

#include <Corvex/exported/OAVTranscodeTimecodeArgumentFlag.h>
#include <Corvex/platform/CaseTable.h>

namespace corvex::inline v0 {

/// Where the timecode of the output comes from: the source's own, its creation date, or a text.
enum class TimecodeSource : std::uint8_t { match, creationDate, custom };

/// A row of the table: the flag of the case, too.
struct TimecodeSourceCase : Case<TimecodeSource> {
    const OAVTranscodeTimecodeArgumentFlag* tcFlag;
};

template <>
inline constexpr auto caseTable<TimecodeSource> = std::to_array<TimecodeSourceCase>({
    {{TimecodeSource::match, "match", "match"}, &OAVTimecodeMatchSourceFlag},
    {{TimecodeSource::creationDate, "creationDate", "creation date"}, &OAVTimecodeFromCreationDateFlag},
    {{TimecodeSource::custom, "custom", "custom"}, &OAVTimecodeCustomFlag},
});
static_assert(isComplete<TimecodeSource>(caseTable<TimecodeSource>));

/// The flag that asks for it.
[[nodiscard]] constexpr const OAVTranscodeTimecodeArgumentFlag& tcFlag(TimecodeSource source) noexcept {
    return *caseOf(source).tcFlag;
}

}  // namespace corvex::inline v0

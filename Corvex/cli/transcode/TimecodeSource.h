#pragma once

#include <cstdint>

#include <Corvex/exported/OAVTranscodeTimecodeArgumentFlag.h>
#include <Corvex/platform/CaseTable.h>

namespace corvex::inline v0 {

/// Where the first label of the output's timecode comes from. What is counted from there on does not depend on it.
enum class TimecodeSource : std::uint8_t {
    /// The source's own timecode.
    match,
    /// The time of day at which the source was made.
    creationDate,
    /// A text that the job states.
    custom,
};

/// A row of the table: the flag of the case, too. A pointer, as the flags are constants of their own.
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

/// The flag that asks for it; `custom` alone has a value.
[[nodiscard]] constexpr const OAVTranscodeTimecodeArgumentFlag& tcFlag(TimecodeSource source) noexcept {
    return *caseOf(source).tcFlag;
}

}  // namespace corvex::inline v0

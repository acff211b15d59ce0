#pragma once

#include <cstdint>

#include <Corvex/cli/CLIFlagCase.h>

namespace corvex::inline v0 {

/// The flags with which a parent process identifies itself to the child that it starts; each takes a decimal integer. A
/// child that knows its parent ends when the parent does.
/// They stand behind the child's own words and belong to no family, so that a parser of those sets them aside as
/// unknown.
enum class CLICustodialFlag : std::uint8_t { parentPid, parentAppNumber };

template <>
inline constexpr auto caseTable<CLICustodialFlag> = std::to_array<CLIFlagCase<CLICustodialFlag>>({
    {{CLICustodialFlag::parentPid, "parentPid", "process identifier of the parent"}, "-parentPid", true},
    {{CLICustodialFlag::parentAppNumber, "parentAppNumber", "number of the parent application"},
     "-parentAppNumber",
     true},
});
static_assert(isComplete<CLICustodialFlag>(caseTable<CLICustodialFlag>) && flagsMatchRawValues<CLICustodialFlag>());

}  // namespace corvex::inline v0

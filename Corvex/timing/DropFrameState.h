#pragma once

#include <cstdint>

#include <Corvex/platform/CaseTable.h>
#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

/// Whether timecode skips labels to follow the clock at an NTSC rate (SMPTE ST 12-1).
/// Codes to JSON as an object with the case's name as its one key: {"drop": {}}.
enum class DropFrameState : std::uint8_t {
    /// For sources that do not say.
    unknown,
    /// Every label is used: at 29.97 frames a second an hour of labels lasts 3.6 s longer than one of the clock.
    nonDrop,
    /// At 29.97 frames 0 and 1 of each minute but every tenth have no label. No frame is dropped, only labels.
    drop,
};

template <>
inline constexpr auto caseTable<DropFrameState> = std::to_array<Case<DropFrameState>>({
    {DropFrameState::unknown, "unknown", "unknown"},
    {DropFrameState::nonDrop, "nonDrop", "non-drop frame"},
    {DropFrameState::drop, "drop", "drop frame"},
});
static_assert(isComplete<DropFrameState>(caseTable<DropFrameState>));

/// It has a coding of its own.
template <>
inline constexpr bool isCodedAsRawValue<DropFrameState> = false;
template <class JsonType>
CORVEX_EXPORT void to_json(JsonType& json, DropFrameState value);
template <class JsonType>
CORVEX_EXPORT void from_json(const JsonType& json, DropFrameState& value);

}  // namespace corvex::inline v0

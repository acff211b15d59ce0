#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <Corvex/cli/ArgumentLookup.h>
#include <Corvex/exported/OAVTranscodePresetValue.h>
#include <Corvex/platform/CaseTable.h>
#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

/// A named bundle of transcode flags that "-preset" stands for. `cloud` is a QuickTime proxy of 960 by 540 pixels in
/// H.264 at 3 Mbit/s with AAC at 48 kHz; `proRes4444XQ` a QuickTime master with linear PCM. Flags that a job gives
/// itself outrank those of its preset.
enum class TranscodeCliPreset : std::uint8_t { cloud, proRes4444XQ };

/// One flag of a preset and its value; a switch has the empty value.
struct TranscodePresetArgument {
    std::string_view flag;
    std::string_view value;
};

template <>
inline constexpr auto caseTable<TranscodeCliPreset> = std::to_array<Case<TranscodeCliPreset>>({
    {TranscodeCliPreset::cloud, OAVOrvaneCloudPresetValue.rawValue(), "cloud"},
    {TranscodeCliPreset::proRes4444XQ, OAVOrvaneProRes4444XQPresetValue.rawValue(), "ProRes 4444 XQ"},
});
static_assert(isComplete<TranscodeCliPreset>(caseTable<TranscodeCliPreset>));

/// The value of "-preset" that selects the preset.
[[nodiscard]] CORVEX_EXPORT OAVTranscodePresetValue presetCliValue(TranscodeCliPreset preset) noexcept;

/// The preset's flags in their order. The view is of a constant.
[[nodiscard]] CORVEX_EXPORT std::span<const TranscodePresetArgument> orderedArguments(
    TranscodeCliPreset preset) noexcept;

/// The same flattened: flag, value, flag, value, with the empty word as the value of a switch.
[[nodiscard]] CORVEX_EXPORT std::vector<std::string> orderedArgumentsAsList(TranscodeCliPreset preset);

/// The same as a lookup, made on first use and kept until the process ends. Any thread.
[[nodiscard]] CORVEX_EXPORT const ArgumentLookup& presetArguments(TranscodeCliPreset preset);

}  // namespace corvex::inline v0

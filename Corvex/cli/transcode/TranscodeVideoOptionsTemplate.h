#pragma once

#include <cstdint>
#include <string>

#include <Corvex/platform/CaseTable.h>
#include <Corvex/platform/Localization.h>

namespace corvex::inline v0 {

/// Ready-made video conversions that a host offers by name. The component Corvex::proto gives each as a message. They
/// are no presets of the command line: "-preset" does not know them. Raw values are part of definedPresetID() and never
/// change; descriptions are the names to show, in English.
enum class TranscodeVideoOptionsTemplate : std::uint8_t {
    /// To watch on phones, tablets and their television boxes: H.264 and AAC in MP4, 1920 x 1080, 10 Mbit/s.
    iOSCurrent,
    /// To watch: H.264 and AAC in QuickTime, of the source's size.
    h264,
    /// To edit: Apple ProRes 422 and linear PCM in QuickTime, of the source's size.
    proRes422,
    /// To keep as a master: Apple ProRes 4444, which has 4:4:4 sampling and an alpha channel, and linear PCM in QuickTime.
    proRes4444,
};

template <>
inline constexpr auto caseTable<TranscodeVideoOptionsTemplate> = std::to_array<Case<TranscodeVideoOptionsTemplate>>({
    {TranscodeVideoOptionsTemplate::iOSCurrent, "iOSCurrent", "Current iOS/tvOS"},
    {TranscodeVideoOptionsTemplate::h264, "h264", "H.264"},
    {TranscodeVideoOptionsTemplate::proRes422, "proRes422", "Apple ProRes 422"},
    {TranscodeVideoOptionsTemplate::proRes4444, "proRes4444", "Apple ProRes 4444"},
});
static_assert(isComplete<TranscodeVideoOptionsTemplate>(caseTable<TranscodeVideoOptionsTemplate>));

/// The name to show, in the user's language; the English one where the catalogue has no translation.
[[nodiscard]] inline std::string localizedString(TranscodeVideoOptionsTemplate videoTemplate) {
    return localizedText(description(videoTemplate).data());  // a literal, and so ended by a null character
}

/// The identifier under which hosts and servers know the template's preset. Stored data hold it, so it never changes.
[[nodiscard]] inline std::string definedPresetID(TranscodeVideoOptionsTemplate videoTemplate) {
    return "ORV_TranscodePreset_Template-" + std::string(rawValue(videoTemplate));
}

}  // namespace corvex::inline v0

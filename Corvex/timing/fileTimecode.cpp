#include <Corvex/timing/fileTimecode.h>

#include <filesystem>

#include <Corvex/platform/internal/FileDates.h>

namespace corvex::inline v0 {
namespace {

std::optional<TimecodeComponents> components(const std::optional<TimeOfDay>& time) {
    if (!time) return std::nullopt;
    return TimecodeComponents(time->hours, time->minutes, time->seconds, 0, DropFrameState::nonDrop);
}

}  // namespace

std::optional<TimecodeComponents> creationDateTimecodeComponents(const std::filesystem::path& file) {
    return components(localTimeOfDay(fileDates(file).creation));
}

std::optional<TimecodeComponents> modificationDateTimecodeComponents(const std::filesystem::path& file) {
    return components(localTimeOfDay(fileDates(file).modification));
}

}  // namespace corvex::inline v0

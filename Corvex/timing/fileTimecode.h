#pragma once

#include <optional>

#include <Corvex/platform/Export.h>
#include <Corvex/platform/FilesystemForward.h>
#include <Corvex/timing/TimecodeComponents.h>

namespace corvex::inline v0 {

/// The local time of day at which a file was created or last modified, as timecode with 0 frames in state `nonDrop`.
/// None when there is no such file, or when its file system keeps no creation date. Any thread.
[[nodiscard]] CORVEX_EXPORT std::optional<TimecodeComponents> creationDateTimecodeComponents(
    const std::filesystem::path& file);
/// The local time of day of the last change; none where there is no such file.
[[nodiscard]] CORVEX_EXPORT std::optional<TimecodeComponents> modificationDateTimecodeComponents(
    const std::filesystem::path& file);

}  // namespace corvex::inline v0

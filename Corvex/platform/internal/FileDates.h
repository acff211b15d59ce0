#pragma once

#include <cstdint>
#include <ctime>
#include <optional>

#include <Corvex/platform/Export.h>
#include <Corvex/platform/FilesystemForward.h>

namespace corvex::inline v0 {

/// When a file came to be and when it was last written to, in whole seconds of Unix time. None for what is not known:
/// many file systems do not keep the first.
struct FileDates {
    std::optional<std::time_t> creation;
    std::optional<std::time_t> modification;
};

/// The dates of the file at `path`, links followed; both none when there is no such file. Any thread.
[[nodiscard]] CORVEX_EXPORT FileDates fileDates(const std::filesystem::path& path);

/// Hours from 0 to 23, minutes, and seconds up to 60, which is a leap second. No date and no zone.
struct TimeOfDay {
    std::int64_t hours = 0, minutes = 0, seconds = 0;
    friend constexpr bool operator==(const TimeOfDay&, const TimeOfDay&) = default;
};

/// The time of day in the process's time zone; none for no moment or one that the calendar cannot hold. Any thread.
[[nodiscard]] CORVEX_EXPORT std::optional<TimeOfDay> localTimeOfDay(std::optional<std::time_t> moment) noexcept;

}  // namespace corvex::inline v0

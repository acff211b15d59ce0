#include <Corvex/platform/internal/FileDates.h>

#include <filesystem>

#include <sys/stat.h>

#ifdef __linux__
#include <fcntl.h>
#endif

namespace corvex::inline v0 {

FileDates fileDates(const std::filesystem::path& path) {
    FileDates dates;
#ifdef __linux__
    struct statx record {};
    if (statx(AT_FDCWD, path.c_str(), 0, STATX_BTIME | STATX_MTIME, &record) != 0) return dates;
    if ((record.stx_mask & STATX_BTIME) != 0) dates.creation = record.stx_btime.tv_sec;
    if ((record.stx_mask & STATX_MTIME) != 0) dates.modification = record.stx_mtime.tv_sec;
#else
    struct stat record {};
    if (stat(path.c_str(), &record) != 0) return dates;
    dates.modification = record.st_mtime;
#ifdef __APPLE__
    dates.creation = record.st_birthtime;
#endif
#endif
    return dates;
}

std::optional<TimeOfDay> localTimeOfDay(std::optional<std::time_t> moment) noexcept {
    std::tm local{};
    if (!moment || localtime_r(&*moment, &local) == nullptr) return std::nullopt;
    return TimeOfDay{local.tm_hour, local.tm_min, local.tm_sec};
}

}  // namespace corvex::inline v0

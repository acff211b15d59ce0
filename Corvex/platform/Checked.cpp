#include <Corvex/platform/Checked.h>

#include <cstdio>
#include <cstdlib>

#include <Corvex/platform/Log.h>

namespace corvex::inline v0 {

void fatalError(std::string_view message, const std::source_location& where) noexcept {
    // A fixed buffer: the process may be stopping because memory or the heap itself is gone.
    char line[1024];
    const int length = std::snprintf(line, sizeof line, "CVX_PLF_FATAL-%s:%u: %.*s", where.file_name(), where.line(),
                                     static_cast<int>(message.size()), message.data());
    const auto written = static_cast<std::size_t>(length < 0 ? 0 : length);
    log(LogLevel::fault, std::string_view(line, written < sizeof line ? written : sizeof line - 1));
    std::abort();
}

}  // namespace corvex::inline v0

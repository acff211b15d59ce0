#pragma once

#include <cstdint>
#include <string_view>

#include <Corvex/platform/Export.h>
#include <Corvex/platform/FunctionCore.h>

namespace corvex::inline v0 {

/// How much a log line matters, least first. `fault` is the last line of a process that stops itself.
enum class LogLevel : std::uint8_t { debug, info, error, fault };

/// Takes one finished line: no newline at its end; it begins with its tag, as "CVX_PLF_PLWV-Lut file ...".
/// Called from any thread, by one thread at a time; what it throws is swallowed, as a log has nowhere to report to.
using LogSink = std::function<void(LogLevel level, std::string_view line)>;

/// Replaces where lines go; an empty sink restores the default, which writes each line to standard error in one piece.
CORVEX_EXPORT void setLogSink(LogSink sink);

/// Lines below this level are dropped. Default `info`.
[[nodiscard]] CORVEX_EXPORT LogLevel minimumLogLevel() noexcept;
CORVEX_EXPORT void setMinimumLogLevel(LogLevel level) noexcept;

/// Hands one line to the sink. Any thread. What a sink itself logs is dropped, but for a fault, which goes to standard
/// error.
CORVEX_EXPORT void log(LogLevel level, std::string_view line) noexcept;

inline void logDebug(std::string_view line) noexcept { log(LogLevel::debug, line); }  ///< At that level.
inline void logInfo(std::string_view line) noexcept { log(LogLevel::info, line); }    ///< At that level.
inline void logError(std::string_view line) noexcept { log(LogLevel::error, line); }  ///< At that level.

}  // namespace corvex::inline v0

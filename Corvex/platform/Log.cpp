#include <Corvex/platform/Log.h>

#include <atomic>
#include <cerrno>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

#include <unistd.h>

namespace corvex::inline v0 {
namespace {

struct LogState {
    std::mutex replacing;  ///< Guards the pointer, held for its exchange only.
    std::mutex writing;    ///< Held while a sink runs, so that lines never interleave.
    std::shared_ptr<const LogSink> sink;
};

LogState& logState() {
    static LogState& state = *new LogState;  // never destroyed: destructors of static objects may still log
    return state;
}

std::atomic<LogLevel> minimumLevel{LogLevel::info};
thread_local bool isInsideSink = false;

void writeToStandardError(std::string_view line) {
    std::string text(line);
    text += '\n';
    for (std::string_view rest = text; !rest.empty();) {
        const ssize_t written = ::write(STDERR_FILENO, rest.data(), rest.size());
        if (written < 0 && errno != EINTR) return;
        rest.remove_prefix(static_cast<std::size_t>(written < 0 ? 0 : written));
    }
}

}  // namespace

void setLogSink(LogSink sink) {
    auto replacement = sink ? std::make_shared<const LogSink>(std::move(sink)) : nullptr;
    LogState& state = logState();
    const std::lock_guard lock(state.replacing);
    state.sink.swap(replacement);
}

LogLevel minimumLogLevel() noexcept { return minimumLevel.load(std::memory_order_relaxed); }

void setMinimumLogLevel(LogLevel level) noexcept { minimumLevel.store(level, std::memory_order_relaxed); }

void log(LogLevel level, std::string_view line) noexcept {
    if (level < minimumLogLevel()) return;
    if (isInsideSink) {
        if (level == LogLevel::fault) writeToStandardError(line);  // a process never stops without a word
        return;
    }
    isInsideSink = true;
    try {
        LogState& state = logState();
        std::shared_ptr<const LogSink> sink;
        {
            const std::lock_guard lock(state.replacing);
            sink = state.sink;
        }
        const std::lock_guard lock(state.writing);
        if (sink) {
            (*sink)(level, line);
        } else {
            writeToStandardError(line);
        }
    } catch (...) {  // stated in the header: a log line that cannot be delivered is dropped
    }
    isInsideSink = false;
}

}  // namespace corvex::inline v0

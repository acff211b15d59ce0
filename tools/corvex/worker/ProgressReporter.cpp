#include <tools/corvex/worker/ProgressReporter.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <tools/corvex/ToolError.h>

namespace corvex::tool {
namespace {

constexpr auto reportInterval = std::chrono::milliseconds(200);

/// A reader that has gone or does not read must not end the job or stop it, so a failed write is no error here.
void writeLine(int descriptor, std::string_view line) {
    while (!line.empty()) {
        const ssize_t count = ::write(descriptor, line.data(), line.size());
        if (count < 0 && errno != EINTR) return;
        line.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    }
}

}  // namespace

ProgressReporter::ProgressReporter(const std::string& file, std::string prefix) : prefix_(std::move(prefix)) {
    if (file.empty()) return;
    file_ = open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NONBLOCK, 0666);
    if (file_ >= 0) return;
    throw JobError("-progress_file '" + file +
                   "': " + (errno == ENXIO ? "a pipe that nobody reads" : std::strerror(errno)));
}

ProgressReporter::~ProgressReporter() {
    if (file_ >= 0) close(file_);
}

void ProgressReporter::setTotal(std::int64_t frames, double seconds) {
    totalFrames_ = frames;
    totalSeconds_ = seconds;
}

void ProgressReporter::update(std::int64_t frames, double seconds) {
    frames_ = frames;
    seconds_ = seconds;
    if (Clock::now() - lastReport_ >= reportInterval) write("running");
}

void ProgressReporter::report(std::string_view state) { write(state); }

void ProgressReporter::write(std::string_view state) {
    lastReport_ = Clock::now();
    const double elapsed = std::chrono::duration<double>(lastReport_ - started_).count();
    const bool isDone = state == "done";
    double part = totalFrames_ > 0    ? static_cast<double>(frames_) / static_cast<double>(totalFrames_)
                  : totalSeconds_ > 0 ? seconds_ / totalSeconds_
                                      : 0;
    part = isDone ? 1 : std::min(part, 1.0);
    const double left = isDone ? 0 : part > 0 ? elapsed * (1 - part) / part : -1;
    const TransferMeter::Rates rates = transfers_ ? transfers_->rates() : TransferMeter::Rates{};
    const std::string line =
        fmt::format("{}{}state={} frame={} total={} percent={:.1f} fps={:.2f} eta={:.0f} read={:.0f} written={:.0f}\n",
                    prefix_, prefix_.empty() ? "" : " ", state, frames_, totalFrames_, 100 * part,
                    elapsed > 0 ? static_cast<double>(frames_) / elapsed : 0, left, rates.read, rates.written);
    writeLine(STDOUT_FILENO, line);
    if (file_ >= 0) writeLine(file_, line);
}

}  // namespace corvex::tool

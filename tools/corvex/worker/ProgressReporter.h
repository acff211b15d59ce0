#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include <tools/corvex/worker/TransferMeter.h>

namespace corvex::tool {

/// Tells how far a job is, one line an update: the prefix and a blank if there is one, then key=value pairs:
/// state (running, finishing, done, failed), frame, total (0: unknown), percent, fps, eta (seconds left; -1: unknown), read
/// and written (bytes a second).
/// Lines go to standard output, for the host that started the worker, and to the progress file if one is wanted.
class ProgressReporter {
public:
    /// Throws JobError when the progress file cannot be written.
    ProgressReporter(const std::string& file, std::string prefix);
    ~ProgressReporter();
    ProgressReporter(const ProgressReporter&) = delete;
    ProgressReporter& operator=(const ProgressReporter&) = delete;

    /// Where the rates come from; without, they are 0.
    void setTransfers(std::shared_ptr<const TransferMeter> transfers) { transfers_ = std::move(transfers); }
    /// How long the job is: frames of video (0: unknown or none) and seconds (0: unknown).
    void setTotal(std::int64_t frames, double seconds);
    /// Reports if the last report is some time ago.
    void update(std::int64_t frames, double seconds);
    /// Reports a change of state at once.
    void report(std::string_view state);

private:
    using Clock = std::chrono::steady_clock;

    void write(std::string_view state);

    std::string prefix_;
    int file_ = -1;
    Clock::time_point started_ = Clock::now();
    Clock::time_point lastReport_{};
    std::int64_t frames_ = 0, totalFrames_ = 0;
    double seconds_ = 0, totalSeconds_ = 0;
    std::shared_ptr<const TransferMeter> transfers_;
};

}  // namespace corvex::tool

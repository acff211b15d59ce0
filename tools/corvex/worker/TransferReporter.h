#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <utility>

namespace corvex::tool {

/// Tells the process's ApplicationIOTrackingDelegate what a job reads and writes, about ten times a second.
class TransferReporter {
public:
    explicit TransferReporter(std::filesystem::path output) : output_(std::move(output)) {}

    /// Totals of the input that is being read, and of the output. Cheap enough for every packet.
    void report(const std::filesystem::path& input, std::int64_t bytesRead, std::int64_t bytesWritten) {
        if (Clock::now() - lastReport_ >= reportInterval) send(input, bytesRead, bytesWritten);
    }
    /// The input's last totals; the next one counts from 0.
    void endInput(const std::filesystem::path& input, std::int64_t bytesRead, std::int64_t bytesWritten) {
        send(input, bytesRead, bytesWritten);
        reportedRead_ = 0;
    }

private:
    using Clock = std::chrono::steady_clock;
    static constexpr auto reportInterval = std::chrono::milliseconds(100);

    void send(const std::filesystem::path& input, std::int64_t bytesRead, std::int64_t bytesWritten);

    std::filesystem::path output_;
    std::int64_t reportedRead_ = 0, reportedWritten_ = 0;
    Clock::time_point lastReport_{};
};

}  // namespace corvex::tool

#include <tools/corvex/worker/TransferReporter.h>

#include <string>

#include <unistd.h>

#include <Corvex/filesystem/ApplicationIOTrackingDelegate.h>

namespace corvex::tool {

void TransferReporter::send(const std::filesystem::path& input, std::int64_t bytesRead, std::int64_t bytesWritten) {
    lastReport_ = Clock::now();
    const auto now = std::chrono::system_clock::now();
    const std::string engine = "worker " + std::to_string(getpid());
    auto& delegate = ApplicationIOTrackingDelegate::shared();
    delegate.handleSpeedUpdate(input, bytesRead - std::exchange(reportedRead_, bytesRead), 0, now, engine);
    delegate.handleSpeedUpdate(output_, 0, bytesWritten - std::exchange(reportedWritten_, bytesWritten), now, engine);
}

}  // namespace corvex::tool

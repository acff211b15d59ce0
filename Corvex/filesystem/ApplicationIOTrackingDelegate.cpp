#include <Corvex/filesystem/ApplicationIOTrackingDelegate.h>

#include <utility>

#include <Corvex/platform/Log.h>

namespace corvex::inline v0 {

IOActivityUpdate::~IOActivityUpdate() = default;

AggregateIOTrackingDelegate::~AggregateIOTrackingDelegate() = default;

URLActivityUpdate::URLActivityUpdate(std::optional<std::string> activityPerformerIdentifier, std::filesystem::path url,
                                     std::int64_t bytesRead, std::int64_t bytesWritten, Timestamp timestamp)
    : activityPerformerIdentifier_(std::move(activityPerformerIdentifier)),
      url_(std::move(url)),
      bytesRead_(bytesRead),
      bytesWritten_(bytesWritten),
      timestamp_(timestamp) {}

ApplicationIOTrackingDelegate::ApplicationIOTrackingDelegate()
    : trackedHistoryAccessQueue_("com.orvane.trackedHistoryAccessQueue") {}

ApplicationIOTrackingDelegate::~ApplicationIOTrackingDelegate() = default;

ApplicationIOTrackingDelegate& ApplicationIOTrackingDelegate::shared() {
    static auto& instance = *new ApplicationIOTrackingDelegate;  // never destroyed: engines may report until the end
    return instance;
}

void ApplicationIOTrackingDelegate::setupIOTrackingBehavior(Behavior updateBehavior) {
    trackedHistoryAccessQueue_.async([this, behavior = std::move(updateBehavior)]() mutable {
        if (ioTrackingBehavior_) {
            logDebug("AIOTS-Failed to update tracking behavior. Already SET!");
        } else {
            ioTrackingBehavior_ = std::move(behavior);
        }
    });
}

void ApplicationIOTrackingDelegate::handleSpeedUpdate(const std::filesystem::path& from, std::int64_t bytesRead,
                                                      std::int64_t bytesWritten, IOActivityUpdate::Timestamp timestamp,
                                                      const std::optional<std::string>& trackingID) {
    trackedHistoryAccessQueue_.async(
        [this, update = URLActivityUpdate(trackingID, from, bytesRead, bytesWritten, timestamp)] {
            if (ioTrackingBehavior_) ioTrackingBehavior_(update);
        });
}

}  // namespace corvex::inline v0

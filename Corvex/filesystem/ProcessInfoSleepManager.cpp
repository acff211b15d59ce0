#include <Corvex/filesystem/ProcessInfoSleepManager.h>

namespace corvex::inline v0 {

SystemSleepManager::~SystemSleepManager() = default;

ProcessInfoSleepManager::ProcessInfoSleepManager() : mutex_("com.orvane.com.processsleepqueue") {}

ProcessInfoSleepManager::~ProcessInfoSleepManager() = default;

void ProcessInfoSleepManager::prevent() {
    mutex_.async([this] {
        if (preventSleepActivity_) return;
        preventSleepActivity_.emplace(userInitiatedActivityOptions, processName() + " has queued activities");
    });
}

void ProcessInfoSleepManager::permit() {
    mutex_.async([this] { preventSleepActivity_.reset(); });
}

bool ProcessInfoSleepManager::canSleep() const {
    bool result = true;
    mutex_.sync([&] { result = !preventSleepActivity_.has_value(); });
    return result;
}

std::string ProcessInfoSleepManager::description() const {
    return canSleep() ? "the machine can sleep" : "the machine is kept awake";
}

}  // namespace corvex::inline v0

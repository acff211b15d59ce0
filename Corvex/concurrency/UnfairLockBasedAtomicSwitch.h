#pragma once

#include <Corvex/concurrency/AtomicSwitch.h>
#include <Corvex/platform/ShortMutex.h>

namespace corvex::inline v0 {

/// The switch for the shortest and hottest paths: under a lock that serves its callers in no particular order, so that
/// one that waits may be passed by others. A caller spins for a moment before it sleeps.
class UnfairLockBasedAtomicSwitch final : public AtomicSwitch {
public:
    /// Allocates nothing, unlike its relatives.
    explicit UnfairLockBasedAtomicSwitch(bool isOn) noexcept : isOn_(isOn) {}

    /// What the last finished setIsOn() left; two calls in a row may answer differently.
    [[nodiscard]] bool isOn() const override {
        const ShortLock lock(verificationLock_);
        return isOn_;
    }
    /// Waits for a caller that has the lock, which it has for a few instructions.
    void setIsOn(bool isOn) override {
        const ShortLock lock(verificationLock_);
        isOn_ = isOn;
    }

private:
    mutable ShortMutex verificationLock_;
    bool isOn_;
};

}  // namespace corvex::inline v0

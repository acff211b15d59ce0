#pragma once

#include <Corvex/concurrency/AtomicSwitch.h>
#include <Corvex/platform/ConcurrentQueue.h>

namespace corvex::inline v0 {

/// A switch whose readers run side by side and whose writers run alone, in the order in which they came. A reader that
/// comes behind a waiting writer sees what that writes. For switches that are read far more often than written.
class ConcurrentQueueBasedAtomicSwitch final : public AtomicSwitch {
public:
    /// `label` names the switch's queue for people; `qos` is of no effect on callers, who do the work themselves.
    ConcurrentQueueBasedAtomicSwitch(bool startingState, std::string label, DispatchQoS::QoSClass qos)
        : dispatchQueue_(std::move(label), qos), isOn_(startingState) {}

    /// Waits for the writers before it. Never from work of this switch's own.
    [[nodiscard]] bool isOn() const override {
        return dispatchQueue_.sync([this] { return isOn_; });
    }
    /// Waits for everybody before it, and has taken effect when it returns.
    void setIsOn(bool isOn) override {
        dispatchQueue_.syncBarrier([this, isOn] { isOn_ = isOn; });
    }

private:
    mutable ConcurrentQueue dispatchQueue_;
    bool isOn_;
};

}  // namespace corvex::inline v0

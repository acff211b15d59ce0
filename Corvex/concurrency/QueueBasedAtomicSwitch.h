#pragma once

#include <Corvex/concurrency/AtomicSwitch.h>
#include <Corvex/platform/SerialQueue.h>

namespace corvex::inline v0 {

/// A switch that serves its callers one after the other, in the order in which they came, readers as well as writers.
/// The work is done on the caller's thread.
class QueueBasedAtomicSwitch final : public AtomicSwitch {
public:
    /// `label` names the switch's queue for people. The quality of service is carried and of no effect on callers, who
    /// do the work themselves.
    QueueBasedAtomicSwitch(bool startingState, std::string label, DispatchQoS::QoSClass targetQos)
        : dispatchQueue_(std::move(label), targetQos), isOn_(startingState) {}
    QueueBasedAtomicSwitch(bool startingState, std::string label, DispatchQoS qos)
        : dispatchQueue_(std::move(label), qos), isOn_(startingState) {}

    /// Waits for everybody before it.
    [[nodiscard]] bool isOn() const override {
        return dispatchQueue_.sync([this] { return isOn_; });
    }
    /// Has taken effect when it returns.
    void setIsOn(bool isOn) override {
        dispatchQueue_.sync([this, isOn] { isOn_ = isOn; });
    }

private:
    mutable SerialQueue dispatchQueue_;
    bool isOn_;
};

}  // namespace corvex::inline v0

#pragma once

#include <Corvex/platform/Atomic.h>
#include <Corvex/platform/SharedState.h>

namespace corvex::inline v0 {

/// An on/off flag that tasks share. Copies are the same switch. Each operation is one step: none falls between another's
/// reading and writing. Nothing ever waits. Any thread.
class AsyncSwitch {
public:
    /// Allocates the state that copies share.
    explicit AsyncSwitch(bool isOn) : state_(Shared<State>::make(isOn)) {}

    /// Of this moment: whatever the answer, the next call may find another.
    [[nodiscard]] bool isOn() const noexcept { return (state_->flips.load(MemoryOrder::acquire) & 1U) != 0; }
    /// The other state, in one step.
    void toggle() const noexcept { state_->flips.fetchXor(1U, MemoryOrder::acquireRelease); }
    void switchOn() const noexcept { state_->flips.store(1U, MemoryOrder::release); }   ///< Whatever it was.
    void switchOff() const noexcept { state_->flips.store(0U, MemoryOrder::release); }  ///< Whatever it was.

private:
    struct State final : SharedState {
        explicit State(bool isOn) noexcept : flips(isOn ? 1U : 0U) {}
        Atomic<unsigned> flips;
    };
    Shared<State> state_;
};

}  // namespace corvex::inline v0

#pragma once

#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

/// An on/off flag that threads share, for code that is no task (tasks have AsyncSwitch). The kinds differ in how
/// callers wait for each other: UnfairLockBasedAtomicSwitch costs least, the others keep the order of their callers.
/// Any thread.
class CORVEX_EXPORT AtomicSwitch {
public:
    virtual ~AtomicSwitch();
    AtomicSwitch(const AtomicSwitch&) = delete;
    AtomicSwitch& operator=(const AtomicSwitch&) = delete;

    /// As the last setIsOn() that has taken effect left it. May block for a moment.
    [[nodiscard]] virtual bool isOn() const = 0;
    /// Whether readers see it at once is the kind's own; the library's three return when it has taken effect.
    virtual void setIsOn(bool isOn) = 0;
    /// Reads, has `change(bool&)` change what was read, and writes that. Not one step: what another thread writes between
    /// the two is overwritten.
    template <class Change>
    void modifyIsOn(Change change) {
        bool value = isOn();
        change(value);
        setIsOn(value);
    }

protected:
    AtomicSwitch() = default;
};

}  // namespace corvex::inline v0

#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include <Corvex/platform/Export.h>
#include <Corvex/platform/Object.h>
#include <Corvex/platform/ProcessActivity.h>
#include <Corvex/platform/SerialQueue.h>

namespace corvex::inline v0 {

/// What decides whether the machine may go to sleep. Code that queues work is given this, and in tests a double of it.
class CORVEX_EXPORT SystemSleepManager {
public:
    virtual ~SystemSleepManager();
    /// Holds the machine awake, until permit(). A second call changes nothing.
    virtual void prevent() = 0;
    virtual void permit() = 0;                        ///< Lets the machine go to sleep.
    [[nodiscard]] virtual bool canSleep() const = 0;  ///< Whether nothing here holds the machine awake.
};

/// Holds the machine awake while the application has work queued, by one activity of this process (see ProcessActivity
/// for what the system makes of it; a system without such a service lets the machine sleep).
/// Calls do not count: one permit() ends what several prevent() asked for. prevent() and permit() return at once and
/// take effect in their order; canSleep() waits for those before it. Destruction permits. Any thread.
class CORVEX_EXPORT ProcessInfoSleepManager final : public Object, public SystemSleepManager {
public:
    ProcessInfoSleepManager();
    ~ProcessInfoSleepManager() override;
    ProcessInfoSleepManager(const ProcessInfoSleepManager&) = delete;
    ProcessInfoSleepManager& operator=(const ProcessInfoSleepManager&) = delete;

    void prevent() override;
    void permit() override;
    /// Waits for the calls before it, and therefore must not be called from work of its own queue.
    [[nodiscard]] bool canSleep() const override;

    /// Says whether the machine can sleep; waits as canSleep() does.
    [[nodiscard]] std::string description() const override;
    /// By identity.
    [[nodiscard]] bool isEqual(const Object& other) const override { return this == &other; }
    [[nodiscard]] std::size_t hash() const override { return std::hash<const void*>{}(this); }

private:
    std::optional<ProcessActivity> preventSleepActivity_;  ///< Touched by the work of `mutex_` alone.
    mutable SerialQueue mutex_;                            ///< Last, so that its work ends before the rest.
};

}  // namespace corvex::inline v0

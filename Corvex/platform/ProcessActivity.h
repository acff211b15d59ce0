#pragma once

#include <cstdint>
#include <string>

#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

/// The name of the running program, without its folder; "process" where the system does not tell.
[[nodiscard]] CORVEX_EXPORT std::string processName();

/// What an activity asks of the system, as bits: that the machine does not go to sleep because nobody touches it.
inline constexpr std::uint64_t idleSystemSleepDisabled = 1U << 20U;
/// The bits of work that a user has asked for; idleSystemSleepDisabled is one of them.
inline constexpr std::uint64_t userInitiatedActivityOptions = 0x00FFFFFF;

/// Tells the system that this process is at work, from its construction to its destruction. With
/// idleSystemSleepDisabled it holds an inhibitor of the login manager ("idle:sleep", org.freedesktop.login1 on the
/// system bus). Where there is no bus, or the login manager refuses, the object is kept all the same and one log line
/// says so. Construction may wait for the bus, up to 5 seconds if it does not answer.
class CORVEX_EXPORT ProcessActivity {
public:
    /// `reason` is shown to people who ask what keeps the machine awake.
    ProcessActivity(std::uint64_t options, std::string reason);
    ~ProcessActivity();
    ProcessActivity(const ProcessActivity&) = delete;
    ProcessActivity& operator=(const ProcessActivity&) = delete;

    [[nodiscard]] std::uint64_t options() const noexcept { return options_; }
    [[nodiscard]] const std::string& reason() const noexcept { return reason_; }

private:
    std::uint64_t options_;
    std::string reason_;
    int inhibitor_ = -1;  ///< Open for as long as the machine is held awake.
};

}  // namespace corvex::inline v0

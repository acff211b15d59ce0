#pragma once

#include <array>
#include <span>

#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// Names a notification that the applications send each other. Any text is legal.
class NotificationName : public TypedString<NotificationName> {
public:
    using TypedString::TypedString;

    /// The shared names in their fixed order.
    [[nodiscard]] static constexpr std::span<const NotificationName> allCases() noexcept;
};

inline constexpr NotificationName fileSystemManipulatedNotification{"fileSystemManipulatedNotification"};
inline constexpr NotificationName kShowStagingView{"kShowStagingView"};
inline constexpr NotificationName kRemovedActiveJob{"kRemovedActiveJob"};
inline constexpr NotificationName kAllActiveJobsUpdate{"kAllActiveJobsUpdate"};
inline constexpr NotificationName kNeedsUpdateForAllActiveJobs{"kNeedsUpdateForAllActiveJobs"};
inline constexpr NotificationName kMainActivityUpdateBroadcast{"kMainActivityUpdateBroadcast"};
inline constexpr NotificationName kUINeedsUpdateForMainActivity{"kUINeedsUpdateForMainActivity"};
inline constexpr NotificationName driveSpeedUpdate{"driveSpeedUpdate"};
inline constexpr NotificationName cloudResourceUploaded{"cloudResourceUploaded"};

inline constexpr std::array allNotificationNames{
    fileSystemManipulatedNotification,
    kShowStagingView,
    kRemovedActiveJob,
    kAllActiveJobsUpdate,
    kNeedsUpdateForAllActiveJobs,
    kMainActivityUpdateBroadcast,
    kUINeedsUpdateForMainActivity,
    driveSpeedUpdate,
    cloudResourceUploaded,
};

constexpr std::span<const NotificationName> NotificationName::allCases() noexcept { return allNotificationNames; }

}  // namespace corvex::inline v0

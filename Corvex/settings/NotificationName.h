#pragma once

#include <array>
#include <span>

#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// Names a notification that the applications send each other. Any text is legal; what a notification carries is
/// between sender and receiver. The texts are the constants' own names and must not change: applications of different
/// versions exchange them.
class NotificationName : public TypedString<NotificationName> {
public:
    using TypedString::TypedString;

    /// The shared names in their fixed order.
    [[nodiscard]] static constexpr std::span<const NotificationName> allCases() noexcept;
};

/// Something on a volume was made, moved or removed.
inline constexpr NotificationName fileSystemManipulatedNotification{"fileSystemManipulatedNotification"};
/// The view in which jobs are prepared is to come forward.
inline constexpr NotificationName kShowStagingView{"kShowStagingView"};
/// A job left the list of active ones.
inline constexpr NotificationName kRemovedActiveJob{"kRemovedActiveJob"};
/// The state of all active jobs, in answer to the next.
inline constexpr NotificationName kAllActiveJobsUpdate{"kAllActiveJobsUpdate"};
/// Asks for it.
inline constexpr NotificationName kNeedsUpdateForAllActiveJobs{"kNeedsUpdateForAllActiveJobs"};
/// The state of the main activity, in answer to the next.
inline constexpr NotificationName kMainActivityUpdateBroadcast{"kMainActivityUpdateBroadcast"};
/// A view asks for it.
inline constexpr NotificationName kUINeedsUpdateForMainActivity{"kUINeedsUpdateForMainActivity"};
/// New measurements of how fast drives read and write.
inline constexpr NotificationName driveSpeedUpdate{"driveSpeedUpdate"};
/// An upload is complete.
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

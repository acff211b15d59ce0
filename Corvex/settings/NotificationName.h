#pragma once

#include <array>

#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// Names a notification that the applications send each other. Any text is legal; what a notification carries is
/// between sender and receiver. The texts are the constants' own names and must not change: applications of different
/// versions exchange them.
class NotificationName : public TypedString<NotificationName> {
public:
    using TypedString::TypedString;
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

/// The shared names in their fixed order.
template <>
inline constexpr std::array knownValues<NotificationName>{
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

}  // namespace corvex::inline v0

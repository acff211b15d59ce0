#pragma once

#include <cstdint>

namespace corvex::inline v0 {

/// How much a piece of work matters; a higher raw value goes first where an executor has a choice. Other raw values are
/// legal and lie between these.
enum class TaskPriority : std::uint8_t {
    /// Nobody waits for it.
    background = 9,
    /// Long work that shows its progress.
    utility = 17,
    low = utility,
    /// The default.
    medium = 21,
    /// Somebody waits for the result.
    userInitiated = 25,
    high = userInitiated,
};

}  // namespace corvex::inline v0

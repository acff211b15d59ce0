#pragma once

#include <cstdint>

namespace corvex::inline v0 {

/// How much a piece of work matters; a higher raw value goes first where an executor has a choice. Other raw values are
/// legal and lie between these.
enum class TaskPriority : std::uint8_t {
    background = 9,
    utility = 17,
    low = utility,
    medium = 21,
    userInitiated = 25,
    high = userInitiated,
};

}  // namespace corvex::inline v0

#pragma once

#include <Corvex/platform/Executor.h>

namespace corvex::inline v0 {
namespace detail {

/// The clock that posts timer nodes to their executors when they are due, on the steady clock. One thread for the
/// process, started with the first call and left running at exit; it sleeps until the earliest deadline.
/// Threads  Any. Adding a deadline that is not the earliest does not wake it.
[[nodiscard]] Timers& timerThread();

}  // namespace detail
}  // namespace corvex::inline v0

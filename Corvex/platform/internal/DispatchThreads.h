#pragma once

#include <Corvex/platform/Executor.h>

namespace corvex::inline v0 {
namespace detail {

/// The threads on which dispatch queues run their work unless they are given an executor. Their work may block, so there
/// are as many as it takes, up to a limit: one is added when work waits and no other thread is free, and ends when it has
/// had nothing to do for some seconds. What runs here sees the default executor as the current one.
/// Made on first use and never destroyed, as its threads may still work at exit.
[[nodiscard]] Executor& dispatchThreads();

}  // namespace detail
}  // namespace corvex::inline v0

#pragma once

#include <sys/types.h>

namespace corvex::tool {

/// Why a worker is to stop before its job is done.
enum class StopReason : int { none, signal, parentGone };

/// From now on SIGINT, SIGTERM and SIGHUP, and with `parentPid` the end of that process, are remembered instead of
/// ending the worker at once, so that it can leave nothing half-written behind. SIGINT and SIGHUP that were ignored stay
/// so. A file-size limit becomes a write error. Call it from the thread that does the reading, which may be interrupted.
/// Throws JobError when `parentPid` is no process that runs.
void watchForStopRequests(pid_t parentPid);

/// Any thread, and cheap enough to ask for every packet.
[[nodiscard]] StopReason stopReason() noexcept;

/// Throws JobError saying why when the worker is to stop.
void throwIfStopRequested();

}  // namespace corvex::tool

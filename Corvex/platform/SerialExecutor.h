#pragma once

#include <Corvex/platform/SharedState.h>
#include <Corvex/platform/ShortMutex.h>
#include <Corvex/platform/WorkQueue.h>

namespace corvex::inline v0 {

/// Runs its work one piece at a time, in order of arrival, on the threads of another executor.
/// What it runs sees it as the current executor. Timers are those of the executor below.
class CORVEX_EXPORT SerialExecutor final : public Executor {
public:
    /// `priority` is that with which its turns are posted to `base`; the order within never depends on priorities.
    explicit SerialExecutor(Executor& base, TaskPriority priority = TaskPriority::medium);
    /// With work waiting stops the process.
    ~SerialExecutor() override;

    void post(WorkNode& node) noexcept override;
    [[nodiscard]] Timers& timers() const noexcept override;

private:
    /// Lives until the last turn has ended, which may be after the executor's own end.
    class Turns;
    Shared<Turns> turns_;
};

}  // namespace corvex::inline v0

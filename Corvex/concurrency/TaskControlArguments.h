#pragma once

#include <cstdint>
#include <optional>

#include <Corvex/concurrency/TaskSemaphore.h>

namespace corvex::inline v0 {

/// The settings of a pipeline stage, as a host keeps them; TaskFactory::withControlledArguments reads them for each
/// operation. Implementations answer on any thread.
class CORVEX_EXPORT TaskControlArguments {
public:
    TaskControlArguments() = default;
    virtual ~TaskControlArguments();
    TaskControlArguments(const TaskControlArguments&) = default;
    TaskControlArguments& operator=(const TaskControlArguments&) = default;

    /// Bounds how many operations of the stage run at once; none: no bound.
    [[nodiscard]] virtual std::optional<TaskSemaphore> throttle() const = 0;
    /// How long one operation may take, in seconds.
    [[nodiscard]] virtual std::uint64_t operationTimeout() const = 0;
};

}  // namespace corvex::inline v0

#pragma once

#include <string>
#include <utility>

namespace corvex::inline v0 {

/// How a timeout is labelled in the log: the line is `prefix`, then "- ", then `context`. The prefix brings its own
/// spacing. It is written at level error, once for each timeout. As any value type.
class TaskTimeoutLog {
public:
    /// The prefix is the line's tag, as "CVX_RD_TO-"; the context says what took too long.
    TaskTimeoutLog(std::string prefix, std::string context) noexcept
        : prefix_(std::move(prefix)), context_(std::move(context)) {}

    /// As given. Both are valid as long as this object.
    [[nodiscard]] const std::string& prefix() const noexcept { return prefix_; }
    [[nodiscard]] const std::string& context() const noexcept { return context_; }

private:
    std::string prefix_, context_;
};

}  // namespace corvex::inline v0

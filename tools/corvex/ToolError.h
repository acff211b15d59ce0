#pragma once

#include <string>
#include <string_view>

#include <Corvex/platform/Error.h>

namespace corvex::tool {

/// Exit statuses of the tool and of the workers that it starts.
enum class ExitStatus : int { success = 0, jobFailed = 1, usage = 2 };

/// The user's words cannot be used: exit 2. One line: what was wrong and what would be right.
class UsageError : public Error {
public:
    using Error::Error;
};

/// The words were fine but the job cannot be done, or failed: exit 1.
class JobError : public Error {
public:
    using Error::Error;
};

/// The text in single quotes, as messages show what a user wrote. Control characters, which a terminal would obey, and
/// bytes that are no UTF-8 appear as "\x1b".
[[nodiscard]] std::string inQuotes(std::string_view text);

/// Writes "corvex: MESSAGE" as one line to standard error, with control characters as inQuotes() has them.
void printError(const std::string& message);

}  // namespace corvex::tool

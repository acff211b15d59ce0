#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include <Corvex/platform/Export.h>
#include <Corvex/platform/FunctionCore.h>

namespace corvex::inline v0 {

/// What stands in for the message of a status that has none.
inline constexpr std::string_view defaultErrorMessage = "unknown error";

/// The platform's message for a status, 0 being success: nothing for that, `defaultErrorMessage` where there is none.
/// On Linux statuses are error numbers (errno), and the messages those of the C library, in English. Any thread.
[[nodiscard]] CORVEX_EXPORT std::optional<std::string> errorMessage(std::int32_t status);

/// Gives the message of a status other than 0; nothing where it has none.
using StatusMessages = std::function<std::optional<std::string>(std::int32_t status)>;
/// Replaces where messages come from, for a host whose statuses are others; empty restores the platform's. What it throws
/// reaches the caller of errorMessage().
CORVEX_EXPORT void setStatusMessages(StatusMessages messages);

}  // namespace corvex::inline v0

#include <Corvex/platform/StatusMessages.h>

#include <cstring>
#include <utility>

#include <Corvex/platform/internal/ProcessWide.h>

#if !defined(__GLIBC__)
#include <system_error>
#endif

namespace corvex::inline v0 {
namespace {

std::optional<std::string> platformMessage(std::int32_t status) {
#if defined(__GLIBC__)
    if (const char* const text = strerrordesc_np(status)) return text;  // untranslated; null without a message
    return std::nullopt;
#else
    const std::string unknown = std::generic_category().message(-1);
    std::string text = std::generic_category().message(status);
    if (status < 0 || text.compare(0, 13, unknown, 0, 13) == 0) return std::nullopt;  // "Unknown error"
    return text;
#endif
}

ProcessWide<StatusMessages> statusMessages([] { return StatusMessages(platformMessage); });

}  // namespace

std::optional<std::string> errorMessage(std::int32_t status) {
    if (status == 0) return std::nullopt;
    const StatusMessages messages = statusMessages.get();
    return messages(status).value_or(std::string(defaultErrorMessage));
}

void setStatusMessages(StatusMessages messages) {
    statusMessages.set(messages ? std::move(messages) : StatusMessages(platformMessage));
}

}  // namespace corvex::inline v0

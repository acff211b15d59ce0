#include <Corvex/platform/ProcessActivity.h>

#include <cerrno>
#include <filesystem>
#include <memory>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

#ifdef CORVEX_HAS_SDBUS
#include <systemd/sd-bus.h>
#endif

#include <Corvex/platform/Log.h>

namespace corvex::inline v0 {
namespace {

#ifdef CORVEX_HAS_SDBUS

constexpr std::uint64_t longestWaitMicroseconds = 5'000'000;

struct CloseBus {
    void operator()(sd_bus* bus) const noexcept { sd_bus_flush_close_unref(bus); }
};
struct FreeMessage {
    void operator()(sd_bus_message* message) const noexcept { sd_bus_message_unref(message); }
};
struct FreeError : sd_bus_error {
    FreeError() noexcept : sd_bus_error{} {}
    FreeError(const FreeError&) = delete;
    FreeError& operator=(const FreeError&) = delete;
    ~FreeError() { sd_bus_error_free(this); }
};

std::string errorText(int result) { return std::generic_category().message(-result); }

/// A file descriptor that holds the machine awake while it is open, or -1 and why there is none.
std::pair<int, std::string> openInhibitor(const std::string& reason) {
    sd_bus* opened = nullptr;
    if (const int result = sd_bus_open_system(&opened); result < 0) return {-1, "no system bus: " + errorText(result)};
    const std::unique_ptr<sd_bus, CloseBus> bus(opened);
    sd_bus_set_method_call_timeout(opened, longestWaitMicroseconds);
    FreeError error;
    sd_bus_message* answer = nullptr;
    int result = sd_bus_call_method(opened, "org.freedesktop.login1", "/org/freedesktop/login1",
                                    "org.freedesktop.login1.Manager", "Inhibit", &error, &answer, "ssss", "idle:sleep",
                                    processName().c_str(), reason.c_str(), "block");
    const std::unique_ptr<sd_bus_message, FreeMessage> message(answer);
    if (result < 0) return {-1, error.message != nullptr ? error.message : errorText(result)};
    int descriptor = -1;
    result = sd_bus_message_read(answer, "h", &descriptor);
    if (result < 0) return {-1, errorText(result)};
    descriptor = fcntl(descriptor, F_DUPFD_CLOEXEC, 3);  // the message owns the one in it
    return {descriptor, descriptor < 0 ? errorText(-errno) : std::string()};
}

#else

std::pair<int, std::string> openInhibitor(const std::string& /*reason*/) {
    return {-1, "this build knows no login manager"};
}

#endif

}  // namespace

std::string processName() {
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error).filename();
    return error || program.empty() ? "process" : program.string();
}

ProcessActivity::ProcessActivity(std::uint64_t options, std::string reason)
    : options_(options), reason_(std::move(reason)) {
    if ((options & idleSystemSleepDisabled) == 0) return;
    auto [descriptor, problem] = openInhibitor(reason_);
    inhibitor_ = descriptor;
    if (inhibitor_ < 0) logInfo("CVX_PA_INHB-The machine is not held awake: " + problem);
}

ProcessActivity::~ProcessActivity() {
    if (inhibitor_ >= 0) close(inhibitor_);
}

}  // namespace corvex::inline v0

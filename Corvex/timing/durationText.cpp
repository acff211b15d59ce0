#include <Corvex/timing/durationText.h>

#include <Corvex/platform/Log.h>

namespace corvex::inline v0 {
namespace {

/// As "%02lld": at least two characters, a sign among them.
std::string twoPlaces(std::int64_t number) {
    std::string text = std::to_string(number);
    if (text.size() < 2) text.insert(0, 1, '0');
    return text;
}

}  // namespace

std::string formatted(double seconds, TimeIntervalFormat format) {
    constexpr double limit = 9223372036854775808.0;  // 2^63
    if (!(seconds >= -limit && seconds < limit)) {
        logError("Extra seconds were ignored during TimeInterval string formatting");
        return {};
    }
    const auto whole = static_cast<std::int64_t>(seconds);
    if (format == TimeIntervalFormat::shortForm) return std::to_string(whole / 60) + ':' + twoPlaces(whole % 60);
    return std::to_string(whole / 3600) + ':' + twoPlaces(whole % 3600 / 60) + ':' + twoPlaces(whole % 60);
}

std::string calculateElapsedTime(std::chrono::system_clock::time_point from, std::chrono::system_clock::time_point to,
                                 bool includeMilliseconds) {
    using std::chrono::duration_cast;
    const auto interval = to - from;
    const auto wholeSeconds = duration_cast<std::chrono::seconds>(interval);
    const std::int64_t s = wholeSeconds.count();
    std::string text = twoPlaces(s / 3600) + ':' + twoPlaces(s % 3600 / 60) + ':' + twoPlaces(s % 60);
    if (includeMilliseconds) {
        using Hundredths = std::chrono::duration<std::int64_t, std::centi>;
        text += '.' + twoPlaces(duration_cast<Hundredths>(interval - wholeSeconds).count());
    }
    return text;
}

}  // namespace corvex::inline v0

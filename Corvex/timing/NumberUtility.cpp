#include <Corvex/timing/NumberUtility.h>

#include <array>
#include <cinttypes>
#include <cstdio>

namespace corvex::inline v0 {

std::string NumberUtility::secondsToStandardDurationText(std::int64_t seconds) {
    const auto [h, m, s] = secondsToHoursMinutesSeconds(seconds);
    std::array<char, 32> text{};  // hours of 64 bits take 17 characters
    const int length = std::snprintf(text.data(), text.size(), "%.2" PRId64 ":%.2" PRId64 ":%.2" PRId64, h, m, s);
    return {text.data(), static_cast<std::size_t>(length)};
}

}  // namespace corvex::inline v0

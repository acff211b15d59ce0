#pragma once

#include <nlohmann/json.hpp>

#include <cmath>
#include <cstdint>

#include <fmt/format.h>

#include <Corvex/platform/Json.h>
#include <Corvex/platform/NumberText.h>

namespace corvex::tool {

/// One value with two blanks of indentation, and a newline, to standard output.
inline void printJson(const Json& json) { fmt::print("{}\n", jsonText(json, 2)); }

/// Whole numbers without a fraction: 1920, not 1920.0.
inline Json numberJson(double number) {
    constexpr double allWhole = 9007199254740992.0;  // 2^53
    if (std::trunc(number) == number && std::abs(number) < allWhole) return static_cast<std::int64_t>(number);
    return number;
}

/// The number that was written, 23.976, and not all digits of the nearest binary one. `number` must be finite.
inline Json numberJson(float number) {
    return numberJson(parseFloat<double>(shortestText(number)).value_or(static_cast<double>(number)));
}

}  // namespace corvex::tool

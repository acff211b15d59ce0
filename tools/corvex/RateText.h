#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include <Corvex/platform/Json.h>
#include <Corvex/timing/VideoFrameRate.h>

namespace corvex::tool {

/// The frame rate that a user wrote as 25, 12.5, 30000/1001 or fps29_97. A decimal number within 0.01 of a rate over
/// 1001 is that rate: 29.97, 23.98. Throws UsageError for any other text, and for a rate that is not above 0 or is
/// beyond 32 bits.
[[nodiscard]] VideoFrameRate parseRate(const std::string& text);

/// The common rate that a number of two or three decimal digits rounds: 29.97 and 29.970 are both 30000/1001.
[[nodiscard]] std::optional<CommonVideoFrameRate> roundedCommonRate(double value) noexcept;

/// "30000/1001", "25".
[[nodiscard]] std::string rateText(const MediaRational& rate);

/// {"timeValue": 30000, "timeScale": 1001, "value": 29.97…, "name": "fps29_97" or null}.
[[nodiscard]] Json rateJson(const VideoFrameRate& rate);

}  // namespace corvex::tool

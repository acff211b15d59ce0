#include <tools/corvex/RateText.h>

#include <fmt/format.h>
#include <limits>
#include <nlohmann/json.hpp>
#include <string_view>

#include <Corvex/platform/NumberText.h>
#include <tools/corvex/ToolError.h>

namespace corvex::tool {
namespace {

/// The pair that "30000/1001" or "12.5" says, exactly. None for any other text, and for terms beyond 64 bits.
std::optional<std::pair<std::int64_t, std::int64_t>> ratio(std::string_view text) {
    const std::size_t mark = text.find_first_of("/.");
    const std::string_view rest = mark == std::string_view::npos ? std::string_view() : text.substr(mark + 1);
    const auto first = parseInteger<std::int64_t>(text.substr(0, mark));
    if (!first || mark == std::string_view::npos) return first ? std::optional(std::pair(*first, 1)) : std::nullopt;
    if (text[mark] == '/') {
        const auto second = parseInteger<std::int64_t>(rest);
        return second ? std::optional(std::pair(*first, *second)) : std::nullopt;
    }
    const bool hasSign = rest.starts_with('-') || rest.starts_with('+');
    const auto digits = parseInteger<std::int64_t>(std::string(text.substr(0, mark)).append(rest));
    if (!digits || rest.empty() || hasSign) return std::nullopt;
    std::int64_t scale = 1;
    for (std::size_t i = 0; i < rest.size(); ++i) {
        if (__builtin_mul_overflow(scale, 10, &scale)) return std::nullopt;
    }
    return std::pair(*digits, scale);
}

}  // namespace

VideoFrameRate parseRate(const std::string& text) {
    if (const auto named = fromRawValue<CommonVideoFrameRate>(text)) return VideoFrameRate(*named);
    const auto pair = ratio(text);
    if (!pair) {
        throw UsageError(inQuotes(text) + " is no frame rate; expected one as 29.97, 30000/1001 or fps29_97");
    }
    if (pair->first <= 0 || pair->second <= 0) throw UsageError("a frame rate must be above 0, not " + inQuotes(text));
    const MediaRational rate(pair->first, pair->second);
    if (rate.rawValue() > std::numeric_limits<std::uint32_t>::max()) {
        throw UsageError("a frame rate must be at most 4294967295, not " + inQuotes(text));
    }
    if (text.find('.') == std::string::npos) return VideoFrameRate(rate);
    const auto nearest = closestFrameRate(rate.rawValue(), 0.01);
    const bool isNtsc = nearest && rational(*nearest).timeScale() == MediaTiming::ntscTimeScale;
    return isNtsc ? VideoFrameRate(*nearest) : VideoFrameRate(rate.reduced());
}

std::optional<CommonVideoFrameRate> roundedCommonRate(double value) noexcept { return closestFrameRate(value, 0.006); }

std::string rateText(const MediaRational& rate) {
    return rate.timeScale() == 1 ? fmt::format("{}", rate.timeValue())
                                 : fmt::format("{}/{}", rate.timeValue(), rate.timeScale());
}

Json rateJson(const VideoFrameRate& rate) {
    const auto common = rate.commonValue();
    return {{"timeValue", rate.rational().timeValue()},
            {"timeScale", rate.rational().timeScale()},
            {"value", rate.doubleValue()},
            {"name", common ? Json(std::string(rawValue(*common))) : Json(nullptr)}};
}

}  // namespace corvex::tool

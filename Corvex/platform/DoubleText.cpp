#include <Corvex/platform/DoubleText.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include <Corvex/platform/Checked.h>

namespace corvex::inline v0 {

std::string defaultText(double value) {
    std::array<char, 32> buffer{};                   // the longest is -2.2250738585072014e-308
    constexpr double allWhole = 9007199254740992.0;  // 2^53
    const double magnitude = std::abs(value);
    const bool hasExponent = magnitude >= allWhole || (magnitude < 1e-4 && magnitude > 0);
    const auto format = hasExponent ? std::chars_format::scientific : std::chars_format::fixed;
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, format);
    std::string text(buffer.data(), result.ptr);
    if (std::isfinite(value) && !hasExponent && text.find('.') == std::string::npos) text += ".0";
    return text;
}

std::string fixedText(double value, int fractionDigits) {
    require(fractionDigits >= 0, "a number cannot have a negative count of fraction digits");
    // The longest magnitude has 309 digits before the point; a sign and the point come to them.
    std::string text(static_cast<std::size_t>(fractionDigits) + 312, '\0');
    const auto result =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed, fractionDigits);
    text.resize(static_cast<std::size_t>(result.ptr - text.data()));
    return text;
}

std::string trimmingFractionZeros(double value, int maximumFractionDigits, int minimumIntegerDigits) {
    if (!std::isfinite(value)) return {};
    constexpr int mostDigits = 1074;  // no double has more digits after the point
    std::string text = fixedText(value, std::clamp(maximumFractionDigits, 0, mostDigits));
    if (text.find('.') != std::string::npos) {
        text.erase(text.find_last_not_of('0') + 1);
        if (text.ends_with('.')) text.pop_back();
    }
    const std::size_t start = text.starts_with('-') ? 1 : 0;
    const std::size_t point = std::min(text.find('.'), text.size());
    const std::size_t digits = point - start;
    const auto wanted = static_cast<std::size_t>(std::max(minimumIntegerDigits, 0));
    if (digits < wanted) {
        text.insert(start, wanted - digits, '0');
    } else if (wanted == 0 && point < text.size() && digits == 1 && text[start] == '0') {
        text.erase(start, 1);  // no digit is asked for before the point: .5
    }
    return text;
}

}  // namespace corvex::inline v0

#include <Corvex/platform/NumberText.h>

#include <algorithm>
#include <array>
#include <cmath>

#include <Corvex/platform/Checked.h>

namespace corvex::inline v0 {
namespace {

/// std::from_chars takes more (inf, nan) and less (no leading plus), so the form is checked first.
bool hasDecimalForm(std::string_view text) noexcept {
    std::size_t at = 0;
    const auto skipDigits = [&] {
        const std::size_t start = at;
        while (at < text.size() && isDigit(text[at])) ++at;
        return at - start;
    };
    std::size_t digits = skipDigits();
    if (at < text.size() && text[at] == '.') {
        ++at;
        digits += skipDigits();
    }
    if (digits == 0) return false;
    if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
        ++at;
        if (at < text.size() && (text[at] == '+' || text[at] == '-')) ++at;
        if (skipDigits() == 0) return false;
    }
    return at == text.size();
}

/// For a number of decimal form that is not zero: whether its magnitude is 1 or more.
bool isAtLeastOne(std::string_view text) noexcept {
    const std::size_t mark = text.find_first_of("eE");
    const std::string_view digits = text.substr(0, mark);
    const std::size_t point = std::min(digits.find('.'), digits.size());
    const std::size_t first = digits.find_first_not_of("0.");
    const auto position = static_cast<std::int64_t>(point) - static_cast<std::int64_t>(first) - (first < point ? 1 : 0);
    std::string_view exponentText = mark == std::string_view::npos ? "0" : text.substr(mark + 1);
    const auto exponent = parseInteger<std::int64_t>(exponentText);
    // An exponent beyond 64 bits outweighs any text of digits that fits into memory.
    return exponent ? position + std::clamp<std::int64_t>(*exponent, -(1LL << 62), 1LL << 62) >= 0
                    : !exponentText.starts_with('-');
}

template <class T>
std::string shortestPositional(T value) {
    require(std::isfinite(value), "only a finite number has a decimal text");
    std::array<char, 512> buffer{};  // the longest positional double takes 309 digits, or 2 + 323 + 17
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed);
    return {buffer.data(), result.ptr};
}

}  // namespace

template <std::floating_point T>
std::optional<T> parseFloat(std::string_view text) noexcept {
    if (text.starts_with('+')) {
        text.remove_prefix(1);
        if (text.starts_with('-')) return std::nullopt;
    }
    const bool isNegative = text.starts_with('-');
    if (!hasDecimalForm(text.substr(isNegative ? 1 : 0))) return std::nullopt;
    T value{};
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec == std::errc::result_out_of_range) {
        if (isAtLeastOne(text.substr(isNegative ? 1 : 0))) return std::nullopt;
        return isNegative ? T{-0.0} : T{0};  // too small to hold
    }
    return std::isfinite(value) ? std::optional(value) : std::nullopt;
}

template std::optional<float> parseFloat<float>(std::string_view) noexcept;
template std::optional<double> parseFloat<double>(std::string_view) noexcept;

std::string shortestText(double value) { return shortestPositional(value); }
std::string shortestText(float value) { return shortestPositional(value); }

}  // namespace corvex::inline v0

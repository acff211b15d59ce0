#include <Corvex/platform/Decimal.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include <Corvex/platform/NumberText.h>
#include <Corvex/platform/Text.h>

namespace corvex::inline v0 {
namespace {

std::size_t digitCount(std::string_view text) noexcept {
    return static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), isDigit) - text.begin());
}

/// The parts of a number at the front of a text. The views lie next to each other in the text.
struct Parts {
    std::string_view whole, fraction, exponent;  ///< Digits; the exponent with its sign, empty where there is none.
    std::size_t length = 0;
};

Parts partsOf(std::string_view text) noexcept {
    Parts parts;
    std::size_t at = text.starts_with('-') || text.starts_with('+') ? 1 : 0;
    parts.whole = text.substr(at, digitCount(text.substr(at)));
    at += parts.whole.size();
    if (at < text.size() && text[at] == '.') {
        parts.fraction = text.substr(at + 1, digitCount(text.substr(at + 1)));
        at += 1 + parts.fraction.size();
    }
    if (parts.whole.empty() && parts.fraction.empty()) return {};
    parts.length = at;
    if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
        std::size_t digits = at + 1;
        if (digits < text.size() && (text[digits] == '-' || text[digits] == '+')) ++digits;
        const std::size_t count = digitCount(text.substr(std::min(digits, text.size())));
        if (count > 0) {
            parts.length = digits + count;
            parts.exponent = text.substr(at + 1, parts.length - at - 1);
        }
    }
    return parts;
}

/// All ones where `number` * 10 + `digit` does not fit.
constexpr std::uint64_t appended(std::uint64_t number, unsigned digit) noexcept {
    std::uint64_t result{};
    const bool overflows =
        __builtin_mul_overflow(number, 10U, &result) || __builtin_add_overflow(result, digit, &result);
    return overflows ? std::numeric_limits<std::uint64_t>::max() : result;
}

std::uint64_t wholeMagnitude(const Parts& parts) noexcept {
    constexpr std::int64_t farthest = std::int64_t{1} << 62U;  // outweighs any text of digits that fits into memory
    const auto read = parts.exponent.empty() ? 0 : parseInteger<std::int64_t>(parts.exponent);
    const std::int64_t exponent =
        read ? std::clamp(*read, -farthest, farthest) : (parts.exponent.starts_with('-') ? -farthest : farthest);
    std::int64_t point = static_cast<std::int64_t>(parts.whole.size()) + exponent;  // how many digits stand before it
    std::uint64_t magnitude = 0;
    for (const std::string_view digits : {parts.whole, parts.fraction}) {
        for (const char digit : digits) {
            if (point <= 0) return magnitude;
            magnitude = appended(magnitude, static_cast<unsigned>(digit - '0'));
            --point;
        }
    }
    while (point > 0 && magnitude != 0 && magnitude != std::numeric_limits<std::uint64_t>::max()) {
        magnitude = appended(magnitude, 0);
        --point;
    }
    return magnitude;
}

}  // namespace

std::optional<Decimal> Decimal::fromPrefix(std::string_view text) noexcept {
    text = trimmed(text);
    const Parts parts = partsOf(text);
    if (parts.length == 0) return std::nullopt;
    const auto value = parseFloat<double>(text.substr(0, parts.length));
    if (!value) return std::nullopt;
    return Decimal(*value == 0 ? 0.0 : *value, wholeMagnitude(parts));
}

std::int64_t Decimal::int64Value() const noexcept {
    constexpr auto most = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    if (std::signbit(value_)) {
        return wholeMagnitude_ > most ? std::numeric_limits<std::int64_t>::min()
                                      : -static_cast<std::int64_t>(wholeMagnitude_);
    }
    return static_cast<std::int64_t>(std::min(wholeMagnitude_, most));
}

}  // namespace corvex::inline v0

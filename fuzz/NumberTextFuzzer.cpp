#include <cmath>
#include <cstdlib>
#include <optional>

#include <Corvex/color/Color.h>
#include <Corvex/platform/Decimal.h>
#include <Corvex/platform/NumberText.h>

#include "support/Fuzzer.h"

namespace {

using namespace corvex;

/// The whole text as a number, read by the C library alone, whose grammar is wider: hexadecimal, names, white space.
std::optional<double> byStandard(const std::string& text) {
    if (text.find_first_not_of("0123456789+-.eE") != std::string::npos || text.empty()) return std::nullopt;
    char* end = nullptr;
    const double value = std::strtod(text.c_str(), &end);
    return end == text.c_str() + text.size() && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

template <class Integer>
void checkInteger(const std::string& text) {
    const auto value = parseInteger<Integer>(text);
    if (!value) return;
    require(parseInteger<Integer>(std::to_string(*value)) == value, "an integer does not print as it is read");
    require(std::is_signed_v<Integer> || text.front() != '-' || *value == 0, "a negative number without a sign");
    require(Decimal::fromPrefix(text).has_value(), "an integer that is no decimal");
}

void checkColor(std::string_view text) {
    const auto bytes = hexTo8BitRGBA(text);
    const auto color = Color::fromHex(text);
    require(bytes.has_value() == color.has_value(), "two readings of hexadecimal text disagree");
    if (bytes) require(hexTo8BitRGBA(*color->toHex(true)) == bytes, "a colour does not print as it is read");
}

}  // namespace

/// Number texts of options and colours: what is read prints to itself, and agrees with the C library.
void corvex::fuzz(std::string_view input) {
    const std::string text(input);
    const auto number = parseFloat<double>(text);
    require(number == byStandard(text), "a number is read otherwise than by the C library");
    if (number) require(parseFloat<double>(shortestText(*number)) == number, "a number does not print as it is read");
    if (const auto single = parseFloat<float>(text)) {
        require(parseFloat<float>(shortestText(*single)) == single, "a single-precision number does not print");
    }
    checkInteger<std::int8_t>(text);
    checkInteger<std::uint32_t>(text);
    checkInteger<std::int64_t>(text);
    if (const auto decimal = Decimal::fromPrefix(text)) {
        require(std::isfinite(decimal->doubleValue()), "a decimal that is not finite");
        require(decimal->int64Value() >= 0 || decimal->uint64Value() == 0, "the integer readings disagree");
    }
    checkColor(text);
}

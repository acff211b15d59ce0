#include <Corvex/platform/Number.h>

#include <cstddef>
#include <functional>
#include <new>

#include <Corvex/platform/DoubleText.h>

namespace corvex::inline v0 {
namespace {

constexpr double limit = 9223372036854775808.0;  // 2^63

/// The integer that a number is, if it is one of 64 bits.
std::optional<std::int64_t> exactInteger(const std::variant<bool, std::int64_t, double>& value) noexcept {
    if (const bool* truth = std::get_if<bool>(&value)) return *truth ? 1 : 0;
    if (const std::int64_t* integer = std::get_if<std::int64_t>(&value)) return *integer;
    const double number = *std::get_if<double>(&value);
    if (!(number >= -limit && number < limit)) return std::nullopt;
    const auto integer = static_cast<std::int64_t>(number);
    return static_cast<double>(integer) == number ? std::optional(integer) : std::nullopt;
}

}  // namespace

Number::~Number() = default;

std::int64_t Number::int64Value() const noexcept {
    if (const auto integer = exactInteger(value_)) return *integer;
    const double number = doubleValue();
    if (number >= limit) return std::numeric_limits<std::int64_t>::max();
    if (number < -limit) return std::numeric_limits<std::int64_t>::min();
    return number == number ? static_cast<std::int64_t>(number) : 0;
}

double Number::doubleValue() const noexcept {
    if (const bool* truth = std::get_if<bool>(&value_)) return *truth ? 1.0 : 0.0;
    if (const std::int64_t* integer = std::get_if<std::int64_t>(&value_)) return static_cast<double>(*integer);
    return *std::get_if<double>(&value_);
}

bool Number::isPowerOfTwo() const noexcept {
    const auto integer = exactInteger(value_);
    return integer && integerIsPowerOfTwo(*integer);
}

std::string Number::description() const {
    if (std::holds_alternative<double>(value_)) return defaultText(doubleValue());
    return std::to_string(int64Value());
}

bool Number::isEqual(const Object& other) const {
    const auto* number = dynamic_cast<const Number*>(&other);
    if (number == nullptr) return false;
    const auto integer = exactInteger(value_);
    const auto otherInteger = exactInteger(number->value_);
    if (integer || otherInteger) return integer == otherInteger;
    return doubleValue() == number->doubleValue();  // both beyond 64 bits, or with a fraction
}

std::size_t Number::hash() const {
    const auto integer = exactInteger(value_);
    return integer ? std::hash<std::int64_t>{}(*integer) : std::hash<double>{}(doubleValue());
}

const Number& cfEquivalent(bool value) noexcept {
    // Never destroyed, so that destructors of static objects may still ask.
    alignas(Number) static std::byte room[2][sizeof(Number)];
    static const Number& no = *::new (static_cast<void*>(room[0])) Number(false);
    static const Number& yes = *::new (static_cast<void*>(room[1])) Number(true);
    return value ? yes : no;
}

}  // namespace corvex::inline v0

#pragma once

#include <charconv>
#include <concepts>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

// Number texts of options: the whole text, ASCII, never locale-dependent. Pure; any thread.

/// Whether it is an ASCII digit, whatever the locale.
[[nodiscard]] constexpr bool isDigit(char character) noexcept { return character >= '0' && character <= '9'; }

/// Whether signs may stand before a decimal integer.
enum class SignRule : std::uint8_t { plusOrMinus, plusOnly };

/// The decimal integer that the whole text is; none when it is empty, has other characters or does not fit T.
template <std::integral T>
[[nodiscard]] constexpr std::optional<T> parseInteger(std::string_view text,
                                                      SignRule signs = SignRule::plusOrMinus) noexcept {
    const bool isNegative = text.starts_with('-');
    if (isNegative && signs == SignRule::plusOnly) return std::nullopt;
    if (isNegative || text.starts_with('+')) text.remove_prefix(1);
    if (text.empty()) return std::nullopt;
    T value{};
    for (const char character : text) {
        if (!isDigit(character)) return std::nullopt;
        const auto digit = static_cast<T>(character - '0');
        if (__builtin_mul_overflow(value, T{10}, &value)) return std::nullopt;
        if (isNegative ? __builtin_sub_overflow(value, digit, &value) : __builtin_add_overflow(value, digit, &value)) {
            return std::nullopt;
        }
    }
    return value;
}

/// The decimal floating-point number that the whole text is, rounded once to T (float or double):
/// [+-]? (digits [. digits*] | . digits) ([eE][+-]? digits)?  None for anything else (blanks, hexadecimal, inf, nan)
/// and for a result that is not finite.
template <std::floating_point T>
[[nodiscard]] std::optional<T> parseFloat(std::string_view text) noexcept;
extern template CORVEX_EXPORT std::optional<float> parseFloat<float>(std::string_view) noexcept;
extern template CORVEX_EXPORT std::optional<double> parseFloat<double>(std::string_view) noexcept;

/// The shortest positional text that reads back as `value`, without exponent and without ".0": 1, 0.25, 1920.
/// `value` must be finite.
[[nodiscard]] CORVEX_EXPORT std::string shortestText(double value);
[[nodiscard]] CORVEX_EXPORT std::string shortestText(float value);

}  // namespace corvex::inline v0

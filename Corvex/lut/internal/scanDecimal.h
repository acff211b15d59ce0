#pragma once

#include <array>
#include <bit>
#include <charconv>
#include <cstdint>
#include <cstring>

namespace corvex::inline v0 {

// How the numbers of tables are read, at several times the speed of std::from_chars. Not for callers, as bytes behind the
// number are read, too.
/// By exponent, for runs of up to eight digits.
inline constexpr std::array<std::uint64_t, 9> wholePowersOfTen = {1,      10,      100,      1000,     10000,
                                                                  100000, 1000000, 10000000, 100000000};
/// Those that a double holds exactly: a mantissa of up to 53 bits times or over one of them is rounded once.
/// Source   Clinger, How to Read Floating Point Numbers Accurately, PLDI 1990.
inline constexpr std::array<double, 23> powersOfTen = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                       1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                                       1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

/// The number that eight digits make, each 0 to 9 in a byte of its own, the first in the lowest byte. Three
/// multiplications.
[[nodiscard]] constexpr std::uint64_t eightDigits(std::uint64_t digits) noexcept {
    const std::uint64_t pairs = digits * 10U + (digits >> 8U);
    const std::uint64_t fours = (pairs & 0x00FF00FF00FF00FFU) * 100U + ((pairs & 0x00FF00FF00FF00FFU) >> 16U);
    return ((fours & 0x0000FFFF0000FFFFU) * 10000U + ((fours & 0x0000FFFF0000FFFFU) >> 32U)) & 0xFFFFFFFFU;
}

/// A run of up to eight digits and its value; 0 and 0 for no digit.
struct DigitRun {
    /// Below 10^8.
    std::uint64_t value;
    /// 0 to 8.
    unsigned count;
};

/// The digits at the front of eight readable bytes, all at once. More may follow where it counts eight.
[[nodiscard]] inline DigitRun digitRun(const char* at) noexcept {
    if constexpr (std::endian::native == std::endian::little) {
        std::uint64_t word = 0;
        std::memcpy(&word, at, sizeof word);
        const std::uint64_t digits = word ^ 0x3030303030303030U;
        // The high bit of each byte that is above 9; the carry out of one byte only spoils bytes behind a non-digit.
        const std::uint64_t others = ((digits + 0x7676767676767676U) | digits) & 0x8080808080808080U;
        const auto count = static_cast<unsigned>(std::countr_zero(others)) / 8U;
        if (count == 0) return {0, 0};
        // The first digit is the most significant: move the run to the top, zeros come in as leading digits.
        return {eightDigits(digits << (64U - 8U * count)), count};
    } else {
        DigitRun run{0, 0};
        while (run.count < 8 && at[run.count] >= '0' && at[run.count] <= '9') {
            run.value = run.value * 10U + static_cast<unsigned>(at[run.count++] - '0');
        }
        return run;
    }
}

/// Reads a number of the shape that most programs write, 0.123456 before a blank or a control character, of nine
/// readable bytes. Null for any other. Its length is known before its digits are, so that the next one need not wait
/// for them. Little-endian machines alone; others take the general way.
[[nodiscard]] inline const char* scanSixPlaces(const char* at, double& value) noexcept {
    if constexpr (std::endian::native != std::endian::little) return nullptr;
    std::uint64_t word = 0;
    std::memcpy(&word, at, sizeof word);
    const std::uint64_t digits = word ^ 0x3030303030302E30U;
    const std::uint64_t others = ((digits + 0x7676767676767F76U) | digits) & 0x8080808080808080U;
    if (others != 0 || static_cast<unsigned char>(at[8]) > ' ') return nullptr;
    const std::uint64_t mantissa = eightDigits((digits & ~std::uint64_t{0xFFFF}) | (digits & 0xFFU) << 8U);
    value = static_cast<double>(mantissa) / 1e6;
    return at + 8;
}

/// Reads the number at `at` into `value`, correctly rounded, minus zero as zero. Null where there is none of the form
/// [+-]? (digits [. digits*] | . digits) ([eE] [+-]? digits)?, or where it is too large or too small for double; then
/// the caller takes a closer look. The text ends with a byte that belongs to no number, and 8 more can be read.
/// Without an exponent, up to 19 digits that make at most 2^53 are converted here; std::from_chars does the rest.
[[nodiscard]] inline const char* scanDecimal(const char* at, double& value) noexcept {
    if (const char* const end = scanSixPlaces(at, value)) return end;
    const auto isDigit = [](char character) { return static_cast<unsigned char>(character - '0') < 10; };
    const bool isNegative = *at == '-';
    if (isNegative || *at == '+') ++at;
    const char* const first = at;
    std::uint64_t mantissa = 0;
    for (; isDigit(*at); ++at) mantissa = mantissa * 10U + static_cast<unsigned>(*at - '0');
    auto digitCount = static_cast<std::size_t>(at - first);
    std::size_t fractionCount = 0;
    if (*at == '.') {
        const char* const fraction = ++at;
        DigitRun run{};
        do {
            run = digitRun(at);
            mantissa = mantissa * wholePowersOfTen[run.count] + run.value;
            at += run.count;
        } while (run.count == 8);
        fractionCount = static_cast<std::size_t>(at - fraction);
        digitCount += fractionCount;
    }
    if (digitCount == 0) return nullptr;
    if (*at == 'e' || *at == 'E') {
        ++at;
        if (*at == '-' || *at == '+') ++at;
        if (!isDigit(*at)) return nullptr;
        while (isDigit(*at)) ++at;
    } else if (digitCount <= 19 && mantissa <= (std::uint64_t{1} << 53U) && fractionCount < powersOfTen.size()) {
        // Both terms are exact, so the quotient is rounded once.
        const double magnitude = static_cast<double>(mantissa) / powersOfTen[fractionCount];
        value = isNegative && mantissa != 0 ? -magnitude : magnitude;
        return at;
    }
    double magnitude = 0;
    // The mantissa above may have wrapped; this reads the digits again.
    if (std::from_chars(first, at, magnitude).ec != std::errc()) return nullptr;
    value = isNegative && magnitude != 0 ? -magnitude : magnitude;
    return at;
}

}  // namespace corvex::inline v0

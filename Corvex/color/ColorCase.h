#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include <Corvex/platform/CaseTable.h>

namespace corvex::inline v0 {

/// A row of a colour enumeration. Raw integers begin at 1 for most and may have gaps; they are in stored data and never
/// change.
template <class Enumeration, class CliValue>
struct ColorCase : Case<Enumeration, std::int64_t> {
    /// The enumerator as it is spelt, by which tools and JSON for people name it.
    std::string_view caseName;
    /// Its value on a transcoder's command line; nullptr: none.
    const CliValue* cliEquivalent;
    /// In ISO/IEC 23091-2 (ITU-T H.273), which containers and codecs carry; none where that standard has no such entry.
    std::optional<std::uint8_t> codePoint;
};

/// An enumeration whose rows have the name of the case and the code point.
template <class Enumeration>
concept ColorEnumeration = ClosedEnumeration<Enumeration> && requires(Enumeration value) {
    caseOf(value).caseName;
    caseOf(value).codePoint;
};

/// One whose rows have a typed value of the command line, too: all but the range, whose values are no typed family.
template <class Enumeration>
concept ColorEnumerationWithCliValues =
    ColorEnumeration<Enumeration> && requires(Enumeration value) { caseOf(value).cliEquivalent; };

/// The case as the enumeration spells it.
template <ColorEnumeration Enumeration>
[[nodiscard]] constexpr std::string_view caseName(Enumeration value) noexcept {
    return caseOf(value).caseName;
}

/// The case of this name, letter for letter, or none. O(rows), as are the searches below; all functions here are pure
/// and work in constant expressions.
template <ColorEnumeration Enumeration>
[[nodiscard]] constexpr std::optional<Enumeration> fromCaseName(std::string_view name) noexcept {
    for (const auto& row : caseTable<Enumeration>) {
        if (row.caseName == name) return row.value;
    }
    return std::nullopt;
}

/// The typed value by which a transcoder is asked for it, or none. Copying it does not allocate, as it is a constant.
template <ColorEnumerationWithCliValues Enumeration>
[[nodiscard]] constexpr auto cliEquivalent(Enumeration value) noexcept {
    using CliValue = std::remove_cvref_t<decltype(*caseOf(value).cliEquivalent)>;
    const auto* equivalent = caseOf(value).cliEquivalent;
    return equivalent != nullptr ? std::optional<CliValue>(*equivalent) : std::nullopt;
}

/// The case that a transcoder's value asks for, or none. Compared without regard to ASCII case, because parsing an
/// argument vector lower-cases values and two constants are mixed case.
template <ColorEnumerationWithCliValues Enumeration>
[[nodiscard]] constexpr std::optional<Enumeration> fromCliEquivalent(std::string_view text) noexcept {
    const auto lower = [](char letter) { return letter >= 'A' && letter <= 'Z' ? char(letter + ('a' - 'A')) : letter; };
    for (const auto& row : caseTable<Enumeration>) {
        if (row.cliEquivalent == nullptr) continue;
        const std::string_view value = row.cliEquivalent->rawValue();
        if (value.size() != text.size()) continue;
        bool isEqual = true;
        for (std::size_t i = 0; i < text.size(); ++i) isEqual = isEqual && lower(text[i]) == lower(value[i]);
        if (isEqual) return row.value;
    }
    return std::nullopt;
}

/// The code point of ISO/IEC 23091-2, or none.
template <ColorEnumeration Enumeration>
[[nodiscard]] constexpr std::optional<std::uint8_t> codePoint(Enumeration value) noexcept {
    return caseOf(value).codePoint;
}

/// The first case with this code point, or none. Code points that name the same thing twice (transfer 6 is the function
/// of 1, matrix 5 that of 6) are read as well: see `fromCodePoint` beside each enumeration.
template <ColorEnumeration Enumeration>
[[nodiscard]] constexpr std::optional<Enumeration> fromListedCodePoint(int point) noexcept {
    for (const auto& row : caseTable<Enumeration>) {
        if (row.codePoint && *row.codePoint == point) return row.value;
    }
    return std::nullopt;
}

}  // namespace corvex::inline v0

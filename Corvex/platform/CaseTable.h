#pragma once

#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <tuple>
#include <type_traits>

#include <Corvex/platform/Checked.h>

namespace corvex::inline v0 {

/// One row of a closed enumeration's table: the enumerator, its raw value (text or integer) and its description. An
/// enumeration that says more about its cases (equivalents, flags) derives its own row type from this one. Aggregates
/// of literals: tables cost no start-up time.
template <class Enumeration, class Raw = std::string_view>
struct Case {
    /// Its number is the row's index.
    Enumeration value;
    /// No two rows have the same.
    Raw rawValue;
    /// For people, in English.
    std::string_view description;
};

/// The table of a closed enumeration: specialised beside it with a constexpr std::array of rows, in case order. From it
/// alone come allCases, rawValue, fromRawValue, description and the coding to JSON (Json.h).
/// A static_assert(isComplete<E>(caseTable<E>)) beside it makes a forgotten row an error of the compiler.
template <class Enumeration>
inline constexpr auto caseTable = nullptr;

/// An enumeration that has a table.
template <class Enumeration>
concept ClosedEnumeration =
    std::is_enum_v<Enumeration> && !std::same_as<std::remove_cvref_t<decltype(caseTable<Enumeration>)>, std::nullptr_t>;

/// Whether `value` is declared in its enumeration; g++ and clang spell an undeclared one as a cast, "(Type)3". So a
/// missing row at the end is found, which no count could.
template <auto value>
consteval bool isEnumerator() {
    const std::string_view text = __PRETTY_FUNCTION__;
    return text[text.find("value = ") + 8] != '(';
}

/// Whether the rows name each enumerator once, in order from 0, with raw values that differ, and none is left out.
template <class Enumeration, class Rows>
consteval bool isComplete(const Rows& rows) {
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (rows[i].value != static_cast<Enumeration>(i)) return false;
        for (std::size_t j = 0; j < i; ++j) {
            if (rows[j].rawValue == rows[i].rawValue) return false;
        }
    }
    return !isEnumerator<static_cast<Enumeration>(std::tuple_size_v<Rows>)>();
}

/// All cases in their declared order, as a std::array.
template <ClosedEnumeration Enumeration>
inline constexpr auto allCases =
    std::apply([](const auto&... rows) { return std::array{rows.value...}; }, caseTable<Enumeration>);

/// The row of a case, O(1). A value outside the enumeration, as a cast may make it, is a programming error and stops
/// the process. So do rawValue() and description() of one.
template <ClosedEnumeration Enumeration>
[[nodiscard]] constexpr const auto& caseOf(Enumeration value) noexcept {
    const auto index = static_cast<std::size_t>(value);
    require(index < caseTable<Enumeration>.size(), "unexpected enumeration case");
    return caseTable<Enumeration>[index];
}

/// What stored data, command lines and other programs know the case by. It never changes.
template <ClosedEnumeration Enumeration>
[[nodiscard]] constexpr auto rawValue(Enumeration value) noexcept {
    return caseOf(value).rawValue;
}

/// For people, in English. It may change from version to version: compare raw values.
template <ClosedEnumeration Enumeration>
[[nodiscard]] constexpr std::string_view description(Enumeration value) noexcept {
    return caseOf(value).description;
}

/// The case with exactly this raw value (texts letter for letter), or none. O(rows).
template <ClosedEnumeration Enumeration, class Raw>
[[nodiscard]] constexpr std::optional<Enumeration> fromRawValue(const Raw& raw) noexcept {
    for (const auto& row : caseTable<Enumeration>) {
        if (row.rawValue == raw) return row.value;
    }
    return std::nullopt;
}

/// Whether a closed enumeration is coded to JSON as its raw value: one that says false has a coding of its own.
template <class Enumeration>
inline constexpr bool isCodedAsRawValue = true;

template <class Enumeration>
concept CodedAsRawValue = ClosedEnumeration<Enumeration> && isCodedAsRawValue<Enumeration>;

/// What stands where the coding of Json.h is missing, because the JSON library would code an enumerator as its number.
template <class Enumeration>
struct MissingCoding {
    static_assert(!CodedAsRawValue<Enumeration>, "include <Corvex/platform/Json.h> to code an enumeration");
    using Result = void;
};

/// Never called: where it is found the compilation ends.
template <class JsonType, CodedAsRawValue Enumeration>
MissingCoding<Enumeration>::Result to_json(JsonType& json, Enumeration value);
/// Never called, as to_json().
template <class JsonType, CodedAsRawValue Enumeration>
MissingCoding<Enumeration>::Result from_json(const JsonType& json, Enumeration& value);

}  // namespace corvex::inline v0

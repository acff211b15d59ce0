#pragma once

#include <concepts>
#include <string_view>

namespace corvex::inline v0 {

/// A family of command-line flags: `cliFlag()` is the flag as it is written, with its leading "-", and
/// `acceptsArguments()` says whether a value follows it. Comparisons are exact and case-sensitive: lower-case a user's
/// word first.
/// Open families answer true for a text that is none of their flags, as a word behind an unknown flag is its value.
template <class Flag>
concept CliFlag = requires(const Flag& flag) {
    { flag.cliFlag() } -> std::convertible_to<std::string_view>;
    { flag.acceptsArguments() } -> std::same_as<bool>;
};

/// A value that knows the flag under which it is written, so that a pair of words can be made from it alone.
template <class Value>
concept CLIArgumentOption = requires(const Value& value) {
    { value.cliFlag() } -> std::convertible_to<std::string_view>;
};

}  // namespace corvex::inline v0

#pragma once

#include <concepts>
#include <string_view>

namespace corvex::inline v0 {

/// A family of command-line flags: `cliFlag()` is the flag as it is written, with its leading "-", and
/// `acceptsArguments()` says whether a value follows it. Comparisons are exact and case-sensitive.
template <class Flag>
concept CliFlag = requires(const Flag& flag) {
    { flag.cliFlag() } -> std::convertible_to<std::string_view>;
    { flag.acceptsArguments() } -> std::same_as<bool>;
};

/// A value that knows the flag under which it is written.
template <class Value>
concept CLIArgumentOption = requires(const Value& value) {
    { value.cliFlag() } -> std::convertible_to<std::string_view>;
};

}  // namespace corvex::inline v0

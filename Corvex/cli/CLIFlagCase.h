#pragma once

#include <map>
#include <string>
#include <string_view>

#include <Corvex/cli/CLISanitizationOptions.h>
#include <Corvex/platform/CaseTable.h>

namespace corvex::inline v0 {

/// A row of a closed enumeration of flags: the flag as it is written, and whether a value follows it. The raw value is
/// the flag without its "-".
template <class Enumeration>
struct CLIFlagCase : Case<Enumeration> {
    /// With its "-".
    std::string_view cliFlag;
    /// Otherwise a switch.
    bool acceptsArguments;
};

/// An enumeration whose table (see caseTable) consists of such rows.
template <class Enumeration>
concept CLIFlagEnumeration = ClosedEnumeration<Enumeration> && requires(Enumeration flag) { caseOf(flag).cliFlag; };

/// The flag as it is written: "-" and the raw value, in the case in which a parent writes it. A literal: valid for
/// ever.
template <CLIFlagEnumeration Enumeration>
[[nodiscard]] constexpr std::string_view cliFlag(Enumeration flag) noexcept {
    return caseOf(flag).cliFlag;
}

/// Whether a value follows the flag. A switch is followed by another flag, or by the empty word when it was rendered.
template <CLIFlagEnumeration Enumeration>
[[nodiscard]] constexpr bool acceptsArguments(Enumeration flag) noexcept {
    return caseOf(flag).acceptsArguments;
}

/// Every case with its flag cleaned by `options`: what to look a cleaned word up in. Makes the map anew with each call.
template <CLIFlagEnumeration Enumeration>
[[nodiscard]] std::map<Enumeration, std::string> sanitizeAllCLIFlags(CLISanitizationOptions options) {
    std::map<Enumeration, std::string> flags;
    for (const auto& row : caseTable<Enumeration>) flags.emplace(row.value, options.sanitize(row.cliFlag));
    return flags;
}

/// Whether each row's flag is "-" and its raw value; for a static_assert beside the table.
template <class Enumeration>
consteval bool flagsMatchRawValues() {
    for (const auto& row : caseTable<Enumeration>) {
        if (!row.cliFlag.starts_with('-') || row.cliFlag.substr(1) != row.rawValue) return false;
    }
    return true;
}

}  // namespace corvex::inline v0

#pragma once

#include <string>
#include <string_view>

#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

/// How a word of a command line is cleaned: a set of options. The empty set leaves a word unchanged. Bits without a
/// meaning are kept and do nothing, so that sets of later versions pass through. A plain value.
class CLISanitizationOptions {
public:
    constexpr CLISanitizationOptions() noexcept = default;
    constexpr explicit CLISanitizationOptions(unsigned rawValue) noexcept : rawValue_(rawValue) {}

    /// Bit 1: simple lower case of Unicode, as makeLowercase() does.
    static const CLISanitizationOptions lowercase;
    /// Bit 2: white space and newlines of Unicode go from both ends, not from the middle.
    static const CLISanitizationOptions trimWhiteSpace;

    [[nodiscard]] constexpr unsigned rawValue() const noexcept { return rawValue_; }
    /// Whether all of `options` are among these; true of the empty set.
    [[nodiscard]] constexpr bool contains(CLISanitizationOptions options) const noexcept {
        return (rawValue_ & options.rawValue_) == options.rawValue_;
    }
    [[nodiscard]] friend constexpr CLISanitizationOptions operator|(CLISanitizationOptions a,
                                                                    CLISanitizationOptions b) noexcept {
        return CLISanitizationOptions(a.rawValue_ | b.rawValue_);
    }
    friend constexpr bool operator==(CLISanitizationOptions, CLISanitizationOptions) noexcept = default;

    /// The word lower-cased if asked for, and then trimmed if asked for. Bytes that are not UTF-8 are left as they are.
    /// O(n).
    [[nodiscard]] CORVEX_EXPORT std::string sanitize(std::string_view word) const;

private:
    unsigned rawValue_ = 0;
};

inline constexpr CLISanitizationOptions CLISanitizationOptions::lowercase{1U};
inline constexpr CLISanitizationOptions CLISanitizationOptions::trimWhiteSpace{2U};

}  // namespace corvex::inline v0

#pragma once

#include <string>
#include <string_view>

#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

/// How a word of a command line is cleaned: a set of options. The empty set leaves a word unchanged.
class CLISanitizationOptions {
public:
    constexpr CLISanitizationOptions() noexcept = default;
    constexpr explicit CLISanitizationOptions(unsigned rawValue) noexcept : rawValue_(rawValue) {}

    static const CLISanitizationOptions lowercase;       ///< Bit 1.
    static const CLISanitizationOptions trimWhiteSpace;  ///< Bit 2: white space and newlines at both ends.

    [[nodiscard]] constexpr unsigned rawValue() const noexcept { return rawValue_; }
    /// Whether all of `options` are among these.
    [[nodiscard]] constexpr bool contains(CLISanitizationOptions options) const noexcept {
        return (rawValue_ & options.rawValue_) == options.rawValue_;
    }
    [[nodiscard]] friend constexpr CLISanitizationOptions operator|(CLISanitizationOptions a,
                                                                    CLISanitizationOptions b) noexcept {
        return CLISanitizationOptions(a.rawValue_ | b.rawValue_);
    }
    friend constexpr bool operator==(CLISanitizationOptions, CLISanitizationOptions) noexcept = default;

    /// The word lower-cased if asked for, and then trimmed if asked for.
    [[nodiscard]] CORVEX_EXPORT std::string sanitize(std::string_view word) const;

private:
    unsigned rawValue_ = 0;
};

inline constexpr CLISanitizationOptions CLISanitizationOptions::lowercase{1U};
inline constexpr CLISanitizationOptions CLISanitizationOptions::trimWhiteSpace{2U};

}  // namespace corvex::inline v0

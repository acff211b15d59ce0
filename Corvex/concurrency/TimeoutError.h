#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include <Corvex/platform/Error.h>

namespace corvex::inline v0 {

/// An operation that took too long. It is thrown when the operation has ended, which may be later than the limit. Equal
/// by case and seconds.
class CORVEX_EXPORT TimeoutError : public Error {
public:
    enum class Case : std::uint8_t { timedOut, undefined };

    /// Says how long was waited, in whole seconds.
    [[nodiscard]] static TimeoutError timedOut(std::uint64_t seconds);
    /// Of no known cause; the library throws none.
    [[nodiscard]] static TimeoutError undefined();
    ~TimeoutError() override;
    TimeoutError(const TimeoutError&) = default;
    TimeoutError& operator=(const TimeoutError&) = default;

    /// `timedOut`, or `undefined` where nobody knows after how long.
    [[nodiscard]] Case which() const noexcept { return case_; }
    /// How long the operation was given; 0 for `undefined`.
    [[nodiscard]] std::uint64_t seconds() const noexcept { return seconds_; }
    /// What what() says: "Timed out after 30", without a unit; "Undefined timeout".
    [[nodiscard]] std::optional<std::string> errorDescription() const { return what(); }

    friend bool operator==(const TimeoutError& a, const TimeoutError& b) noexcept {
        return a.case_ == b.case_ && a.seconds_ == b.seconds_;
    }

private:
    TimeoutError(Case which, std::uint64_t seconds, const std::string& description);

    Case case_;
    std::uint64_t seconds_;
};

}  // namespace corvex::inline v0

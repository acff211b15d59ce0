#pragma once

#include <cstdint>
#include <string_view>

#include <Corvex/platform/Error.h>

namespace corvex::inline v0 {

/// What a pool may throw that has nothing to hand out and never will. For pools of a host's own: SimpleAsyncPool lets
/// borrowers wait instead. Equal and hashed by case.
class CORVEX_EXPORT AsyncPoolError : public Error {
public:
    /// `emptyPool`: there is no item, and nobody has one to bring back.
    enum class Case : std::uint8_t { emptyPool };

    /// The message is that of the case.
    explicit AsyncPoolError(Case which);
    ~AsyncPoolError() override;
    AsyncPoolError(const AsyncPoolError&) = default;
    AsyncPoolError& operator=(const AsyncPoolError&) = default;

    /// What went wrong: no item, and nobody who might bring one back.
    [[nodiscard]] Case which() const noexcept { return case_; }

    /// Whether the cases are the same.
    friend bool operator==(const AsyncPoolError& a, const AsyncPoolError& b) noexcept { return a.case_ == b.case_; }

private:
    Case case_;
};

}  // namespace corvex::inline v0

template <>
struct std::hash<corvex::AsyncPoolError> {
    std::size_t operator()(const corvex::AsyncPoolError& error) const noexcept {
        return static_cast<std::size_t>(error.which());
    }
};

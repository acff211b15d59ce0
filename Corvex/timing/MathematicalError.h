#pragma once

#include <cstdint>

#include <Corvex/platform/Error.h>

namespace corvex::inline v0 {

/// Arithmetic that has no result. Integer overflow is no such error: it stops the process. Equal by case.
class CORVEX_EXPORT MathematicalError : public Error {
public:
    /// `divideByZero`: a ratio whose denominator is 0 was to become a number.
    enum class Case : std::uint8_t { divideByZero };

    /// The message is that of the case, in English.
    explicit MathematicalError(Case which);
    ~MathematicalError() override;
    MathematicalError(const MathematicalError&) = default;
    MathematicalError& operator=(const MathematicalError&) = default;

    /// What went wrong; so far there is one case.
    [[nodiscard]] Case which() const noexcept { return case_; }

    /// Whether the cases are the same.
    friend bool operator==(const MathematicalError& a, const MathematicalError& b) noexcept {
        return a.case_ == b.case_;
    }

private:
    Case case_;
};

}  // namespace corvex::inline v0

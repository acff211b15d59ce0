#pragma once

#include <cstdint>

#include <Corvex/platform/Error.h>

namespace corvex::inline v0 {

/// Arithmetic that has no result.
class CORVEX_EXPORT MathematicalError : public Error {
public:
    enum class Case : std::uint8_t { divideByZero };

    explicit MathematicalError(Case which);  ///< The message is that of the case.
    ~MathematicalError() override;
    MathematicalError(const MathematicalError&) = default;
    MathematicalError& operator=(const MathematicalError&) = default;

    [[nodiscard]] Case which() const noexcept { return case_; }

    friend bool operator==(const MathematicalError& a, const MathematicalError& b) noexcept {
        return a.case_ == b.case_;
    }

private:
    Case case_;
};

}  // namespace corvex::inline v0

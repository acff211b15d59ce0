#pragma once

#include <cstdint>
#include <string>

#include <Corvex/platform/CaseTable.h>
#include <Corvex/platform/Error.h>
#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

/// Why a table cannot be applied to pixels. A file that was read may still have one of these.
enum class LutApplierProblem : std::uint8_t {
    /// Of the stated application alone, which divides by the largest value of the cube.
    highValueNotPositive,
    /// Of the conventional application alone. A domain too wide for floating point counts as empty.
    emptyDomain,
    /// Tetrahedral blending was asked for where there is no cube, or as stated.
    blendingNotStated,
};

template <>
inline constexpr auto caseTable<LutApplierProblem> = std::to_array<Case<LutApplierProblem>>({
    {LutApplierProblem::highValueNotPositive, "highValueNotPositive",
     "the largest value of the table must be above 0, since inputs are divided by it"},
    {LutApplierProblem::emptyDomain, "emptyDomain", "the domain that the file declares must end above its beginning"},
    {LutApplierProblem::blendingNotStated, "blendingNotStated",
     "tetrahedral blending goes with the conventional application of a cube alone"},
});
static_assert(isComplete<LutApplierProblem>(caseTable<LutApplierProblem>));

/// A table that cannot be applied as asked for. Thrown when an applier is made, never while it works. Equal by problem
/// and message.
class CORVEX_EXPORT LutApplierError : public Error {
public:
    /// `what()` is the offender, which names the numbers at fault, then a colon and the problem's description.
    LutApplierError(LutApplierProblem problem, const std::string& offender);
    ~LutApplierError() override;
    LutApplierError(const LutApplierError&) = default;
    LutApplierError& operator=(const LutApplierError&) = default;

    /// Which of them; its description ends what().
    [[nodiscard]] LutApplierProblem problem() const noexcept { return problem_; }

    /// By problem and message, and so by offender.
    friend bool operator==(const LutApplierError& a, const LutApplierError& b) noexcept {
        return a.problem_ == b.problem_ && std::string_view(a.what()) == b.what();
    }

private:
    LutApplierProblem problem_;
};

}  // namespace corvex::inline v0

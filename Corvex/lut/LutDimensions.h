#pragma once

#include <cstdint>

#include <Corvex/platform/CaseTable.h>

namespace corvex::inline v0 {

/// What a table is looked up by.
enum class LutDimensions : std::uint8_t {
    /// Each channel by itself, as for contrast or a transfer function.
    oneD,
    /// The colour as a whole: only so can channels mix, as a change of saturation needs it.
    cube,
};

template <>
inline constexpr auto caseTable<LutDimensions> = std::to_array<Case<LutDimensions>>({
    {LutDimensions::oneD, "oneD", "One-dimensional table"},
    {LutDimensions::cube, "cube", "Three-dimensional cube"},
});
// A table of one dimension may still differ between channels.
static_assert(isComplete<LutDimensions>(caseTable<LutDimensions>));

/// How a LUT file is written. All dialects of plain text are read by one grammar, so there is one case.
/// Dialects differ in keywords, comments and the order of axes (docs/LUTS.md).
enum class LutMarkupType : std::uint8_t { genericText };

template <>
inline constexpr auto caseTable<LutMarkupType> = std::to_array<Case<LutMarkupType>>({
    {LutMarkupType::genericText, "genericText", "Plain text, a line of three numbers for each entry"},
});
static_assert(isComplete<LutMarkupType>(caseTable<LutMarkupType>));

}  // namespace corvex::inline v0

#pragma once

#include <cstddef>
#include <optional>

#include <Corvex/lut/internal/LutPlan.h>

namespace corvex::inline v0 {

/// Looks pixels up in portable code, block by block, in doubles. Not for callers.
namespace PlainLutKernel {

/// The pixels of a block, as four doubles each: the fourth means nothing.
constexpr std::size_t blockSize = 128;
using Block = double[blockSize * LutPlan::entryWidth];

/// The colours of up to blockSize pixels that begin at a row's column.
void lookUp(const LutPlan& plan, const ConstPixelBuffer& source, std::size_t row, std::size_t column, std::size_t count,
            Block& colors) noexcept;

/// The first pixel of a block whose input, or whose colour, is out of range; columns count from the row's beginning.
[[nodiscard]] std::optional<OffendingPixel> findOffender(const LutPlan& plan, const ConstPixelBuffer& source,
                                                         std::size_t row, std::size_t column, std::size_t count,
                                                         const Block& colors) noexcept;

/// Puts colours into a destination.
void store(const LutPlan& plan, const Block& colors, const PixelBuffer& destination, std::size_t row,
           std::size_t column, std::size_t count) noexcept;

/// Copies alpha, or makes it opaque, for a part of a row.
void storeAlpha(const ConstPixelBuffer& source, const PixelBuffer& destination, std::size_t row, std::size_t column,
                std::size_t count) noexcept;

}  // namespace PlainLutKernel

}  // namespace corvex::inline v0

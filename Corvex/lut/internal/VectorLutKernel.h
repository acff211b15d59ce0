#pragma once

#include <cstddef>

#include <Corvex/lut/internal/LutPlan.h>
#include <Corvex/lut/internal/PlainLutKernel.h>

namespace corvex::inline v0 {

/// Looks pixels of cubes up in vectors of 256 bits, on machines that have them with fused multiply-add. Not for callers.
namespace VectorLutKernel {

/// Whether this machine can run the others.
[[nodiscard]] bool isSupported() noexcept;

/// What PlainLutKernel::lookUp does, with the same bits.
void lookUp(const LutPlan& plan, const ConstPixelBuffer& source, std::size_t row, std::size_t column, std::size_t count,
            PlainLutKernel::Block& colors) noexcept;

/// A whole row in single precision; the plan must be fast.
void applyFast(const LutPlan& plan, const ConstPixelBuffer& source, const PixelBuffer& destination,
               std::size_t row) noexcept;

}  // namespace VectorLutKernel

}  // namespace corvex::inline v0

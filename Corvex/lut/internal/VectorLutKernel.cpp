#include <Corvex/lut/internal/VectorLutKernel.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include <Corvex/platform/Checked.h>

// The text of the kernels is compiled once for each kind of vector that is wanted here, and once for the compiler's own
// baseline, which is never called: without 256-bit vectors and fused multiply-add the portable code is as fast.
#define HWY_DISABLED_TARGETS (HWY_SSSE3 | HWY_SSE4 | HWY_AVX3 | HWY_AVX3_DL)
#define HWY_TARGET_INCLUDE "Corvex/lut/internal/VectorLutKernel.ipp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include <Corvex/lut/internal/VectorLutKernel.ipp>

namespace corvex::inline v0::VectorLutKernel {

HWY_EXPORT(lookUpBlock);
HWY_EXPORT(applyFastRow);

bool isSupported() noexcept { return (hwy::SupportedTargets() & HWY_AVX2) != 0; }

void lookUp(const LutPlan& plan, const ConstPixelBuffer& source, std::size_t row, std::size_t column, std::size_t count,
            PlainLutKernel::Block& colors) noexcept {
    HWY_DYNAMIC_DISPATCH(lookUpBlock)(plan, source, row, column, count, colors);
}

void applyFast(const LutPlan& plan, const ConstPixelBuffer& source, const PixelBuffer& destination,
               std::size_t row) noexcept {
    HWY_DYNAMIC_DISPATCH(applyFastRow)(plan, source, destination, row);
}

}  // namespace corvex::inline v0::VectorLutKernel

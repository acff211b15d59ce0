#include <Corvex/color/OrvanePixelColorRange.h>

#include <Corvex/platform/Number.h>

namespace corvex::inline v0 {

Number wrappedValue(OrvanePixelColorRange range) noexcept { return Number(rawValue(range)); }

}  // namespace corvex::inline v0

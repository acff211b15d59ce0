#include <Corvex/color/OrvaneVideoColorMatrix.h>

#include <Corvex/platform/Number.h>

namespace corvex::inline v0 {

Number wrappedValue(OrvaneVideoColorMatrix matrix) noexcept { return Number(rawValue(matrix)); }

}  // namespace corvex::inline v0

#pragma once

#include <Corvex/lut/LutValueTriplet.h>

namespace corvex::inline v0 {

/// The inputs that a table's first and last entries stand for, 1.0 being full scale. Kept aside while reading for the
/// conventional application alone: one-pixel sampling and the bounds of a file know nothing of it.
/// Source  Cube LUT Specification 1.0 (Adobe, 2013): DOMAIN_MIN and DOMAIN_MAX.
struct LutDomain {
    RGB<double> minimum{0, 0, 0}, maximum{1, 1, 1};  ///< The inputs that the table's ends stand for.

    friend constexpr bool operator==(const LutDomain&, const LutDomain&) = default;
};

}  // namespace corvex::inline v0

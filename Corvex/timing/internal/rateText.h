#pragma once

#include <string>

namespace corvex::inline v0 {

/// A rate with two digits after the point, every ".00" removed: 23.97, 24.
[[nodiscard]] std::string wholeOrHundredths(double rate);

}  // namespace corvex::inline v0

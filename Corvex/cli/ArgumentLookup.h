#pragma once

#include <functional>
#include <map>
#include <string>

namespace corvex::inline v0 {

/// Flag to value. The order (by the bytes of the key) is the same on every run; callers should not rely on which it is.
using ArgumentLookup = std::map<std::string, std::string, std::less<>>;

}  // namespace corvex::inline v0

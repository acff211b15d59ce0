#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

class OrvaneColorSpaceSignal;
enum class OrvaneVideoColorSpace : std::uint8_t;

/// The signals by which the colour space may be carried, in order of preference; none for custom8, custom9 and custom10.
/// Each call makes new objects.
[[nodiscard]] CORVEX_EXPORT std::optional<std::vector<std::shared_ptr<const OrvaneColorSpaceSignal>>> definedSignals(
    OrvaneVideoColorSpace space);

}  // namespace corvex::inline v0

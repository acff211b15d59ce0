#pragma once

#include <span>
#include <string>

#include <tools/corvex/manual/CommandTree.h>

namespace corvex::tool {

/// The manual page of the tool or of one of its commands, in the man(7) language: `page` with all that lies below it.
[[nodiscard]] std::string manualPage(const CommandPlace& page, std::span<const CommandPlace> places);

/// Its name: "corvex-lut" for "corvex lut".
[[nodiscard]] std::string manualName(const CommandPlace& page);

/// Whether the place has a page of its own: the tool and its commands, not what lies below these.
[[nodiscard]] bool hasManualPage(const CommandPlace& place);

}  // namespace corvex::tool

#pragma once

#include <optional>
#include <string_view>

namespace corvex::tool {

/// The known flag that is spelled most like `unknown`, if one is like it at all: at most a third of its letters differ.
[[nodiscard]] std::optional<std::string_view> suggestedFlag(std::string_view unknown);

}  // namespace corvex::tool

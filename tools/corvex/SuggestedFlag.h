#pragma once

#include <optional>
#include <span>
#include <string_view>

namespace corvex::tool {

/// The word of `known` that is spelled most like `unknown`, if one is like it at all: at most a third of its letters
/// differ.
[[nodiscard]] std::optional<std::string_view> suggestedWord(std::string_view unknown,
                                                            std::span<const std::string_view> known);

/// The known flag that is spelled most like `unknown`, as suggestedWord() finds it.
[[nodiscard]] std::optional<std::string_view> suggestedFlag(std::string_view unknown);

}  // namespace corvex::tool

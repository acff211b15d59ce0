#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <Corvex/cli/transcode/TranscodeCliArguments.h>

namespace corvex::tool {

/// One typed option that is set: its accessor, the flag it came from, and its value with its unit, or why it has none.
struct TypedOption {
    std::string_view accessor;
    std::string_view flag;
    std::string text;
};

/// The typed options of a job whose flags are set, in the order of the accessors.
[[nodiscard]] std::vector<TypedOption> typedOptions(const TranscodeCliArguments& arguments);

}  // namespace corvex::tool

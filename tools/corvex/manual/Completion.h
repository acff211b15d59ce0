#pragma once

#include <span>
#include <string>

#include <tools/corvex/manual/CommandTree.h>

namespace corvex::tool {

// Scripts that complete the tool's words: subcommands, options, flags and their values; paths where a path is wanted.
// The words behind the "--" of "corvex args" are those of a transcode.

[[nodiscard]] std::string bashCompletion(std::span<const CommandPlace> places);
[[nodiscard]] std::string zshCompletion(std::span<const CommandPlace> places);
[[nodiscard]] std::string fishCompletion(std::span<const CommandPlace> places);

}  // namespace corvex::tool

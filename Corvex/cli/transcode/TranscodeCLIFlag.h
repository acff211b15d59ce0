#pragma once

#include <cstdint>

#include <Corvex/cli/CLIFlagCase.h>

namespace corvex::inline v0 {

/// Short flags of earlier transcoders that are still understood: the type of the output (a uniform type identifier), a
/// factor on the size of the input, and the output's width and height.
/// See TranscodeCliArguments::explicitOutputResolution for how the sizes count, in pixels or as factors.
enum class TranscodeCLIFlag : std::uint8_t { ftype, vscale, ovw, ovh };

template <>
inline constexpr auto caseTable<TranscodeCLIFlag> = std::to_array<CLIFlagCase<TranscodeCLIFlag>>({
    {{TranscodeCLIFlag::ftype, "ftype", "output file type"}, "-ftype", true},
    {{TranscodeCLIFlag::vscale, "vscale", "factor on the input size"}, "-vscale", true},
    {{TranscodeCLIFlag::ovw, "ovw", "output width"}, "-ovw", true},
    {{TranscodeCLIFlag::ovh, "ovh", "output height"}, "-ovh", true},
});
static_assert(isComplete<TranscodeCLIFlag>(caseTable<TranscodeCLIFlag>) && flagsMatchRawValues<TranscodeCLIFlag>());

}  // namespace corvex::inline v0

#pragma once

#include <cstdint>

#include <Corvex/cli/CLIFlagCase.h>

namespace corvex::inline v0 {

/// Short flags of earlier transcoders that are still understood. TranscodeCliArguments::explicitOutputResolution says
/// how the sizes count together.
enum class TranscodeCLIFlag : std::uint8_t {
    /// The uniform type identifier of the output's file format.
    ftype,
    /// A factor on both sides of the input.
    vscale,
    /// Above 16 pixels, else a factor on the width of the input.
    ovw,
    /// The same for the height.
    ovh,
};

template <>
inline constexpr auto caseTable<TranscodeCLIFlag> = std::to_array<CLIFlagCase<TranscodeCLIFlag>>({
    {{TranscodeCLIFlag::ftype, "ftype", "output file type"}, "-ftype", true},
    {{TranscodeCLIFlag::vscale, "vscale", "factor on the input size"}, "-vscale", true},
    {{TranscodeCLIFlag::ovw, "ovw", "output width"}, "-ovw", true},
    {{TranscodeCLIFlag::ovh, "ovh", "output height"}, "-ovh", true},
});
static_assert(isComplete<TranscodeCLIFlag>(caseTable<TranscodeCLIFlag>) && flagsMatchRawValues<TranscodeCLIFlag>());

}  // namespace corvex::inline v0

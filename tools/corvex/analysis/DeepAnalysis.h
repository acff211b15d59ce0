#pragma once

#include <functional>

#include <tools/corvex/analysis/AnalysisResults.h>
#include <tools/corvex/worker/MediaInput.h>

namespace corvex::tool {

/// Called for every packet and at the end: pictures of the main video track so far, and seconds.
using DecodeProgress = std::function<void(std::int64_t frames, double seconds)>;

/// Decodes all pictures and all sound of a file that was just opened. Damage is counted, not an error; where the file
/// cannot be read on, the result says why and tells of what came before. Throws JobError when the worker is to stop.
///
/// A track's SHA-256 is that of its decoded pictures one after the other, each plane by plane without padding, or of its
/// samples, channel beside channel, whatever packets they came in.
[[nodiscard]] DeepResult decodeFile(MediaInput& input, const DecodeProgress& progress);

}  // namespace corvex::tool

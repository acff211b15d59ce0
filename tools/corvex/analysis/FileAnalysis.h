#pragma once

#include <tools/corvex/analysis/AnalysisResults.h>
#include <tools/corvex/worker/MediaInput.h>

namespace corvex::tool {

/// What an open file says of itself: all but snapshots and what only decoding tells.
[[nodiscard]] FileResult describeFile(const MediaInput& input);

}  // namespace corvex::tool

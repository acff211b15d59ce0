#pragma once

#include <string>
#include <vector>

#include <tools/corvex/ToolError.h>

namespace corvex::tool {

/// Starts an analysis worker for the words, shows its progress, prints what its results file says in short, and passes on
/// its exit status. Throws JobError, and what MediaAnalysisRequest throws.
ExitStatus runAnalysisHost(const std::vector<std::string>& words);

}  // namespace corvex::tool

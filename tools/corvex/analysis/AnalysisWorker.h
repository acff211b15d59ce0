#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <tools/corvex/ToolError.h>

namespace corvex::tool {

/// The first word of an analysis worker's command line.
inline constexpr std::string_view runInAnalysisModeFlag = "-isAnalyzer";

/// Analyses the files that the words name and writes the results file, complete or not at all. A file that cannot be read
/// is told of in the results, and by the status jobFailed. Throws JobError, and what MediaAnalysisRequest throws.
ExitStatus runAnalysisWorker(const std::vector<std::string>& words);

}  // namespace corvex::tool

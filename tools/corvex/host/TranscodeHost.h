#pragma once

#include <string>
#include <vector>

#include <tools/corvex/ToolError.h>

namespace corvex::tool {

/// Starts a transcode worker for the words of a job, shows its progress, passes on its errors and its exit status; or
/// answers the informational commands that stand among the words. Throws UsageError for words that no worker takes.
ExitStatus runTranscodeHost(const std::vector<std::string>& words);

}  // namespace corvex::tool

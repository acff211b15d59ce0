#pragma once

#include <string>
#include <vector>

#include <tools/corvex/ToolError.h>

namespace corvex::tool {

/// Runs one transcode from the words of its argument vector, which stand after "-isTranscoder". Throws UsageError or
/// JobError; the target then is as it was before.
ExitStatus runTranscodeWorker(const std::vector<std::string>& words);

}  // namespace corvex::tool

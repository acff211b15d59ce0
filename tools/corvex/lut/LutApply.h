#pragma once

#include <string>

#include <tools/corvex/ToolError.h>

namespace corvex::tool {

/// What `corvex lut apply` is asked for.
struct LutApplyChoices {
    std::string table, input, output;
    bool asStated = false, tetrahedral = false, overwrites = false;
};

/// Looks up the colours of a still picture. Throws UsageError, JobError.
ExitStatus applyLut(const LutApplyChoices& choices);

}  // namespace corvex::tool

#pragma once

#include <string>
#include <vector>

#include <tools/corvex/ToolError.h>

namespace corvex::tool {

/// What `corvex lut check` is asked for.
struct LutCheckChoices {
    std::vector<std::string> files;
    std::string plot;  ///< Empty: none.
    bool json = false, overwrites = false;
};

/// Says what files are as tables, or why they are none, and draws one of them. Throws UsageError, JobError.
ExitStatus checkLuts(const LutCheckChoices& choices);

}  // namespace corvex::tool

#include <Corvex/cli/analysis/MediaAnalysisImageCLIFlags.h>

#include <Corvex/platform/NumberText.h>

namespace corvex::inline v0 {

std::string sanitizedFlag(MediaAnalysisImageCLIFlags flag, CLISanitizationOptions options) {
    return options.sanitize(cliFlag(flag));
}

std::string snapShotLocationsCLIValue(std::span<const float> locations) {
    std::string text;
    for (const float location : locations) {
        text += cliFlag(MediaAnalysisImageCLIFlags::snapshotLocation);
        text += ' ';
        text += shortestText(location);
    }
    return text;
}

}  // namespace corvex::inline v0

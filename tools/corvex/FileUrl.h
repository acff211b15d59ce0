#pragma once

#include <string>

namespace corvex::inline v0 {
class TranscodeCliArguments;
struct MediaAnalysisRequest;
}  // namespace corvex::inline v0

namespace corvex::tool {

/// The path that a file URL names ("file:///shots/a%20b.mov", RFC 8089); any other text is a path as it stands. Throws
/// UsageError for the URL of another machine, and for one that is malformed.
[[nodiscard]] std::string pathOf(const std::string& text);

// Put paths in place of the file URLs, wherever a path is expected. Throw as pathOf().
void replaceFileUrls(TranscodeCliArguments& arguments);
void replaceFileUrls(MediaAnalysisRequest& request);

}  // namespace corvex::tool

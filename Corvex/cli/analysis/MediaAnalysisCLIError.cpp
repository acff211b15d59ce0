#include <Corvex/cli/analysis/MediaAnalysisCLIError.h>

namespace corvex::inline v0 {
namespace {

std::string messageOf(MediaAnalysisCLIErrorCase which, const std::string& path, const std::string& reason) {
    std::string message(description(which));
    if (!path.empty()) message += ": '" + path + "'";
    if (!reason.empty()) message += ": " + reason;
    return message;
}

}  // namespace

MediaAnalysisCLIError::MediaAnalysisCLIError(Case which, const std::string& path, const std::string& reason)
    : CLIExitCodeError(messageOf(which, path, reason), caseOf(which).exitCode), case_(which), path_(path) {}

MediaAnalysisCLIError::~MediaAnalysisCLIError() = default;

MediaAnalysisCLIImageError::MediaAnalysisCLIImageError(Case which)
    : CLIExitCodeError(std::string(description(which)), caseOf(which).exitCode), case_(which) {}

MediaAnalysisCLIImageError::~MediaAnalysisCLIImageError() = default;

}  // namespace corvex::inline v0

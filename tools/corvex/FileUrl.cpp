#include <tools/corvex/FileUrl.h>

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include <Corvex/cli/analysis/MediaAnalysisRequest.h>
#include <Corvex/cli/transcode/TranscodeCliArguments.h>
#include <Corvex/platform/Text.h>
#include <tools/corvex/ToolError.h>
#include <tools/corvex/vocabulary/FlagVocabulary.h>

namespace corvex::tool {
namespace {

constexpr std::string_view scheme = "file://";

/// "%20" and its like as the bytes that they stand for; none for what is no such triplet, and for the null character.
std::optional<std::string> percentDecoded(std::string_view text) {
    std::string decoded;
    while (!text.empty()) {
        const bool isTriplet = text.front() == '%';
        unsigned byte = static_cast<unsigned char>(text.front());
        if (isTriplet) {
            const char* const end = text.data() + std::min<std::size_t>(text.size(), 3);
            const auto result = std::from_chars(text.data() + 1, end, byte, 16);
            if (result.ec != std::errc() || result.ptr != text.data() + 3) return std::nullopt;
        }
        if (byte == 0) return std::nullopt;
        decoded += static_cast<char>(byte);
        text.remove_prefix(isTriplet ? 3 : 1);
    }
    return decoded;
}

bool takesPath(std::string_view flag) {
    if (flag.starts_with(OAVInputPrefixFlag.cliFlag())) return true;
    const auto& all = flagVocabulary();
    return std::any_of(all.begin(), all.end(),
                       [&](const VocabularyFlag& known) { return known.flag == flag && known.takesPath; });
}

}  // namespace

std::string pathOf(const std::string& text) {
    if (!hasPrefixIgnoringCase(text, scheme)) return text;
    std::string_view rest = std::string_view(text).substr(scheme.size());
    constexpr std::string_view thisMachine = "localhost";
    if (hasPrefixIgnoringCase(rest, thisMachine)) rest.remove_prefix(thisMachine.size());
    auto path = rest.starts_with('/') ? percentDecoded(rest) : std::nullopt;
    if (!path) {
        throw UsageError(inQuotes(text) +
                         ": expected file:///PATH of this machine, each % of it with two hexadecimal digits");
    }
    return *std::move(path);
}

void replaceFileUrls(TranscodeCliArguments& arguments) {
    std::vector<std::pair<std::string, std::string>> urls;
    for (const auto& [flag, value] : arguments.flagValueLookup()) {
        if (hasPrefixIgnoringCase(value, scheme) && takesPath(flag)) urls.emplace_back(flag, value);
    }
    for (const auto& [flag, url] : urls) arguments.setArgumentFlagValue(pathOf(url), flag);
}

void replaceFileUrls(MediaAnalysisRequest& request) {
    for (std::string& path : request.pathsToAnalyze) path = pathOf(path);
    for (std::string* path : {&request.workDirectory, &request.resultsFilePath}) *path = pathOf(*path);
    if (request.images) request.images->lutFile = pathOf(request.images->lutFile);
}

}  // namespace corvex::tool

#include <Corvex/cli/analysis/MediaAnalysisRequest.h>

#include <cmath>
#include <filesystem>
#include <functional>
#include <map>
#include <string_view>
#include <system_error>

#include <Corvex/cli/CLIArgumentSanitizer.h>
#include <Corvex/cli/CLICustodialFlag.h>
#include <Corvex/cli/analysis/MediaAnalysisCLIError.h>
#include <Corvex/cli/analysis/MediaAnalysisCLIFlag.h>
#include <Corvex/cli/analysis/MediaAnalysisCLIOptions.h>
#include <Corvex/cli/analysis/MediaAnalysisImageCLIFlags.h>
#include <Corvex/platform/NumberText.h>
#include <Corvex/platform/Text.h>

namespace corvex::inline v0 {
namespace {

using Flag = MediaAnalysisCLIFlag;
using ImageFlag = MediaAnalysisImageCLIFlags;
using Values = std::vector<std::string>;

constexpr auto cleaned = CLISanitizationOptions::lowercase | CLISanitizationOptions::trimWhiteSpace;

/// The words sorted by flag; empty values are left out.
class SortedWords {
public:
    explicit SortedWords(std::span<const std::string> words) {
        addFlags<Flag>();
        addFlags<ImageFlag>();
        addFlags<CLICustodialFlag>();
        if (!words.empty() && !cleaned.sanitize(words.front()).starts_with('-')) {
            throw CLIWordError("", words.front(), "expected a flag before it, as -pathToAnalyze");
        }
        CLIArgumentSanitizer({}, cleaned)
            .enumerateSanitizedCLIEntries(
                words, [](std::string_view) { return CLISanitizationOptions(); },
                [this](std::string_view flag, std::string_view value) { add(flag, value); }, {});
    }

    template <class Enumeration>
    [[nodiscard]] bool has(Enumeration flag) const {
        return values_.contains(cliFlag(flag));
    }
    template <class Enumeration>
    [[nodiscard]] Values values(Enumeration flag) const {
        const auto found = values_.find(cliFlag(flag));
        return found == values_.end() ? Values() : found->second;
    }
    /// Empty when it is not supplied. Throws CLIWordError for several.
    template <class Enumeration>
    [[nodiscard]] std::string value(Enumeration flag) const {
        const Values all = values(flag);
        if (all.size() > 1) throw CLIWordError(std::string(cliFlag(flag)), all[1], "expected one value");
        return all.empty() ? std::string() : all.front();
    }

private:
    struct KnownFlag {
        std::string_view flag;
        bool acceptsArguments;
    };

    template <class Enumeration>
    void addFlags() {
        for (const auto& [flag, form] : sanitizeAllCLIFlags<Enumeration>(cleaned)) {
            known_.emplace(form, KnownFlag{cliFlag(flag), acceptsArguments(flag)});
        }
    }

    void add(std::string_view form, std::string_view value) {
        const auto found = known_.find(form);
        if (found == known_.end()) throw CLIWordError("", std::string(form), "unknown flag");
        const auto& [flag, takesValues] = found->second;
        Values& values = values_[flag];
        if (value.empty()) return;
        if (!takesValues) throw CLIWordError(std::string(flag), std::string(value), "expected no value");
        values.emplace_back(value);
    }

    std::map<std::string, KnownFlag, std::less<>> known_;  ///< By cleaned form.
    std::map<std::string_view, Values> values_;            ///< By the flag as it is written.
};

/// A list begins with the mark of one and holds a separator. Only that one mark is taken off, as the paths themselves may
/// begin and end with it.
void appendPaths(std::string_view value, std::vector<std::string>& paths) {
    const BasicMediaAnalysisCLIOptions store({});
    const std::string_view prefix = store.listPrefix();
    const std::string_view separator = store.listValueSeparator();
    if (!value.starts_with(prefix) || value.find(separator) == std::string_view::npos) {
        paths.emplace_back(value);
        return;
    }
    forEachPiece(value.substr(prefix.size()), separator, [&](std::string_view path) {
        if (!path.empty()) paths.emplace_back(path);
    });
}

template <class Enumeration>
float number(Enumeration flag, std::string_view text, float low, float high, const char* expected) {
    const auto value = parseFloat<float>(text);
    if (!value || *value < low || *value > high) {
        throw CLIWordError(std::string(cliFlag(flag)), std::string(text), expected);
    }
    return *value;
}

std::vector<float> locationsOf(const SortedWords& entries) {
    std::vector<float> locations;
    for (const std::string& value : entries.values(ImageFlag::snapshotLocation)) {
        MediaAnalysisImageCLIOptions({}).enumerateListValues(value, [&](std::string_view piece) {
            if (piece.empty()) return;
            locations.push_back(
                number(ImageFlag::snapshotLocation, piece, 0, 1, "expected 0 (the first frame) to 1 (the last one)"));
        });
    }
    return locations;
}

float pixels(ImageFlag flag, std::string_view text) {
    constexpr float mostPixels = 65535;  // of a side of a JPEG picture (ITU-T T.81)
    return number(flag, text, 1, mostPixels, "expected pixels, 1 to 65535");
}

std::optional<MediaAnalysisImageRequest> imagesOf(const SortedWords& entries) {
    bool isWanted = false;
    for (const ImageFlag flag : allCases<ImageFlag>) isWanted = isWanted || entries.has(flag);
    if (!isWanted) return std::nullopt;
    MediaAnalysisImageRequest request;
    request.snapshotLocations = locationsOf(entries);
    if (request.snapshotLocations.empty()) {
        throw MediaAnalysisCLIImageError(MediaAnalysisCLIImageErrorCase::missingSnapshotLocations);
    }
    const std::string width = entries.value(ImageFlag::maxImageWidth);
    if (width.empty()) throw MediaAnalysisCLIImageError(MediaAnalysisCLIImageErrorCase::missingMaxImageWidth);
    request.maxImageWidth = pixels(ImageFlag::maxImageWidth, width);
    if (const std::string height = entries.value(ImageFlag::imageHeight); !height.empty()) {
        request.imageHeight = pixels(ImageFlag::imageHeight, height);
    }
    if (const std::string factor = entries.value(ImageFlag::compressionFactor); !factor.empty()) {
        request.compressionFactor = number(ImageFlag::compressionFactor, factor, 0, 1,
                                           "expected 0 (the smallest file) to 1 (the best picture)");
    }
    request.allowFinderImages = entries.has(ImageFlag::allowFinderImages);
    request.lutFile = entries.value(ImageFlag::lutFile);
    return request;
}

std::int32_t parentPidOf(const SortedWords& entries) {
    const std::string number = entries.value(CLICustodialFlag::parentAppNumber);
    if (!number.empty() && !parseInteger<std::int64_t>(number)) {
        throw CLIWordError(std::string(cliFlag(CLICustodialFlag::parentAppNumber)), number, "expected an integer");
    }
    if (!entries.has(CLICustodialFlag::parentPid)) return 0;
    const std::string text = entries.value(CLICustodialFlag::parentPid);
    const auto pid = parseInteger<std::int32_t>(text, SignRule::plusOnly);
    if (!pid || *pid == 0) {
        throw CLIWordError(std::string(cliFlag(CLICustodialFlag::parentPid)), text, "expected a process identifier");
    }
    return *pid;
}

}  // namespace

MediaAnalysisRequest MediaAnalysisRequest::fromWords(std::span<const std::string> words) {
    using Case = MediaAnalysisCLIErrorCase;
    const SortedWords entries(words);
    MediaAnalysisRequest request;
    for (const std::string& value : entries.values(Flag::pathToAnalyze)) appendPaths(value, request.pathsToAnalyze);
    request.workDirectory = entries.value(Flag::workDirectory);
    request.resultsFilePath = entries.value(Flag::resultsFilePath);
    if (entries.has(Flag::analysisId)) request.analysisId = entries.value(Flag::analysisId);
    request.deepAnalysis = entries.has(Flag::deepAnalysis);
    request.parentPid = parentPidOf(entries);
    if (request.pathsToAnalyze.empty()) throw MediaAnalysisCLIError(Case::pathToAnalyzeNotSupplied);
    if (request.workDirectory.empty()) throw MediaAnalysisCLIError(Case::workDirectoryNotSupplied);
    if (request.resultsFilePath.empty()) throw MediaAnalysisCLIError(Case::resultsFilePathNotSupplied);
    request.images = imagesOf(entries);
    return request;
}

void MediaAnalysisRequest::requireFiles() const {
    using Case = MediaAnalysisCLIErrorCase;
    std::error_code error;  // of what does not exist; and what is not to be looked at may well exist
    for (const std::string& path : pathsToAnalyze) {
        const bool isMissing = std::filesystem::status(path, error).type() == std::filesystem::file_type::not_found;
        if (isMissing) throw MediaAnalysisCLIError(Case::pathToAnalyzeDoesNotExist, path);
    }
    if (!std::filesystem::is_directory(workDirectory, error)) {
        throw MediaAnalysisCLIError(Case::workDirectoryDoesNotExist, workDirectory);
    }
    const auto results = std::filesystem::symlink_status(resultsFilePath, error);  // a link to nothing takes the name
    if (std::filesystem::exists(results)) throw MediaAnalysisCLIError(Case::resultsFileAlreadyExists, resultsFilePath);
}

}  // namespace corvex::inline v0

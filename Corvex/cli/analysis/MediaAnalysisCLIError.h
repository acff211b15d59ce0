#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include <Corvex/cli/CLIExitCodeError.h>
#include <Corvex/platform/CaseTable.h>
#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

/// Why the command line of a media analysis is unusable. The first that applies in the order of the flags is thrown;
/// the missing ones by MediaAnalysisRequest::fromWords, those about files by requireFiles() and by whoever writes the
/// results.
enum class MediaAnalysisCLIErrorCase : std::uint8_t {
    /// No "-pathToAnalyze", or nothing behind it.
    pathToAnalyzeNotSupplied,
    /// The first of the paths at which nothing lies.
    pathToAnalyzeDoesNotExist,
    /// No "-workDirectory", or nothing behind it.
    workDirectoryNotSupplied,
    /// Nothing lies there, or no folder does.
    workDirectoryDoesNotExist,
    /// No "-resultsFilePath", or nothing behind it.
    resultsFilePathNotSupplied,
    /// Results never replace a file; a link that leads nowhere counts as one.
    resultsFileAlreadyExists,
    /// The system refused; what it said is in the message.
    resultsFilePathNotCreated,
};

/// Why it is unusable for pictures, which any flag of MediaAnalysisImageCLIFlags asks for.
enum class MediaAnalysisCLIImageErrorCase : std::uint8_t {
    /// No "-snapshotLocation", the place in the clip from 0 to 1.
    missingSnapshotLocations,
    /// No "-maxImageWidth", in pixels.
    missingMaxImageWidth,
};

/// A row of their tables: the exit status that a child ends with, one of those in CLIExitCodeError.h. Descriptions are
/// the messages: the flag, then what is wrong with it.
template <class Enumeration>
struct CLIErrorCase : Case<Enumeration> {
    /// What `main` returns.
    int exitCode;
};

template <>
inline constexpr auto caseTable<MediaAnalysisCLIErrorCase> = std::to_array<CLIErrorCase<MediaAnalysisCLIErrorCase>>({
    {{MediaAnalysisCLIErrorCase::pathToAnalyzeNotSupplied, "pathToAnalyzeNotSupplied",
      "-pathToAnalyze is missing: expected the file to analyse"},
     exitCode::unusableWords},
    {{MediaAnalysisCLIErrorCase::pathToAnalyzeDoesNotExist, "pathToAnalyzeDoesNotExist",
      "-pathToAnalyze: no such file"},
     exitCode::noInput},
    {{MediaAnalysisCLIErrorCase::workDirectoryNotSupplied, "workDirectoryNotSupplied",
      "-workDirectory is missing: expected a folder for what the analysis makes"},
     exitCode::unusableWords},
    {{MediaAnalysisCLIErrorCase::workDirectoryDoesNotExist, "workDirectoryDoesNotExist",
      "-workDirectory: no such folder"},
     exitCode::noInput},
    {{MediaAnalysisCLIErrorCase::resultsFilePathNotSupplied, "resultsFilePathNotSupplied",
      "-resultsFilePath is missing: expected the file to write the results to"},
     exitCode::unusableWords},
    {{MediaAnalysisCLIErrorCase::resultsFileAlreadyExists, "resultsFileAlreadyExists",
      "-resultsFilePath: the file exists"},
     exitCode::cannotCreate},
    {{MediaAnalysisCLIErrorCase::resultsFilePathNotCreated, "resultsFilePathNotCreated",
      "-resultsFilePath: the file cannot be created"},
     exitCode::cannotCreate},
});
static_assert(isComplete<MediaAnalysisCLIErrorCase>(caseTable<MediaAnalysisCLIErrorCase>));

template <>
inline constexpr auto caseTable<MediaAnalysisCLIImageErrorCase> =
    std::to_array<CLIErrorCase<MediaAnalysisCLIImageErrorCase>>({
        {{MediaAnalysisCLIImageErrorCase::missingSnapshotLocations, "missingSnapshotLocations",
          "-snapshotLocation is missing: expected where in the clip to take pictures, 0 to 1"},
         exitCode::unusableWords},
        {{MediaAnalysisCLIImageErrorCase::missingMaxImageWidth, "missingMaxImageWidth",
          "-maxImageWidth is missing: expected the largest width of a picture in pixels"},
         exitCode::unusableWords},
    });
static_assert(isComplete<MediaAnalysisCLIImageErrorCase>(caseTable<MediaAnalysisCLIImageErrorCase>));

/// The words of a media analysis, or the files that they name, cannot be used. Equal by case and path; the system's
/// reason does not count.
class CORVEX_EXPORT MediaAnalysisCLIError : public CLIExitCodeError {
public:
    using Case = MediaAnalysisCLIErrorCase;

    /// `path` is the one at fault, empty where none was supplied; `reason` what the system says, if it was asked.
    /// `what()` is the case's description, then the path in quotes, then the reason.
    explicit MediaAnalysisCLIError(Case which, const std::string& path = {}, const std::string& reason = {});
    ~MediaAnalysisCLIError() override;
    MediaAnalysisCLIError(const MediaAnalysisCLIError&) = default;
    MediaAnalysisCLIError& operator=(const MediaAnalysisCLIError&) = default;

    /// Which of them.
    [[nodiscard]] Case which() const noexcept { return case_; }
    /// The path at fault, empty where none was supplied. Valid as long as this object.
    [[nodiscard]] const char* path() const noexcept { return path_.text(); }

    friend bool operator==(const MediaAnalysisCLIError& a, const MediaAnalysisCLIError& b) noexcept {
        return a.case_ == b.case_ && std::string_view(a.path()) == b.path();
    }

private:
    Case case_;
    SharedText path_;
};

/// Pictures are asked for, and a flag that they need is missing. Equal by case.
class CORVEX_EXPORT MediaAnalysisCLIImageError : public CLIExitCodeError {
public:
    using Case = MediaAnalysisCLIImageErrorCase;

    /// The message and the exit code are those of the case.
    explicit MediaAnalysisCLIImageError(Case which);
    ~MediaAnalysisCLIImageError() override;
    MediaAnalysisCLIImageError(const MediaAnalysisCLIImageError&) = default;
    MediaAnalysisCLIImageError& operator=(const MediaAnalysisCLIImageError&) = default;

    [[nodiscard]] Case which() const noexcept { return case_; }

    friend bool operator==(const MediaAnalysisCLIImageError& a, const MediaAnalysisCLIImageError& b) noexcept {
        return a.case_ == b.case_;
    }

private:
    Case case_;
};

}  // namespace corvex::inline v0

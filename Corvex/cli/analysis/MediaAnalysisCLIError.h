#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include <Corvex/cli/CLIExitCodeError.h>
#include <Corvex/platform/CaseTable.h>
#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

/// Why the command line of a media analysis is unusable.
enum class MediaAnalysisCLIErrorCase : std::uint8_t {
    pathToAnalyzeNotSupplied,
    pathToAnalyzeDoesNotExist,
    workDirectoryNotSupplied,
    workDirectoryDoesNotExist,
    resultsFilePathNotSupplied,
    resultsFileAlreadyExists,
    resultsFilePathNotCreated,
};

/// Why it is unusable for pictures.
enum class MediaAnalysisCLIImageErrorCase : std::uint8_t { missingSnapshotLocations, missingMaxImageWidth };

/// A row of their tables: the exit status that a child ends with.
template <class Enumeration>
struct CLIErrorCase : Case<Enumeration> {
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

/// Equal by case and path.
class CORVEX_EXPORT MediaAnalysisCLIError : public CLIExitCodeError {
public:
    using Case = MediaAnalysisCLIErrorCase;

    /// `path` is the one at fault, empty where none was supplied; `reason` what the system says, if it was asked.
    explicit MediaAnalysisCLIError(Case which, const std::string& path = {}, const std::string& reason = {});
    ~MediaAnalysisCLIError() override;
    MediaAnalysisCLIError(const MediaAnalysisCLIError&) = default;
    MediaAnalysisCLIError& operator=(const MediaAnalysisCLIError&) = default;

    [[nodiscard]] Case which() const noexcept { return case_; }
    [[nodiscard]] const char* path() const noexcept { return path_.what(); }

    friend bool operator==(const MediaAnalysisCLIError& a, const MediaAnalysisCLIError& b) noexcept {
        return a.case_ == b.case_ && std::string_view(a.path()) == b.path();
    }

private:
    Case case_;
    std::runtime_error path_;  // shares its text: copying an exception must not throw
};

/// Equal by case.
class CORVEX_EXPORT MediaAnalysisCLIImageError : public CLIExitCodeError {
public:
    using Case = MediaAnalysisCLIImageErrorCase;

    explicit MediaAnalysisCLIImageError(Case which);  ///< The message and the exit code are those of the case.
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

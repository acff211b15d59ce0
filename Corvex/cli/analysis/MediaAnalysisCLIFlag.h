#pragma once

#include <cstdint>

#include <Corvex/cli/CLIFlagCase.h>

namespace corvex::inline v0 {

/// The basic flags of a media analysis. Mixed case, as a parent writes them; a child compares cleaned forms. The first,
/// the third and the fourth are needed.
enum class MediaAnalysisCLIFlag : std::uint8_t {
    /// One path, or a list of them: "[" and then paths with newlines between them.
    pathToAnalyze,
    /// Any text; it is repeated in the results, and names of pictures begin with it.
    analysisId,
    /// A folder that exists. Pictures are put there.
    workDirectory,
    /// A path at which nothing lies yet.
    resultsFilePath,
    /// A switch: decode every picture and sample instead of trusting the file's index.
    deepAnalysis,
};

template <>
inline constexpr auto caseTable<MediaAnalysisCLIFlag> = std::to_array<CLIFlagCase<MediaAnalysisCLIFlag>>({
    {{MediaAnalysisCLIFlag::pathToAnalyze, "pathToAnalyze", "the file to analyse, or a list of them"},
     "-pathToAnalyze",
     true},
    {{MediaAnalysisCLIFlag::analysisId, "analysisId", "the parent's name for the analysis"}, "-analysisId", true},
    {{MediaAnalysisCLIFlag::workDirectory, "workDirectory", "the folder for what the analysis makes"},
     "-workDirectory",
     true},
    {{MediaAnalysisCLIFlag::resultsFilePath, "resultsFilePath", "the file to write the results to"},
     "-resultsFilePath",
     true},
    {{MediaAnalysisCLIFlag::deepAnalysis, "deepAnalysis", "decode everything"}, "-deepAnalysis", false},
});
static_assert(isComplete<MediaAnalysisCLIFlag>(caseTable<MediaAnalysisCLIFlag>) &&
              flagsMatchRawValues<MediaAnalysisCLIFlag>());

}  // namespace corvex::inline v0

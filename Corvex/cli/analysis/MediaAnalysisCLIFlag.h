#pragma once

#include <cstdint>

#include <Corvex/cli/CLIFlagCase.h>

namespace corvex::inline v0 {

/// The basic flags of a media analysis. Mixed case, as a parent writes them; a child compares cleaned forms.
enum class MediaAnalysisCLIFlag : std::uint8_t {
    pathToAnalyze,
    analysisId,
    workDirectory,
    resultsFilePath,
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

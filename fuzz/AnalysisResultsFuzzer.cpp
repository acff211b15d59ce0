#include <Corvex/platform/Error.h>
#include <tools/corvex/analysis/AnalysisResults.h>

#include "support/Fuzzer.h"

void corvex::fuzz(std::string_view input) {
    using tool::AnalysisResults;
    try {
        const std::string text = AnalysisResults::parse(input).text();
        require(AnalysisResults::parse(text).text() == text, "what was written is read as something else");
    } catch (const DecodingError&) {  // no results file
    }
}

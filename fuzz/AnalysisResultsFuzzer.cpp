#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include <Corvex/platform/Checked.h>
#include <Corvex/platform/Error.h>
#include <tools/corvex/analysis/AnalysisResults.h>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using corvex::tool::AnalysisResults;
    try {
        const auto results = AnalysisResults::parse({reinterpret_cast<const char*>(data), size});
        const std::string text = results.text();
        corvex::require(AnalysisResults::parse(text).text() == text, "what was written is read as something else");
    } catch (const corvex::DecodingError&) {  // no results file
    }
    return 0;
}

#include <fcntl.h>
#include <unistd.h>

#include <tools/corvex/RateText.h>
#include <tools/corvex/ToolError.h>
#include <tools/corvex/host/ProgressDisplay.h>
#include <tools/corvex/image/StillImage.h>
#include <tools/corvex/worker/QuickTimeLanguage.h>

#include "support/Fuzzer.h"

namespace {

using namespace corvex;

void checkRate(const std::string& text) {
    try {
        const auto rate = tool::parseRate(text);
        require(tool::parseRate(tool::rateText(rate.rational())).rational() == rate.rational(),
                "a rate changes on its way");
    } catch (const tool::UsageError&) {  // says what would be right
    }
}

}  // namespace

/// What the tool reads beside jobs: rates, the lines of a worker's progress, the first bytes of pictures, languages.
void corvex::fuzz(std::string_view input) {
    static const bool isSilent = dup2(open("/dev/null", O_WRONLY | O_CLOEXEC), STDOUT_FILENO) >= 0;
    require(isSilent, "nowhere to print to");
    const std::string text(input);
    checkRate(text);
    tool::ProgressDisplay display("progress:", "job");
    forEachPiece(text, "\n", [&](std::string_view line) { display.takeLine(line); });
    static_cast<void>(tool::stillFileKindOf(text));
    static_cast<void>(tool::stillFileKindOfBytes(text));
    const auto language = tool::quickTimeLanguage(text);
    require(!language || !language->empty(), "a language without a name");
}

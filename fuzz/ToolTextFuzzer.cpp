#include <fcntl.h>
#include <unistd.h>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include <Corvex/platform/Checked.h>
#include <Corvex/platform/Text.h>
#include <tools/corvex/RateText.h>
#include <tools/corvex/ToolError.h>
#include <tools/corvex/host/ProgressDisplay.h>
#include <tools/corvex/image/StillImage.h>
#include <tools/corvex/worker/QuickTimeLanguage.h>

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
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const bool isSilent = dup2(open("/dev/null", O_WRONLY | O_CLOEXEC), STDOUT_FILENO) >= 0;
    require(isSilent, "nowhere to print to");
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): bytes as characters
    const std::string text(reinterpret_cast<const char*>(data), size);
    checkRate(text);
    tool::ProgressDisplay display("progress:", "job");
    forEachPiece(text, "\n", [&](std::string_view line) { display.takeLine(line); });
    static_cast<void>(tool::stillFileKindOf(text));
    static_cast<void>(tool::stillFileKindOfBytes(text));
    const auto language = tool::quickTimeLanguage(text);
    require(!language || !language->empty(), "a language without a name");
    return 0;
}

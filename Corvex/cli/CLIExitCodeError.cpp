#include <Corvex/cli/CLIExitCodeError.h>

namespace corvex::inline v0 {

CLIExitCodeError::~CLIExitCodeError() = default;

CLIWordError::CLIWordError(const std::string& flag, const std::string& word, const std::string& problem)
    : CLIExitCodeError(flag + (flag.empty() ? "'" : " '") + word + "': " + problem, exitCode::unusableWords),
      word_(word) {}

CLIWordError::~CLIWordError() = default;

}  // namespace corvex::inline v0

#pragma once

#include <string>

#include <Corvex/platform/Error.h>
#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

/// The exit statuses with which a child says why its command line is unusable (BSD sysexits.h).
namespace exitCode {
/// EX_USAGE
inline constexpr int unusableWords = 64;
inline constexpr int noInput = 66;       ///< EX_NOINPUT
inline constexpr int cannotCreate = 73;  ///< EX_CANTCREAT
}  // namespace exitCode

/// An error of a command line that decides the exit status of the process that was given it: `main` catches this one
/// type, prints what() and returns exitCode(). Copies share their text, so that copying does not throw.
class CORVEX_EXPORT CLIExitCodeError : public Error {
public:
    CLIExitCodeError(const std::string& message, int exitCode) : Error(message), exitCode_(exitCode) {}
    ~CLIExitCodeError() override;
    CLIExitCodeError(const CLIExitCodeError&) = default;
    CLIExitCodeError& operator=(const CLIExitCodeError&) = default;

    [[nodiscard]] int exitCode() const noexcept { return exitCode_; }

private:
    int exitCode_;
};

/// A word that has no place on a command line: a flag that is not known, a value that is none, a value too many. Its
/// exit status is that of unusable words.
class CORVEX_EXPORT CLIWordError : public CLIExitCodeError {
public:
    /// `what()` reads "-maxImageWidth 'abc': expected ...". An empty flag is left out: "'abc': expected ...".
    CLIWordError(const std::string& flag, const std::string& word, const std::string& problem);
    ~CLIWordError() override;
    CLIWordError(const CLIWordError&) = default;
    CLIWordError& operator=(const CLIWordError&) = default;

    /// The word at fault, as it was given. Valid as long as this object.
    [[nodiscard]] const char* word() const noexcept { return word_.text(); }

private:
    SharedText word_;
};

}  // namespace corvex::inline v0

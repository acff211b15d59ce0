#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <Corvex/cli/CLISanitizationOptions.h>
#include <Corvex/platform/Export.h>
#include <Corvex/platform/FunctionCore.h>

namespace corvex::inline v0 {

/// Walks a command line and sorts its flags, each with its values, into accepted and rejected ones.
/// One object may be used by several threads as long as none of them changes it.
class CORVEX_EXPORT CLIArgumentSanitizer {
public:
    /// Gives the options for the values of a flag. What it throws ends the walk and reaches the caller unchanged.
    using OptionsCallback = std::function<CLISanitizationOptions(std::string_view flag)>;
    using PairBlock = std::function<void(std::string_view flag, std::string_view value)>;

    /// `validCommandFlags` empty: every flag is valid. `flagSanitizationOptions` absent: flags are used as given.
    explicit CLIArgumentSanitizer(std::vector<std::string> validCommandFlags,
                                  std::optional<CLISanitizationOptions> flagSanitizationOptions = std::nullopt);

    [[nodiscard]] const std::vector<std::string>& validCommandFlags() const noexcept { return validCommandFlags_; }
    [[nodiscard]] std::optional<CLISanitizationOptions> flagSanitizationOptions() const noexcept {
        return flagSanitizationOptions_;
    }
    void setFlagSanitizationOptions(std::optional<CLISanitizationOptions> options) noexcept {
        flagSanitizationOptions_ = options;
    }

    /// Calls a block for every value of every flag, flags by position, values in order: the valid block when a valid
    /// command flag occurs in the flag (anywhere, without regard to case), else the invalid block.
    /// A word whose cleaned form begins with "-" is a flag; its values are the words up to the next flag, as given and
    /// then cleaned. A flag without values is reported once with the empty value. Of a flag that occurs again only the
    /// last occurrence counts; the values of earlier ones are dropped, as are words before the first flag.
    /// `sanitizationOptionsCallback` is asked once for each flag that is reported.
    void enumerateSanitizedCLIEntries(std::span<const std::string> cliArgs,
                                      const OptionsCallback& sanitizationOptionsCallback,
                                      const PairBlock& validPairBlock, const PairBlock& invalidPairBlock) const;

private:
    [[nodiscard]] bool isValid(std::string_view flag) const;

    std::vector<std::string> validCommandFlags_;
    std::optional<CLISanitizationOptions> flagSanitizationOptions_;
};

}  // namespace corvex::inline v0

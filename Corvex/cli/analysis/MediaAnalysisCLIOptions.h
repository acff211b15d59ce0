#pragma once

#include <concepts>
#include <string_view>
#include <utility>

#include <Corvex/cli/CliArgumentStore.h>
#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

/// The basic options of a media analysis. Lists are of paths, which hold blanks, so that a newline separates them.
class BasicMediaAnalysisCLIOptions : public CliArgumentStoreDefaults<BasicMediaAnalysisCLIOptions> {
public:
    explicit BasicMediaAnalysisCLIOptions(ArgumentLookup lookup) : lookup_(std::move(lookup)) {}
    [[nodiscard]] const ArgumentLookup& argumentLookup() const noexcept { return lookup_; }
    [[nodiscard]] std::string_view listValueSeparator() const noexcept { return "\n"; }

private:
    ArgumentLookup lookup_;
};

/// What is asked of the pictures of a media analysis.
class MediaAnalysisImageCLIOptions : public CliArgumentStoreDefaults<MediaAnalysisImageCLIOptions> {
public:
    explicit MediaAnalysisImageCLIOptions(ArgumentLookup lookup) : lookup_(std::move(lookup)) {}
    [[nodiscard]] const ArgumentLookup& argumentLookup() const noexcept { return lookup_; }
    /// Whether the pictures' height is limited, too, and not only their width.
    [[nodiscard]] CORVEX_EXPORT bool limitsHeight() const noexcept;

private:
    ArgumentLookup lookup_;
};

/// By what flags a child knows its parent.
class CustodialCLIOptions : public CliArgumentStoreDefaults<CustodialCLIOptions> {
public:
    explicit CustodialCLIOptions(ArgumentLookup lookup) : lookup_(std::move(lookup)) {}
    [[nodiscard]] const ArgumentLookup& argumentLookup() const noexcept { return lookup_; }

private:
    ArgumentLookup lookup_;
};

/// A store of the options for pictures.
template <class Store>
concept MediaAnalysisImageOptionStore = CliArgumentStore<Store> && requires(const Store& store) {
    { store.limitsHeight() } -> std::same_as<bool>;
};
static_assert(CliArgumentStore<BasicMediaAnalysisCLIOptions> && CliArgumentStore<CustodialCLIOptions> &&
              MediaAnalysisImageOptionStore<MediaAnalysisImageCLIOptions>);

}  // namespace corvex::inline v0

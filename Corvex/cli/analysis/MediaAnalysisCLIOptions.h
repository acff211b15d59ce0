#pragma once

#include <concepts>
#include <string_view>
#include <utility>

#include <Corvex/cli/CliArgumentStore.h>
#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

/// The basic options of a media analysis, under the flags of MediaAnalysisCLIFlag. Lists are of paths, which hold
/// blanks, so that a newline separates them. MediaAnalysisCLIArgumentFactory makes all three stores; as any value type.
class BasicMediaAnalysisCLIOptions : public CliArgumentStoreDefaults<BasicMediaAnalysisCLIOptions> {
public:
    /// Keeps the lookup as it is; nothing checks that its flags are these.
    explicit BasicMediaAnalysisCLIOptions(ArgumentLookup lookup) : lookup_(std::move(lookup)) {}
    [[nodiscard]] const ArgumentLookup& argumentLookup() const noexcept { return lookup_; }
    [[nodiscard]] std::string_view listValueSeparator() const noexcept { return "\n"; }

private:
    ArgumentLookup lookup_;
};

/// What is asked of the pictures of a media analysis, under the flags of MediaAnalysisImageCLIFlags. Lists are of
/// numbers, with a blank between two.
class MediaAnalysisImageCLIOptions : public CliArgumentStoreDefaults<MediaAnalysisImageCLIOptions> {
public:
    /// Keeps the lookup as it is.
    explicit MediaAnalysisImageCLIOptions(ArgumentLookup lookup) : lookup_(std::move(lookup)) {}
    [[nodiscard]] const ArgumentLookup& argumentLookup() const noexcept { return lookup_; }
    /// Whether the pictures' height is limited, too, and not only their width: whether "-imageHeight" is there, with
    /// any value.
    [[nodiscard]] CORVEX_EXPORT bool limitsHeight() const noexcept;

private:
    ArgumentLookup lookup_;
};

/// By what flags a child knows its parent (CLICustodialFlag). The words go behind those of the other stores.
class CustodialCLIOptions : public CliArgumentStoreDefaults<CustodialCLIOptions> {
public:
    explicit CustodialCLIOptions(ArgumentLookup lookup) : lookup_(std::move(lookup)) {}
    [[nodiscard]] const ArgumentLookup& argumentLookup() const noexcept { return lookup_; }

private:
    ArgumentLookup lookup_;
};

/// A store of the options for pictures; for code that is to work with a host's own store, too.
template <class Store>
concept MediaAnalysisImageOptionStore = CliArgumentStore<Store> && requires(const Store& store) {
    { store.limitsHeight() } -> std::same_as<bool>;
};
static_assert(CliArgumentStore<BasicMediaAnalysisCLIOptions> && CliArgumentStore<CustodialCLIOptions> &&
              MediaAnalysisImageOptionStore<MediaAnalysisImageCLIOptions>);

}  // namespace corvex::inline v0

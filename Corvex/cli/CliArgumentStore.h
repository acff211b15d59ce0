#pragma once

#include <concepts>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <Corvex/cli/ArgumentLookup.h>
#include <Corvex/platform/Export.h>
#include <Corvex/platform/Text.h>

namespace corvex::inline v0 {

/// A command-line model: it can be rendered as the words of a command line, or as one text that identifies it. The
/// characters of the list prefix and separator are ASCII.
/// A host renders commandLineArguments() for the child that it starts, and the child makes the same model from them.
template <class Store>
concept CliArgumentStore = requires(const Store& store) {
    { store.argumentLookup() } -> std::convertible_to<const ArgumentLookup&>;
    { store.listPrefix() } -> std::convertible_to<std::string_view>;
    { store.listValueSeparator() } -> std::convertible_to<std::string_view>;
    { store.commandLineArguments() } -> std::same_as<std::vector<std::string>>;
    { store.cliString() } -> std::same_as<std::string>;
};

/// For each entry the flag and then its value, also when the value is empty; in the lookup's order. Twice as many words
/// as there are entries.
[[nodiscard]] CORVEX_EXPORT std::vector<std::string> renderArguments(const ArgumentLookup& lookup);

/// The words with nothing between them: a text to compare by, never one for a shell. Different words may give the same
/// text ("a", "bc" and "ab", "c").
[[nodiscard]] CORVEX_EXPORT std::string joinedWithoutSeparator(std::span<const std::string> words);

/// What a store does unless it says otherwise. A store derives from this by its own name and gives argumentLookup().
template <class Store>
class CliArgumentStoreDefaults {
public:
    /// What a value that holds several values begins with, and what stands between two of them. ASCII, one or more
    /// characters.
    [[nodiscard]] std::string_view listPrefix() const noexcept { return "["; }
    [[nodiscard]] std::string_view listValueSeparator() const noexcept { return " "; }

    /// Every flag followed by its value, also when that is empty.
    [[nodiscard]] std::vector<std::string> commandLineArguments() const {
        return renderArguments(self().argumentLookup());
    }
    [[nodiscard]] std::string cliString() const { return joinedWithoutSeparator(self().commandLineArguments()); }

    /// Several values as one: the prefix, then the values with the separator between them. There is no closing mark,
    /// as readers strip the prefix's characters and match no pair: a, b give "[a b". No values give the empty text.
    [[nodiscard]] std::string buildCLIList(std::span<const std::string> fromValues) const {
        std::string list;
        for (std::size_t i = 0; i < fromValues.size(); ++i) {
            list += i == 0 ? self().listPrefix() : self().listValueSeparator();
            list += fromValues[i];
        }
        return list;
    }

    /// Calls `block` with each value of a list, in order, as std::string_view: every character of the prefix is trimmed
    /// from both ends, and the rest is split at every character of the separator. Empty pieces are kept; the empty list
    /// gives one empty piece.
    template <class Block>
    void enumerateListValues(std::string_view list, Block&& block) const {
        const std::string_view prefix = self().listPrefix();
        const std::size_t first = list.find_first_not_of(prefix);
        list = first == std::string_view::npos ? std::string_view()
                                               : list.substr(first, list.find_last_not_of(prefix) - first + 1);
        forEachPiece(list, self().listValueSeparator(), block);
    }

protected:
    ~CliArgumentStoreDefaults() = default;

private:
    friend Store;
    CliArgumentStoreDefaults() = default;
    [[nodiscard]] const Store& self() const noexcept { return static_cast<const Store&>(*this); }
};

}  // namespace corvex::inline v0

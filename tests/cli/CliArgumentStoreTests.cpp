#include <Corvex/cli/CliArgumentStore.h>

#include <tuple>

#include <gtest/gtest.h>

#include "CliTexts.h"

namespace corvex::cliArgumentStoreTests {
namespace {

struct PlainStore : CliArgumentStoreDefaults<PlainStore> {
    PlainStore() = default;
    ArgumentLookup lookup{{"-b", ""}, {"-a", "x y"}};
    [[nodiscard]] const ArgumentLookup& argumentLookup() const noexcept { return lookup; }
};

/// Lists with a prefix of several characters and separators of several kinds, and an order of its own.
struct OwnStore : CliArgumentStoreDefaults<OwnStore> {
    OwnStore() = default;
    [[nodiscard]] ArgumentLookup argumentLookup() const { return {}; }
    [[nodiscard]] std::string_view listPrefix() const noexcept { return "(["; }
    [[nodiscard]] std::string_view listValueSeparator() const noexcept { return ",;"; }
    [[nodiscard]] Words commandLineArguments() const { return {"own", "", "words"}; }
};

static_assert(CliArgumentStore<PlainStore> && CliArgumentStore<OwnStore>);

template <class Store>
Words valuesOf(const Store& store, std::string_view list) {
    Words values;
    store.enumerateListValues(list, [&](std::string_view value) { values.emplace_back(value); });
    return values;
}

TEST(CliArgumentStore, rendersEveryFlagWithItsValue) {
    EXPECT_EQ(PlainStore().commandLineArguments(), (Words{"-a", "x y", "-b", ""}));
    EXPECT_EQ(PlainStore().cliString(), "-ax y-b");
    EXPECT_EQ(OwnStore().cliString(), "ownwords");
}

TEST(CliArgumentStore, listsOpenButDoNotClose) {
    const std::pair<Words, const char*> rows[] = {
        {{}, ""}, {{"v"}, "[v"}, {{"a", "b", "c"}, "[a b c"}, {{""}, "["}, {{"", ""}, "[ "}, {{"[a]"}, "[[a]"},
    };
    for (const auto& [values, list] : rows) EXPECT_EQ(PlainStore().buildCLIList(values), list);
    EXPECT_EQ(OwnStore().buildCLIList(Words{"a", "b"}), "([a,;b");
}

TEST(CliArgumentStore, listsAreReadWithoutTheirPrefixCharacters) {
    const std::pair<const char*, Words> rows[] = {
        {"[a b", {"a", "b"}},           {"a b", {"a", "b"}}, {"[[a[b[", {"a[b"}}, {"", {""}}, {"[", {""}},
        {"[a  b ", {"a", "", "b", ""}}, {"[a]", {"a]"}},
    };
    for (const auto& [list, values] : rows) EXPECT_EQ(valuesOf(PlainStore(), list), values) << list;
    EXPECT_EQ(valuesOf(OwnStore(), "[(a,b;c,;d)(["), (Words{"a", "b", "c", "", "d)"}));
}

TEST(CLISanitizationOptions, cleanWordsAsAsked) {
    const auto both = CLISanitizationOptions::lowercase | CLISanitizationOptions::trimWhiteSpace;
    const std::tuple<CLISanitizationOptions, const char*, const char*> rows[] = {
        {both, "  -VN\n", "-vn"},
        {both, "\u3000İ\u00A0", "i\u0307"},
        {CLISanitizationOptions::trimWhiteSpace, "  -VN\n", "-VN"},
        {CLISanitizationOptions::lowercase, "  -VN\n", "  -vn\n"},
        {CLISanitizationOptions(), "  -VN\n", "  -VN\n"},
    };
    for (const auto& [options, word, expected] : rows) EXPECT_EQ(options.sanitize(word), expected);
    EXPECT_EQ(both.rawValue(), 3U);
    EXPECT_FALSE(CLISanitizationOptions::lowercase.contains(both));
}

}  // namespace
}  // namespace corvex::cliArgumentStoreTests

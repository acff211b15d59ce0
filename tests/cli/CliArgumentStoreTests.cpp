#include <map>
#include <random>
#include <tuple>

#include <gtest/gtest.h>

#include <Corvex/cli/CLIArgumentSanitizer.h>
#include <Corvex/cli/CliArgumentStore.h>

#include "CliTexts.h"

namespace corvex::cliArgumentStoreTests {
namespace {

/// Changes a lookup at random beside a std::map, through sizes below and above those at which it keeps a table.
TEST(ArgumentLookup, isASortedMap) {
    std::mt19937 engine(20261121);
    const auto below = [&](unsigned end) { return static_cast<unsigned>(engine() % end); };
    const auto key = [&] { return "-in_0_" + std::to_string(below(150)); };
    using Entries = std::vector<ArgumentLookup::Entry>;
    ArgumentLookup lookup;
    std::map<std::string, std::string, std::less<>> expected;
    for (int round = 0; round < 4000; ++round) {
        const std::string flag = key();
        const std::string value = std::to_string(round);
        const unsigned action = below(100);
        if (action < 60) {
            EXPECT_EQ(lookup.insert_or_assign(flag, value), expected.insert_or_assign(flag, value).second);
        } else if (action < 97) {
            lookup.erase(flag);
            expected.erase(flag);
        } else if (action < 99) {
            Entries entries;
            for (unsigned i = below(40); i > 0; --i) entries.emplace_back(key(), std::to_string(i));
            for (const auto& [name, text] : entries) expected.insert_or_assign(name, text);
            lookup.insertAll(std::move(entries));
        } else {
            const auto isOdd = [](const auto& entry) { return entry.second.back() % 2 != 0; };
            lookup.eraseIf(isOdd);
            std::erase_if(expected, isOdd);
        }
        ASSERT_EQ(Entries(lookup.begin(), lookup.end()), Entries(expected.begin(), expected.end())) << round;
        const std::string asked = key();
        const auto found = lookup.find(asked);
        ASSERT_EQ(found != lookup.end(), expected.contains(asked)) << asked;
        if (found != lookup.end()) {
            ASSERT_EQ(found->first, asked);
        }
        ASSERT_EQ(std::distance(lookup.begin(), lookup.lower_bound(asked)),
                  std::distance(expected.begin(), expected.lower_bound(asked)));
    }
    EXPECT_EQ(lookup, ArgumentLookup(Entries(expected.begin(), expected.end())));
}

struct Store : CliArgumentStoreDefaults<Store> {
    Store() = default;
    ArgumentLookup lookup{{"-b", ""}, {"-a", "x y"}};
    [[nodiscard]] const ArgumentLookup& argumentLookup() const noexcept { return lookup; }
};

// What a store says otherwise, those of a media analysis show.
TEST(CliArgumentStore, rendersEveryFlagWithItsValue) {
    EXPECT_EQ(Store().commandLineArguments(), (Words{"-a", "x y", "-b", ""}));
    EXPECT_EQ(Store().cliString(), "-ax y-b");
}

TEST(CliArgumentStore, listsOpenButDoNotClose) {
    const std::pair<Words, const char*> written[] = {
        {{}, ""}, {{"v"}, "[v"}, {{"a", "b", "c"}, "[a b c"}, {{""}, "["}, {{"", ""}, "[ "}, {{"[a]"}, "[[a]"},
    };
    for (const auto& [values, list] : written) EXPECT_EQ(Store().buildCLIList(values), list);
    const std::pair<const char*, Words> read[] = {
        {"[a b", {"a", "b"}},           {"a b", {"a", "b"}}, {"[[a[b[", {"a[b"}}, {"", {""}}, {"[", {""}},
        {"[a  b ", {"a", "", "b", ""}}, {"[a]", {"a]"}},
    };
    for (const auto& [list, expected] : read) {
        Words values;
        Store().enumerateListValues(list, [&](std::string_view value) { values.emplace_back(value); });
        EXPECT_EQ(values, expected) << list;
    }
}

/// What a walk reports, in order: "+flag=value" for a valid pair, "!flag=value" for an invalid one, "?flag" for a
/// question about options.
Words walk(const CLIArgumentSanitizer& sanitizer, const Words& words, CLISanitizationOptions options = {}) {
    Words events;
    const auto report = [&](const char* mark) {
        return [&events, mark](std::string_view flag, std::string_view value) {
            events.push_back(mark + std::string(flag) + '=' + std::string(value));
        };
    };
    const auto optionsOf = [&](std::string_view flag) {
        events.push_back('?' + std::string(flag));
        return options;
    };
    sanitizer.enumerateSanitizedCLIEntries(words, optionsOf, report("+"), report("!"));
    return events;
}

constexpr auto clean = CLISanitizationOptions::lowercase | CLISanitizationOptions::trimWhiteSpace;

TEST(CLIArgumentSanitizer, sortsFlagsAndTheirValues) {
    const CLIArgumentSanitizer sanitizer({"-in", "-Out"});
    const std::tuple<const char*, const char*, const char*> rows[] = {
        {"strayWords", "a|b|-in|c", "?-in|+-in=c"},
        {"everyValue", "-in|a||b", "?-in|+-in=a|+-in=|+-in=b"},
        {"noValue", "-in|-x|1", "?-in|+-in=|?-x|!-x=1"},
        {"substringWithoutCase", "-INPUT_1|a|pre-in|-my-outer",
         "?-INPUT_1|+-INPUT_1=a|+-INPUT_1=pre-in|?-my-outer|+-my-outer="},
        {"flagsAsGiven", " -in|-in|-IN|a", "?-in|+-in=|?-IN|+-IN=a"},
        {"lastOccurrenceCounts", "-in|a|-x|b|-in|c|d", "?-x|!-x=b|?-in|+-in=c|+-in=d"},
        {"wordsOfTheEarlierAreNoOnes", "-x|b|-in|a|-in|c", "?-x|!-x=b|?-in|+-in=c"},
    };
    for (const auto& [name, words, expected] : rows) {
        EXPECT_EQ(walk(sanitizer, pieces(words)), pieces(expected)) << name;
    }
    EXPECT_EQ(walk(CLIArgumentSanitizer({}), {"-", "a"}), (Words{"?-", "+-=a"})) << "valid where none are named";
}

TEST(CLIArgumentSanitizer, cleansFlagsAndValuesByTheirOwnOptions) {
    CLIArgumentSanitizer sanitizer({"-in"}, clean);
    const Words words{" -IN ", " A ", "\t-in", " B "};
    EXPECT_EQ(walk(sanitizer, words), (Words{"?-in", "+-in= B "}));
    EXPECT_EQ(walk(sanitizer, words, clean), (Words{"?-in", "+-in=b"}));
    EXPECT_EQ(walk(sanitizer, words, CLISanitizationOptions::trimWhiteSpace), (Words{"?-in", "+-in=B"}));
    sanitizer.setFlagSanitizationOptions(std::nullopt);
    EXPECT_EQ(walk(sanitizer, words), Words{});  // neither word begins with "-" as given
    // A value is cleaned only after the flags are found: cleaned here, it is a word that begins with "-".
    EXPECT_EQ(walk(sanitizer, {"-in", " -A"}, clean), (Words{"?-in", "+-in=-a"}));
}

}  // namespace
}  // namespace corvex::cliArgumentStoreTests

#include <Corvex/cli/CLIArgumentSanitizer.h>

#include <stdexcept>
#include <tuple>

#include <gtest/gtest.h>

#include "CliTexts.h"

namespace corvex::cLIArgumentSanitizerTests {
namespace {

/// What a walk reports, in order: "+flag=value" for a valid pair, "!flag=value" for an invalid one, "?flag" for a
/// question about options.
Words walk(const CLIArgumentSanitizer& sanitizer, const Words& words, CLISanitizationOptions options = {},
           std::string_view failingFlag = "none") {
    Words events;
    const auto report = [&](const char* mark) {
        return [&events, mark](std::string_view flag, std::string_view value) {
            events.push_back(mark + std::string(flag) + '=' + std::string(value));
        };
    };
    const auto optionsOf = [&](std::string_view flag) {
        if (flag == failingFlag) throw std::runtime_error("no options for " + std::string(flag));
        events.push_back('?' + std::string(flag));
        return options;
    };
    try {
        sanitizer.enumerateSanitizedCLIEntries(words, optionsOf, report("+"), report("!"));
    } catch (const std::runtime_error& error) {
        events.emplace_back(error.what());
    }
    return events;
}

constexpr auto clean = CLISanitizationOptions::lowercase | CLISanitizationOptions::trimWhiteSpace;

TEST(CLIArgumentSanitizer, sortsFlagsAndTheirValues) {
    const CLIArgumentSanitizer sanitizer({"-in", "-Out"});
    const std::tuple<const char*, const char*, const char*> rows[] = {
        {"nothing", "", ""},
        {"strayWords", "a|b|-in|c", "?-in|+-in=c"},
        {"everyValue", "-in|a||b", "?-in|+-in=a|+-in=|+-in=b"},
        {"noValue", "-in|-x|1", "?-in|+-in=|?-x|!-x=1"},
        {"noValueAtTheEnd", "-x", "?-x|!-x="},
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
    sanitizer.setFlagSanitizationOptions(std::nullopt);
    EXPECT_EQ(walk(sanitizer, words), Words{});  // neither word begins with "-" as given
    // A value is cleaned only after the flags are found: cleaned here, it is a word that begins with "-".
    EXPECT_EQ(walk(sanitizer, {"-in", " -A"}, clean), (Words{"?-in", "+-in=-a"}));
}

TEST(CLIArgumentSanitizer, failingOptionsEndTheWalk) {
    const CLIArgumentSanitizer sanitizer({"-a"});
    EXPECT_EQ(walk(sanitizer, {"-a", "1", "-b", "2", "-c", "3"}, {}, "-b"),
              (Words{"?-a", "+-a=1", "no options for -b"}));
}

}  // namespace
}  // namespace corvex::cLIArgumentSanitizerTests

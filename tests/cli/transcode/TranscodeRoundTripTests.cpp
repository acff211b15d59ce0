#include <Corvex/cli/transcode/TranscodeCliArguments.h>
#include <Corvex/platform/Json.h>

#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace corvex::transcodeRoundTripTests {
namespace {

using Arguments = TranscodeCliArguments;
using Words = std::vector<std::string>;

/// Words made of pieces that meet every rule: flags in any case, blanks of every kind, presets, numbers, stray bytes.
class WordMaker {
public:
    Words makeWords() {
        Words words(number(12));
        for (auto& word : words) {
            const bool isFlag = number(2) == 0;
            if (isFlag && number(3) != 0) {
                const auto flags = Arguments::allKnownCommandFlags();
                word = flags[number(flags.size())];
            } else if (isFlag) {
                word = "-";
            }
            for (std::size_t pieces = number(3); pieces > 0; --pieces) {
                const std::string_view piece = pieces_[number(std::size(pieces_))];
                number(4) == 0 ? static_cast<void>(word.insert(0, piece)) : static_cast<void>(word += piece);
            }
        }
        return words;
    }

private:
    std::size_t number(std::size_t end) { return std::uniform_int_distribution<std::size_t>(0, end - 1)(engine_); }

    static constexpr std::string_view pieces_[] = {
        " ",     "\t",     "\u00A0",  "\u3000", "",  "x",      "IN_0_1", "-",    "Orvane_Cloud", "orvane_4444XQ",
        "s",     "PRESET", "ftype",   "İ",      "ſ", "\u212A", "Σ",      "\xFF", "\xC2",         "\xA0",
        "_burn", "3",      "960x540", "\n",
    };
    std::mt19937_64 engine_{20240607};
};

TEST(TranscodeRoundTrip, parsingWhatWasRenderedGivesTheSameJob) {
    WordMaker maker;
    for (int round = 0; round < 20000; ++round) {
        const Words words = maker.makeWords();
        SCOPED_TRACE(testing::PrintToString(words));
        const Arguments parsed(words, true);
        const Words rendered = parsed.commandLineArguments();
        const Arguments again(rendered, true);
        ASSERT_EQ(again.flagValueLookup(), parsed.flagValueLookup());
        ASSERT_EQ(again.commandLineArguments(), rendered);
        ASSERT_TRUE(again.allFlagsAreValid());
        // Unordered, and through a ready lookup or the coded form, it is the same job too.
        ASSERT_EQ(Arguments(words).flagValueLookup(), parsed.flagValueLookup());
        ASSERT_EQ(Arguments(parsed.flagValueLookup()).flagValueLookup(), parsed.flagValueLookup());
        ASSERT_EQ(Json(parsed).get<Arguments>(), parsed);
    }
}

}  // namespace
}  // namespace corvex::transcodeRoundTripTests

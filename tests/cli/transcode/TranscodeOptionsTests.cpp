#include <Corvex/cli/transcode/TranscodeCliArguments.h>

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <Corvex/exported/OrvaneUTType.h>

namespace corvex::transcodeOptionsTests {
namespace {

using Arguments = TranscodeCliArguments;
using Words = std::vector<std::string>;

/// "2: a b | 7: c" for the groups of the inputs, "none" for none.
std::string groupsOf(const Arguments& arguments) {
    std::string text;
    arguments.enumerateInputFileGroups([&](std::span<const std::string> paths, std::int64_t number) {
        text += (text.empty() ? "" : " | ") + std::to_string(number) + ":";
        for (const auto& path : paths) text += " " + path;
    });
    return arguments.inputFileGroups() ? text : "none";
}

struct InputRow {
    const char* name;
    ArgumentLookup lookup;
    const char* groups;
    std::optional<Words> files;
    std::optional<std::string> first;
};

TEST(TranscodeInputFiles, areGroupedByTheirNumbers) {
    const InputRow rows[] = {
        {"none", {{"-out", "a"}}, "none", std::nullopt, std::nullopt},
        {"plain", {{"-in", "/A"}, {"-in_0_0", "/B"}}, "0: /A", Words{"/A"}, "/A"},
        {"emptyPlainCounts", {{"-in", ""}, {"-in_0_0", "/B"}}, "0: ", Words{""}, ""},
        {"numbersNotTexts",
         {{"-in_10_0", "a"}, {"-in_9_10", "b"}, {"-in_9_9", "c"}, {"-in_-1_+2", "d"}, {"-in_-1_-2", "e"}},
         "-1: e d | 9: c b | 10: a",
         Words{"e", "d", "c", "b", "a"},
         "e"},
        {"ignored",
         {{"-in_1", ""},
          {"-in_1_2_3", ""},
          {"-in__2", ""},
          {"-in_1_", ""},
          {"-in_a_1", ""},
          {"-in_1_1.0", ""},
          {"-in_1_ 1", ""},
          {"-in3", ""},
          {"-i_1_1", ""},
          {"-in_9223372036854775808_1", ""}},
         "none",
         std::nullopt,
         std::nullopt},
        {"anyPrefix", {{"-input_4_5", "a"}, {"-inX_4_4", "b"}}, "4: b a", Words{"b", "a"}, "b"},
        {"samePlaceTwice", {{"-in_0_1", "a"}, {"-in_0_01", "b"}}, "0: b a", Words{"b", "a"}, "b"},
        {"samePathTwice", {{"-in_0_0", "a"}, {"-in_1_0", "a"}}, "0: a | 1: a", Words{"a"}, "a"},
    };
    for (const auto& row : rows) {
        Arguments arguments;
        arguments.setFlagValueLookup(row.lookup);
        EXPECT_EQ(groupsOf(arguments), row.groups) << row.name;
        EXPECT_EQ(arguments.inputFiles(), row.files) << row.name;
        EXPECT_EQ(arguments.firstInputFile(), row.first) << row.name;
    }
}

TEST(TranscodeInputFiles, setterReplacesWhatTheGettersRead) {
    const ArgumentLookup before{{"-in", "a"},  {"-in_7_7", "b"}, {"-input_1_1", "c"},
                                {"-in3", "d"}, {"-in_x_1", "e"}, {"-vn", ""}};
    const ArgumentLookup kept{{"-in3", "d"}, {"-in_x_1", "e"}, {"-vn", ""}};
    for (const auto& none : {std::optional<Words>(), std::optional<Words>(Words{})}) {
        Arguments arguments;
        arguments.setFlagValueLookup(before);
        arguments.setInputFiles(none);
        EXPECT_EQ(arguments.flagValueLookup(), kept);
    }
    Words files;
    for (int i = 0; i < 12; ++i) files.push_back("/File " + std::to_string(i));
    Arguments arguments;
    arguments.setFlagValueLookup(before);
    arguments.setInputFiles(files);
    EXPECT_EQ(arguments.inputFiles(), files);  // in their order, although "-in_0_10" sorts before "-in_0_2"
    EXPECT_EQ(arguments.argumentFlagValue("-in_0_11"), "/File 11");
    EXPECT_EQ(arguments.flagValueLookup().size(), kept.size() + files.size());
    const auto parsedAgain = Arguments(arguments.commandLineArguments());
    EXPECT_EQ(parsedAgain.inputFiles(), files);
}

TEST(TranscodeOptions, explicitTypeLivesUnderABareKey) {
    Arguments arguments(Words{"-ftype", "public.mpeg-4"});
    EXPECT_EQ(arguments.explicitOutputFileType(), std::nullopt);
    arguments.setExplicitOutputFileType(OrvaneUTType::mpeg4Movie);
    EXPECT_EQ(arguments.commandLineArguments(), (Words{"-ftype", "public.mpeg-4", "ftype", "public.mpeg-4"}));
    EXPECT_EQ(arguments.explicitOutputFileType(), OrvaneUTType::mpeg4Movie);
    arguments.setArgumentFlagValue("public.MPEG-4", "ftype");
    EXPECT_EQ(arguments.explicitOutputFileType(), std::nullopt);
    arguments.setExplicitOutputFileType(std::nullopt);
    EXPECT_FALSE(arguments.hasArgumentFlag("ftype"));
}

}  // namespace
}  // namespace corvex::transcodeOptionsTests

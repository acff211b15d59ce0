#include <Corvex/cli/transcode/TranscodeCliArguments.h>

#include <algorithm>
#include <tuple>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <Corvex/cli/transcode/TranscodeCliPreset.h>
#include <Corvex/platform/Error.h>
#include <Corvex/platform/Json.h>
#include <Corvex/platform/Text.h>
#include <tests/Thrown.h>
#include <tests/cli/CliTexts.h>

namespace corvex::transcodeCliArgumentsTests {
namespace {

using Arguments = TranscodeCliArguments;

ArgumentLookup unknownEntriesOf(const Arguments& arguments) {
    ArgumentLookup entries;
    arguments.enumerateUnknownFlags(
        [&](std::string_view key, std::string_view value) { entries.insert_or_assign(key, std::string(value)); });
    return entries;
}

TEST(TranscodePreset, flagsKeepTheirOrder) {
    EXPECT_EQ(orderedArgumentsAsList(TranscodeCliPreset::cloud),
              pieces("-file_format|qt|-vcodec|h264|-dims|960x540|-aspect_scaling|stretch|-vbr|3|-web||-acodec|aac"
                     "|-asr|48000"));
}

/// That what is parsed is rendered and coded so that it is read again, its fuzzer checks.
TEST(TranscodeCliArguments, parsesWords) {
    constexpr const char* xq = "-file_format=qt|-vcodec=prores4444xq|-acodec=lpcm";
    const struct {
        const char *name, *words, *lookup, *unknown;
        const char* ordered = "";  ///< What rendering with order gives; not looked at when empty.
    } rows[] = {
        {"strayWords", "|a|vn", "", ""},
        {"pathsKeepCase", "-vcodec|ProRes422|-out|/Tmp/A.mov", "-vcodec=prores422|-out=/Tmp/A.mov", "",
         "-vcodec|prores422|-out|/Tmp/A.mov"},
        {"keysAreLoweredAndTrimmed", "\u00A0-OUT\n| /X \u3000", "-out=/X", ""},
        {"joinedAsGiven", "-wmt_text| A || B ", "-wmt_text=A    B", ""},
        {"negativeNumber", "-vbr|-5", "-vbr=", "-5="},
        {"knownBySubstring", "-hello|A|-input|B|-my-VN", "-hello=a|-input=B|-my-vn=", ""},
        {"lastValueFirstPlace", "-vr|24|-dims|1x1|-VR|25", "-vr=25|-dims=1x1", "", "-vr|25|-dims|1x1"},
        {"repeatedInput", "-in_0_1|A|-in_0_0|B|-IN_0_1|C", "-in_0_0=B|-in_0_1=C", "", "-in_0_1|C|-in_0_0|B"},
        {"unknown", "-Foo|BAR |-vn|-foo|Baz", "-vn=", "-foo=baz", "-vn|"},
        {"caseKeepers", "-clut|A|-progress_file|B|-work_dir|C|-additional_decode_options|D|-in_0_1|E|-input_4_5|F",
         "-clut=A|-progress_file=B|-work_dir=C|-additional_decode_options=D|-in_0_1=E|-input_4_5=F", ""},
        {"onlyWholeFlagsKeepCase", "-out2|A|-wmf_path|/B|-progress_prefix|C|-c_space|sRGB|-my-in|D",
         "-out2=a|-wmf_path=/b|-progress_prefix=c|-c_space=srgb|-my-in=d", ""},
        {"preset", "-preset|ORVANE_4444XQ", xq, "", "-acodec|lpcm|-file_format|qt|-vcodec|prores4444xq"},
        {"presetLosesToFlags", "-preset|orvane_cloud|-vcodec|h265|-dims|1920x1080",
         "-vcodec=h265|-dims=1920x1080|-acodec=aac|-aspect_scaling=stretch|-asr=48000|-file_format=qt|-vbr=3|-web=", "",
         "-vcodec|h265|-dims|1920x1080|-acodec|aac|-aspect_scaling|stretch|-asr|48000|-file_format|qt|-vbr|3|-web|"},
        {"ownPreset", "-vn|-preset|Mine|-an", "-vn=|-preset=mine|-an=", "", "-vn||-preset|mine|-an|"},
        {"presetIsComparedWhole", "-preset|orvane_cloud x", "-preset=orvane_cloud x", ""},
        {"repeatedPreset", "-preset|orvane_cloud|-preset|orvane_4444xq", xq, ""},
        {"firstOfTwoPresetsWins", "-preset2|orvane_cloud|-preset|orvane_4444xq",
         "-file_format=qt|-vcodec=prores4444xq|-acodec=lpcm|-dims=960x540|-aspect_scaling=stretch|-vbr=3|-web="
         "|-asr=48000",
         ""},
        {"lastOwnPresetStays", "-presets|b|-vn|-preset|a", "-preset=b|-vn=", "", "-vn||-preset|b"},
        {"strayBytes", "-wmt_text|A\xFF|-VN\xFE|B\xFF", "-wmt_text=A\xFF|-vn\xFE=b\xFF", ""},
        {"foldedKey", "-weſt|A|-key_frameſ|B", "-key_frameſ=b", "-weſt=a"},
    };
    for (const auto& row : rows) {
        const Arguments plain(pieces(row.words));
        EXPECT_EQ(plain.flagValueLookup(), entries(row.lookup)) << row.name;
        EXPECT_EQ(unknownEntriesOf(plain), entries(row.unknown)) << row.name;
        if (*row.ordered != '\0') {
            EXPECT_EQ(Arguments(pieces(row.words), true).commandLineArguments(), pieces(row.ordered)) << row.name;
        }
    }
}

TEST(TranscodeCliArguments, normalisesReadyLookups) {
    const std::tuple<const char*, const char*, const char*, const char*> rows[] = {
        {"values", " -VCODEC = H264 |-out= /A ", "-vcodec=h264|-out=/A", ""},
        {"unknownAsGiven", " -Foo= BAR |-foo=2|vn=X|=Y", "", " -Foo= BAR |-foo=2|vn=X|=Y"},
        {"testFormWins", " -vr=1|-VR=2|-Vr=3|-vr=4|-vr =5", "-vr=4", ""},
        {"elseTheLastWins", "-VR=2|-Vr=3| -vr=1", "-vr=3", ""},
        {"bareTypeKeyIsUnknown", "ftype=public.mpeg-4", "", "ftype=public.mpeg-4"},
        {"valuesMayBeginWithADash", "-vbr= -5", "-vbr=-5", ""},
        {"preset", "-Preset= Orvane_4444XQ|-ACODEC=AAC", "-file_format=qt|-vcodec=prores4444xq|-acodec=aac", ""},
    };
    for (const auto& [name, given, lookup, unknown] : rows) {
        const Arguments arguments(entries(given));
        EXPECT_EQ(arguments.flagValueLookup(), entries(lookup)) << name;
        EXPECT_EQ(unknownEntriesOf(arguments), entries(unknown)) << name;
        EXPECT_EQ(arguments.commandLineArguments(), renderArguments(entries(lookup))) << name;
    }
}

/// The table of shortest flags finds what a search for every known flag finds.
TEST(TranscodeCliArguments, recognisesExactlyTheKeysThatHoldAKnownFlag) {
    const auto flags = Arguments::allKnownCommandFlags();
    Words keys{"-hh", "-\u212A", "-ſ", "--", "-i-n", "-İn", "-tc-burn", "-x-ACL\u00C4", "-wmt_ſize", "-m"};
    for (const std::string_view flag : flags) {
        keys.emplace_back(flag);
        keys.push_back("-q" + std::string(flag));
        keys.push_back("-_" + std::string(flag.substr(1)));
        keys.emplace_back(flag.substr(0, flag.size() - 1));
        keys.push_back("-z-" + std::string(flag.substr(1)) + "Ä");
    }
    for (const std::string& key : keys) {
        const bool isKnown = std::any_of(flags.begin(), flags.end(),
                                         [&](std::string_view flag) { return containsIgnoringCase(key, flag); });
        EXPECT_EQ(Arguments(Words{key}).allFlagsAreValid(), isKnown) << key;
    }
}

TEST(TranscodeCliArguments, saysWhatWasNotAccepted) {
    EXPECT_EQ(Arguments(Words{"-vn"}).unknownFlags(), std::nullopt);
    const Arguments invalid(Words{"-zoo", "A", "-bar"});
    EXPECT_EQ(invalid.unknownFlags(), (Words{"-bar", "-zoo"}));
    EXPECT_FALSE(invalid.allFlagsAreValid());
    // An empty set of entries can only be decoded, and means the same as none.
    const auto decoded = Json::parse(R"({"flagValueLookup":{},"invalidKeyValueLookup":{}})").get<Arguments>();
    EXPECT_EQ(decoded.unknownFlags(), std::nullopt);
}

TEST(TranscodeCliArguments, looksFlagsUpTrimmedButNotLowered) {
    const Arguments arguments(Words{"-vn", "-vr", "25"});
    EXPECT_EQ(arguments.argumentFlagValue("\n -vr "), "25");
    EXPECT_EQ(arguments.argumentFlagValue("-VN"), std::nullopt);
    EXPECT_TRUE(arguments.hasVideoArgumentFlag(OAVNoVideoFlag));
    EXPECT_FALSE(arguments.hasVideoArgumentFlag(OAVVideoFormatFlag));
}

TEST(TranscodeCliArguments, storesAsGivenAndRendersNewFlagsLast) {
    Arguments arguments(Words{"-vr", "25", "-an"}, true);
    arguments.setArgumentFlagValue(" X ", "-Anything ");
    arguments.setArgumentFlagValue("30", "-vr");
    arguments.setArgumentFlagValue("first", "-acodec");
    EXPECT_EQ(arguments.commandLineArguments(),
              (Words{"-vr", "30", "-an", "", "-Anything ", " X ", "-acodec", "first"}));
    arguments.setArgumentFlagValue(std::nullopt, "-vr");
    arguments.setArgumentFlagValue(std::nullopt, "-never_there");
    EXPECT_EQ(arguments.argumentFlagValue("-Anything "), std::nullopt);  // asking trims, storing did not
    EXPECT_EQ(arguments.commandLineArguments(), (Words{"-an", "", "-Anything ", " X ", "-acodec", "first"}));
    // Its place is kept for a flag that comes back.
    arguments.setArgumentFlagValue("24", "-vr");
    EXPECT_EQ(arguments.commandLineArguments().front(), "-vr");
    // A value may be a part of the one that it replaces.
    arguments.setArgumentFlagValue(arguments.argumentFlagValue("-acodec")->substr(1, 3), "-acodec");
    EXPECT_EQ(arguments.argumentFlagValue("-acodec"), "irs");
}

TEST(TranscodeCliArguments, equalityCountsOrderAndUnknownEntries) {
    const Arguments base(Words{"-vn", "-an"});
    EXPECT_EQ(base, Arguments(Words{"-an", "-vn"}));
    EXPECT_EQ(base.hash(), Arguments(Words{"-an", "-vn"}).hash());
    EXPECT_NE(base, Arguments(Words{"-vn", "-an"}, true));
    EXPECT_NE(base, Arguments(Words{"-vn", "-an", "-foo"}));
    EXPECT_EQ(base.description(), "TranscodeCliArguments: -an \"\" -vn \"\"");
    EXPECT_TRUE(base.isEqual(Arguments(base)));
}

TEST(TranscodeCliArguments, codesWhatIsThere) {
    EXPECT_EQ(jsonText(Json(Arguments())), R"({"flagValueLookup":{}})");
    const Arguments full(Words{"-foo", "1", "-vr", "25", "-an"}, true);
    EXPECT_EQ(jsonText(Json(full)), R"({"flagValueLookup":{"-an":"","-vr":"25"},"orderedFlags":["-vr","-an"],)"
                                    R"("invalidKeyValueLookup":{"-foo":"1"}})");
    EXPECT_EQ(nlohmann::json(full).get<Arguments>(), full);
    const auto nulls = R"({"flagValueLookup":{},"orderedFlags":null,"invalidKeyValueLookup":null})";
    EXPECT_EQ(Json::parse(nulls).get<Arguments>(), Arguments());
    // Restored as it was: nothing is cleaned, recognised or put in order again.
    const auto odd =
        Json::parse(R"({"orderedFlags":["-B","x","-B","-gone"],"flagValueLookup":{" -A ":" X ","-B":"Y"}})");
    EXPECT_EQ(odd.get<Arguments>().commandLineArguments(), (Words{"-B", "Y", " -A ", " X "}));
}

TEST(TranscodeCliArguments, decodingErrorsNameTheKey) {
    const std::pair<const char*, const char*> rows[] = {
        {R"({})", "flagValueLookup"},
        {R"([])", "flagValueLookup"},
        {R"({"flagValueLookup":null})", "flagValueLookup"},
        {R"({"flagValueLookup":{"-vr":25}})", "flagValueLookup"},
        {R"({"flagValueLookup":{},"orderedFlags":[1]})", "orderedFlags"},
        {R"({"flagValueLookup":{},"invalidKeyValueLookup":{"-a":null}})", "invalidKeyValueLookup"},
    };
    for (const auto& [text, key] : rows) {
        Arguments arguments(Words{"-vn"});
        const auto error = test::thrownBy<DecodingError>([&] { return Json::parse(text).get_to(arguments); });
        ASSERT_TRUE(error) << text;
        EXPECT_STREQ(error->key(), key) << text;
        EXPECT_EQ(arguments, Arguments(Words{"-vn"})) << text;  // a failure leaves the object as it was
    }
}

}  // namespace
}  // namespace corvex::transcodeCliArgumentsTests

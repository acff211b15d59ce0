// The tool's words: what it answers, and how it refuses.

#include <filesystem>

#include <gmock/gmock.h>

#include <tests/tools/Media.h>

namespace corvex::tool::test::commandsEndToEndTests {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

TEST(ArgsCommandEndToEnd, showsOneVectorInAllItsForms) {
    const CommandResult result = corvex({"args", "--ordered", "--json", "--", "stray", "-OUT", " /A b.mov ", "-vn",
                                         "-nosuch", "5", "-in_0_1", "B", "-in_0_0", "A", "-vn", "-dims", "10x20"});
    EXPECT_EQ(result.exitStatus, 0) << result.error;
    const ProbeResult shown = ProbeResult::parse(result.output, nullptr, false);
    EXPECT_EQ(shown["arguments"]["flagValueLookup"],
              (ProbeResult{{"-out", "/A b.mov"}, {"-vn", ""}, {"-in_0_0", "A"}, {"-in_0_1", "B"}, {"-dims", "10x20"}}));
    EXPECT_EQ(shown["arguments"]["orderedFlags"], (ProbeResult{"-out", "-vn", "-in_0_1", "-in_0_0", "-dims"}));
    EXPECT_EQ(shown["arguments"]["invalidKeyValueLookup"], (ProbeResult{{"-nosuch", "5"}}));
    EXPECT_EQ(shown["allFlagsAreValid"], false);
    EXPECT_EQ(shown["unknownFlags"], ProbeResult::array({"-nosuch"}));
    EXPECT_EQ(shown["commandLineArguments"],
              (ProbeResult{"-out", "/A b.mov", "-vn", "", "-in_0_1", "B", "-in_0_0", "A", "-dims", "10x20"}));
    EXPECT_EQ(shown["cliString"], "-out/A b.mov-vn-in_0_1B-in_0_0A-dims10x20");
    EXPECT_EQ(shown["inputFileGroups"], (ProbeResult{{"0", {"A", "B"}}}));
    EXPECT_EQ(shown["inputFiles"], (ProbeResult{"A", "B"}));
    EXPECT_EQ(shown["firstInputFile"], "A");

    const ProbeResult empty = ProbeResult::parse(corvex({"args", "--json", "--"}).output, nullptr, false);
    EXPECT_EQ(empty["arguments"], (ProbeResult{{"flagValueLookup", ProbeResult::object()}}));
    for (const char* key : {"unknownFlags", "inputFileGroups", "inputFiles", "firstInputFile"}) {
        EXPECT_TRUE(empty.contains(key) && empty[key].is_null()) << key;
    }
}

TEST(ArgsCommandEndToEnd, speaksToPeopleToo) {
    const CommandResult result =
        corvex({"args", "--", "-vcodc", "x", "-in_0_0", "a b", "-dims", "10x20", "-vbr", "3.5", "-asr", "48k"});
    EXPECT_EQ(result.exitStatus, 0) << result.error;
    for (const char* part :
         {"(did you mean -vcodec?)", "-in_0_0 \"a b\"", "Input groups", "10 x 20 pixels", "3.5 Mbit/s"}) {
        EXPECT_THAT(result.output, HasSubstr(part));
    }
    const CommandResult bytes = corvex({"args", "--json", "--", "-out", "\xff.mov"});  // no UTF-8
    EXPECT_EQ(bytes.exitStatus, 0) << bytes.error;
    EXPECT_FALSE(ProbeResult::parse(bytes.output, nullptr, false).is_discarded());
}

TEST(InformationEndToEnd, commandsAnswerFromTheVocabulary) {
    struct Row {
        const char* command;
        const char* answer;
    };
    constexpr Row rows[] = {
        {"-h", "-tc_burn"},
        {"-codecs", "video     h264              yes         mov mp4 m4v\n"},
        {"-codecs", "audio     aac_he            no"},
        {"-formats", "qt     .mov .mp4\n"},
        {"-version", "corvex "},
        {"-acknowledge", "FFmpeg"},
        {"-presets", "orvane_cloud (cloud): -file_format qt"},
        {"-crop_anchors", "tl\ntc\ntr\ncl\nc\ncr\nbl\nbc\nbr\n"},
        {"-color_spaces", "sRGB\n"},
        {"-color_matrix", "cm_rec_604_4\n"},
        {"-transfer_func", "tf_smpte_240M_1995\n"},
        {"-audio_channel_layouts", "mono\nstereo\nquad\npent\nhex\noct\n"},
        {"-audio_bitmap_values", "LFE\n"},
        {"-gpu_devices", "none"},
        {" -FORMATS ", "wav"},
    };
    for (const Row& row : rows) {
        const CommandResult result = corvex({"transcode", row.command, "-in", "x"});
        EXPECT_EQ(result.exitStatus, 0) << row.command << result.error;
        EXPECT_THAT(result.output, HasSubstr(row.answer)) << row.command;
    }
    for (const Words& words :
         {Words{"--help"}, Words{"transcode", "--help"}, Words{"args", "--help"}, Words{"--version"}}) {
        const CommandResult result = corvex(words);
        EXPECT_EQ(result.exitStatus, 0) << words[0];
        EXPECT_THAT(result.output, HasSubstr("corvex")) << words[0];
    }
}

/// One line that begins with the tool's name, the exit status, and nothing written.
void expectRefusal(const CommandResult& result, int status, const std::string& problem) {
    EXPECT_EQ(result.exitStatus, status) << problem;
    EXPECT_EQ(result.signal, 0) << problem;
    EXPECT_THAT(result.error, StartsWith("corvex: "));
    EXPECT_THAT(result.error, HasSubstr(problem));
    EXPECT_EQ(lineCount(result.error), 1U) << result.error;
}

TEST(RefusalEndToEnd, wordsThatCannotBeUsed) {
    struct Row {
        Words words;
        const char* problem;
    };
    const Row rows[] = {
        {{}, "subcommand"},
        {{"transmogrify"}, "--help"},
        {{"args"}, "expected --"},
        {{"args", "-vn"}, "--"},
        {{"args", "--json", "word", "--", "-vn"}, "'word'"},
        {{"transcoded"}, "'transcoded'; did you mean transcode? (corvex --help"},
        {{"lut", "chek", "x"}, "lut: unknown command 'chek'; did you mean check? (corvex lut --help"},
        {{"timecode", "add", "00:00:00:00", "1", "--rat=25"},
         "timecode add: unknown option '--rat=25'; did you mean --rate?"},
        {{"timecode", "add"}, "timecode add: TEXT is required (corvex timecode add --help"},
        {{"vocabulary", "--", "--json"}, "vocabulary: unexpected '--json'; expected corvex vocabulary [--json]"},
        {{"rate", "info", "25", "--", "26"}, "rate info: unexpected '26'"},
        {{"rate", "info", "--", "-2\x1b[m\xc3\xa4\xc2\x9b\xff"}, "'-2\\x1b[m\xc3\xa4\\xc2\\x9b\\xff' is no"},
        {{"generate", ""}, "DIR ''"},
        {{"color", "show", ""}, "no colour is called ''"},
        {{"transcode", "-in", "a.mov", "-codecs", "extra"}, "-codecs 'extra'"},
        {{"-isTranscoder", "-in", "a.mov", "-out", "b.mov", "-wmt_burn", "-wmt_text", "\xff"}, "-wmt_text '\\xff'"},
        {{"transcode"}, "-in is missing"},
        {{"transcode", "-in", "a.mov", "-out", "b.mov", "-vcodc", "h264"}, "did you mean -vcodec?"},
        {{"transcode", "-in", "a.mov", "-out", "b.mov", "-xyzzyx", "-plughplugh"}, "'-plughplugh'"},
        {{"transcode", "-in", "a.mov", "-out", "b.mov", "-vbr", "-5"}, "'-5' is no value of -vbr"},
        {{"transcode", "-in", "a.mov", "-out", "b.mov", "-arri_cs", "x"}, "'-arri_cs' is not carried out"},
        {{"-isTranscoder", "-in", "a.mov", "-out", "b.mov", "-parentPid", "x"}, "-parentPid 'x'"},
    };
    for (const Row& row : rows) expectRefusal(corvex(row.words), 2, row.problem);
}

TEST(RefusalEndToEnd, jobsThatCannotBeDone) {
    const TemporaryDirectory directory;
    const auto cut = [&](const std::string& name, double part) {
        const std::string bytes = readFile(clip(name));
        const std::string path = directory.path("cut-" + std::to_string(static_cast<int>(100 * part)) +
                                                std::filesystem::path(clip(name)).extension().string());
        writeFile(path, bytes.substr(0, static_cast<std::size_t>(part * static_cast<double>(bytes.size()))));
        return path;
    };
    writeFile(directory.path("empty.mov"), "");
    writeFile(directory.path("text.mov"), "This is no film, but a text that somebody renamed.\n");
    const std::string out = directory.path("out.mov");
    const std::string wave = directory.path("out.wav");
    struct Row {
        Words words;
        std::string problem;
    };
    const Row rows[] = {
        {{"-in", directory.path("missing.mov"), "-out", out}, "missing.mov': no such file"},
        {{"-in", directory.path("empty.mov"), "-out", out}, "empty.mov': the file is empty"},
        {{"-in", directory.path("text.mov"), "-out", out}, "text.mov': no readable media"},
        {{"-in", directory.path(), "-out", out}, "is a directory"},
        {{"-in", "http://127.0.0.1:9/x.mov", "-out", out}, "no such file"},
        {{"-in", clip("wav"), "-out", out}, "holds no video; -vn"},
        {{"-in", clip("silent"), "-out", wave}, "holds no audio"},
        {{"-in", clip("tracks"), "-out", wave}, "3 audio tracks; a wav file holds one"},
        {{"-in", clip("tracks"), "-out", out, "-acodec", "apple_ima4"}, "6 in stream 3"},
        {{"-in", clip("plain"), "-out", out, "-acodec", "aac_he"}, "aac_he"},
        {{"-in", clip("plain"), "-out", out, "-acodec", "aac", "-asr", "12345"}, "expected one of 96000"},
        {{"-in", clip("plain"), "-out", out, "-vcodec", "dnxhd"}, "1920x1080 or 1280x720"},
        {{"-in_0_0", clip("plain"), "-in_0_1", clip("tracks"), "-out", out}, "3 audio tracks, the first file 1"},
        {{"-in_0_0", clip("plain"), "-in_0_1", directory.path("missing.mov"), "-out", out}, "missing.mov': no such"},
        {{"-in", clip("plain"), "-out", clip("plain"), "-overwrite"}, "a source is never replaced"},
        {{"-in", clip("plain"), "-out", out, "-progress_file", clip("plain")}, "a file of the job itself"},
        {{"-in", clip("plain"), "-out", out, "-progress_file", "/nonexistent/p"}, "-progress_file '/nonexistent/p'"},
        {{"-in", clip("plain"), "-out", "/nonexistent/out.mov"}, "'/nonexistent/out.mov'"},
        {{"-in", clip("plain"), "-out", out, "-work_dir", "/nonexistent"}, "'/nonexistent'"},
        {{"-in", cut("front", 0.6), "-out", out}, "is truncated: its index names"},
        {{"-in", cut("plain", 0.9), "-out", out}, "no readable media"},
        {{"-in", cut("mkv", 0.95), "-out", out}, "is truncated: its header names"},
        {{"-in", cut("avi", 0.6), "-out", out}, "is truncated"},
        {{"-in", cut("wav", 0.6), "-out", wave}, "is truncated"},
        {{"-in", cut("mp4", 0.1), "-out", out}, "no readable media"},
    };
    const Words before = directory.entries();
    const std::string source = readFile(clip("plain"));
    for (const Row& row : rows) {
        Words words = row.words;
        words.insert(words.begin(), "transcode");
        expectRefusal(corvex(words), 1, row.problem);
        EXPECT_EQ(directory.entries(), before) << row.problem;
    }
    EXPECT_TRUE(readFile(clip("plain")) == source);
}

TEST(RefusalEndToEnd, anExistingTargetIsNotTouched) {
    const TemporaryDirectory directory;
    writeFile(directory.path("out.mov"), "mine");
    expectRefusal(corvex({"transcode", "-in", clip("plain"), "-out", directory.path("out.mov")}), 1, "-overwrite");
    // Nor with -overwrite, when the job fails.
    const std::string bad = directory.path("bad.mov");
    writeFile(bad, readFile(clip("front")).substr(0, 60'000));
    expectRefusal(corvex({"transcode", "-in_0_0", clip("plain"), "-in_0_1", bad, "-out", directory.path("out.mov"),
                          "-overwrite"}),
                  1, "truncated");
    EXPECT_EQ(readFile(directory.path("out.mov")), "mine");
    EXPECT_EQ(directory.entries(), (Words{"bad.mov", "out.mov"}));
}

}  // namespace
}  // namespace corvex::tool::test::commandsEndToEndTests

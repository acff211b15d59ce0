// The tool's words: what it answers, and how it refuses.

#include <algorithm>
#include <filesystem>

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <Corvex/cli/transcode/TranscodeCliArguments.h>
#include <Corvex/platform/Text.h>
#include <tests/Places.h>
#include <tests/tools/Media.h>

namespace corvex::tool::test::commandsEndToEndTests {
namespace {

using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::Not;
using Json = nlohmann::json;

TEST(ArgsCommandEndToEnd, showsOneVectorInAllItsForms) {
    Json shown =
        jsonAnswerTo("args --ordered -- stray -OUT ' /A b.mov ' -vn -nosuch 5 -in_0_1 B -in_0_0 A -vn -dims 10x20");
    shown.erase("options");
    EXPECT_EQ(shown, Json::parse(R"({"arguments": {
        "flagValueLookup": {"-out": "/A b.mov", "-vn": "", "-in_0_0": "A", "-in_0_1": "B", "-dims": "10x20"},
        "orderedFlags": ["-out", "-vn", "-in_0_1", "-in_0_0", "-dims"], "invalidKeyValueLookup": {"-nosuch": "5"}},
        "allFlagsAreValid": false, "unknownFlags": ["-nosuch"],
        "commandLineArguments": ["-out", "/A b.mov", "-vn", "", "-in_0_1", "B", "-in_0_0", "A", "-dims", "10x20"],
        "cliString": "-out/A b.mov-vn-in_0_1B-in_0_0A-dims10x20",
        "inputFileGroups": {"0": ["A", "B"]}, "inputFiles": ["A", "B"], "firstInputFile": "A"})"));

    EXPECT_EQ(jsonAnswerTo("args --"), Json::parse(R"({"arguments": {"flagValueLookup": {}}, "allFlagsAreValid": true,
        "unknownFlags": null, "commandLineArguments": [], "cliString": "", "inputFileGroups": null, "inputFiles": null,
        "firstInputFile": null, "options": {}})"));
    EXPECT_FALSE(jsonAnswerTo("args -- -out \xff.mov").is_discarded()) << "no UTF-8";
}

TEST(ArgsCommandEndToEnd, typedValuesByAccessor) {
    const Json read = jsonAnswerTo(
        "args -- -overwrite -vbr 2.5 -c_matrix cm_rec_604_4 -v_colrange V -dims 1280.5X720 -vscale 0.5 -v_nocap "
        "-max_v_frame_mem 9223372036854775807 -additional_decode_options B=1:a -clut L.cube -gpu_trans metal 7 "
        "-acl hex -acl_bitmap L R -ac_omit_2 3 1 -aqual HIGH -tc_custom 01:00:00;00 -tc_track "
        "-tc_burn_font_rgb 1 .5 0.1 -wmf_scale 1.5 -wmt_text Not FINAL");
    EXPECT_EQ(read["options"], Json::parse(R"({"shouldOverwrite": true, "videoBitRate": 2.5,
        "videoBitRateAsBitsPerSecond": 2500000, "colorMatrix": "rec601", "colorRange": "video",
        "videoDimensions": {"width": 1280.5, "height": 720}, "explicitVideoScaling": 0.5,
        "explicitOutputResolution": {"width": 640, "height": 360}, "unboundVideoFrameCapacity": true,
        "videoFrameCapacity": 18446744073709551615, "maxVideoFrameMemory": 9223372036854775807,
        "additionalDecodeOptions": {"B": "1", "a": ""}, "lutFile": "L.cube", "gpuTransformationDeviceIDs": [7],
        "audioQuality": "high", "channelLayout": "hex", "outputChannels": 6, "channelLayoutBitmap": ["L", "R"],
        "ignoredAudioFileTracks": {"2": [1, 3]}, "timecodeSource": "custom", "timecode": "01:00:00;00",
        "timecodeDropFrameState": "drop", "addTimecodeTrack": true, "includeTimecode": true,
        "timecodeBurnFontColor": {"red": 1, "green": 0.5, "blue": 0.1, "hex": "FF801A"}, "watermarkFileScale": 1.5,
        "watermarkText": "Not FINAL"})"));
    EXPECT_FALSE(read.contains("unreadableOptions"));
    const Json unread = jsonAnswerTo(
        "args -- -vbr abc -asr -aqual best -acl 7.1 -gpu_trans metal x -v_frame_cap 1.5 -ovw wide -tc_custom now "
        "-ac_omit 1 x -ac_omit_y 2");
    EXPECT_EQ(unread["options"], Json::parse(R"({"channelLayout": "7.1", "ignoredAudioFileTracks": {"0": [1]},
                                                 "timecodeSource": "custom", "timecode": "now"})"));
    EXPECT_EQ(unread["unreadableOptions"], Json::parse(R"({"-vbr": "abc: not a number",
        "-aqual": "best: not one of min, low, medium, high, max", "-asr": "(no value): not an integer",
        "-ovw": "wide: not a number", "-gpu_trans": "metal x: not a list of device numbers, or opencl, metal, default",
        "-v_frame_cap": "1.5: not a whole number from 0", "-tc_custom": "now: not a timecode as 01:00:00:00",
        "-ac_omit": "1 x: not a list of track numbers from 0",
        "-ac_omit_y": "2: not under -ac_omit or -ac_omit_<number of a file>"})"));
}

TEST(AnswersEndToEnd, holdInTheirText) {
    constexpr const char* vector =
        "args -- -vcodc x -in_0_0 'a b' -vbr abc -vr 25 -dims 1920x1080 -ovw 640 -tc_drop -asr 48k";
    constexpr std::pair<const char*, const char*> rows[] = {
        {vector, "(did you mean -vcodec?)"},
        {vector, "-in_0_0 \"a b\""},
        {vector, "  explicitOutputResolution        640 x 1080 pixels               -dims -ovw\n"},
        {vector, "Options that cannot be read\n  -vbr abc: not a number\n"},
        {"transcode -h -in x", "-tc_burn"},
        {"transcode -codecs -in x", "video     h264              yes         mov mp4 m4v\n"},
        {"transcode -codecs -in x", "audio     aac_he            no"},
        {"transcode -presets -in x", "orvane_cloud (cloud): -file_format qt"},
        {"transcode -crop_anchors -audio_channel_layouts -in x",  // in this order
         "tl\ntc\ntr\ncl\nc\ncr\nbl\nbc\nbr\nmono\nstereo\nquad\npent\nhex\noct\n"},
        {"transcode -color_matrix -in x", "cm_rec_604_4\n"},
        {"transcode -color_spaces -in x", "sRGB\n"},
        {"transcode -transfer_func -in x", "tf_smpte_240M_1995\n"},
        {"transcode -audio_bitmap_values -in x", "LFE\n"},
        {"transcode ' -FORMATS ' -in x", "qt     .mov .mp4\n"},
        {"transcode -version -in x", "corvex "},
        {"audio list", "ima4  apple_ima4      IMA 4:1 ADPCM   can be passed"},
        {"color list", "Rec. 601 - EBU 3213        ebu_3213"},
        {"color show p3D65", "signal              primaries p3D65, transfer function rec709, matrix rec709\n"},
        {"media makers", "ARRI\nAdobe\n"},
        {"vocabulary", "-vbr VALUE: number, Mbit/s\n"},
    };
    std::string last, answer;
    for (const auto& [line, part] : rows) {
        if (last != line) answer = answerTo(last = line);
        EXPECT_THAT(answer, HasSubstr(part)) << line;
    }
    EXPECT_THAT(answerTo("args -- -vr 25"), Not(HasSubstr("cannot be read")));
    forEachPiece(answer, "\n",
                 [](std::string_view line) { EXPECT_LE(line.size(), 80U) << "of the vocabulary: " << line; });
    if (!std::filesystem::exists(corvex::test::localeDirectory)) GTEST_SKIP() << "built without msgfmt";
    EXPECT_THAT(run({"env", "LC_ALL=C.UTF-8", "LANGUAGE=de", corvex::test::toolPath, "rate", "list"}).output,
                HasSubstr("Wie Quelle"));
}

TEST(AnswersEndToEnd, areWhatWasAskedFor) {
    constexpr std::tuple<const char*, const char*, const char*> rows[] = {
        {"audio replacement ac-3", "aac\n", ""},
        {"audio replacement ac-3 --lossless", "apple_lossless\n", ""},
        {"audio replacement 0x6D730011", "lpcm\n", ""},
        {"timecode parse 1:2:3;4 --lenient", "01:02:03;04 drop frame\n", ""},
        {"timecode number 00:01:00;02 --rate 25", "1502\n", "note"},
        {"timecode at 1800 --rate 30000/1001 --drop", "00:01:00;02\n", ""},
        {"timecode number 00:01:00;01 --rate 29.97", "1799\n", "have no label 00:01:00;01"},
        {"timecode number 01:00:00:25 --rate 25", "90025\n", "have no label 01:00:00:25"},
        {"timecode add 00:00:00:04 --rate 25 -- -4", "00:00:00:00\n", ""},
        {"rate closest 29.985 --tolerance 1", "fps29_97 30000/1001\n", ""},
    };
    for (const auto& [line, output, note] : rows) {
        const CommandResult result = corvex(line);
        EXPECT_EQ(result.exitStatus, 0) << line;
        EXPECT_EQ(result.output, output) << line;
        EXPECT_THAT(result.error, HasSubstr(note)) << line;
        EXPECT_EQ(lineCount(result.error), *note == '\0' ? 0U : 1U) << line;
    }
}

TEST(AnswersEndToEnd, holdInTheirJson) {
    constexpr std::tuple<const char*, const char*, const char*> rows[] = {
        // of objects the members that count
        {"audio list", "/2", R"({"name": "AAC", "cliValue": "aac", "code": "aac ", "codeNumber": 1633772320,
                                 "support": "fullyEncodable"})"},
        {"audio replacement ulaw", "/replacement/code", R"("aac ")"},
        {"color list", "/matrices/3", R"({"rawValue": 3, "caseName": "rec601", "displayName": "Rec. 601",
                                          "cliValue": "cm_rec_604_4", "codePoint": 6})"},
        {"color show 'rec. 2020 pq'", "/0/kind", R"("colorSpace")"},
        {"color show Rec709", "/3/kind", R"("matrix")"},
        {"color show F", "/0/kind", R"("range")"},
        {"color show dciP3Cinema", "/0", R"({"defaultColorPrimaries": "dciP3", "flag": null,
            "signals": [{"primaries": "dciP3", "transferFunction": "gamma", "matrix": null, "gamma": 2.6}]})"},
        {"color show custom8", "/0/signals", "null"},
        {"color show smpteC", "/0/codePointsRead", "[6, 7]"},
        {"rate info 23.98", "", R"({"name": "fps23_976", "timeValue": 24000, "timeScale": 1001})"},
        {"rate info 48000/2002", "", R"({"name": "fps23_976", "timeValue": 48000, "timeScale": 2002})"},
        {"rate info 12.5", "", R"({"name": null, "timeValue": 25, "timeScale": 2})"},
        {"rate list", "/choices/0/description", R"("Match Source")"},
        {"timecode at 1800 --rate 29.97 --drop", "/components/frames", "2"},
        {"timecode number 00:01:00;02 --rate 29.97", "", R"({"frameNumber": 1800, "actualFrameNumber": 1802})"},
        {"media containers", "/1", R"({"container": "HDE", "extensions": ["arx"]})"},
        {"media extensions", "/2", R"({"extension": "mp4", "containers": ["MP4"]})"},
    };
    for (const auto& [line, pointer, value] : rows) {
        const Json found = jsonAnswerTo(line).at(Json::json_pointer(pointer));
        Json expected = Json::parse(value);
        if (expected.is_object()) expected.insert(found.begin(), found.end());
        EXPECT_EQ(found, expected) << line << " " << pointer;
    }
}

TEST(VocabularyCommandEndToEnd, describesEveryFlagThatTheParserKnows) {
    const Json flags = jsonAnswerTo("vocabulary");
    std::vector<std::string> names;
    for (const Json& flag : flags) {
        names.push_back(flag["flag"]);
        EXPECT_FALSE(flag["type"] == "" || flag["meaning"] == "") << flag;
        EXPECT_FALSE(flag["type"] == "choice" && flag["values"].empty()) << flag;
    }
    for (const std::string_view flag : TranscodeCliArguments::allKnownCommandFlags()) {
        EXPECT_THAT(names, Contains(std::string(flag)));
    }
    EXPECT_THAT(flags, Contains(Json::parse(R"({"flag": "-vbr", "command": "transcode", "group": "Video",
        "takesValue": true, "type": "number", "unit": "Mbit/s", "values": [], "meaning": "data rate of the video",
        "isCarriedOut": true})")));
    EXPECT_THAT(names, Contains("-snapshotLocation"));
}

using GenerateCommandEndToEnd = RoomTest;

TEST_F(GenerateCommandEndToEnd, bashCompletesWordsByTheirPlace) {
    answerTo("generate .");
    writeFile("look.cube", "");
    const std::pair<const char*, const char*> rows[] = {
        {"corvex v", "vocabulary"},  // the last one is being written
        {"corvex lut info --", "--help --json"},
        {"corvex transcode -in a.mov -vcodec prores422l", "prores422lt"},
        {"corvex transcode -aspect_scaling ''", "match stretch letterbox crop"},
        {"corvex transcode -clut lo", "look.cube"},
        {"corvex transcode -in_0_0 lo", "look.cube"},
        {"corvex transcode -vbr 1", ""},
        {"corvex analyze -deep", "-deepAnalysis"},
        {"corvex settings set note 1 --type b", "boolean"},
    };
    std::string script = ". bash-completion/completions/corvex\n", expected;
    for (const auto& [words, completions] : rows) {
        script += "COMP_WORDS=(" + std::string(words) +
                  "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); COMPREPLY=(); _corvex; echo \"${COMPREPLY[*]}\"\n";
        expected += completions + std::string("\n");
    }
    EXPECT_EQ(run({"bash", "-c", script}).output, expected);
}

TEST(RefusalEndToEnd, wordsThatCannotBeUsed) {
    expectRefusals({
        {"", 2, "subcommand"},
        {"transmogrify", 2, "--help"},
        {"args -vn", 2, "--"},
        {"transcode -in a.mov -out b.mov -xyzzyx -plughplugh", 2, "'-plughplugh'"},
        {"transcode -in a.mov -out b.mov -vbr -5", 2, "'-5' is no value of -vbr"},
        {"transcode extra -in a.mov -out b.mov", 2, "'extra': expected a flag before it"},
        {"transcode -in a.mov -out b.mov -overwrite false", 2, "-overwrite 'false': the flag takes no value"},
        {"transcode -in a.mov -in_0_0 b.mov -out c.mov", 2, "-in and -in_0_0: expected one"},
        {"color show rec709x", 2, "no colour is called 'rec709x'; known are rec2020, rec709, "},
        {"timecode parse 1:2:3;4", 2, "'1:2:3;4' is no timecode"},
        {"timecode at -1 --rate fps29_97 --drop", 2, "'-1' lies before"},
        {"timecode add 00:00:00:04 -5 --rate 25", 2, "'-5' frames from '00:00:00:04' lies before"},
        {"timecode add 00:00:00:00 1 --rat=25", 2, "timecode add: unknown option '--rat=25'; did you mean --rate?"},
        {"lut chek x", 2, "lut: unknown command 'chek'; did you mean check? (corvex lut --help"},
        {"vocabulary -- --json", 2, "vocabulary: unexpected '--json'; expected corvex vocabulary [--json]"},
        {"rate info -- -2\x1b[m\xc3\xa4\xc2\x9b\xff", 2, "'-2\\x1b[m\xc3\xa4\\xc2\\x9b\\xff' is no"},
        {"generate ''", 2, "DIR ''"},
        {"-isTranscoder -in a.mov -out b.mov -wmt_burn -wmt_text \xff", 2, "-wmt_text '\\xff'"},
        {"timecode add 00:00:00:01 9223372036854775807 --rate 25", 2, "beyond 64 bits"},
        {"rate closest 24.5", 1, "no common rate"},
        {"rate info 24/0", 2, "above 0"},
        {"timecode at 1 --rate 8589934591/2", 2, "at most 4294967295, not '8589934591/2'"},
        {"timecode add 00:00:00:01 1.5 --rate 25", 2, "'1.5'"},
        {"timecode add", 2, "timecode add: TEXT is required (corvex timecode add --help"},
        {"transcode -in a.mov -codecs extra", 2, "-codecs 'extra': the flag takes no value"},
        {"media find . --ext mov,", 2, "'mov,': expected extensions with commas"},
        {"media find @plain", 1, "Not a directory"},
        {"audio replacement ''", 2, "expected four characters"},
        {"audio replacement 0x6d73001", 2, "expected four characters"},
        {"audio replacement 0x6d73001g", 2, "expected four characters"},
    });
}

using JobRefusalEndToEnd = RoomTest;

TEST_F(JobRefusalEndToEnd, jobsThatCannotBeDone) {
    for (const auto& [name, part] : {std::pair("front", 0.6), {"mkv", 0.95}, {"avi", 0.6}, {"wav", 0.6}}) {
        const std::string bytes = readFile(clip(name));
        writeFile(std::string("cut-") + name, bytes.substr(0, static_cast<std::size_t>(part * double(bytes.size()))));
    }
    std::string damaged = readFile(clip("silent"));
    std::fill_n(damaged.begin() + static_cast<std::ptrdiff_t>(damaged.find("mdat") + 4), 1000, '\0');
    writeFile("damaged.mov", damaged);
    const std::string table = "LUT_3D_SIZE 2\n0 0 0\n1 0 0\n0 1 0\n1 1 0\n0 0 1\n1 0 1\n0 1 1\n1 1 1\n";
    writeFile("table.cube", table);
    const std::filesystem::path plain(clip("plain"));
    std::filesystem::create_directory("shots");
    std::filesystem::copy_file(plain, "shots" / plain.filename());
    writeFile("text.mov", "This is no film, but a text that somebody renamed.\n");
    writeFile("taken.mov", "mine");
    ASSERT_EQ(mkfifo("unread", 0600), 0);
    const Words before = room.entries();
    const std::string source = readFile(clip("plain"));
    expectRefusals(
        {
            {"-in missing.mov -out out.mov", 1, "missing.mov': no such file"},
            {"-in text.mov -out out.mov", 1, "text.mov': no readable media"},
            {"-in . -out out.mov", 1, "is a directory"},
            {"-in @wav -out out.mov", 1, "holds no video; -vn"},
            {"-in @silent -out out.wav", 1, "holds no audio"},
            {"-in @tracks -out out.wav", 1, "3 audio tracks; a wav file holds one"},
            {"-in @tracks -out out.mov -acodec apple_ima4", 1, "6 in stream 3"},
            {"-in @tracks -out out.mov -ac_omit_0 9", 1, "track 9"},
            {"-in @plain -out out.mov -ac_omit_3 0", 2, "-ac_omit_3"},
            {"-in @plain -out out.mov -progress_file /nonexistent/p", 1, "-progress_file '/nonexistent/p'"},
            {"-in @plain -out out.mov -progress_file unread", 1, "'unread': a pipe that nobody reads"},
            {"-in_0_0 @plain -in_0_1 unread -out out.mov", 1, "'unread': is a pipe, which gives its bytes once"},
            {"-in @plain -out out.mov -acodec aac -asr 12345", 1, "expected one of 96000"},
            {"-in @plain -out out.mov -vcodec dnxhd", 1, "1920x1080 or 1280x720"},
            {"-in_0_0 @plain -in_0_1 @tracks -out out.mov", 1, "3 audio tracks, the first file 1"},
            {"-in @plain -out out.mov -progress_file @plain", 1, "a file of the job itself"},
            {"-in @plain -out out.mov -progress_file ./out.mov", 1, "a file of the job itself"},
            {"-in @plain -out out.mov -clut table.cube -progress_file table.cube", 1, "a file of the job itself"},
            {"-in @plain -out out.mov -vr 0.001", 1, "none of its pictures falls on a frame of the output"},
            {"-in @plain -out out.mov -clut look.cube", 1, "'look.cube' is no look-up table"},
            {"-in @plain -out out.mov -vbd 9", 2, "8, 10"},
            {"-in @plain -out out.mov -dims 16x16 -max_v_frame_mem 50000", 1, "-max_v_frame_mem"},
            {"-in @plain -out out.mov -additional_decode_options speed=9", 1, "'speed'"},
            {"-in @plain -out out.mov -tc_track -tc_drop -vr 23.976", 1, "drop"},
            {"-in @plain -out out.mov -tc_track -tc_rate 24", 1, "-tc_rate"},
            {"-in @plain -out out.mov -tc_burn -tc_rate 24", 1, "-tc_rate"},
            {"-in @plain -out out.mov -tc_track -vr 256", 1, "up to 255 frames a second"},
            {"-in @plain -out out.mov -tc_track -tc_creation", 1, "-tc_creation"},
            {"-in damaged.mov -out out.mov", 1, "damaged after frame 0"},
            {"-in cut-front -out out.mov", 1, "is truncated: its index names"},
            {"-in cut-mkv -out out.mov", 1, "is truncated: its header names"},
            {"-in cut-avi -out out.mov", 1, "is truncated"},
            {"-in cut-wav -out out.wav", 1, "is truncated"},
            // A target that exists is not touched, nor with -overwrite, when the job fails; a source never is.
            {"-in @plain -out taken.mov", 1, "-overwrite"},
            {"-in_0_0 @plain -in_0_1 cut-front -out taken.mov -overwrite", 1, "truncated"},
            {"-in @plain -out @plain -overwrite", 1, "a source is never replaced"},
            {"-in_0_0 @plain -in_1_0 @mkv -in_1_1 shots/" + plain.filename().string() + " -out shots -overwrite", 1,
             "is also an input; a source is never replaced"},
        },
        "transcode ");
    EXPECT_EQ(room.entries(), before);
    EXPECT_EQ(readFile("taken.mov"), "mine");
    EXPECT_EQ(readFile("table.cube"), table);
    EXPECT_TRUE(readFile("shots" / plain.filename()) == source);
    EXPECT_TRUE(readFile(clip("plain")) == source);
}

}  // namespace
}  // namespace corvex::tool::test::commandsEndToEndTests

// The tool's words: what it answers, and how it refuses.

#include <algorithm>
#include <filesystem>

#include <gmock/gmock.h>

#include <Corvex/cli/transcode/TranscodeCliArguments.h>
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

    const Json empty = jsonAnswerTo("args --");
    EXPECT_EQ(empty["arguments"], Json::parse(R"({"flagValueLookup": {}})"));
    EXPECT_EQ(empty["options"], Json::object());
    for (const char* key : {"unknownFlags", "inputFileGroups", "inputFiles", "firstInputFile"}) {
        EXPECT_TRUE(empty.contains(key) && empty[key].is_null()) << key;
    }
    EXPECT_FALSE(jsonAnswerTo("args -- -out \xff.mov").is_discarded()) << "no UTF-8";
}

TEST(ArgsCommandEndToEnd, typedValuesByAccessor) {
    struct Row {
        const char *job, *options, *unreadable;  ///< The latter two as JSON; "null": there is no such member.
    };
    constexpr Row rows[] = {
        {"-out /A.mov -overwrite -file_format QT -web -vbr 2.5 -vr 23.976 -vbd 10 -c_space sRGB "
         "-c_matrix cm_rec_604_4 -c_transfer tf_smpte_240M_1995 -v_colrange V -dims 1280.5X720 -vscale 0.5 "
         "-v_nocap -max_v_frame_mem 9223372036854775807 -additional_decode_options B=1:a -clut L.cube "
         "-gpu_trans metal 7 -acl hex -acl_bitmap L R -ac_omit_2 3 1 -aqual HIGH -tc_custom 01:00:00;00 -tc_track "
         "-tc_burn_font_rgb 1 .5 0.1 -wmf_scale 1.5 -wmt_burn -wmt_text Not FINAL -wmt_anchor tl",
         R"({"outputFile": "/A.mov", "shouldOverwrite": true, "outputFileFormat": "qt", "prepareForWeb": true,
             "videoFrameRate": 23.976, "videoBitRate": 2.5, "videoBitRateAsBitsPerSecond": 2500000,
             "videoBitDepth": 10, "colorSpace": "sRGB", "colorMatrix": "rec601",
             "colorTransferFunction": "smpte240M", "colorRange": "video",
             "videoDimensions": {"width": 1280.5, "height": 720}, "explicitVideoScaling": 0.5,
             "explicitOutputResolution": {"width": 640, "height": 360}, "unboundVideoFrameCapacity": true,
             "videoFrameCapacity": 18446744073709551615, "maxVideoFrameMemory": 9223372036854775807,
             "additionalDecodeOptions": {"B": "1", "a": ""}, "lutFile": "L.cube", "gpuTransformationDeviceIDs": [7],
             "audioQuality": "high", "channelLayout": "hex", "outputChannels": 6, "channelLayoutBitmap": ["L", "R"],
             "ignoredAudioFileTracks": {"2": [1, 3]}, "timecodeSource": "custom", "timecode": "01:00:00;00",
             "timecodeDropFrameState": "drop", "addTimecodeTrack": true, "includeTimecode": true,
             "timecodeBurnFontColor": {"red": 1, "green": 0.5, "blue": 0.1, "hex": "FF801A"},
             "watermarkFileScale": 1.5, "addWatermarkText": true, "watermarkText": "Not FINAL",
             "watermarkTextAnchor": "tl"})",
         "null"},
        {"-vbr abc -asr -aqual best -acl 7.1 -gpu_trans metal x -v_frame_cap 1.5 -ovw wide -tc_custom now "
         "-ac_omit 1 x -ac_omit_y 2",
         R"({"channelLayout": "7.1", "ignoredAudioFileTracks": {"0": [1]}, "timecodeSource": "custom",
             "timecode": "now"})",
         R"({"-vbr": "abc: not a number", "-aqual": "best: not one of min, low, medium, high, max",
             "-asr": "(no value): not an integer", "-ovw": "wide: not a number",
             "-gpu_trans": "metal x: not a list of device numbers, or opencl, metal, default",
             "-v_frame_cap": "1.5: not a whole number from 0", "-tc_custom": "now: not a timecode as 01:00:00:00",
             "-ac_omit": "1 x: not a list of track numbers from 0",
             "-ac_omit_y": "2: not under -ac_omit or -ac_omit_<number of a file>"})"},
    };
    for (const Row& row : rows) {
        const Json json = jsonAnswerTo(std::string("args -- ") + row.job);
        EXPECT_EQ(json["options"], Json::parse(row.options));
        EXPECT_EQ(json.value("unreadableOptions", Json()), Json::parse(row.unreadable));
    }
}

TEST(AnswersEndToEnd, holdInTheirText) {
    struct Row {
        const char *line, *part;
    };
    constexpr const char* vector =
        "args -- -vcodc x -in_0_0 'a b' -vbr abc -vr 25 -dims 1920x1080 -ovw 640 -tc_drop -asr 48k";
    constexpr Row rows[] = {
        {vector, "(did you mean -vcodec?)"},
        {vector, "-in_0_0 \"a b\""},
        {vector, "Input groups"},
        {vector, "  videoFrameRate                  25 frames/s                     -vr\n"},
        {vector, "  videoDimensions                 1920 x 1080 pixels              -dims\n"},
        {vector, "  explicitOutputResolution        640 x 1080 pixels               -dims -ovw\n"},
        {vector, "  timecodeDropFrameState          drop                            -tc_drop\n"},
        {vector, "Options that cannot be read\n  -vbr abc: not a number\n"},
        {"args -- -vbr 3.5", "3.5 Mbit/s"},
        {"transcode -h -in x", "-tc_burn"},
        {"transcode -codecs -in x", "video     h264              yes         mov mp4 m4v\n"},
        {"transcode -codecs -in x", "audio     aac_he            no"},
        {"transcode -formats -in x", "qt     .mov .mp4\n"},
        {"transcode -version -in x", "corvex "},
        {"transcode -acknowledge -in x", "FFmpeg"},
        {"transcode -presets -in x", "orvane_cloud (cloud): -file_format qt"},
        {"transcode -crop_anchors -in x", "tl\ntc\ntr\ncl\nc\ncr\nbl\nbc\nbr\n"},
        {"transcode -color_spaces -in x", "sRGB\n"},
        {"transcode -color_matrix -in x", "cm_rec_604_4\n"},
        {"transcode -transfer_func -in x", "tf_smpte_240M_1995\n"},
        {"transcode -audio_channel_layouts -in x", "mono\nstereo\nquad\npent\nhex\noct\n"},
        {"transcode -audio_bitmap_values -in x", "LFE\n"},
        {"transcode -gpu_devices -in x", "none"},
        {"transcode ' -FORMATS ' -in x", "wav"},
        {"transcode --help", "corvex"},
        {"analyze --help", "-snapshotLocation"},
        {"args --help", "corvex"},
        {"--help", "corvex"},
        {"--version", "corvex"},
        {"audio list", "ima4  apple_ima4      IMA 4:1 ADPCM   can be passed"},
        {"color list", "Rec. 601 - EBU 3213        ebu_3213"},
        {"color show p3D65", "signal              primaries p3D65, transfer function rec709, matrix rec709\n"},
        {"media makers", "ARRI\nAdobe\n"},
        {"media containers", "QuickTime       mov\n"},
        {"vocabulary", "-vbr VALUE: number, Mbit/s\n"},
    };
    std::string line, answer;
    for (const Row& row : rows) {
        if (line != row.line) answer = answerTo(line = row.line);
        EXPECT_THAT(answer, HasSubstr(row.part)) << line;
    }
    EXPECT_EQ(lineCount(answerTo("color list")), 13U + 9 + 9 + 7 + 2 + 2 * 5);
    EXPECT_THAT(answerTo("args -- -vr 25"), Not(HasSubstr("cannot be read")));
    for (std::size_t at = 0, end = 0; (end = answer.find('\n', at)) != std::string::npos; at = end + 1) {
        EXPECT_LE(end - at, 80U) << "of the vocabulary: " << answer.substr(at, end - at);
    }
    if (!std::filesystem::exists(corvex::test::localeDirectory)) GTEST_SKIP() << "built without msgfmt";
    EXPECT_THAT(run({"env", "LC_ALL=C.UTF-8", "LANGUAGE=de", corvex::test::toolPath, "rate", "list"}).output,
                HasSubstr("Wie Quelle"));
}

TEST(AnswersEndToEnd, areWhatWasAskedFor) {
    struct Row {
        const char *line, *output, *note = "";
    };
    constexpr Row rows[] = {
        {"audio replacement ac-3", "aac\n"},
        {"audio replacement ac-3 --lossless", "apple_lossless\n"},
        {"audio replacement 0x6D730011", "lpcm\n"},
        {"audio replacement 0x756c6177", "aac\n"},
        {"audio replacement 1234", "lpcm\n"},
        {"timecode parse 01:02:03;04", "01:02:03;04 drop frame\n"},
        {"timecode parse 1:2:3;4 --lenient", "01:02:03;04 drop frame\n"},
        {"timecode number 00:01:00;02 --rate 29.97", "1800\n"},
        {"timecode number 00:01:00;02 --rate 25", "1502\n", "note"},
        {"timecode at 1800 --rate 30000/1001 --drop", "00:01:00;02\n"},
        {"timecode number 00:01:00;01 --rate 29.97", "1799\n", "have no label 00:01:00;01"},
        {"timecode number 01:00:00:25 --rate 25", "90025\n", "have no label 01:00:00:25"},
        {"timecode number 30:59:59:24 --rate 25", "2789999\n"},
        {"timecode at 1 --rate 4294967295", "00:00:00:01\n"},
        {"timecode add 00:00:00:04 --rate 25 -- -4", "00:00:00:00\n"},
        {"timecode at 90000 --rate 25", "01:00:00:00\n"},
        {"timecode add 00:01:00;02 -1 --rate 29.97", "00:00:59;29\n"},
        {"rate closest 29.985 --tolerance 1", "fps29_97 30000/1001\n"},
    };
    for (const Row& row : rows) {
        const CommandResult result = corvex(row.line);
        EXPECT_EQ(result.exitStatus, 0) << row.line;
        EXPECT_EQ(result.output, row.output) << row.line;
        EXPECT_THAT(result.error, HasSubstr(row.note)) << row.line;
        EXPECT_EQ(lineCount(result.error), *row.note == '\0' ? 0U : 1U) << row.line;
    }
}

TEST(AnswersEndToEnd, holdInTheirJson) {
    struct Row {
        const char *line, *pointer, *value;  ///< "#": the count. "*/kind": of each. "+": among others.
    };
    constexpr Row rows[] = {
        {"audio list", "#", "6"},
        {"audio list", "/2", R"({"name": "AAC", "cliValue": "aac", "code": "aac ", "codeNumber": 1633772320,
                                 "support": "fullyEncodable"})"},
        {"audio replacement ulaw", "/replacement/code", R"("aac ")"},
        {"color list", "/matrices/3", R"({"rawValue": 3, "caseName": "rec601", "displayName": "Rec. 601",
                                          "cliValue": "cm_rec_604_4", "codePoint": 6})"},
        {"color list", "/primaries/8/rawValue", "10"},
        {"color list", "/primaries/8/codePoint", "null"},
        {"color list", "/ranges/1/cliValue", R"("v")"},
        {"color show rec2020PQ", "*/kind", R"(["colorSpace"])"},
        {"color show REC_2020_PQ", "*/kind", R"(["colorSpace"])"},
        {"color show 'rec. 2020 pq'", "*/kind", R"(["colorSpace"])"},
        {"color show srgb", "*/kind", R"(["colorSpace", "transferFunction"])"},
        {"color show Rec709", "*/kind", R"(["colorSpace", "primaries", "transferFunction", "matrix"])"},
        {"color show cm_rec_604_4", "*/kind", R"(["matrix"])"},
        {"color show F", "*/kind", R"(["range"])"},
        {"color show none", "*/kind", R"(["matrix"])"},
        {"color show dciP3Cinema", "/0/signals",
         R"([{"primaries": "dciP3", "transferFunction": "gamma", "matrix": null, "gamma": 2.6}])"},
        {"color show dciP3Cinema", "/0/defaultColorPrimaries", R"("dciP3")"},
        {"color show dciP3Cinema", "/0/flag", "null"},
        {"color show custom8", "/0/signals", "null"},
        {"color show smpteC", "/0/codePointsRead", "[6, 7]"},
        {"rate info 23.98", "+", R"({"name": "fps23_976", "timeValue": 24000, "timeScale": 1001})"},
        {"rate info 48000/2002", "+", R"({"name": "fps23_976", "timeValue": 48000, "timeScale": 2002})"},
        {"rate info 12.5", "+", R"({"name": null, "timeValue": 25, "timeScale": 2})"},
        {"rate info fps959_04", "+", R"({"name": "fps959_04", "timeValue": 960000, "timeScale": 1001})"},
        {"rate info 24.000", "+", R"({"name": "fps24", "timeValue": 24, "timeScale": 1})"},
        {"rate info 25", "+", R"({"name": "fps25", "timeValue": 25, "timeScale": 1})"},
        {"rate list", "/rates#", "36"},
        {"rate list", "/choices/0/description", R"("Match Source")"},
        {"timecode at 1800 --rate 29.97 --drop", "/timecode", R"("00:01:00;02")"},
        {"timecode at 1800 --rate 29.97 --drop", "/components/frames", "2"},
        {"timecode number 00:01:00;02 --rate 29.97", "/actualFrameNumber", "1802"},
        {"media containers", "#", "11"},
        {"media containers", "/1", R"({"container": "HDE", "extensions": ["arx"]})"},
        {"media containers", "/2/extensions", "[]"},
        {"media extensions", "#", "14"},
        {"media extensions", "/2", R"({"extension": "mp4", "containers": ["MP4"]})"},
    };
    std::string line;
    Json answer;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.line + std::string(" ") + row.pointer);
        if (line != row.line) answer = jsonAnswerTo(line = row.line);
        const std::string pointer = row.pointer;
        const char last = pointer.empty() ? '\0' : pointer.back();
        Json found, expected = Json::parse(row.value);
        if (pointer.starts_with('*')) {
            for (const Json& element : answer) found.push_back(element.at(Json::json_pointer(pointer.substr(1))));
        } else {
            found = answer.at(Json::json_pointer(pointer.substr(0, pointer.find_first_of("#+"))));
        }
        if (last == '+') {
            Json others = found;
            others.update(expected);
            expected = others;
        }
        EXPECT_EQ(last == '#' ? Json(found.size()) : found, expected);
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
    for (const char* row : {
             R"({"flag": "-vbr", "command": "transcode", "group": "Video", "takesValue": true, "type": "number",
                 "unit": "Mbit/s", "values": [], "meaning": "data rate of the video", "isCarriedOut": true})",
             R"({"flag": "-v_colrange", "command": "transcode", "group": "Video", "takesValue": true, "type": "choice",
                 "unit": null, "values": ["f", "v"], "meaning": "full or video range", "isCarriedOut": true})",
             R"({"flag": "-gpu_encoding", "command": "transcode", "group": "Video", "takesValue": false,
                 "type": "switch", "unit": null, "values": [], "meaning": "encode on a GPU", "isCarriedOut": false})",
             R"({"flag": "-snapshotLocation", "command": "analyze", "group": "Pictures", "takesValue": true,
                 "type": "list of numbers", "unit": null, "values": [], "meaning": "where in the clip, 0 to 1",
                 "isCarriedOut": true})",
         }) {
        EXPECT_THAT(flags, Contains(Json::parse(row)));
    }
}

using GenerateCommandEndToEnd = RoomTest;

TEST_F(GenerateCommandEndToEnd, bashCompletesWordsByTheirPlace) {
    answerTo("generate .");
    writeFile("look.cube", "");
    const std::pair<const char*, const char*> rows[] = {
        {"corvex v", "vocabulary"},  // the last one is being written
        {"corvex lut a", "apply"},
        {"corvex lut info --", "--help --json"},
        {"corvex transcode -vco", "-vcodec"},
        {"corvex transcode -in a.mov -vcodec prores422l", "prores422lt"},
        {"corvex transcode -aspect_scaling ''", "match stretch letterbox crop"},
        {"corvex transcode -clut lo", "look.cube"},
        {"corvex transcode -in_0_0 lo", "look.cube"},
        {"corvex transcode -vbr 1", ""},
        {"corvex args -- -acod", "-acodec"},
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
    std::vector<Refusal> rows{
        {"", 2, "subcommand"},
        {"transmogrify", 2, "--help"},
        {"args", 2, "expected --"},
        {"args -vn", 2, "--"},
        {"args --json word -- -vn", 2, "'word'"},
        {"transcode", 2, "-in is missing"},
        {"transcode -in a.mov -out b.mov -xyzzyx -plughplugh", 2, "'-plughplugh'"},
        {"transcode -in a.mov -out b.mov -vbr -5", 2, "'-5' is no value of -vbr"},
        {"transcode extra -in a.mov -out b.mov", 2, "'extra': expected a flag before it"},
        {"transcode -in a.mov -out b.mov -overwrite false", 2, "-overwrite 'false': the flag takes no value"},
        {"transcode -in a.mov -in_0_0 b.mov -out c.mov", 2, "-in and -in_0_0: expected one"},
        {"-isTranscoder -in a.mov -out b.mov -parentPid x", 2, "-parentPid 'x'"},
        {"-isAnalyzer", 64, "-pathToAnalyze is missing"},
        {"color show rec709x", 2, "no colour is called 'rec709x'; known are rec2020, rec709, "},
        {"color", 2, "subcommand"},
        {"color show", 2, ""},
        {"timecode parse 1:2:3;4", 2, "'1:2:3;4' is no timecode"},
        {"timecode number 9223372036854775807:00:00:00 --rate 25", 2, "beyond 64 bits"},
        {"timecode at 9223372036854775808 --rate 25", 2, "'9223372036854775808'"},
        {"timecode at 1 --rate 8589934591/2", 2, "at most 4294967295, not '8589934591/2'"},
        {"timecode at -1 --rate fps29_97 --drop", 2, "'-1' lies before"},
        {"timecode add 00:00:00:04 -5 --rate 25", 2, "'-5' frames from '00:00:00:04' lies before"},
        {"timecode add 00:00:00:00 1 --rat=25", 2, "timecode add: unknown option '--rat=25'; did you mean --rate?"},
        {"timecode add", 2, "timecode add: TEXT is required (corvex timecode add --help"},
        {"transcoded", 2, "'transcoded'; did you mean transcode? (corvex --help"},
        {"lut chek x", 2, "lut: unknown command 'chek'; did you mean check? (corvex lut --help"},
        {"vocabulary -- --json", 2, "vocabulary: unexpected '--json'; expected corvex vocabulary [--json]"},
        {"rate info 25 -- 26", 2, "rate info: unexpected '26'"},
        {"rate info -- -2\x1b[m\xc3\xa4\xc2\x9b\xff", 2, "'-2\\x1b[m\xc3\xa4\\xc2\\x9b\\xff' is no"},
        {"generate ''", 2, "DIR ''"},
        {"color show ''", 2, "no colour is called ''"},
        {"transcode -in a.mov -codecs extra", 2, "-codecs 'extra': the flag takes no value"},
        {"-isTranscoder -in a.mov -out b.mov -wmt_burn -wmt_text \xff", 2, "-wmt_text '\\xff'"},
        {"timecode add 00:00:00:01 9223372036854775807 --rate 25", 2, "beyond 64 bits"},
        {"timecode add 00:00:00:01 1.5 --rate 25", 2, "'1.5'"},
        {"rate closest 24.5", 1, "no common rate"},
        {"rate closest 0", 2, "above 0"},
        {"rate closest 24 --tolerance -1", 2, "negative"},
        {"rate info -25", 2, "above 0"},
        {"rate info 24/0", 2, "above 0"},
        {"rate info 24,5", 2, "no frame rate"},
        {"media", 2, "subcommand"},
        {"media makers extra", 2, "extra"},
        {"media find", 2, "DIR"},
        {"media find . --ext mov,", 2, "'mov,': expected extensions with commas"},
        {"media find . --ext ''", 2, "'': expected extensions"},
        {"media find none", 1, "No such file or directory"},
        {"media find @plain", 1, "Not a directory"},
    };
    for (const char* code : {"''", "'aac  '", "lpcm1", "0x6d73001", "0x6d73001g", "0x6D7300110"}) {
        rows.push_back({"audio replacement " + std::string(code), 2, "expected four characters"});
    }
    expectRefusals(rows);
}

using JobRefusalEndToEnd = RoomTest;

TEST_F(JobRefusalEndToEnd, jobsThatCannotBeDone) {
    const auto cut = [](const std::string& name, double part) {
        const std::string bytes = readFile(clip(name)), path = "cut-" + name;
        writeFile(path, bytes.substr(0, static_cast<std::size_t>(part * static_cast<double>(bytes.size()))));
        return path;
    };
    for (const auto& [name, part] :
         {std::pair("front", 0.6), {"plain", 0.9}, {"mkv", 0.95}, {"avi", 0.6}, {"wav", 0.6}, {"mp4", 0.1}}) {
        cut(name, part);
    }
    std::string damaged = readFile(clip("silent"));
    std::fill_n(damaged.begin() + static_cast<std::ptrdiff_t>(damaged.find("mdat") + 4), 1000, '\0');
    writeFile("damaged.mov", damaged);
    const std::string table = "LUT_3D_SIZE 2\n0 0 0\n1 0 0\n0 1 0\n1 1 0\n0 0 1\n1 0 1\n0 1 1\n1 1 1\n";
    writeFile("table.cube", table);
    const std::filesystem::path plain(clip("plain"));
    std::filesystem::create_directory("shots");
    std::filesystem::copy_file(plain, "shots" / plain.filename());
    writeFile("empty.mov", "");
    writeFile("text.mov", "This is no film, but a text that somebody renamed.\n");
    writeFile("taken.mov", "mine");
    const Words before = room.entries();
    const std::string source = readFile(clip("plain"));
    expectRefusals(
        {
            {"-in missing.mov -out out.mov", 1, "missing.mov': no such file"},
            {"-in empty.mov -out out.mov", 1, "empty.mov': the file is empty"},
            {"-in text.mov -out out.mov", 1, "text.mov': no readable media"},
            {"-in . -out out.mov", 1, "is a directory"},
            {"-in http://127.0.0.1:9/x.mov -out out.mov", 1, "no such file"},
            {"-in @wav -out out.mov", 1, "holds no video; -vn"},
            {"-in @silent -out out.wav", 1, "holds no audio"},
            {"-in @tracks -out out.wav", 1, "3 audio tracks; a wav file holds one"},
            {"-in @tracks -out out.mov -acodec apple_ima4", 1, "6 in stream 3"},
            {"-in @tracks -out out.mov -ac_omit_0 9", 1, "track 9"},
            {"-in @plain -out out.mov -acodec aac -asr 12345", 1, "expected one of 96000"},
            {"-in @plain -out out.mov -vcodec dnxhd", 1, "1920x1080 or 1280x720"},
            {"-in_0_0 @plain -in_0_1 @tracks -out out.mov", 1, "3 audio tracks, the first file 1"},
            {"-in_0_0 @plain -in_0_1 missing.mov -out out.mov", 1, "missing.mov': no such"},
            {"-in @plain -out out.mov -progress_file @plain", 1, "a file of the job itself"},
            {"-in @plain -out out.mov -clut table.cube -progress_file table.cube", 1, "a file of the job itself"},
            {"-in @plain -out out.mov -progress_file /nonexistent/p", 1, "-progress_file '/nonexistent/p'"},
            {"-in @plain -out /nonexistent/out.mov", 1, "'/nonexistent/out.mov'"},
            {"-in @plain -out out.mov -work_dir /nonexistent", 1, "'/nonexistent'"},
            {"-in @plain -out out.mov -vr 0.001", 1, "none of its pictures falls on a frame of the output"},
            {"-in @plain -out out.mov -v_decoder vt", 1, "-v_decoder vt"},
            {"-in @plain -out out.mov -clut look.cube", 1, "'look.cube' is no look-up table"},
            {"-in @plain -out out.mov -vbd 9", 2, "8, 10"},
            {"-in @plain -out out.mov -ac_omit_3 0", 2, "-ac_omit_3"},
            {"-in @plain -out out.mov -dims 16x16 -max_v_frame_mem 50000", 1, "-max_v_frame_mem"},
            {"-in @plain -out out.mov -additional_decode_options speed=9", 1, "'speed'"},
            {"-in @plain -out out.mov -tc_track -tc_drop", 1, "drop"},
            {"-in @plain -out out.mov -tc_track -tc_drop -vr 23.976", 1, "drop"},
            {"-in @plain -out out.mov -tc_track -tc_rate 24", 1, "-tc_rate"},
            {"-in @plain -out out.mov -tc_burn -tc_rate 24", 1, "-tc_rate"},
            {"-in @plain -out out.mov -tc_track -tc_creation", 1, "-tc_creation"},
            {"-in damaged.mov -out out.mov", 1, "damaged after frame 0"},
            {"-in cut-front -out out.mov", 1, "is truncated: its index names"},
            {"-in cut-plain -out out.mov", 1, "no readable media"},
            {"-in cut-mkv -out out.mov", 1, "is truncated: its header names"},
            {"-in cut-avi -out out.mov", 1, "is truncated"},
            {"-in cut-wav -out out.wav", 1, "is truncated"},
            {"-in cut-mp4 -out out.mov", 1, "no readable media"},
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

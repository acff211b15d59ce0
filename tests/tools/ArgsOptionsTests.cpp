#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <tests/tools/Command.h>

namespace corvex::tool::test::argsOptionsTests {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using Json = nlohmann::ordered_json;

Words argsWords(Words options, const Words& job) {
    options.insert(options.begin(), "args");
    options.emplace_back("--");
    options.insert(options.end(), job.begin(), job.end());
    return options;
}

Json jsonOf(const Words& job) {
    const CommandResult result = corvex(argsWords({"--json"}, job));
    EXPECT_EQ(result.exitStatus, 0) << result.error;
    return Json::parse(result.output);
}

struct OptionRow {
    Words job;
    const char* options;     ///< As JSON.
    const char* unreadable;  ///< As JSON; "null": there is no such member.
};

TEST(ArgsOptions, typedValuesByAccessor) {
    const OptionRow rows[] = {
        {{}, "{}", "null"},
        {{"-out", "/A.mov", "-overwrite", "-file_format", "QT", "-web"},
         R"({"outputFile": "/A.mov", "shouldOverwrite": true, "outputFileFormat": "qt", "prepareForWeb": true})",
         "null"},
        {{"-vbr", "2.5", "-vr", "23.976", "-vbd", "10"},
         R"({"videoFrameRate": 23.976, "videoBitRate": 2.5, "videoBitRateAsBitsPerSecond": 2500000,
             "videoBitDepth": 10})",
         "null"},
        {{"-c_space", "sRGB", "-c_matrix", "cm_rec_604_4", "-c_transfer", "tf_smpte_240M_1995", "-v_colrange", "V"},
         R"({"colorSpace": "sRGB", "colorMatrix": "rec601", "colorTransferFunction": "smpte240M",
             "colorRange": "video"})",
         "null"},
        {{"-dims", "1280.5X720", "-vscale", "0.5"},
         R"({"videoDimensions": {"width": 1280.5, "height": 720}, "explicitVideoScaling": 0.5,
             "explicitOutputResolution": {"width": 640, "height": 360}})",
         "null"},
        {{"-v_nocap", "-max_v_frame_mem", "9223372036854775807"},
         R"({"unboundVideoFrameCapacity": true, "videoFrameCapacity": 18446744073709551615,
             "maxVideoFrameMemory": 9223372036854775807})",
         "null"},
        {{"-additional_decode_options", "B=1:a", "-clut", "L.cube", "-gpu_trans", "metal", "7"},
         R"({"additionalDecodeOptions": {"B": "1", "a": ""}, "lutFile": "L.cube", "gpuTransformationDeviceIDs": [7]})",
         "null"},
        {{"-acl", "hex", "-acl_bitmap", "L", "R", "-ac_omit_2", "3", "1", "-aqual", "HIGH"},
         R"({"audioQuality": "high", "channelLayout": "hex", "outputChannels": 6, "channelLayoutBitmap": ["L", "R"],
             "ignoredAudioFileTracks": {"2": [1, 3]}})",
         "null"},
        {{"-tc_custom", "01:00:00;00", "-tc_track", "-tc_burn_font_rgb", "1", ".5", "0.1"},
         R"({"timecodeSource": "custom", "timecode": "01:00:00;00", "timecodeDropFrameState": "drop",
             "addTimecodeTrack": true, "includeTimecode": true,
             "timecodeBurnFontColor": {"red": 1, "green": 0.5, "blue": 0.1, "hex": "FF801A"}})",
         "null"},
        {{"-wmf_scale", "1.5", "-wmt_burn", "-wmt_text", "Not", "FINAL", "-wmt_anchor", "tl"},
         R"({"watermarkFileScale": 1.5, "addWatermarkText": true, "watermarkText": "Not FINAL",
             "watermarkTextAnchor": "tl"})",
         "null"},
        {{"-vbr", "abc", "-asr", "-aqual", "best", "-acl", "7.1", "-gpu_trans", "metal", "x"},
         R"({"channelLayout": "7.1"})",
         R"({"-vbr": "abc: not a number", "-aqual": "best: not one of min, low, medium, high, max",
             "-asr": "(no value): not an integer",
             "-gpu_trans": "metal x: not a list of device numbers, or opencl, metal, default"})"},
        {{"-v_frame_cap", "1.5", "-ovw", "wide", "-tc_custom", "now", "-ac_omit", "1", "x", "-ac_omit_y", "2"},
         R"({"ignoredAudioFileTracks": {"0": [1]}, "timecodeSource": "custom", "timecode": "now"})",
         R"({"-ovw": "wide: not a number", "-v_frame_cap": "1.5: not a whole number from 0",
             "-tc_custom": "now: not a timecode as 01:00:00:00",
             "-ac_omit": "1 x: not a list of track numbers from 0",
             "-ac_omit_y": "2: not under -ac_omit or -ac_omit_<number of a file>"})"},
    };
    for (const OptionRow& row : rows) {
        const Json json = jsonOf(row.job);
        const std::string name = ::testing::PrintToString(row.job);
        EXPECT_EQ(json["options"], Json::parse(row.options)) << name;
        EXPECT_EQ(json.value("unreadableOptions", Json()), Json::parse(row.unreadable)) << name;
    }
}

TEST(ArgsOptions, textHasUnitsFlagsAndMistakes) {
    const std::string output =
        corvex(argsWords({}, {"-vbr", "abc", "-vr", "25", "-dims", "1920x1080", "-ovw", "640", "-tc_drop"})).output;
    for (const char* line : {
             "  videoFrameRate                  25 frames/s                     -vr\n",
             "  videoDimensions                 1920 x 1080 pixels              -dims\n",
             "  explicitOutputResolution        640 x 1080 pixels               -dims -ovw\n",
             "  timecodeDropFrameState          drop                            -tc_drop\n",
             "Options that cannot be read\n  -vbr abc: not a number\n",
         }) {
        EXPECT_THAT(output, HasSubstr(line));
    }
    EXPECT_THAT(corvex(argsWords({}, {"-vr", "25"})).output, Not(HasSubstr("cannot be read")));
}

}  // namespace
}  // namespace corvex::tool::test::argsOptionsTests

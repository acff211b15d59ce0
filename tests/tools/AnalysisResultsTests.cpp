#include <tools/corvex/analysis/AnalysisResults.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <Corvex/platform/Error.h>
#include <tests/Thrown.h>
#include <tools/corvex/analysis/MediaTerms.h>
#include <tools/corvex/analysis/ReadyPicture.h>
#include <tools/corvex/analysis/StillPicture.h>

extern "C" {
#include <libavutil/intreadwrite.h>
}

namespace corvex::tool::analysisResultsTests {
namespace {

using corvex::test::thrownBy;

constexpr const char* fullText = R"({"version": 1, "writer": "corvex 1", "analysisId": "7", "deepAnalysis": true,
    "files": [{"path": "/a.mov", "sizeInBytes": 5000000000,
        "startTimecode": {"text": "01:00:00;00", "isDropFrame": true, "frameNumber": 107892},
        "tracks": [{"index": 0, "kind": "audio", "codecName": "aac", "audio": {"sampleRate": 48000, "channels": 2,
            "channelLayout": "stereo", "bitsPerSample": 0, "replacement": "aac", "losslessReplacement": "aac"}}],
        "snapshots": [{"location": 0.25, "source": "frame", "timeInSeconds": 0.24, "file": "/w/s.jpg", "width": 320,
                       "height": 180}, {"location": 1.0, "problem": "nothing"}],
        "deep": {"tracks": [{"index": 0, "frames": 25, "decodeErrors": 1, "sha256": "ab"}], "problem": "cut off"}},
    {"path": "/b.txt", "problem": "no media", "tracks": [], "snapshots": []}]})";

TEST(AnalysisResults, areReadAndWrittenWithoutLoss) {
    const AnalysisResults read = AnalysisResults::parse(fullText);
    EXPECT_EQ(Json::parse(read.text()), Json::parse(fullText));
    EXPECT_EQ(read.files[0].sizeInBytes, 5'000'000'000);
    EXPECT_EQ(read.files[0].container, std::nullopt);
}

TEST(AnalysisResults, damageIsNamedByItsKey) {
    constexpr std::tuple<const char*, const char*, const char*> rows[] = {
        // without a value the member is removed
        {"/version", "2", "version"},
        {"/version", nullptr, "version"},
        {"/deepAnalysis", "1", "deepAnalysis"},
        {"/analysisId", "null", "analysisId"},
        {"/files", "{}", "files"},
        {"/files/0", "[]", "files"},
        {"/files/0/path", nullptr, "path"},
        {"/files/0/sizeInBytes", "1.5", "sizeInBytes"},
        {"/files/0/snapshots/0/location", "true", "location"},
    };
    for (const auto& [path, value, key] : rows) {
        Json json = Json::parse(fullText);
        const Json::json_pointer pointer(path);
        if (value != nullptr) {
            json[pointer] = Json::parse(value);
        } else {
            json[pointer.parent_pointer()].erase(pointer.back());
        }
        const auto error = thrownBy<DecodingError>([&] { return AnalysisResults::parse(json.dump()); });
        ASSERT_TRUE(error) << path;
        EXPECT_STREQ(error->key(), key) << path;
    }
    for (const char* text : {"", "[1]", "{", "\xff"}) {
        EXPECT_THROW((void)AnalysisResults::parse(text), DecodingError) << text;
    }
}

// Of a file, a snapshot and a picture that cannot be decoded the exit status of an analysis tells.
TEST(AnalysisResults, aFileThatWasNotReadToItsEndHasAProblem) {
    FileResult file;
    file.deep.emplace();
    EXPECT_FALSE(file.hasProblem());
    file.deep->problem = "cut off";
    EXPECT_TRUE(file.hasProblem());
}

TEST(MediaTerms, namesCodecsByFamilyAndTag) {
    const std::tuple<AVCodecID, const char*, int, std::optional<ORVVideoCodec>> rows[] = {
        {AV_CODEC_ID_PRORES, "ap4x", 0, ORVVideoCodecProRes4444},
        {AV_CODEC_ID_PRORES, "aprn", 0, ORVVideoCodecProResRaw},
        {AV_CODEC_ID_PRORES, "\0\0\0", 0, ORVVideoCodecProRes},
        {AV_CODEC_ID_DNXHD, "AVdn", FF_PROFILE_DNXHD, ORVVideoCodecAvidDNxHD},
        {AV_CODEC_ID_DNXHD, "AVdh", FF_PROFILE_DNXHR_HQX, ORVVideoCodecAvidDNxHR},
        {AV_CODEC_ID_VP9, "vp09", 0, std::nullopt},
    };
    for (const auto& [codec, tag, profile, term] : rows) {
        AVCodecParameters parameters{};
        parameters.codec_id = codec;
        parameters.profile = profile;
        parameters.codec_tag = AV_RL32(tag);
        EXPECT_EQ(codecTermOf(parameters), term) << tag;
    }
}

TEST(StillPicture, fitsIntoItsLimitsAndIsNeverEnlarged) {
    const std::tuple<SourcePicture, float, std::optional<float>, PixelSize> rows[] = {
        {{{1920, 1080}, {1, 1}, {}}, 320, {}, {320, 180}},      {{{1920, 1080}, {1, 1}, {}}, 320, 90.9F, {162, 90}},
        {{{1920, 1080}, {1, 1}, {}}, 4000, 4000, {1920, 1080}}, {{{1920, 1080}, {1, 1}, {90}}, 270, {}, {270, 480}},
        {{{720, 576}, {16, 15}, {}}, 4000, {}, {720, 540}},  // wide pixels: lines are taken off
        {{{720, 480}, {8, 9}, {}}, 4000, {}, {640, 480}},    // narrow ones: columns
        {{{720, 480}, {8, 9}, {270}}, 4000, {}, {480, 640}},    {{{10000, 2}, {1, 1}, {}}, 1, {}, {1, 1}},
        {{{333, 77}, {1, 1}, {}}, 100.9F, {}, {100, 23}},
    };
    for (const auto& [source, maxWidth, maxHeight, expected] : rows) {
        const PixelSize size = stillSize(source, maxWidth, maxHeight);
        EXPECT_EQ(size, expected) << size.width << "x" << size.height;
    }
}

TEST(ReadyPicture, urisAreEscapedAsDesktopsDo) {
    EXPECT_EQ(fileUri("/a b/\xc3\xa4#?%;[1]~(2).mov"), "file:///a%20b/%C3%A4%23%3F%25%3B%5B1%5D~(2).mov");
    EXPECT_EQ(fileUri("/a/../b/./c"), "file:///b/c");
}

}  // namespace
}  // namespace corvex::tool::analysisResultsTests

#include <tools/corvex/analysis/AnalysisResults.h>

#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include <Corvex/platform/Error.h>
#include <tools/corvex/analysis/MediaTerms.h>
#include <tools/corvex/analysis/ReadyPicture.h>
#include <tools/corvex/analysis/StillPicture.h>

namespace corvex::tool::analysisResultsTests {
namespace {

using ::testing::HasSubstr;

AnalysisResults fullResults() {
    AnalysisResults results;
    results.writer = "corvex 1";
    results.analysisId = "7";
    results.deepAnalysis = true;
    FileResult file;
    file.path = "/a.mov";
    file.sizeInBytes = 5'000'000'000;
    file.startTimecode = TimecodeResult{"01:00:00;00", true, 107892};
    TrackResult video;
    video.kind = "video";
    video.video.emplace().frameRate = RateResult{24000, 1001, 24000.0 / 1001, "fps23_976", true};
    video.video->color.matrix = "rec709";
    TrackResult audio;
    audio.kind = "audio";
    audio.audio.emplace().formatCode = "aac ";
    file.tracks = {video, audio};
    file.snapshots = {{0.25, "frame", 0.24, "/w/s.jpg", 320, 180, {}}, {1, {}, {}, {}, {}, {}, "nothing"}};
    file.deep = DeepResult{{{0, 25, 1, "ab"}}, "cut off"};
    FileResult broken;
    broken.path = "/b.txt";
    broken.problem = "no media";
    results.files = {file, broken};
    return results;
}

TEST(AnalysisResults, areReadAsTheyWereWritten) {
    const std::string text = fullResults().text();
    EXPECT_EQ(AnalysisResults::parse(text).text(), text);
    const AnalysisResults read = AnalysisResults::parse(text);
    EXPECT_EQ(read.files[0].sizeInBytes, 5'000'000'000);
    EXPECT_EQ(read.files[0].tracks[0].video->frameRate->value, 24000.0 / 1001);
    EXPECT_EQ(read.files[0].snapshots[0].width, 320);
    EXPECT_EQ(read.files[0].container, std::nullopt);
    EXPECT_THAT(text, ::testing::Not(HasSubstr("null")));
}

TEST(AnalysisResults, damageIsNamedByItsKey) {
    struct Row {
        const char* pointer;
        const char* value;  ///< Empty: removed.
        const char* key;
    };
    const Row rows[] = {
        {"/version", "2", "version"},
        {"/version", "", "version"},
        {"/deepAnalysis", "1", "deepAnalysis"},
        {"/analysisId", "null", "analysisId"},
        {"/files", "{}", "files"},
        {"/files/0", "[]", "files"},
        {"/files/0/path", "", "path"},
        {"/files/0/sizeInBytes", "1.5", "sizeInBytes"},
        {"/files/0/tracks/0/video/frameRate/value", "\"fast\"", "value"},
        {"/files/0/snapshots/0/location", "true", "location"},
        {"/files/0/deep/tracks/0/sha256", "7", "sha256"},
    };
    for (const Row& row : rows) {
        Json json = Json::parse(fullResults().text());
        const Json::json_pointer pointer(row.pointer);
        if (*row.value == '\0') {
            json[pointer.parent_pointer()].erase(pointer.back());
        } else {
            json[pointer] = Json::parse(row.value);
        }
        try {
            (void)AnalysisResults::parse(json.dump());
            ADD_FAILURE() << row.pointer;
        } catch (const DecodingError& error) {
            EXPECT_STREQ(error.key(), row.key) << row.pointer;
        }
    }
    for (const char* text : {"", "[1]", "{", "\xff", "17"}) {
        EXPECT_THROW((void)AnalysisResults::parse(text), DecodingError) << text;
    }
}

TEST(AnalysisResults, knowWhatFailed) {
    AnalysisResults results = fullResults();
    FileResult& file = results.files[0];
    EXPECT_TRUE(results.files[1].hasProblem());
    file.snapshots.pop_back();
    EXPECT_TRUE(file.hasProblem()) << "not read to its end";
    file.deep->problem.reset();
    EXPECT_TRUE(file.hasProblem()) << "a decode error";
    file.deep->tracks[0].decodeErrors = 0;
    EXPECT_FALSE(file.hasProblem());
    file.snapshots[0].problem = "none";
    EXPECT_TRUE(file.hasProblem());
}

TEST(MediaTerms, namesCodecsByFamilyAndTag) {
    struct Row {
        AVCodecID codec;
        const char* tag;
        int profile;
        std::optional<ORVVideoCodec> term;
    };
    const Row rows[] = {
        {AV_CODEC_ID_PRORES, "apcn", 0, ORVVideoCodecProRes422},
        {AV_CODEC_ID_PRORES, "ap4x", 0, ORVVideoCodecProRes4444},
        {AV_CODEC_ID_PRORES, "aprn", 0, ORVVideoCodecProResRaw},
        {AV_CODEC_ID_PRORES, "\0\0\0", 0, ORVVideoCodecProRes},
        {AV_CODEC_ID_DNXHD, "AVdn", FF_PROFILE_DNXHD, ORVVideoCodecAvidDNxHD},
        {AV_CODEC_ID_DNXHD, "AVdh", FF_PROFILE_DNXHR_HQX, ORVVideoCodecAvidDNxHR},
        {AV_CODEC_ID_CFHD, "CFHD", 0, ORVVideoCodecCineform},
        {AV_CODEC_ID_VP9, "vp09", 0, std::nullopt},
    };
    for (const Row& row : rows) {
        AVCodecParameters parameters{};
        parameters.codec_id = row.codec;
        parameters.profile = row.profile;
        for (int i = 0; i < 4; ++i) {
            parameters.codec_tag |= static_cast<std::uint32_t>(static_cast<unsigned char>(row.tag[i])) << (8 * i);
        }
        EXPECT_EQ(codecTermOf(parameters), row.term) << row.tag;
    }
}

TEST(StillPicture, fitsIntoItsLimitsAndIsNeverEnlarged) {
    struct Row {
        SourcePicture source;
        float maxWidth;
        std::optional<float> maxHeight;
        PixelSize expected;
    };
    const Row rows[] = {
        {{{1920, 1080}, {1, 1}, {}}, 320, {}, {320, 180}},      {{{1920, 1080}, {1, 1}, {}}, 320, 90.9F, {162, 90}},
        {{{1920, 1080}, {1, 1}, {}}, 4000, 4000, {1920, 1080}}, {{{1920, 1080}, {1, 1}, {90}}, 270, {}, {270, 480}},
        {{{720, 576}, {16, 15}, {}}, 4000, {}, {720, 540}},  // wide pixels: lines are taken off
        {{{720, 480}, {8, 9}, {}}, 4000, {}, {640, 480}},    // narrow ones: columns
        {{{720, 480}, {8, 9}, {270}}, 4000, {}, {480, 640}},    {{{10000, 2}, {1, 1}, {}}, 1, {}, {1, 1}},
        {{{333, 77}, {1, 1}, {}}, 100.9F, {}, {100, 23}},
    };
    for (const Row& row : rows) {
        const PixelSize size = stillSize(row.source, row.maxWidth, row.maxHeight);
        EXPECT_EQ(size, row.expected) << size.width << "x" << size.height;
    }
}

TEST(ReadyPicture, urisAreEscapedAsDesktopsDo) {
    EXPECT_EQ(fileUri("/a b/\xc3\xa4#?%;[1]~(2).mov"), "file:///a%20b/%C3%A4%23%3F%25%3B%5B1%5D~(2).mov");
    EXPECT_EQ(fileUri("/a/../b/./c"), "file:///b/c");
}

}  // namespace
}  // namespace corvex::tool::analysisResultsTests

// Burnt-in timecodes and watermarks of whole jobs, read back from the decoded pictures.

#include <cmath>
#include <vector>

#include <gmock/gmock.h>
#include <tests/tools/Media.h>
#include <tools/corvex/worker/Decoder.h>
#include <tools/corvex/worker/PictureOverlays.h>

namespace corvex::tool::test::overlayEndToEndTests {
namespace {

using ::testing::HasSubstr;

std::vector<FramePointer> picturesOf(const std::string& path) {
    MediaInput input(path);
    Decoder decoder(input, *input.video());
    std::vector<FramePointer> pictures;
    const auto keep = [&](AVFrame& frame) {
        pictures.push_back(makeFrame());
        av_frame_move_ref(pictures.back().get(), &frame);
    };
    const PacketPointer packet = makePacket();
    while (input.read(*packet)) {
        if (packet->stream_index == input.video()->index) decoder.decode(packet.get(), keep);
        av_packet_unref(packet.get());
    }
    decoder.decode(nullptr, keep);
    return pictures;
}

/// Mean difference of the luma of two pictures of 10 bits, in code values.
double difference(const AVFrame& a, const AVFrame& b) {
    double sum = 0;
    for (int y = 0; y < a.height; ++y) {
        const auto* rowA = reinterpret_cast<const std::uint16_t*>(a.data[0] + std::ptrdiff_t{y} * a.linesize[0]);
        const auto* rowB = reinterpret_cast<const std::uint16_t*>(b.data[0] + std::ptrdiff_t{y} * b.linesize[0]);
        for (int x = 0; x < a.width; ++x) sum += std::abs(rowA[x] - rowB[x]);
    }
    return sum / (static_cast<double>(a.width) * a.height);
}

PictureStamp::Target targetOf(const AVFrame& frame) {
    return {static_cast<AVPixelFormat>(frame.format), AVCOL_SPC_SMPTE170M, AVCOL_RANGE_MPEG};
}

TEST(OverlayEndToEnd, burnsTheLabelOfEveryPicture) {
    struct Row {
        const char *rate, *first;
        MediaRational counted;
        OAVTranscodeArgumentOverlayAnchorValue anchor;
        std::vector<const char*> labels;
    };
    const Row rows[] = {
        {"30000/1001",
         "00:00:59;28",
         {30000, 1001},
         OAVAnchorBottomCenter,
         {"00:00:59;28", "00:00:59;29", "00:01:00;02", "00:01:00;03"}},
        {"60000/1001",
         "00:00:59;58",
         {60000, 1001},
         OAVAnchorTopLeft,
         {"00:00:59;58", "00:00:59;59", "00:01:00;04", "00:01:00;05"}},
        {"24000/1001",
         "23:59:59:22",
         {24000, 1001},
         OAVAnchorTopRight,
         {"23:59:59:22", "23:59:59:23", "00:00:00:00", "00:00:00:01"}},
        {"25", "00:09:59:23", {25, 1}, OAVAnchorCenter, {"00:09:59:23", "00:09:59:24", "00:10:00:00", "00:10:00:01"}},
    };
    const TemporaryDirectory directory;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.first);
        const std::string source = directory.path("source.mov"), plain = directory.path("plain.mov"),
                          burnt = directory.path("burnt.mov");
        ffmpeg({"-y", "-f", "lavfi", "-i", std::string("testsrc2=size=320x180:rate=") + row.rate, "-frames:v", "4",
                "-c:v", "mpeg4", "-q:v", "2", source});
        const Words common{"transcode", "-in", source, "-vcodec", "prores422hq", "-overwrite", "-out"};
        Words words = common;
        words.push_back(plain);
        ASSERT_EQ(corvex(words).exitStatus, 0);
        words.back() = burnt;
        for (const std::string& word :
             wordsOf("-tc_burn -tc_track -tc_burn_size 20 -tc_burn_font_rgb 1,1,0 -tc_burn_anchor " +
                     std::string(row.anchor.rawValue()) + " -tc_custom " + row.first)) {
            words.push_back(word);
        }
        const CommandResult result = corvex(words);
        ASSERT_EQ(result.exitStatus, 0) << result.error;

        const auto expected = picturesOf(plain), found = picturesOf(burnt);
        ASSERT_EQ(found.size(), row.labels.size());
        for (std::size_t i = 0; i < found.size(); ++i) {
            std::vector<double> differences;
            for (const char* label : row.labels) {
                // Burnt here into the job's own picture without it: only the right label comes out the same.
                const FramePointer drawn = makeFrame();
                check(av_frame_ref(drawn.get(), expected[i].get()), "frame");
                check(av_frame_make_writable(drawn.get()), "frame");
                const TextStyle style{.size = 20, .font = Color::sRGB(1, 1, 0), .box = Color::gray(0)};
                const TimecodeCount count(TimecodeFrame(*TimecodeComponents::fromTimecode(label), row.counted), 1);
                TimecodeBurn(count, row.anchor, style, targetOf(*drawn), 320, 180).apply(*drawn, 0);
                differences.push_back(difference(*drawn, *found[i]));
            }
            const auto best = std::min_element(differences.begin(), differences.end());
            EXPECT_EQ(row.labels[static_cast<std::size_t>(best - differences.begin())], row.labels[i]);
            EXPECT_LT(*best, 3) << "what the codec loses";
        }
        EXPECT_EQ(text(stream(probe(burnt), "video")["tags"], "timecode"), row.first);
    }
}

TEST(OverlayEndToEnd, laysWatermarksOverThePictureAlone) {
    const TemporaryDirectory directory;
    const std::string source = directory.path("source.mov"), mark = directory.path("Mark.png"),
                      marked = directory.path("marked.mov");
    ffmpeg({"-f", "lavfi", "-i", "color=gray:size=320x180:rate=25", "-frames:v", "2", "-c:v", "mpeg4", source});
    ffmpeg({"-f", "lavfi", "-i", "color=red:size=32x16", "-frames:v", "1", mark});
    const CommandResult result =
        corvex({"transcode", "-in",     source,        "-vcodec", "prores4444",   "-out", marked,
                "-wmf_path", mark,      "-wmf_scale",  "2",       "-wmf_anchor",  "br",   "-wmt_burn",
                "-wmt_text", "Dailies", "-wmt_anchor", "tl",      "-wmt_box_rgb", "0 0 1"});
    ASSERT_EQ(result.exitStatus, 0) << result.error;
    const Picture picture(marked);
    const auto isNear = [&](int x, int y, Pixel color) {
        const Pixel found = picture.at((x + 0.5) / 320, (y + 0.5) / 180);
        return std::abs(found.red - color.red) < 12 && std::abs(found.green - color.green) < 12 &&
               std::abs(found.blue - color.blue) < 12;
    };
    constexpr Pixel grey{128, 128, 128}, red{254, 0, 0}, blue{0, 0, 255};
    // 64x32 within the safe title area: from (240, 139), made even, to (303, 169).
    EXPECT_TRUE(isNear(241, 140, red) && isNear(302, 168, red));
    EXPECT_TRUE(isNear(237, 150, grey) && isNear(307, 150, grey) && isNear(270, 135, grey) && isNear(270, 173, grey));
    EXPECT_TRUE(isNear(18, 14, blue)) << "the text's box";
    EXPECT_TRUE(isNear(160, 90, grey));
}

TEST(OverlayEndToEnd, refusesWhatCannotBeDrawn) {
    const TemporaryDirectory directory;
    const std::string source = directory.path("source.mov");
    ffmpeg({"-f", "lavfi", "-i", "color=gray:size=64x36:rate=25", "-frames:v", "1", "-c:v", "mpeg4", source});
    struct Row {
        const char *words, *message;
    };
    constexpr Row rows[] = {
        {"-tc_burn -tc_burn_size 100", "-tc_burn_size 100"},
        {"-tc_burn_size 10", "-tc_burn beside it"},
        {"-tc_burn -tc_burn_anchor middle", "tl, tc, tr"},
        {"-tc_burn -tc_burn_box_rgb black", "red, green and blue"},
        {"-tc_burn -tc_rate 24", "-tc_rate"},
        {"-wmt_burn", "-wmt_text"},
        {"-wmt_text a", "-wmt_burn beside it"},
        {"-wmt_burn -wmt_size 20 -wmt_text does_not_fit", "-wmt_size"},
        {"-wmf_scale 2", "-wmf_path beside it"},
        {"-wmf_path /nowhere/mark.png", "no such file"},
        {"-arri_cs rec709", "look engine"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.words);
        Words words{"transcode", "-in", source, "-vcodec", "mp4", "-out", directory.path("out.mov")};
        for (const std::string& word : wordsOf(row.words)) words.push_back(word);
        const CommandResult result = corvex(words);
        EXPECT_NE(result.exitStatus, 0);
        EXPECT_THAT(result.error, HasSubstr(row.message));
        EXPECT_EQ(directory.entries(), Words{"source.mov"});
    }
}

}  // namespace
}  // namespace corvex::tool::test::overlayEndToEndTests

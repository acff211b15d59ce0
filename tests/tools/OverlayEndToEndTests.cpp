// Burnt-in timecodes and watermarks, read back from pictures.

#include <cmath>
#include <limits>

#include <gmock/gmock.h>

#include <tests/tools/Media.h>
#include <tools/corvex/worker/PictureStages.h>

extern "C" {
#include <libavutil/timecode.h>
}

namespace corvex::tool::test::overlayEndToEndTests {
namespace {

using Anchor = OAVTranscodeArgumentOverlayAnchorValue;

constexpr int width = 128, height = 96, labelSize = 12;

/// Reads a label of eleven characters in white on black from a picture's luma of 8 bits: each character is the one whose
/// drawing is nearest to what stands in its place.
std::string labelIn(const std::uint8_t* luma, std::ptrdiff_t stride, const Anchor& anchor) {
    static constexpr std::string_view characters = "0123456789:;";
    static const auto drawings = [] {
        const TextStyle style{.size = labelSize, .font = Color::gray(1), .box = Color::gray(0), .isMonospaced = true};
        std::vector<OverlayImage> made;
        for (const char& character : characters) made.push_back(textImage(std::string_view(&character, 1), style));
        return made;
    }();
    const int cellWidth = drawings[0].width, cellHeight = drawings[0].height;
    const OverlayPlace place = OverlayPlace::make(anchor, 13 * cellWidth, cellHeight, width, height, 2, 2);
    std::string label;
    for (int cell = 1; cell <= 11; ++cell) {  // the box begins before the first character
        int least = std::numeric_limits<int>::max();
        char nearest = ' ';
        for (std::size_t k = 0; k < drawings.size(); ++k) {
            int difference = 0;
            for (int i = 0; i < cellWidth * cellHeight; ++i) {
                const int x = i % cellWidth, y = i / cellWidth;
                const int found = luma[(place.y + y) * stride + place.x + cell * cellWidth + x];
                difference += std::abs(found - 16 - drawings[k].at(x, y)[0] * 219 / 65535);
            }
            if (difference < least) nearest = characters[k];
            least = std::min(least, difference);
        }
        label += nearest;
    }
    return label;
}

using OverlayEndToEnd = RoomTest;

TEST_F(OverlayEndToEnd, theLabelsInThePicturesAreThoseOfTheTrack) {
    const std::tuple<AVRational, std::string, std::string, std::string, Anchor, int> rows[] = {
        {{30000, 1001}, "rate=30000/1001 -frames:v 5", "00:00:59;28", "", OAVAnchorTopLeft, 5},
        {{60000, 1001}, "rate=60000/1001 -frames:v 5", "00:00:59:58", "-tc_non_drop", OAVAnchorCenterRight, 5},
        {{24000, 1001}, "rate=24000/1001 -frames:v 5", "23:59:59:22", "", OAVAnchorBottomLeft, 5},
        // A picture a second, of which a change of rate makes more than a minute.
        {{30000, 1001}, "rate=1 -frames:v 64", "00:00:59;28", "-vr 29.97 -v_frame_cap 3", OAVAnchorBottomCenter, 1918},
    };
    for (const auto& [rate, source, first, more, anchor, pictures] : rows) {
        SCOPED_TRACE(source);
        ffmpeg("-f lavfi -i testsrc2=size=128x96:" + source + " -c:v mpeg4 source.mov");
        const std::string burnt =
            transcode("burnt.mov", "-in source.mov -vcodec mp4 -tc_track -tc_burn -tc_burn_size 12 -tc_custom " +
                                       first + " -tc_burn_anchor " + std::string(anchor.rawValue()) + " " + more);
        expectFacts(probe(burnt), "data 0 tag:timecode " + first);
        AVTimecode timecode{};  // as the media libraries count the track's labels
        ASSERT_EQ(av_timecode_init_from_string(&timecode, rate, first.c_str(), nullptr), 0);
        timecode.flags |= AV_TIMECODE_FLAG_24HOURSMAX;
        const auto luma = decoded<std::uint8_t>("-i " + burnt + " -vf extractplanes=y -f rawvideo");
        ASSERT_EQ(luma.size(), static_cast<std::size_t>(pictures * width * height));
        Words found, expected;
        for (int i = 0; i < pictures; ++i) {
            char text[AV_TIMECODE_STR_SIZE];
            expected.emplace_back(av_timecode_make_string(&timecode, text, i));
            found.push_back(labelIn(luma.data() + std::ptrdiff_t{i} * width * height, width, anchor));
        }
        EXPECT_EQ(found, expected);
    }
}

TEST_F(OverlayEndToEnd, marksLieOverTheFinishedPicture) {
    ffmpeg("-f lavfi -i testsrc2=size=320x160:rate=25 -frames:v 1 -c:v mpeg4 -q:v 2 source.mov");
    // Red on the left, transparent on the right.
    ffmpeg("-f lavfi -i nullsrc=size=32x32,format=gbrap,geq=r=255:g=0:b=0:a='255*lt(X,16)' -frames:v 1 Mark.png");
    writeFile("negative.cube", "LUT_3D_SIZE 2\n1 1 1\n0 1 1\n1 0 1\n0 0 1\n1 1 0\n0 1 0\n1 0 0\n0 0 0\n");
    const std::string marked = transcode(
        "marked.mov",
        "-in source.mov -clut negative.cube -vcodec mjpeg -dims 160x160 -aspect_scaling crop "
        "-wmf_path Mark.png -wmf_scale 2 -wmf_anchor bl -wmt_burn -wmt_text Dailies -wmt_size 10 -wmt_anchor tr "
        "-wmt_box_rgb 0,1,0 -tc_burn -tc_burn_size 8 -tc_burn_anchor bl -tc_burn_box_rgb 0,0,1");
    const Picture picture(marked);
    // Within the inner 90 %: the image's red at (8, 88) to (39, 151), the label over it from line 142 on.
    constexpr Pixel red{254, 0, 0};
    for (const auto& [x, y, color] : {std::tuple(9, 89, red), std::tuple(36, 89, red), std::tuple(36, 134, red),
                                      std::tuple(10, 145, Pixel{0, 0, 254}), std::tuple(150, 10, Pixel{0, 255, 0})}) {
        EXPECT_LT(distance(picture.at((x + 0.5) / 160, (y + 0.5) / 160), color), 20) << "at " << x << ", " << y;
    }
}

TEST(PictureStages, labelsCountThePicturesThatLeave) {
    const LibraryMessages messages;
    const Words words{"-dims", "128x96", "-aspect_scaling", "stretch", "-tc_burn", "-tc_burn_size", "12"};
    const auto request = VideoRequest::make(TranscodeCliArguments(words), OAVQuickTimeFileFormat);
    const PictureStamp::Target target{AV_PIX_FMT_YUV420P, AVCOL_SPC_BT709, AVCOL_RANGE_MPEG};
    const TimecodeCount count(TimecodeFrame(*TimecodeComponents::fromTimecode("00:00:59;28"), {30000, 1001}), 1);
    Words labels;
    int offered = 0;
    PictureStages stages(
        *request, {target.format, {width, height}, target.range},
        std::make_shared<const PictureOverlays>(request->overlays, target, width, height, count), 2,
        [&](AVFrame&, AVRational) { return offered++ != 1; },  // the second is left out
        [&](AVFrame& picture) {
            labels.push_back(labelIn(picture.data[0], picture.linesize[0], OAVAnchorBottomCenter));
        });
    // A size of their own for the third and the fourth picture, another file for the last one.
    for (const auto& [size, isNewFile] :
         {std::pair(64, true), std::pair(64, false), std::pair(80, false), std::pair(80, false), std::pair(64, true)}) {
        if (isNewFile) {
            stages.flush();
            stages.beginFile({{64, 48}, {1, 1}, {}}, {1, 25});
        }
        const FramePointer picture = makeFrame();
        picture->format = AV_PIX_FMT_YUV420P;
        picture->width = size;
        picture->height = 48;
        check(av_frame_get_buffer(picture.get(), 0), "frame");
        picture->pts = offered;
        stages.push(*picture, 1);
    }
    stages.flush();
    EXPECT_THAT(labels, ::testing::ElementsAre("00:00:59;28", "00:00:59;29", "00:01:00;02", "00:01:00;03"));
}

}  // namespace
}  // namespace corvex::tool::test::overlayEndToEndTests

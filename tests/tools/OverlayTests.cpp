#include <tools/corvex/worker/PictureOverlays.h>

#include <filesystem>

#include <gmock/gmock.h>

#include <tests/Thrown.h>
#include <tests/tools/Media.h>

extern "C" {
#include <libavutil/pixdesc.h>
}

namespace corvex::tool::overlayTests {
namespace {

using OverlayRoom = test::RoomTest;
using corvex::test::thrownBy;
using ::testing::HasSubstr;

constexpr OverlayImage::Pixel red{65535, 0, 0, 65535}, white{65535, 65535, 65535, 65535}, clear{65535, 0, 0, 0},
    half{65535, 65535, 65535, 32768};

constexpr PictureStamp::Target target{AV_PIX_FMT_YUV420P, AVCOL_SPC_BT709, AVCOL_RANGE_MPEG};

OverlayImage imageOf(int side, const OverlayImage::Pixel& pixel) {
    OverlayImage image(side, side);
    std::ranges::fill(image.pixels, pixel);
    return image;
}

/// A sample of the frame, by plane; positions are the plane's own.
int sampleAt(const AVFrame& frame, int plane, int x, int y) {
    const auto* description = av_pix_fmt_desc_get(static_cast<AVPixelFormat>(frame.format));
    const std::uint8_t* row = frame.data[plane] + std::ptrdiff_t{y} * frame.linesize[plane];
    return description->comp[0].depth > 8 ? reinterpret_cast<const std::uint16_t*>(row)[x] : row[x];
}

/// A square frame, each plane of one value.
FramePointer frameOf(AVPixelFormat format, int side, std::initializer_list<int> values) {
    FramePointer frame = makeFrame();
    frame->format = format;
    frame->width = frame->height = side;
    check(av_frame_get_buffer(frame.get(), 0), "frame");
    const auto* description = av_pix_fmt_desc_get(format);
    for (int plane = 0; const int value : values) {
        const int rows = plane == 1 || plane == 2 ? AV_CEIL_RSHIFT(side, description->log2_chroma_h) : side;
        for (int i = 0; i < rows * frame->linesize[plane];
             ++i) {  // the lines are one block, a sample's lower byte first
            const bool isUpper = description->comp[0].depth > 8 && i % 2 == 1;
            frame->data[plane][i] = static_cast<std::uint8_t>(isUpper ? value >> 8 : value);
        }
        ++plane;
    }
    return frame;
}

TEST(PictureStamp, drawsInTheCodeValuesOfTheStandards) {
    // Luma and the two colour differences, by hand from ITU-R BT.709 item 4, BT.601 2.5, BT.2020 table 5; full range as
    // ISO/IEC 23091-2.
    const std::tuple<PictureStamp::Target, OverlayImage::Pixel, std::array<int, 3>> rows[] = {
        {target, white, {235, 128, 128}},
        {{AV_PIX_FMT_YUV422P, AVCOL_SPC_SMPTE170M, AVCOL_RANGE_MPEG}, red, {81, 90, 240}},
        {{AV_PIX_FMT_YUVJ422P, AVCOL_SPC_BT709, AVCOL_RANGE_JPEG}, red, {54, 99, 255}},
        {{AV_PIX_FMT_YUV444P12, AVCOL_SPC_BT2020_NCL, AVCOL_RANGE_MPEG}, white, {3760, 2048, 2048}},
    };
    for (const auto& [pixels, color, expected] : rows) {
        const FramePointer frame = frameOf(pixels.format, 8, {0, 0, 0});
        PictureStamp(imageOf(4, color), pixels).apply(*frame, 2, 2);
        const auto* description = av_pix_fmt_desc_get(pixels.format);
        const int x = 2 >> description->log2_chroma_w, y = 2 >> description->log2_chroma_h;
        EXPECT_EQ((std::array{sampleAt(*frame, 0, 2, 2), sampleAt(*frame, 1, x, y), sampleAt(*frame, 2, x, y)}),
                  expected)
            << description->name;
    }
}

TEST(PictureStamp, changesNothingButWhatItCovers) {
    constexpr int before[] = {77, 99, 101};
    const FramePointer frame = frameOf(target.format, 16, {before[0], before[1], before[2]});
    OverlayImage image = imageOf(5, clear);  // odd: the chroma of its last column reaches beyond it
    image.at(0, 0) = image.at(1, 0) = image.at(0, 1) = image.at(1, 1) = white;
    const PictureStamp stamp(image, target);
    stamp.apply(*frame, 4, 6);
    stamp.apply(*frame, 14, 14);  // the visible part fits, the rest is cut off
    int changed = 0;
    for (const int plane : {0, 1, 2}) {
        const int side = plane == 0 ? 16 : 8;
        for (int i = 0; i < side * side; ++i) changed += sampleAt(*frame, plane, i % side, i / side) != before[plane];
    }
    EXPECT_EQ(changed, 2 * (4 + 1 + 1));
    EXPECT_EQ(sampleAt(*frame, 0, 5, 7), 235);
    EXPECT_EQ(sampleAt(*frame, 1, 2, 3), 128);
}

TEST(PictureStamp, blendsByCoverageAndCountsWhatIsTransparentBelowIt) {
    const FramePointer frame = frameOf(target.format, 2, {35, 28, 128});
    OverlayImage image = imageOf(2, half);
    image.at(0, 0) = image.at(1, 0) = clear;  // its red must not reach the chroma that all four share
    PictureStamp(image, target).apply(*frame, 0, 0);
    EXPECT_EQ(sampleAt(*frame, 0, 0, 0), 35);
    EXPECT_EQ(sampleAt(*frame, 0, 0, 1), 135);  // half of 35 and 235
    EXPECT_EQ(sampleAt(*frame, 1, 0, 0), 53);   // a quarter from 28 to 128

    const PictureStamp stamp(imageOf(2, half), {AV_PIX_FMT_YUVA444P10, AVCOL_SPC_BT709, AVCOL_RANGE_MPEG});
    for (const auto& [alphaBelow, luma, alpha] : {std::tuple(0, 940, 512), std::tuple(1023, 502, 1023)}) {
        const FramePointer below = frameOf(AV_PIX_FMT_YUVA444P10, 2, {64, 64, 64, alphaBelow});
        stamp.apply(*below, 0, 0);
        EXPECT_EQ(sampleAt(*below, 0, 1, 1), luma);
        EXPECT_EQ(sampleAt(*below, 3, 1, 1), alpha);
    }
}

TEST(OverlayPlace, keepsToTheSafeTitleAreaWhereThereIsRoom) {
    const std::tuple<OAVTranscodeArgumentOverlayAnchorValue, int, int, int, int> rows[] = {
        {OAVAnchorTopLeft, 200, 100, 96, 54},        {OAVAnchorTopCenter, 200, 100, 860, 54},
        {OAVAnchorTopRight, 200, 100, 1624, 54},     {OAVAnchorCenterLeft, 200, 100, 96, 490},
        {OAVAnchorCenter, 200, 100, 860, 490},       {OAVAnchorCenterRight, 200, 100, 1624, 490},
        {OAVAnchorBottomLeft, 200, 100, 96, 926},    {OAVAnchorBottomCenter, 200, 100, 860, 926},
        {OAVAnchorBottomRight, 200, 100, 1624, 926}, {OAVAnchorBottomRight, 1920, 1080, 0, 0},
        {OAVAnchorTopLeft, 1900, 1078, 10, 0},       {OAVAnchorCenter, 201, 99, 858, 490},
    };
    for (const auto& [anchor, width, height, x, y] : rows) {
        const auto place = OverlayPlace::make(anchor, width, height, 1920, 1080, 2, 2);
        EXPECT_EQ(std::pair(place.x, place.y), std::pair(x, y)) << anchor.rawValue() << " " << width;
    }
}

TEST(TimecodeCount, givesEveryPictureItsLabel) {
    constexpr MediaRational ntsc(30000, 1001);
    constexpr std::tuple<const char*, MediaRational, int, int, const char*> rows[] = {
        {"00:00:59;58", {60000, 1001}, 1, 2, "00:01:00;04"}, {"00:00:59;28", ntsc, 2, 3, "00:00:59;29"},
        {"00:00:59;28", ntsc, 2, 4, "00:01:00;02"},          {"23:59:59;29", ntsc, 1, 1, "00:00:00;00"},
        {"23:59:59:23", {24000, 1001}, 1, 1, "00:00:00:00"}, {"00:00:00:00", {120, 1}, 1, 119, "00:00:00:119"},
    };
    for (const auto& [first, rate, perLabel, picture, label] : rows) {
        const TimecodeCount count(TimecodeFrame(*TimecodeComponents::fromTimecode(first), rate), perLabel);
        EXPECT_EQ(count.label(picture).timecodeString(), label);
    }
}

TEST(TextImage, drawsWhatTheFontsHaveAndRefusesTheRest) {
    const OverlayImage image = textImage("Ä é", {.size = 40, .font = Color::sRGB(1, 0, 0), .box = {}});
    const auto isRed = [](const auto& pixel) { return pixel[0] == 65535 && pixel[1] == 0; };
    EXPECT_TRUE(std::ranges::all_of(image.pixels, isRed));
    EXPECT_GT(std::ranges::count_if(image.pixels, [](const auto& pixel) { return pixel[3] == 65535; }), 50);
    EXPECT_THROW((void)textImage("\U0010FFFD", {.size = 40, .font = {}, .box = {}}), JobError);
}

TEST_F(OverlayRoom, isReadWithItsAlphaAndScaledWithoutBleeding) {
    const LibraryMessages messages;
    // Left half opaque red, right half transparent green.
    test::ffmpeg(
        "-f lavfi -i nullsrc=size=16x8,format=gbrap,geq=r='255*lt(X,8)':g='255*gte(X,8)':b=0:a='255*lt(X,8)' "
        "-frames:v 1 mark.png");
    for (const double scale : {1.0, 0.5}) {
        const OverlayImage image = OverlayImage::read("mark.png", scale);
        EXPECT_EQ(image.width, 16 * scale);
        EXPECT_EQ(image.at(0, 0), red);
        EXPECT_EQ(image.at(image.width - 1, 0)[3], 0);
        EXPECT_LT(image.at(image.width / 2 - 1, 1)[1], 1500) << "the transparent half's green at the seam";
    }
    EXPECT_THROW((void)OverlayImage::read("mark.png", 1e6), JobError);
}

TEST_F(OverlayRoom, findsAPathWhoseCaseWasLost) {
    std::filesystem::create_directories("Marks/One");
    for (const char* file : {"Marks/One/Logo.PNG", "Marks/Bug.png", "Marks/BUG.png"}) test::writeFile(file, "x");
    EXPECT_EQ(pathWithoutCase(room.path("Marks/One/Logo.PNG")), room.path("Marks/One/Logo.PNG"));
    EXPECT_EQ(pathWithoutCase(room.path("marks/one/logo.png")), room.path("Marks/One/Logo.PNG"));
    const auto problemOf = [&](const char* path) {
        return std::string(thrownBy<JobError>([&] { return pathWithoutCase(room.path(path)); }).value().what());
    };
    EXPECT_THAT(problemOf("marks/bug.png"), HasSubstr("Bug.png"));
    EXPECT_THAT(problemOf("marks/three/bug.png"), ::testing::AllOf(HasSubstr("-wmf_path"), HasSubstr("no such file")));
}

TEST_F(OverlayRoom, whatDoesNotFitNamesItsFlag) {
    const LibraryMessages messages;
    test::ffmpeg("-f lavfi -i color=red:size=32x32 -frames:v 1 mark.png");
    const TimecodeCount count(TimecodeFrame({}, {25, 1}), 1);
    for (const char* line :
         {"-wmf_scale 4 -wmf_path mark.png", "-wmt_size 40 -wmt_burn -wmt_text Dailies", "-tc_burn_size 40 -tc_burn"}) {
        const test::Words words = test::wordsOf(line);
        const auto request = OverlayRequest::make(TranscodeCliArguments(words));
        const auto problem = thrownBy<JobError>([&] { return PictureOverlays(request, target, 100, 100, count); });
        EXPECT_THAT(problem.value().what(), HasSubstr(words.front()));
    }
}

}  // namespace
}  // namespace corvex::tool::overlayTests

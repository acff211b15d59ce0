#include <tools/corvex/worker/PictureOverlays.h>

#include <filesystem>

#include <gmock/gmock.h>

#include <tests/tools/Media.h>

extern "C" {
#include <libavutil/pixdesc.h>
}

namespace corvex::tool::overlayTests {
namespace {

using OverlayRoom = test::RoomTest;
using test::Words;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr OverlayImage::Pixel red{65535, 0, 0, 65535}, white{65535, 65535, 65535, 65535}, clear{65535, 0, 0, 0};

constexpr PictureStamp::Target target{AV_PIX_FMT_YUV420P, AVCOL_SPC_BT709, AVCOL_RANGE_MPEG};

OverlayImage imageOf(int width, int height, const OverlayImage::Pixel& pixel) {
    OverlayImage image(width, height);
    std::fill(image.pixels.begin(), image.pixels.end(), pixel);
    return image;
}

FramePointer frameOf(AVPixelFormat format, int width, int height) {
    FramePointer frame = makeFrame();
    frame->format = format;
    frame->width = width;
    frame->height = height;
    check(av_frame_get_buffer(frame.get(), 0), "frame");
    return frame;
}

/// A sample of the frame, by plane; positions are the plane's own.
int sampleAt(const AVFrame& frame, int plane, int x, int y) {
    const auto* description = av_pix_fmt_desc_get(static_cast<AVPixelFormat>(frame.format));
    const std::uint8_t* row = frame.data[plane] + std::ptrdiff_t{y} * frame.linesize[plane];
    return description->comp[0].depth > 8 ? reinterpret_cast<const std::uint16_t*>(row)[x] : row[x];
}

void fill(AVFrame& frame, int plane, int value) {
    const auto* description = av_pix_fmt_desc_get(static_cast<AVPixelFormat>(frame.format));
    const bool isChroma = plane == 1 || plane == 2, isDeep = description->comp[0].depth > 8;
    const int rows = isChroma ? AV_CEIL_RSHIFT(frame.height, description->log2_chroma_h) : frame.height;
    for (int i = 0; i < rows * frame.linesize[plane]; ++i) {  // the lines are one block of bytes, the lower one first
        frame.data[plane][i] = static_cast<std::uint8_t>(isDeep && i % 2 == 1 ? value >> 8 : value);
    }
}

TEST(PictureStamp, drawsInTheCodeValuesOfTheStandards) {
    struct Row {
        AVPixelFormat format;
        AVColorSpace matrix;
        AVColorRange range;
        OverlayImage::Pixel color;
        int luma, blue, red;
    };
    // By hand from ITU-R BT.709 item 4, BT.601 2.5, BT.2020 table 5; full range as ISO/IEC 23091-2.
    const Row rows[] = {
        {AV_PIX_FMT_YUV420P, AVCOL_SPC_BT709, AVCOL_RANGE_MPEG, white, 235, 128, 128},
        {AV_PIX_FMT_YUV420P, AVCOL_SPC_BT709, AVCOL_RANGE_MPEG, red, 63, 102, 240},
        {AV_PIX_FMT_YUV422P10, AVCOL_SPC_BT709, AVCOL_RANGE_MPEG, red, 250, 409, 960},
        {AV_PIX_FMT_YUV422P, AVCOL_SPC_SMPTE170M, AVCOL_RANGE_MPEG, red, 81, 90, 240},
        {AV_PIX_FMT_YUVJ422P, AVCOL_SPC_BT709, AVCOL_RANGE_JPEG, red, 54, 99, 255},
        {AV_PIX_FMT_YUV444P12, AVCOL_SPC_BT2020_NCL, AVCOL_RANGE_MPEG, white, 3760, 2048, 2048},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(av_get_pix_fmt_name(row.format));
        const FramePointer frame = frameOf(row.format, 8, 8);
        for (int plane = 0; plane < 3; ++plane) fill(*frame, plane, 0);
        const PictureStamp stamp(imageOf(4, 4, row.color), {row.format, row.matrix, row.range});
        stamp.apply(*frame, 2, 2);
        const auto* description = av_pix_fmt_desc_get(row.format);
        const int x = 2 >> description->log2_chroma_w, y = 2 >> description->log2_chroma_h;
        EXPECT_THAT((std::array{sampleAt(*frame, 0, 2, 2), sampleAt(*frame, 1, x, y), sampleAt(*frame, 2, x, y)}),
                    ElementsAre(row.luma, row.blue, row.red));
    }
}

TEST(PictureStamp, changesNothingButWhatItCovers) {
    const FramePointer frame = frameOf(AV_PIX_FMT_YUV420P, 16, 16);
    for (const auto& [plane, value] : {std::pair(0, 77), std::pair(1, 99), std::pair(2, 101)}) {
        fill(*frame, plane, value);
    }
    OverlayImage image = imageOf(5, 5, clear);  // odd: the chroma of its last column reaches beyond it
    image.at(0, 0) = image.at(1, 0) = image.at(0, 1) = image.at(1, 1) = white;
    const PictureStamp stamp(image, target);
    stamp.apply(*frame, 4, 6);
    stamp.apply(*frame, 14, 14);  // the visible part fits, the rest is cut off
    int changed = 0;
    for (int plane = 0; plane < 3; ++plane) {
        const int side = plane == 0 ? 16 : 8, before = plane == 0 ? 77 : plane == 1 ? 99 : 101;
        for (int i = 0; i < side * side; ++i) changed += sampleAt(*frame, plane, i % side, i / side) != before;
    }
    EXPECT_EQ(changed, 2 * (4 + 1 + 1));
    EXPECT_EQ(sampleAt(*frame, 0, 5, 7), 235);
    EXPECT_EQ(sampleAt(*frame, 1, 2, 3), 128);
}

TEST(PictureStamp, blendsByCoverage) {
    OverlayImage::Pixel half = white;
    half[3] = 32768;
    const FramePointer frame = frameOf(AV_PIX_FMT_YUV420P, 2, 2);
    fill(*frame, 0, 35);
    fill(*frame, 1, 28);
    OverlayImage image = imageOf(2, 2, half);
    image.at(0, 0) = image.at(1, 0) = clear;  // its red must not reach the chroma that all four share
    const PictureStamp stamp(image, target);
    stamp.apply(*frame, 0, 0);
    EXPECT_EQ(sampleAt(*frame, 0, 0, 0), 35);
    EXPECT_EQ(sampleAt(*frame, 0, 0, 1), 135);  // half of 35 and 235
    EXPECT_EQ(sampleAt(*frame, 1, 0, 0), 53);   // a quarter from 28 to 128
}

TEST(PictureStamp, countsWhatIsTransparentBelowIt) {
    OverlayImage::Pixel half = white;
    half[3] = 32768;
    const PictureStamp stamp(imageOf(2, 2, half), {AV_PIX_FMT_YUVA444P10, AVCOL_SPC_BT709, AVCOL_RANGE_MPEG});
    for (const auto& [alphaBelow, luma, alpha] : {std::tuple(0, 940, 512), std::tuple(1023, 502, 1023)}) {
        const FramePointer frame = frameOf(AV_PIX_FMT_YUVA444P10, 2, 2);
        for (int plane = 0; plane < 3; ++plane) fill(*frame, plane, 64);
        fill(*frame, 3, alphaBelow);
        stamp.apply(*frame, 0, 0);
        EXPECT_EQ(sampleAt(*frame, 0, 1, 1), luma);
        EXPECT_EQ(sampleAt(*frame, 3, 1, 1), alpha);
    }
}

TEST(PictureStamp, refusesPicturesThatItCannotDrawIn) {
    for (const auto& [format, matrix] :
         {std::pair(AV_PIX_FMT_NV12, AVCOL_SPC_BT709), std::pair(AV_PIX_FMT_GBRP, AVCOL_SPC_RGB),
          std::pair(AV_PIX_FMT_YUV420P, AVCOL_SPC_UNSPECIFIED)}) {
        EXPECT_THROW(PictureStamp(imageOf(2, 2, white), {format, matrix, AVCOL_RANGE_MPEG}), JobError);
    }
}

TEST(OverlayPlace, keepsToTheSafeTitleAreaWhereThereIsRoom) {
    struct Row {
        OAVTranscodeArgumentOverlayAnchorValue anchor;
        int width, height, x, y;
    };
    const Row rows[] = {
        {OAVAnchorTopLeft, 200, 100, 96, 54},        {OAVAnchorTopCenter, 200, 100, 860, 54},
        {OAVAnchorTopRight, 200, 100, 1624, 54},     {OAVAnchorCenterLeft, 200, 100, 96, 490},
        {OAVAnchorCenter, 200, 100, 860, 490},       {OAVAnchorCenterRight, 200, 100, 1624, 490},
        {OAVAnchorBottomLeft, 200, 100, 96, 926},    {OAVAnchorBottomCenter, 200, 100, 860, 926},
        {OAVAnchorBottomRight, 200, 100, 1624, 926}, {OAVAnchorBottomRight, 1920, 1080, 0, 0},
        {OAVAnchorTopLeft, 1900, 1078, 10, 0},       {OAVAnchorCenter, 201, 99, 858, 490},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.anchor.rawValue()) + " " + std::to_string(row.width));
        const auto place = OverlayPlace::make(row.anchor, row.width, row.height, 1920, 1080, 2, 2);
        EXPECT_EQ(place.x, row.x);
        EXPECT_EQ(place.y, row.y);
    }
}

TEST(TimecodeCount, givesEveryPictureItsLabel) {
    struct Row {
        const char* first;
        MediaRational rate;
        std::int64_t perLabel, picture;
        const char* label;
    };
    constexpr MediaRational ntsc(30000, 1001), doubleNtsc(60000, 1001);
    constexpr Row rows[] = {
        {"00:00:59;28", ntsc, 1, 0, "00:00:59;28"},          {"00:00:59;28", ntsc, 1, 1, "00:00:59;29"},
        {"00:00:59;28", ntsc, 1, 2, "00:01:00;02"},          {"00:09:59;29", ntsc, 1, 1, "00:10:00;00"},
        {"00:00:59;58", doubleNtsc, 1, 2, "00:01:00;04"},    {"00:00:59;28", ntsc, 2, 3, "00:00:59;29"},
        {"00:00:59;28", ntsc, 2, 4, "00:01:00;02"},          {"23:59:59;29", ntsc, 1, 1, "00:00:00;00"},
        {"23:59:59:23", {24000, 1001}, 1, 1, "00:00:00:00"}, {"01:00:00:00", {25, 1}, 1, 15000, "01:10:00:00"},
        {"00:00:00:00", {120, 1}, 1, 119, "00:00:00:119"},
    };
    for (const Row& row : rows) {
        const TimecodeCount count(TimecodeFrame(*TimecodeComponents::fromTimecode(row.first), row.rate), row.perLabel);
        EXPECT_EQ(count.label(row.picture).timecodeString(), row.label);
    }
}

TEST(TextImage, drawsWhatTheFontsHaveAndRefusesTheRest) {
    const OverlayImage image = textImage("Ä é", {.size = 40, .font = Color::sRGB(1, 0, 0), .box = {}});
    bool isRedOrClear = true;
    int drawn = 0;
    for (const auto& pixel : image.pixels) {
        isRedOrClear &= pixel[0] == 65535 && pixel[1] == 0;
        drawn += pixel[3] == 65535;
    }
    EXPECT_TRUE(isRedOrClear);
    EXPECT_GT(drawn, 50);
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
        const auto& seam = image.at(image.width / 2 - 1, 1);
        EXPECT_LT(seam[1], 1500) << "the transparent half's green at the seam";
    }
    EXPECT_THROW((void)OverlayImage::read("mark.png", 1e6), JobError);
    EXPECT_THROW((void)OverlayImage::read("none.png", 1), JobError);
}

template <class Action>
std::string problemOf(const Action& action) {
    try {
        action();
    } catch (const JobError& error) {
        return error.what();
    }
    return "none";
}

TEST_F(OverlayRoom, findsAPathWhoseCaseWasLost) {
    std::filesystem::create_directories("Marks/One");
    std::filesystem::create_directories("Marks/Two");
    for (const char* file : {"Marks/One/Logo.PNG", "Marks/Two/Bug.png", "Marks/Two/BUG.png"})
        test::writeFile(file, "x");
    const std::string logo = room.path("Marks/One/Logo.PNG");
    EXPECT_EQ(pathWithoutCase(logo), logo);
    EXPECT_EQ(pathWithoutCase(room.path("marks/one/logo.png")), logo);
    EXPECT_THAT(problemOf([&] { (void)pathWithoutCase(room.path("marks/two/bug.png")); }), HasSubstr("Bug.png"));
    EXPECT_THAT(problemOf([&] { (void)pathWithoutCase(room.path("marks/three/bug.png")); }),
                ::testing::AllOf(HasSubstr("-wmf_path"), HasSubstr("no such file")));
}

TEST_F(OverlayRoom, whatDoesNotFitNamesItsFlag) {
    const LibraryMessages messages;
    test::ffmpeg("-f lavfi -i color=red:size=32x32 -frames:v 1 mark.png");
    const TimecodeCount count(TimecodeFrame(*TimecodeComponents::fromTimecode("00:00:00:00"), {25, 1}), 1);
    for (const char* line :
         {"-wmf_scale 4 -wmf_path mark.png", "-wmt_size 40 -wmt_burn -wmt_text Dailies", "-tc_burn_size 40 -tc_burn"}) {
        const Words words = test::wordsOf(line);
        const auto request = OverlayRequest::make(TranscodeCliArguments(words));
        EXPECT_THAT(problemOf([&] { const PictureOverlays overlays(request, target, 100, 100, count); }),
                    HasSubstr(words.front()));
    }
}

}  // namespace
}  // namespace corvex::tool::overlayTests

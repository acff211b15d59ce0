#include <tools/corvex/worker/FrameGeometry.h>

#include <ostream>

#include <gtest/gtest.h>

namespace corvex::tool {

std::ostream& operator<<(std::ostream& out, PixelSize size) { return out << size.width << "x" << size.height; }
std::ostream& operator<<(std::ostream& out, PixelAspect aspect) {
    return out << aspect.numerator << ":" << aspect.denominator;
}

namespace {

constexpr PixelAspect square{1, 1};
constexpr PixelAspect palWide{64, 45};  // 16:9 in 720x576, Rec. ITU-R BT.601

struct Row {
    const char* name;
    SourcePicture source;
    std::optional<PixelSize> box;
    OAVTranscodeArgumentAspectRatioValue scaling;
    PixelSize crop;
    PixelSize scaled;
    PixelSize output;
    PixelAspect pixelAspect;
};

TEST(FrameGeometry, followsTheScaling) {
    const Row rows[] = {
        {"no box", {{1920, 1080}, square}, {}, OAVMatchSourceRatio, {1920, 1080}, {1920, 1080}, {1920, 1080}, square},
        {"no box keeps wide pixels",
         {{720, 576}, palWide},
         {},
         OAVMatchSourceRatio,
         {720, 576},
         {720, 576},
         {720, 576},
         palWide},
        {"odd sides are raised",
         {{321, 181}, square},
         {},
         OAVMatchSourceRatio,
         {321, 181},
         {322, 182},
         {322, 182},
         square},
        {"smallest", {{1, 1}, square}, {}, OAVMatchSourceRatio, {1, 1}, {2, 2}, {2, 2}, square},
        {"turned",
         {{1920, 1080}, {4, 3}, 90},
         {},
         OAVMatchSourceRatio,
         {1080, 1920},
         {1080, 1920},
         {1080, 1920},
         {3, 4}},
        {"upside down",
         {{1920, 1080}, {4, 3}, 180},
         {},
         OAVMatchSourceRatio,
         {1920, 1080},
         {1920, 1080},
         {1920, 1080},
         {4, 3}},
        {"stretch",
         {{1920, 1080}, square},
         PixelSize{640, 640},
         OAVStretchAspect,
         {1920, 1080},
         {640, 640},
         {640, 640},
         square},
        {"stretch into odd",
         {{1920, 1080}, square},
         PixelSize{641, 359},
         OAVStretchAspect,
         {1920, 1080},
         {642, 360},
         {642, 360},
         square},
        {"match is lower than the box",
         {{1920, 1080}, square},
         PixelSize{640, 640},
         OAVMatchSourceRatio,
         {1920, 1080},
         {640, 360},
         {640, 360},
         square},
        {"match is narrower than the box",
         {{1080, 1920}, square},
         PixelSize{640, 640},
         OAVMatchSourceRatio,
         {1080, 1920},
         {360, 640},
         {360, 640},
         square},
        {"match enlarges",
         {{320, 180}, square},
         PixelSize{640, 640},
         OAVMatchSourceRatio,
         {320, 180},
         {640, 360},
         {640, 360},
         square},
        {"match of wide pixels",
         {{720, 576}, palWide},
         PixelSize{1024, 1024},
         OAVMatchSourceRatio,
         {720, 576},
         {1024, 576},
         {1024, 576},
         square},
        {"match of a turned picture",
         {{1920, 1080}, square, 270},
         PixelSize{640, 640},
         OAVMatchSourceRatio,
         {1080, 1920},
         {360, 640},
         {360, 640},
         square},
        {"match of a line",
         {{4000, 10}, square},
         PixelSize{100, 100},
         OAVMatchSourceRatio,
         {4000, 10},
         {100, 2},
         {100, 2},
         square},
        {"letterbox",
         {{1920, 1080}, square},
         PixelSize{640, 640},
         OAVLetterboxAspect,
         {1920, 1080},
         {640, 360},
         {640, 640},
         square},
        {"pillars",
         {{1440, 1080}, square},
         PixelSize{640, 360},
         OAVLetterboxAspect,
         {1440, 1080},
         {480, 360},
         {640, 360},
         square},
        {"letterbox that fits needs no bars",
         {{720, 576}, palWide},
         PixelSize{1024, 576},
         OAVLetterboxAspect,
         {720, 576},
         {1024, 576},
         {1024, 576},
         square},
        {"crop sides",
         {{1920, 1080}, square},
         PixelSize{640, 640},
         OAVCropAspect,
         {1080, 1080},
         {640, 640},
         {640, 640},
         square},
        {"crop top and bottom",
         {{320, 180}, square},
         PixelSize{320, 60},
         OAVCropAspect,
         {320, 60},
         {320, 60},
         {320, 60},
         square},
        {"crop of wide pixels cuts in those",
         {{720, 576}, palWide},
         PixelSize{576, 576},
         OAVCropAspect,
         {405, 576},
         {576, 576},
         {576, 576},
         square},
        {"crop of the box's own aspect",
         {{1920, 1080}, square},
         PixelSize{960, 540},
         OAVCropAspect,
         {1920, 1080},
         {960, 540},
         {960, 540},
         square},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const FrameGeometry geometry = FrameGeometry::make(row.source, {row.box, row.scaling, OAVAnchorCenter});
        EXPECT_EQ(geometry.crop, row.crop);
        EXPECT_EQ(geometry.scaled, row.scaled);
        EXPECT_EQ(geometry.output, row.output);
        EXPECT_EQ(geometry.pixelAspect, row.pixelAspect);
    }
}

TEST(FrameGeometry, anchorsPlaceTheCrop) {
    struct AnchorRow {
        OAVTranscodeArgumentOverlayAnchorValue anchor;
        int x, y;  // of a square out of 300x100, and of one out of 100x300
    };
    const AnchorRow rows[] = {
        {OAVAnchorTopLeft, 0, 0},      {OAVAnchorTopCenter, 100, 0},      {OAVAnchorTopRight, 200, 0},
        {OAVAnchorCenterLeft, 0, 100}, {OAVAnchorCenter, 100, 100},       {OAVAnchorCenterRight, 200, 100},
        {OAVAnchorBottomLeft, 0, 200}, {OAVAnchorBottomCenter, 100, 200}, {OAVAnchorBottomRight, 200, 200}};
    for (const AnchorRow& row : rows) {
        SCOPED_TRACE(row.anchor.rawValue());
        const FrameRequest request{PixelSize{50, 50}, OAVCropAspect, row.anchor};
        const FrameGeometry wide = FrameGeometry::make({{300, 100}, square}, request);
        const FrameGeometry high = FrameGeometry::make({{100, 300}, square}, request);
        EXPECT_EQ(std::pair(wide.cropX, wide.cropY), std::pair(row.x, 0));
        EXPECT_EQ(std::pair(high.cropX, high.cropY), std::pair(0, row.y));
    }
}

TEST(FrameGeometry, laterSourcesKeepTheFirstOnesRaster) {
    struct LaterRow {
        const char* name;
        PixelSize source;
        std::optional<PixelSize> box;
        OAVTranscodeArgumentAspectRatioValue scaling;
        PixelSize firstOutput, scaled;
    };
    const LaterRow rows[] = {
        {"same", {1920, 1080}, {}, OAVMatchSourceRatio, {1920, 1080}, {1920, 1080}},
        {"other size, same shape", {1280, 720}, {}, OAVMatchSourceRatio, {1920, 1080}, {1920, 1080}},
        {"other shape gets bars", {640, 480}, {}, OAVMatchSourceRatio, {1920, 1080}, {1440, 1080}},
        {"match of another shape gets bars",
         {640, 480},
         PixelSize{640, 640},
         OAVMatchSourceRatio,
         {640, 360},
         {480, 360}},
        {"stretch stays stretch", {640, 480}, PixelSize{960, 540}, OAVStretchAspect, {960, 540}, {960, 540}},
    };
    for (const LaterRow& row : rows) {
        SCOPED_TRACE(row.name);
        const FrameGeometry geometry = FrameGeometry::makeForOutput(
            {row.source, square}, {row.box, row.scaling, OAVAnchorCenter}, row.firstOutput);
        EXPECT_EQ(geometry.output, row.firstOutput);
        EXPECT_EQ(geometry.scaled, row.scaled);
    }
}

TEST(FrameGeometry, filtersOnlyWhatIsNeeded) {
    const auto text = [](SourcePicture source, FrameRequest request, const char* options = "") {
        return FrameGeometry::make(source, request).filterText(options);
    };
    EXPECT_EQ(text({{320, 180}, square}, {}), "setsar=1/1");
    EXPECT_EQ(text({{320, 180}, square}, {}, ":out_range=pc"), "scale=320:180:flags=bicubic:out_range=pc,setsar=1/1");
    EXPECT_EQ(text({{320, 180}, palWide, 90}, {}), "transpose=clock,setsar=45/64");
    EXPECT_EQ(text({{320, 180}, square, 180}, {}), "hflip,vflip,setsar=1/1");
    EXPECT_EQ(text({{320, 180}, square, 270}, {}), "transpose=cclock,setsar=1/1");
    EXPECT_EQ(text({{320, 180}, square}, {PixelSize{100, 100}, OAVLetterboxAspect}),
              "scale=100:56:flags=bicubic,pad=100:100:(ow-iw)/2:(oh-ih)/2:color=black,setsar=1/1");
    EXPECT_EQ(text({{320, 180}, square}, {PixelSize{180, 180}, OAVCropAspect, OAVAnchorBottomRight}),
              "crop=180:180:140:0:exact=1,setsar=1/1");
}

}  // namespace
}  // namespace corvex::tool

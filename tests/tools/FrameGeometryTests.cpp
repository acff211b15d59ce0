#include <tools/corvex/worker/FrameGeometry.h>

#include <array>

#include <gtest/gtest.h>

namespace corvex::tool::frameGeometryTests {
namespace {

constexpr PixelAspect square{1, 1};
constexpr PixelAspect palWide{64, 45};  // 16:9 in 720x576, Rec. ITU-R BT.601

std::string textOf(PixelSize size) { return std::to_string(size.width) + "x" + std::to_string(size.height); }

/// "1080x1080 > 640x640 > 640x640 1:1": the part that is used, its size after scaling, the output and its pixels.
std::string textOf(const FrameGeometry& geometry) {
    return textOf(geometry.crop) + " > " + textOf(geometry.scaled) + " > " + textOf(geometry.output) + " " +
           std::to_string(geometry.pixelAspect.numerator) + ":" + std::to_string(geometry.pixelAspect.denominator);
}

TEST(FrameGeometry, followsTheScaling) {
    const SourcePicture hd{{1920, 1080}, square, {}};
    const SourcePicture pal{{720, 576}, palWide, {}};
    const auto of = [](int width, int height) { return SourcePicture{{width, height}, square, {}}; };
    const auto turned = [](PixelAspect aspect, int turn) { return SourcePicture{{1920, 1080}, aspect, {turn}}; };
    const auto match = OAVMatchSourceRatio;
    const auto letterbox = OAVLetterboxAspect;
    using Box = std::optional<PixelSize>;
    const std::tuple<const char*, SourcePicture, Box, OAVTranscodeArgumentAspectRatioValue, const char*> rows[] = {
        {"no box keeps wide pixels", pal, {}, match, "720x576 > 720x576 > 720x576 64:45"},
        {"odd sides are raised", of(321, 181), {}, match, "321x181 > 322x182 > 322x182 1:1"},
        {"smallest", of(1, 1), {}, match, "1x1 > 2x2 > 2x2 1:1"},
        {"turned", turned({4, 3}, 90), {}, match, "1080x1920 > 1080x1920 > 1080x1920 3:4"},
        {"stretch into odd", hd, {{641, 359}}, OAVStretchAspect, "1920x1080 > 642x360 > 642x360 1:1"},
        {"match is lower than the box", hd, {{640, 640}}, match, "1920x1080 > 640x360 > 640x360 1:1"},
        {"match of wide pixels", pal, {{1024, 1024}}, match, "720x576 > 1024x576 > 1024x576 1:1"},
        {"match of a turned picture", turned(square, 270), {{640, 640}}, match, "1080x1920 > 360x640 > 360x640 1:1"},
        {"match of a line", of(4000, 10), {{100, 100}}, match, "4000x10 > 100x2 > 100x2 1:1"},
        {"letterbox", hd, {{640, 640}}, letterbox, "1920x1080 > 640x360 > 640x640 1:1"},
        {"pillars", of(1440, 1080), {{640, 360}}, letterbox, "1440x1080 > 480x360 > 640x360 1:1"},
        {"crop sides", hd, {{640, 640}}, OAVCropAspect, "1080x1080 > 640x640 > 640x640 1:1"},
        {"crop top and bottom", of(320, 180), {{320, 60}}, OAVCropAspect, "320x60 > 320x60 > 320x60 1:1"},
        {"crop of wide pixels cuts in those", pal, {{576, 576}}, OAVCropAspect, "405x576 > 576x576 > 576x576 1:1"},
    };
    for (const auto& [name, source, box, scaling, expected] : rows) {
        const FrameRequest request{box, scaling, OAVAnchorCenter};
        EXPECT_EQ(textOf(FrameGeometry::make(source, request)), expected) << name;
    }
}

TEST(FrameGeometry, anchorsPlaceTheCrop) {
    // Where a square out of 300x100 begins, and one out of 100x300.
    const std::tuple<OAVTranscodeArgumentOverlayAnchorValue, int, int> rows[] = {
        {OAVAnchorTopLeft, 0, 0},      {OAVAnchorTopCenter, 100, 0},      {OAVAnchorTopRight, 200, 0},
        {OAVAnchorCenterLeft, 0, 100}, {OAVAnchorCenter, 100, 100},       {OAVAnchorCenterRight, 200, 100},
        {OAVAnchorBottomLeft, 0, 200}, {OAVAnchorBottomCenter, 100, 200}, {OAVAnchorBottomRight, 200, 200},
    };
    for (const auto& [anchor, x, y] : rows) {
        const FrameRequest request{PixelSize{50, 50}, OAVCropAspect, anchor};
        const FrameGeometry wide = FrameGeometry::make({{300, 100}, square, {}}, request);
        const FrameGeometry high = FrameGeometry::make({{100, 300}, square, {}}, request);
        EXPECT_EQ(std::pair(wide.cropX, wide.cropY), std::pair(x, 0)) << anchor.rawValue();
        EXPECT_EQ(std::pair(high.cropX, high.cropY), std::pair(0, y)) << anchor.rawValue();
    }
}

TEST(FrameGeometry, laterSourcesKeepTheFirstOnesRaster) {
    const auto later = [](std::optional<PixelSize> box, auto scaling, PixelSize source, PixelSize firstOutput) {
        const FrameRequest request{box, scaling, OAVAnchorCenter};
        return textOf(FrameGeometry::makeForOutput({source, square, {}}, request, firstOutput));
    };
    EXPECT_EQ(later({}, OAVMatchSourceRatio, {640, 480}, {1920, 1080}), "640x480 > 1440x1080 > 1920x1080 1:1")
        << "bars";
    EXPECT_EQ(later({{960, 540}}, OAVStretchAspect, {640, 480}, {960, 540}), "640x480 > 960x540 > 960x540 1:1");
}

// The eight ways in which a display matrix can lay a picture without bending it, as the place of a picture's corners
// tells them: x' = a x + c y, y' = b x + d y.
TEST(Orientation, followsTheDisplayMatrix) {
    using Entry = std::int32_t;
    constexpr std::tuple<const char*, Entry, Entry, Entry, Entry, Orientation, const char*> rows[] = {
        {"upright", 1, 0, 0, 1, {0, false}, ""},
        {"clockwise", 0, 1, -1, 0, {90, false}, "transpose=clock,"},
        {"upside down", -1, 0, 0, -1, {180, false}, "hflip,vflip,"},
        {"counter-clockwise", 0, -1, 1, 0, {270, false}, "transpose=cclock,"},
        {"left is right", -1, 0, 0, 1, {0, true}, "hflip,"},
        {"top is bottom", 1, 0, 0, -1, {180, true}, "vflip,"},
        {"about the falling diagonal", 0, 1, 1, 0, {270, true}, "transpose=cclock_flip,"},
        {"about the rising diagonal", 0, -1, -1, 0, {90, true}, "transpose=clock_flip,"},
        {"nothing", 0, 0, 0, 0, {0, false}, ""},
    };
    for (const auto& [name, a, b, c, d, expected, filter] : rows) {
        const Entry one = 1 << 16;
        const std::array<Entry, 9> matrix{a * one, b * one, 0, c * one, d * one, 0, 0, 0, 1};
        const Orientation orientation = Orientation::fromDisplayMatrix(matrix.data());
        EXPECT_EQ(orientation, expected) << name;
        const auto geometry = FrameGeometry::make({{320, 180}, square, orientation}, {});
        EXPECT_EQ(geometry.filterText(""), filter + std::string("setsar=1/1")) << name;
    }
}

TEST(FrameGeometry, filtersOnlyWhatIsNeeded) {
    const auto text = [](PixelSize size, FrameRequest request) {
        return FrameGeometry::make({size, square, {}}, request).filterText("");
    };
    EXPECT_EQ(text({320, 1}, {}), "scale=320:2:flags=bicubic,setsar=1/1");  // one line has no fields
    EXPECT_EQ(text({320, 180}, {PixelSize{180, 180}, OAVCropAspect, OAVAnchorBottomRight}),
              "crop=180:180:140:0:exact=1,setsar=1/1");
}

}  // namespace
}  // namespace corvex::tool::frameGeometryTests

// "-clut" against the ffmpeg program's own filters of look-up tables.

#include <cmath>

#include <gtest/gtest.h>

#include <tests/tools/Media.h>

namespace corvex::tool::test::transcodeLutEndToEndTests {
namespace {

using TranscodeLutEndToEnd = TranscodeTest;

TEST_F(TranscodeLutEndToEnd, everyFrameIsTheTablesAnswerInTheColoursOfTheSource) {
    // Far from symmetric, so that no two channels or axes can be mistaken for one another.
    std::string cube = "LUT_3D_SIZE 2\n", table = "LUT_1D_SIZE 256\n";
    const auto line = [](double red, double green, double blue) {
        return std::to_string(red) + " " + std::to_string(green) + " " + std::to_string(blue) + "\n";
    };
    for (int i = 0; i < 8; ++i) {
        const int red = i % 2, green = i / 2 % 2, blue = i / 4;
        cube += line(0.1 + 0.8 * blue, 1 - 0.9 * green, 0.7 * red + 0.2 * green);
    }
    for (int i = 0; i < 256; ++i) table += line(std::pow(i / 255.0, 2), 0.2 + 0.6 * i / 255, 1 - std::sqrt(i / 255.0));
    writeFile("Look 1.cube", cube);
    writeFile("cube.cube", cube);
    writeFile("table.cube", table);
    struct Row {
        std::string source, encoding, toRgb, words, look;
    };
    const std::string inCube = "lut3d=cube.cube:interp=trilinear", rgb = ":matrix=gbr:range=full";
    const Row rows[] = {
        // Untagged and small, so BT.601.
        {"sd.mkv", ",zscale=matrix=170m:range=limited -pix_fmt yuv444p10le -c:v ffv1",
         "zscale=matrixin=170m:rangein=limited" + rgb, "-vcodec prores4444 -clut 'Look 1.cube'", inCube},
        {"hd.mkv", ",zscale=matrix=709:range=limited -pix_fmt yuv422p10le -colorspace bt709 -color_range tv -c:v ffv1",
         "zscale=matrixin=709:rangein=limited" + rgb, "-vcodec prores422 -clut 'Look 1.cube'", inCube},
        {"full.avi", ",zscale=matrix=170m:range=full -pix_fmt yuvj420p -c:v mjpeg -q:v 1",
         "zscale=matrixin=170m:rangein=full" + rgb, "-vcodec h264 -clut 'Look 1.cube'", inCube},
        {"rgb.mov", " -pix_fmt rgb24 -c:v qtrle", "null", "-vcodec prores4444 -clut table.cube", "lut1d=table.cube"},
    };
    for (const auto& [source, encoding, toRgb, words, look] : rows) {
        // Colours that change slowly over the picture, so that neither a codec nor coarse chroma blurs them.
        ffmpeg(
            "-f lavfi -i nullsrc=size=320x180:rate=25:duration=0.2,format=gbrp16,geq=r='65535*X/W':g='65535*Y/H'"
            ":b='65535*(0.5+0.45*sin(N+(X+Y)/90))'" +
            encoding + " " + source);
        ffmpeg("-i " + source + " -vf " + toRgb + ",format=gbrp16," + look + " -pix_fmt gbrp16 -c:v ffv1 expected.mkv");
        const std::string made = transcode("made.mov", "-in " + source + " " + words);
        EXPECT_GE(psnr(made, "expected.mkv"), 38) << source;
        EXPECT_LE(psnr(made, source), 20) << source << ": the look is seen";
    }
}

}  // namespace
}  // namespace corvex::tool::test::transcodeLutEndToEndTests

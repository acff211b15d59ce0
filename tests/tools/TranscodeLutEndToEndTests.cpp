// "-clut" against pictures that are computed here: every frame of the source as R'G'B', looked up in plain loops.

#include <array>
#include <cmath>
#include <functional>

#include <gtest/gtest.h>

#include <tests/tools/Media.h>

namespace corvex::tool::test::transcodeLutEndToEndTests {
namespace {

using Color = std::array<double, 3>;
using Look = std::function<Color(const Color&)>;

/// Far from symmetric, so that no two channels or axes can be mistaken for one another; even, so that what a cube blends
/// between its corners is known.
Color crossed(const Color& in) { return {0.1 + 0.8 * in[2], 1 - 0.9 * in[1], 0.7 * in[0] + 0.2 * in[1]}; }
Color curved(const Color& in) { return {in[0] * in[0], 0.2 + 0.6 * in[1], 1 - std::sqrt(in[2])}; }

std::string line(const Color& color) {
    return std::to_string(color[0]) + " " + std::to_string(color[1]) + " " + std::to_string(color[2]) + "\n";
}
std::string cubeText() {
    std::string text = "LUT_3D_SIZE 2\n";
    for (int i = 0; i < 8; ++i) text += line(crossed({i % 2 * 1.0, i / 2 % 2 * 1.0, i / 4 * 1.0}));
    return text;
}
std::string tableText() {
    std::string text = "LUT_1D_SIZE 256\n";
    for (int i = 0; i < 256; ++i) text += line(curved({i / 255.0, i / 255.0, i / 255.0}));
    return text;
}

/// All frames as numbers: planes of green, blue, red.
std::vector<double> rgbFrames(const std::string& path, const std::string& from) {
    std::vector<double> numbers;
    for (const auto code :
         decoded<std::uint16_t>("-i " + path + " -vf " + from + ",format=gbrp16le -f rawvideo -pix_fmt gbrp16le")) {
        numbers.push_back(code / 65535.0);
    }
    return numbers;
}

constexpr std::size_t pixelCount = std::size_t{320} * 180, frameCount = 5;

/// The look of every pixel of every frame.
void lookUp(std::vector<double>& frames, const Look& look) {
    for (std::size_t frame = 0; frame < frameCount; ++frame) {
        double* const green = frames.data() + frame * 3 * pixelCount;
        double *const blue = green + pixelCount, *const red = blue + pixelCount;
        for (std::size_t i = 0; i < pixelCount; ++i) {
            const Color color = look({red[i], green[i], blue[i]});
            red[i] = color[0];
            green[i] = color[1];
            blue[i] = color[2];
        }
    }
}

double meanDifference(const std::vector<double>& a, const std::vector<double>& b) {
    double sum = 0;
    for (std::size_t i = 0; i < a.size(); ++i) sum += std::abs(a[i] - b[i]);
    return sum / static_cast<double>(a.size());
}

using TranscodeLutEndToEnd = TranscodeTest;

TEST_F(TranscodeLutEndToEnd, everyFrameIsTheTablesAnswerInTheColoursOfTheSource) {
    writeFile("Look 1.cube", cubeText());
    writeFile("table.cube", tableText());
    const auto toMatrix = [](const char* matrix, const char* range) {
        return "-vf zscale=matrixin=gbr:rangein=full:matrix=" + std::string(matrix) + ":range=" + range;
    };
    const auto fromMatrix = [](const char* matrix, const char* range) {
        return "zscale=matrixin=" + std::string(matrix) + ":rangein=" + range + ":matrix=gbr:range=full";
    };
    struct Row {
        const char* source;
        std::string encoding, fromSource, fromTarget;  ///< The latter two to R'G'B' of full range.
        const char* words;
        Look look;
    };
    const Row rows[] = {
        // Untagged and small, so BT.601.
        {"sd.mkv", toMatrix("170m", "limited") + " -pix_fmt yuv444p10le -c:v ffv1", fromMatrix("170m", "limited"),
         fromMatrix("170m", "limited"), "-vcodec prores4444 -clut 'Look 1.cube'", crossed},
        {"hd.mkv", toMatrix("709", "limited") + " -pix_fmt yuv422p10le -colorspace bt709 -color_range tv -c:v ffv1",
         fromMatrix("709", "limited"), fromMatrix("709", "limited"), "-vcodec prores422 -clut 'Look 1.cube'", crossed},
        {"full.avi", toMatrix("170m", "full") + " -pix_fmt yuvj420p -c:v mjpeg -q:v 1", fromMatrix("170m", "full"),
         fromMatrix("170m", "limited"), "-vcodec h264 -clut 'Look 1.cube'", crossed},
        {"rgb.mov", "-pix_fmt rgb24 -c:v qtrle", "null", fromMatrix("709", "limited"),
         "-vcodec prores4444 -clut table.cube", curved},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.source);
        // Five frames of colours that change slowly over the picture, so that neither a codec nor coarse chroma blurs them.
        ffmpeg(
            "-f lavfi -i nullsrc=size=320x180:rate=25:duration=0.2,format=gbrp16,geq=r='65535*X/W':g='65535*Y/H'"
            ":b='65535*(0.5+0.45*sin(N+(X+Y)/90))' " +
            row.encoding + " " + row.source);
        const std::string target = transcode("out.mov", std::string("-in ") + row.source + " " + row.words);
        std::vector<double> expected = rgbFrames(row.source, row.fromSource);
        const std::vector<double> actual = rgbFrames(target, row.fromTarget), plain = expected;
        ASSERT_EQ(expected.size(), 3 * pixelCount * frameCount);
        ASSERT_EQ(actual.size(), expected.size());
        lookUp(expected, row.look);
        EXPECT_LT(meanDifference(actual, expected), 0.008) << "two code values of 8 bits";
        EXPECT_GT(meanDifference(actual, plain), 0.1) << "the look is seen";
    }
}

}  // namespace
}  // namespace corvex::tool::test::transcodeLutEndToEndTests

// "-clut" against pictures that are computed here: every frame of the source as R'G'B', looked up in plain loops.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <functional>

#include <gtest/gtest.h>

#include <tests/tools/Media.h>

namespace corvex::tool::test::transcodeLutEndToEndTests {
namespace {

using Color = std::array<double, 3>;
using Look = std::function<Color(const Color&)>;

/// Far from symmetric, so that no two channels or axes can be mistaken for one another.
Color crossed(const Color& in) {
    const auto [r, g, b] = in;
    return {0.1 + 0.8 * std::pow(b, 0.8), 1 - 0.9 * g, 0.7 * r * r + 0.2 * g};
}
Color curved(const Color& in) { return {in[0] * in[0], 0.2 + 0.6 * in[1], 1 - std::sqrt(in[2])}; }

constexpr int cubePoints = 17, tablePoints = 256;

std::string line(const Color& color) {
    return std::to_string(color[0]) + " " + std::to_string(color[1]) + " " + std::to_string(color[2]) + "\n";
}
std::string cubeText() {
    std::string text = "LUT_3D_SIZE 17\n";
    const auto part = [](int i) { return static_cast<double>(i) / (cubePoints - 1); };
    for (int b = 0; b < cubePoints; ++b) {
        for (int g = 0; g < cubePoints; ++g) {
            for (int r = 0; r < cubePoints; ++r) text += line(crossed({part(r), part(g), part(b)}));
        }
    }
    return text;
}
std::string tableText() {
    std::string text = "LUT_1D_SIZE 256\n";
    for (int i = 0; i < tablePoints; ++i) {
        const double at = static_cast<double>(i) / (tablePoints - 1);
        text += line(curved({at, at, at}));
    }
    return text;
}

/// Straight blending between a look's values at the points of a cube.
Color blendedInCube(const Look& look, const Color& in) {
    std::array<int, 3> lower{};
    Color fraction{}, sum{};
    for (std::size_t i = 0; i < 3; ++i) {
        const double at = in[i] * (cubePoints - 1);
        lower[i] = std::min(static_cast<int>(at), cubePoints - 2);
        fraction[i] = at - lower[i];
    }
    for (unsigned corner = 0; corner < 8; ++corner) {
        Color point{};
        double weight = 1;
        for (unsigned i = 0; i < 3; ++i) {
            const int isUpper = static_cast<int>(corner >> i & 1U);
            point[i] = static_cast<double>(lower[i] + isUpper) / (cubePoints - 1);
            weight *= isUpper == 1 ? fraction[i] : 1 - fraction[i];
        }
        const Color value = look(point);
        for (std::size_t i = 0; i < 3; ++i) sum[i] += weight * value[i];
    }
    return sum;
}

/// All frames as numbers: planes of green, blue, red.
std::vector<double> rgbFrames(const std::string& path, const std::string& from) {
    const std::string bytes = runOrFail({"ffmpeg", "-v", "error", "-nostdin", "-i", path, "-vf",
                                         from + ",format=gbrp16le", "-f", "rawvideo", "-pix_fmt", "gbrp16le", "-"});
    std::vector<double> numbers(bytes.size() / 2);
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        std::uint16_t code = 0;
        std::memcpy(&code, bytes.data() + 2 * i, sizeof code);
        numbers[i] = code / 65535.0;
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

class TranscodeLutEndToEnd : public ::testing::Test {
protected:
    TranscodeLutEndToEnd() {
        writeFile(directory.path("Look 1.cube"), cubeText());
        writeFile(directory.path("table.cube"), tableText());
    }
    /// Five frames of colours that change slowly over the picture, so that neither a codec nor coarse chroma blurs them.
    std::string source(const std::string& name, const Words& encoding) {
        const std::string path = directory.path(name);
        Words words{"-f", "lavfi", "-i",
                    "nullsrc=size=320x180:rate=25:duration=0.2,format=gbrp16,geq=r='65535*X/W':g='65535*Y/H'"
                    ":b='65535*(0.5+0.45*sin(N+(X+Y)/90))'"};
        words.insert(words.end(), encoding.begin(), encoding.end());
        words.push_back(path);
        ffmpeg(words);
        return path;
    }
    TemporaryDirectory directory;
};

TEST_F(TranscodeLutEndToEnd, everyFrameIsTheTablesAnswerInTheColoursOfTheSource) {
    const Look inCube = [](const Color& color) { return blendedInCube(crossed, color); };
    const std::string to601 = "zscale=matrixin=gbr:rangein=full:matrix=170m:range=limited";
    const std::string to709 = "zscale=matrixin=gbr:rangein=full:matrix=709:range=";
    const auto fromMatrix = [](const std::string& matrix, const char* range) {
        return "zscale=matrixin=" + matrix + ":rangein=" + range + ":matrix=gbr:range=full";
    };
    struct Row {
        const char* name;
        std::string source;
        std::string fromSource, fromTarget;  ///< To R'G'B' of full range.
        const char* table;
        Look look;
        Words more;
    };
    const Row rows[] = {
        {"untagged and small, so BT.601",
         source("sd.mkv", {"-vf", to601, "-pix_fmt", "yuv444p10le", "-c:v", "ffv1"}),
         fromMatrix("170m", "limited"),
         fromMatrix("170m", "limited"),
         "Look 1.cube",
         inCube,
         {"-vcodec", "prores4444"}},
        {"tagged BT.709",
         source("hd.mkv", {"-vf", to709 + "limited", "-pix_fmt", "yuv422p10le", "-colorspace", "bt709", "-color_range",
                           "tv", "-c:v", "ffv1"}),
         fromMatrix("709", "limited"),
         fromMatrix("709", "limited"),
         "Look 1.cube",
         inCube,
         {"-vcodec", "prores422"}},
        {"full range",
         source("full.avi", {"-vf", to601.substr(0, to601.rfind('=') + 1) + "full", "-pix_fmt", "yuvj420p", "-c:v",
                             "mjpeg", "-q:v", "1"}),
         fromMatrix("170m", "full"),
         fromMatrix("170m", "limited"),
         "Look 1.cube",
         inCube,
         {"-vcodec", "h264"}},
        {"R'G'B'",
         source("rgb.mov", {"-pix_fmt", "rgb24", "-c:v", "qtrle"}),
         "null",
         fromMatrix("709", "limited"),
         "table.cube",
         curved,
         {"-vcodec", "prores4444"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string target = directory.path("out.mov");
        Words words{"transcode", "-in", row.source, "-out", target, "-overwrite", "-clut", directory.path(row.table)};
        words.insert(words.end(), row.more.begin(), row.more.end());
        const CommandResult result = corvex(words);
        ASSERT_EQ(result.exitStatus, 0) << result.error;
        std::vector<double> expected = rgbFrames(row.source, row.fromSource);
        const std::vector<double> actual = rgbFrames(target, row.fromTarget);
        ASSERT_EQ(expected.size(), 3 * pixelCount * frameCount);
        ASSERT_EQ(actual.size(), expected.size());
        const std::vector<double> plain = expected;
        lookUp(expected, row.look);
        EXPECT_LT(meanDifference(actual, expected), 0.008) << "two code values of 8 bits";
        EXPECT_GT(meanDifference(actual, plain), 0.1) << "the look is seen";
    }
}

}  // namespace
}  // namespace corvex::tool::test::transcodeLutEndToEndTests

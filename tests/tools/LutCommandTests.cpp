// `corvex lut`. The pictures that come out are compared with arithmetic done here, on files that the ffmpeg program
// writes and reads.

#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>

#include <gmock/gmock.h>

#include <Corvex/platform/InputFile.h>
#include <tests/Places.h>
#include <tests/tools/Media.h>
#include <tools/corvex/image/StillImage.h>

namespace corvex::tool::test::lutCommandTests {
namespace {

using ::testing::DoubleNear;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Pointwise;
using Value = nlohmann::json;

const std::string directory = std::string(corvex::test::dataDirectory) + "/luts/";

TEST(LutCommand, infoTellsWhatFieldFilesAre) {
    std::string line = "lut info --json";
    const Value files = Value::parse(std::ifstream(directory + "expected.json"));
    for (const auto& [key, file] : files.items()) line += " " + directory + key.substr(key.find('/') + 1);
    const CommandResult all = corvex(line);
    EXPECT_EQ(all.exitStatus, 1) << "some of them are no LUTs";
    std::size_t i = 0;
    for (const Value infos = Value::parse(all.output); const auto& [key, file] : files.items()) {
        const Value& info = infos.at(i++);
        Value expected;  // only members that apply
        for (const auto& [name, value] : file["result"].items()) {
            if (value.is_null() || name.starts_with("explicit")) continue;
            expected[name == "kind" ? "converter" : name] = value;
        }
        EXPECT_EQ(info["result"], expected) << key;
        EXPECT_EQ(info["log"].size(), file["log"].size()) << key;
    }
    const CommandResult text =
        corvex("lut info " + fileUrlText(directory + "baked_flame17.3dl") + " " + directory + "ocio_houdini.lut");
    EXPECT_THAT(text.output, HasSubstr("converter     Integer3DSampleConverter\n"));
    EXPECT_THAT(text.output, HasSubstr("no LUT        "));
}

/// Tables of 256 entries: n of 255 as numbers, n as codes, and from -0.5 on.
class LutSample : public RoomTest {
protected:
    LutSample() {
        writeTable("numbers.cube", [](int i) { return std::to_string(i / 255.0); });
        writeTable("codes.cube", [](int i) { return std::to_string(i); });
        writeTable("negative.cube", [](int i) { return std::to_string(i / 170.0 - 0.5); });
        writeFile("black.cube", "LUT_3D_SIZE 1\n0 0 0\n");
        writeFile("deep.cube", "LUT_3D_SIZE 2\n-1e300 0 0\n0 0 1e-300\n0 0 0\n0 0 0\n0 0 0\n0 0 0\n0 0 0\n0 0 0\n");
    }
    static void writeTable(const std::string& path, std::string (*entry)(int)) {
        std::string text = "LUT_1D_SIZE 256\n";
        for (int i = 0; i < 256; ++i) text += entry(i) + " " + entry(i) + " " + entry(i) + "\n";
        writeFile(path, text);
    }
};

TEST_F(LutSample, answersAsTheConvertersDo) {
    const std::pair<std::string, std::array<double, 3>> rows[] = {
        {"numbers.cube 0 128 255 --in-depth 8", {0, 128, 255}},
        {"numbers.cube 255 255 255 --in-depth 8 --out-depth 10", {1023, 1023, 1023}},
        {"codes.cube 1023 4 3 --in-depth 10 --out-depth 12", {4080, 16, 0}},
        {"negative.cube 255 85 170 --in-depth 8", {254, 0, 127}},
    };
    for (const auto& [words, expected] : rows) {  // the decimals of the file have six digits: it may cost one code
        const std::vector<double> output = jsonAnswerTo("lut sample " + words)["output"];
        EXPECT_THAT(output, Pointwise(DoubleNear(1), expected)) << words;
    }
    // As in the expectations of the field file.
    EXPECT_EQ(jsonAnswerTo("lut sample " + directory +
                           "baked_flame17.3dl 761.8540739653632 147.21642937548458 2555.949091719836")["output"],
              Value({66.22141893068672, 140.18111709430804, 2366.6329803049566}));
}

TEST_F(LutSample, refusesInOneLineWithoutEverBeingStopped) {
    expectRefusals(
        {
            {"sample black.cube 0 0", 2, "RGB"},
            {"sample black.cube 0 0 0", 1, "largest value, which is not above 0"},
            {"sample deep.cube -1e300 0 0", 1, "too far below"},
            {"sample deep.cube nan 0 0", 2, "'nan' is no decimal number"},
            {"sample numbers.cube 0 0 0", 2, "--in-depth is needed"},
            {"sample numbers.cube 256 0 0 --in-depth 8", 2, "the largest is 255"},
            {"sample numbers.cube 0.5 0 0 --in-depth 8", 2, "whole number"},
            {"sample numbers.cube 0 0 0 --out-depth 8", 2, "--in-depth"},
            {"sample negative.cube 0 0 0 --in-depth 8", 1, "is no code value"},
        },
        "lut ");
}

constexpr std::size_t pixelCount = std::size_t{24} * 10;

/// Planes of red, green, blue and perhaps alpha, as the ffmpeg program reads a file.
using Planes = std::vector<std::vector<int>>;

/// The largest code value of planes.
int fullOf(const std::string& planarFormat) {
    for (const int depth : {10, 12, 16}) {
        if (planarFormat.find(std::to_string(depth)) != planarFormat.npos) return (1 << depth) - 1;
    }
    return 255;
}

Planes planesOf(const std::string& path, const std::string& planarFormat = "gbrp") {
    const bool withAlpha = planarFormat.starts_with("gbra");
    const std::size_t size = fullOf(planarFormat) > 255 ? 2 : 1;  // bytes of a code
    // By way of packed pixels, to which the program converts palettes and grey without loss.
    const char* const packed = size > 1 ? "null" : withAlpha ? "format=rgba" : "format=rgb24";
    const auto bytes = decoded<std::uint8_t>("-i " + path + " -vf " + packed + " -f rawvideo -pix_fmt " + planarFormat);
    Planes planes(withAlpha ? 4 : 3);
    EXPECT_EQ(bytes.size(), planes.size() * pixelCount * size) << path;
    constexpr std::size_t channels[] = {1, 2, 0, 3};  // green, blue, red, alpha
    for (std::size_t i = 0; i < bytes.size(); i += size) {
        planes.at(channels[i / size / pixelCount]).push_back(bytes[i] + (size > 1 ? bytes[i + 1] << 8 : 0));
    }
    return planes;
}

std::string eightLines(const std::string& line, int count = 8) {
    std::string text;
    for (int i = 0; i < count; ++i) text += line + "\n";
    return text;
}

class LutPictureEndToEnd : public RoomTest {
protected:
    LutPictureEndToEnd() {
        // An ordinary cube, red fastest: red and blue are exchanged, green is turned round.
        writeFile("exchange.cube", "LUT_3D_SIZE 2\n0 1 0\n0 1 1\n0 0 0\n0 0 1\n1 1 0\n1 1 1\n1 0 0\n1 0 1\n");
        writeFile("backwards.cube", "LUT_3D_SIZE 2\nDOMAIN_MIN 1 1 1\nDOMAIN_MAX 0 0 0\n" + eightLines("0 0 0"));
        writeFile("far.cube", "LUT_3D_SIZE 2\n" + eightLines("-0.5 0.5 1.5"));
        writeFile("table.cube", "LUT_1D_SIZE 256\n" + eightLines("0.5 0.5 0.5", 256));
    }
    /// A picture of all sorts of colours, made with the ffmpeg program.
    static void picture(const std::string& name, const std::string& planarFormat, const std::string& format) {
        const auto part = [full = fullOf(planarFormat)](const char* expression) {
            return "'mod((" + std::string(expression) + ")*" + std::to_string(full) + "/997," +
                   std::to_string(full + 1) + ")'";
        };
        ffmpeg("-f lavfi -i nullsrc=size=24x10,format=" + planarFormat + ",geq=r=" + part("X*43+Y*7") +
               ":g=" + part("X*11+Y*97") + ":b=" + part("X*Y*13+5") + ":a=" + part("X*41") + " -frames:v 1 -pix_fmt " +
               format + " " + name);
    }
};

TEST_F(LutPictureEndToEnd, depthAndAlphaAreKeptInEveryKindOfFile) {
    using Format = const char*;  // of a file's pixels, and of those in which they are read without loss
    const std::tuple<std::string, Format, Format, std::string, Format, Format> rows[] = {
        {"in.png", "rgb24", "gbrp", "out.png", "rgb24", "gbrp"},
        {"in.png", "rgba", "gbrap", "out.tif", "rgba", "gbrap"},
        {"in.tiff", "rgb48le", "gbrp16le", "out.dpx", "rgb48be", "gbrp16le"},
        {"in.png", "rgba64be", "gbrap16le", "out.png", "rgba64be", "gbrap16le"},
        {"in.dpx", "gbrp12le", "gbrp12le", "out.DPX", "gbrp12le", "gbrp12le"},
        {"in.dpx", "gbrp10be", "gbrp10le", "out.png", "rgb48be", "gbrp16le"},
        {"in.png", "gray", "gbrp", "out.tif", "rgb24", "gbrp"},
        {"in.png", "ya8", "gbrap", "out.png", "rgba", "gbrap"},
        {"in.png", "pal8", "gbrp", "out.png", "rgb24", "gbrp"},
    };
    for (const auto& [in, inFormat, inPlanes, out, outFormat, outPlanes] : rows) {
        SCOPED_TRACE(inFormat);
        const int inFull = fullOf(inPlanes), outFull = fullOf(outPlanes);
        picture(in, inFull == 255 ? "gbrap" : inPlanes, inFormat);
        answerTo("lut apply exchange.cube " + in + " " + out + " --overwrite");
        EXPECT_EQ(text(stream(probe(out), "video"), "pix_fmt"), outFormat);
        const Planes from = planesOf(in, inPlanes);
        const auto scaled = [&](int code) { return static_cast<int>(std::lround(1.0 * code * outFull / inFull)); };
        Planes expected = from;
        for (std::size_t i = 0; i < pixelCount; ++i) {
            expected[0][i] = scaled(from[2][i]);
            expected[1][i] = scaled(inFull - from[1][i]);
            expected[2][i] = scaled(from[0][i]);
        }
        EXPECT_EQ(planesOf(out, outPlanes), expected);
    }
}

TEST_F(LutPictureEndToEnd, statedApplicationAndTetrahedraAreChosenByTheirFlags) {
    picture("in.png", "gbrap", "rgb24");
    const Planes from = planesOf("in.png");
    const auto apply = [](const std::string& words) {
        answerTo("lut apply --overwrite " + words);
        return planesOf("out.png");
    };
    // Only white turns red on: blended in cells that is the product, in tetrahedra the least of the three.
    writeFile("white.cube", "LUT_3D_SIZE 2\n" + eightLines("0 0 0", 7) + "1 0 0\n");
    const Planes cells = apply("white.cube in.png out.png");
    const Planes tetrahedra = apply("white.cube in.png out.png --tetrahedral");
    for (std::size_t i = 0; i < pixelCount; ++i) {
        const int r = from[0][i], g = from[1][i], b = from[2][i];
        ASSERT_EQ(cells[0][i], std::lround(r / 255.0 * g / 255.0 * b)) << i;
        ASSERT_EQ(tetrahedra[0][i], std::min({r, g, b})) << i;
    }
    const auto pixel = [](const Planes& planes) { return std::vector{planes[0][90], planes[1][90], planes[2][90]}; };
    std::string words = "lut sample exchange.cube --in-depth 8";
    for (const int code : pixel(from)) words += " " + std::to_string(code);
    EXPECT_EQ(Value(pixel(apply("exchange.cube in.png out.png --as-stated"))), jsonAnswerTo(words)["output"]);
}

TEST_F(LutPictureEndToEnd, failuresSayWhyAndLeaveNothingBehind) {
    picture("good.png", "gbrap", "rgb24");
    picture("good.tif", "gbrap", "rgb24");
    picture("luma.tif", "gbrap", "yuv420p");
    std::string flipped = readFile("good.png");
    flipped[flipped.size() / 2] ^= 1;
    writeFile("flipped.png", flipped);
    const std::string whole = readFile("good.tif");
    writeFile("short.tif", whole.substr(0, whole.size() / 2));
    writeFile("taken.png", "mine");
    const Words before = room.entries();
    expectRefusals(
        {
            {"apply exchange.cube good.png out.jpg", 2, "ends in .png, .tif, .tiff or .dpx"},
            {"apply exchange.cube good.png taken.png", 1, "the file exists; --overwrite would replace it"},
            {"apply exchange.cube absent.png out.png", 1, "cannot be opened"},
            {"apply exchange.cube exchange.cube out.png", 1, "is no picture of PNG, TIFF or DPX"},
            {"apply exchange.cube flipped.png out.png", 1, "flipped.png' is damaged"},
            {"apply exchange.cube short.tif out.png", 1, "short.tif' is damaged"},
            {"apply exchange.cube luma.tif out.png", 1, "pixels of the sort 'yuv420p'"},
            {"apply good.png good.png out.png", 1, "good.png' is no look-up table: The name has no extension"},
            {"apply backwards.cube good.png out.png", 1, "must end above its beginning"},
            {"apply table.cube good.png out.png --tetrahedral", 1, "tetrahedral blending goes with"},
            {"check exchange.cube --plot taken.png", 1, "--overwrite would replace it"},
            {"check exchange.cube --plot plot.tif", 2, "ends in .png"},
            {"check exchange.cube far.cube --plot two.png", 2, "give one FILE"},
        },
        "lut ");
    EXPECT_EQ(corvex("lut check good.png --plot none.png").exitStatus, 1);
    EXPECT_EQ(room.entries(), before);
    EXPECT_EQ(readFile("taken.png"), "mine");

    const CommandResult clipped = corvex("lut apply far.cube good.png out.png");
    EXPECT_EQ(clipped.exitStatus, 0);
    EXPECT_THAT(clipped.error, HasSubstr("were clipped"));
    EXPECT_EQ(planesOf("out.png")[2], std::vector<int>(pixelCount, 255));
}

TEST_F(LutPictureEndToEnd, checkTellsWhatAColouristShouldKnow) {
    std::string identity = "LUT_3D_SIZE 3\n";  // red fastest
    for (int i = 0; i < 27; ++i) {
        for (const int at : {i % 3, i / 3 % 3, i / 9}) identity += std::to_string(at / 2.0) + " ";
        identity.back() = '\n';
    }
    writeFile("plain.cube", identity);
    writeFile("turned.3dl", identity);  // the same entries where blue is fastest: dialect and data disagree
    writeFile("odd.cube", "3D\n" + eightLines("0 0 0", 7) + "0 0 1.5\n1 1 -0.25\n");
    writeFile("short.cube", "3D\n" + eightLines("0 0 1", 7));
    const Value all = jsonAnswerTo("lut check plain.cube turned.3dl exchange.cube odd.cube short.cube backwards.cube");
    EXPECT_EQ(all[0]["result"], Value::parse(R"({"dimensions": "cube", "points": 3, "lowValue": 0, "highValue": 1,
        "fullScale": 1, "clips": false, "missingEntries": 0, "surplusEntries": 0, "axisOrder": "redFastest",
        "apparentAxisOrder": "redFastest", "greyAxis": {"isMonotone": true, "falls": {}},
        "domain": {"minimum": [0, 0, 0], "maximum": [1, 1, 1]},
        "corners": [[0,0,0], [1,0,0], [0,1,0], [1,1,0], [0,0,1], [1,0,1], [0,1,1], [1,1,1]]})"));
    const Value &turned = all[1]["result"], &odd = all[3]["result"];
    EXPECT_EQ(turned["axisOrder"], "blueFastest");
    EXPECT_EQ(turned["apparentAxisOrder"], "redFastest");
    EXPECT_EQ(turned["corners"][1], Value::parse("[0, 0, 1]")) << "corners follow the dialect";
    EXPECT_EQ(all[2]["result"]["greyAxis"],
              Value::parse(R"({"isMonotone": false, "falls": {"green": {"count": 1, "firstPoint": 0}}})"));
    EXPECT_EQ(odd["surplusEntries"], 1);
    EXPECT_EQ(odd["clips"], true);
    EXPECT_EQ(odd["apparentAxisOrder"], nullptr) << "blue rises along all axes alike";
    EXPECT_EQ(all[4]["result"]["missingEntries"], 1);
    EXPECT_THAT(all[5]["cannotBeApplied"].dump(), HasSubstr("must end above"));
}

TEST_F(LutPictureEndToEnd, checkSaysWhyAFileIsNoTableAndWhichLinesLookLikeEntries) {
    writeFile("padded.cube", "3D\n" + eightLines("0  0 0") + "1 2 3 4\n1 nan 2\n# end\n");
    const CommandResult checked = corvex("lut check --json padded.cube");
    EXPECT_EQ(checked.exitStatus, 1);
    const Value padded = Value::parse(checked.output)[0];
    EXPECT_EQ(padded["result"], nullptr);
    EXPECT_EQ(padded["problem"]["name"], "noEntries");
    EXPECT_EQ(padded["lines"]["skipped"], Value::parse(R"({
        "paddedColumns": {"count": 8, "firstLine": 2, "looksLikeAnEntry": true},
        "columnCount": {"count": 1, "firstLine": 10, "looksLikeAnEntry": true},
        "notANumber": {"count": 1, "firstLine": 11, "looksLikeAnEntry": true},
        "comment": {"count": 1, "firstLine": 12, "looksLikeAnEntry": false}})"));
    const CommandResult text = corvex("lut check padded.cube exchange.cube");
    EXPECT_EQ(text.exitStatus, 1);
    for (const char* part :
         {"no table      No line of the file is three numbers", "look-alikes   8, the first in line 2",
          "green falls after 1 of 2 points", "look like blue fastest: red and blue may be exchanged"}) {
        EXPECT_THAT(text.output, HasSubstr(part));
    }
}

TEST_F(LutPictureEndToEnd, plotShowsGreysAndCorners) {
    const LibraryMessages messages;
    answerTo("lut check exchange.cube --plot plot.png");
    StillImage plot = StillImage::read("plot.png");
    const PixelBuffer pixels = plot.pixels();
    const auto at = [&](std::size_t x, std::size_t y) {
        std::array<int, 3> color{};
        for (std::size_t i = 0; i < 3; ++i) color[i] = std::to_integer<int>(*pixels.sample(i, y, x));
        return color;
    };
    // Red and blue rise from the lower left to the upper right, green falls; each leaves the ground as it is elsewhere.
    EXPECT_THAT(at(16, 16 + 511), ElementsAre(255, 64, 255));
    EXPECT_THAT(at(16 + 511, 16), ElementsAre(255, 64, 255));
    EXPECT_THAT(at(16 + 300, 16 + 211), ElementsAre(255, 24, 255));
    EXPECT_EQ(at(16, 16)[1], 255);
    EXPECT_EQ(at(16 + 511, 16 + 511)[1], 255);
    // Corner 1 is red, and becomes blue and green.
    EXPECT_THAT(at(544 + 10, 16 + 64 + 10), ElementsAre(255, 0, 0));
    EXPECT_THAT(at(544 + 48 + 10, 16 + 64 + 10), ElementsAre(0, 255, 255));
}

}  // namespace
}  // namespace corvex::tool::test::lutCommandTests

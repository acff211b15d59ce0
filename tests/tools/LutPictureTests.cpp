// `corvex lut apply` and `corvex lut check`: what comes out is compared with arithmetic done here, on files that the
// ffmpeg program writes and reads.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <Corvex/lut/ParsedLutFactory.h>
#include <Corvex/lut/ParsedLutFile.h>
#include <tests/tools/Command.h>
#include <tests/tools/Media.h>
#include <tools/corvex/image/StillImage.h>

namespace corvex::tool::test::lutPictureTests {
namespace {

using ::testing::HasSubstr;
using Value = nlohmann::json;

/// Planes of red, green, blue and perhaps alpha, as the ffmpeg program reads a file.
using Planes = std::vector<std::vector<int>>;

constexpr int width = 24, height = 10;

Planes decoded(const std::string& path, const std::string& planarFormat) {
    // By way of packed pixels, to which the program converts palettes and grey without loss.
    const char* const packed = planarFormat == "gbrp"    ? "format=rgb24"
                               : planarFormat == "gbrap" ? "format=rgba"
                                                         : "null";
    const std::string bytes = runOrFail({"ffmpeg", "-v", "error", "-nostdin", "-i", path, "-vf", packed, "-f",
                                         "rawvideo", "-pix_fmt", planarFormat, "-"});
    const bool isDeep = planarFormat.find('1') != std::string::npos;
    const std::size_t pixelCount = std::size_t{width} * height, size = isDeep ? 2 : 1;
    const std::size_t planeCount = planarFormat.starts_with("gbra") ? 4 : 3;
    Planes planes(planeCount, std::vector<int>(pixelCount));
    EXPECT_EQ(bytes.size(), planeCount * pixelCount * size) << path;
    if (bytes.size() != planeCount * pixelCount * size) return planes;
    constexpr std::size_t channels[] = {1, 2, 0, 3};  // green, blue, red, alpha
    for (std::size_t plane = 0; plane < planeCount; ++plane) {
        for (std::size_t i = 0; i < pixelCount; ++i) {
            const char* const at = bytes.data() + (plane * pixelCount + i) * size;
            std::uint16_t code = static_cast<std::uint8_t>(*at);
            if (isDeep) std::memcpy(&code, at, sizeof code);
            planes[channels[plane]][i] = code;
        }
    }
    return planes;
}

class LutPictures : public ::testing::Test {
protected:
    LutPictures() {
        writeFile(path("exchange.cube"), exchange());
        writeFile(path("backwards.cube"), "LUT_3D_SIZE 2\nDOMAIN_MIN 1 1 1\nDOMAIN_MAX 0 0 0\n" + eightLines("0 0 0"));
        writeFile(path("far.cube"), "LUT_3D_SIZE 2\n" + eightLines("-0.5 0.5 1.5"));
        std::string table = "LUT_1D_SIZE 256\n";
        for (int i = 0; i < 256; ++i) table += "0.5 0.5 0.5\n";
        writeFile(path("table.cube"), table);
    }
    /// An ordinary cube, red fastest: red and blue are exchanged, green is turned round.
    static std::string exchange() {
        std::string text = "LUT_3D_SIZE 2\n";
        for (int i = 0; i < 8; ++i) {
            text += std::to_string(i >> 2 & 1) + " " + std::to_string(1 - (i >> 1 & 1)) + " " + std::to_string(i & 1) +
                    "\n";
        }
        return text;
    }
    static std::string eightLines(const std::string& line) {
        std::string text;
        for (int i = 0; i < 8; ++i) text += line + "\n";
        return text;
    }
    [[nodiscard]] std::string path(const std::string& name) const { return directory_.path(name); }
    /// Makes a picture of all sorts of colours with the ffmpeg program.
    std::string picture(const std::string& name, const std::string& planarFormat, int full, const std::string& format) {
        const auto part = [full](const char* expression) {
            return "'mod((" + std::string(expression) + ")*" + std::to_string(full) + "/997," +
                   std::to_string(full + 1) + ")'";
        };
        ffmpeg({"-f", "lavfi", "-i",
                "nullsrc=size=24x10,format=" + planarFormat + ",geq=r=" + part("X*43+Y*7") + ":g=" + part("X*11+Y*97") +
                    ":b=" + part("X*Y*13+5") + ":a=" + part("X*41"),
                "-frames:v", "1", "-pix_fmt", format, path(name)});
        return path(name);
    }
    CommandResult apply(const std::string& table, const std::string& in, const std::string& out, Words more = {}) {
        more.insert(more.begin(), {"lut", "apply", path(table), in, path(out)});
        return corvex(more);
    }
    [[nodiscard]] Words entries() const { return directory_.entries(); }

private:
    TemporaryDirectory directory_;
};

struct DepthRow {
    const char* name;
    const char* source;        ///< The file, by its extension.
    const char* sourceFormat;  ///< Its pixels.
    const char* sourcePlanes;  ///< In which they are read without loss, of the depth below.
    int sourceFull;
    const char* target;
    const char* targetFormat;
    const char* targetPlanes;
    int targetFull;
};

class LutPictureEndToEnd : public LutPictures {};

TEST_F(LutPictureEndToEnd, depthAndAlphaAreKeptInEveryKindOfFile) {
    const DepthRow rows[] = {
        {"8 bits", "png", "rgb24", "gbrp", 255, "png", "rgb24", "gbrp", 255},
        {"alpha", "png", "rgba", "gbrap", 255, "tif", "rgba", "gbrap", 255},
        {"16 bits", "tiff", "rgb48le", "gbrp16le", 65535, "dpx", "rgb48be", "gbrp16le", 65535},
        {"16 bits, alpha", "png", "rgba64be", "gbrap16le", 65535, "png", "rgba64be", "gbrap16le", 65535},
        {"10 bits", "dpx", "gbrp10le", "gbrp10le", 1023, "dpx", "gbrp10le", "gbrp10le", 1023},
        {"12 bits", "dpx", "gbrp12le", "gbrp12le", 4095, "DPX", "gbrp12le", "gbrp12le", 4095},
        {"10 in 16 bits", "dpx", "gbrp10be", "gbrp10le", 1023, "png", "rgb48be", "gbrp16le", 65535},
        {"grey", "png", "gray", "gbrp", 255, "tif", "rgb24", "gbrp", 255},
        {"grey, alpha", "png", "ya8", "gbrap", 255, "png", "rgba", "gbrap", 255},
        {"palette", "png", "pal8", "gbrp", 255, "png", "rgb24", "gbrp", 255},
    };
    for (const DepthRow& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string made = row.sourceFull == 255 ? "gbrap" : row.sourcePlanes;
        const std::string in = picture(std::string("in.") + row.source, made, row.sourceFull, row.sourceFormat);
        const std::string out = std::string("out.") + row.target;
        const CommandResult result = apply("exchange.cube", in, out, {"--overwrite"});
        ASSERT_EQ(result.exitStatus, 0) << result.error;
        EXPECT_EQ(text(stream(probe(path(out)), "video"), "pix_fmt"), row.targetFormat);
        const Planes from = decoded(in, row.sourcePlanes), to = decoded(path(out), row.targetPlanes);
        const auto scaled = [&](int code) {
            return static_cast<int>(std::lround(static_cast<double>(code) * row.targetFull / row.sourceFull));
        };
        Planes expected = from;
        for (std::size_t i = 0; i < from[0].size(); ++i) {
            expected[0][i] = scaled(from[2][i]);
            expected[1][i] = scaled(row.sourceFull - from[1][i]);
            expected[2][i] = scaled(from[0][i]);
        }
        EXPECT_EQ(to, expected);
    }
}

/// One pixel at a time, through the table's converter.
TEST_F(LutPictureEndToEnd, statedApplicationAndTetrahedraAreChosenByTheirFlags) {
    const std::string in = picture("in.png", "gbrap", 255, "rgb24");
    ASSERT_EQ(apply("exchange.cube", in, "stated.png", {"--as-stated"}).exitStatus, 0);
    const Planes from = decoded(in, "gbrp"), stated = decoded(path("stated.png"), "gbrp");
    const auto table = ParsedLutFactory::read(path("exchange.cube")).file;
    ASSERT_TRUE(table);
    for (std::size_t i = 0; i < from[0].size(); ++i) {
        const auto code = [i](const Planes& planes, std::size_t channel) {
            return static_cast<std::uint64_t>(planes[channel][i]);
        };
        const auto answer =
            table->converter().sample({code(from, 0), code(from, 1), code(from, 2)}, 8, 8, AnswerDepth::input);
        ASSERT_EQ(answer, (RGB<std::uint64_t>{code(stated, 0), code(stated, 1), code(stated, 2)})) << i;
    }
    // Only white turns red on: blended in cells that is the product, in tetrahedra the least of the three.
    writeFile(path("white.cube"), "LUT_3D_SIZE 2\n" + eightLines("0 0 0").substr(6) + "1 0 0\n");
    ASSERT_EQ(apply("white.cube", in, "cells.png").exitStatus, 0);
    ASSERT_EQ(apply("white.cube", in, "tetrahedra.png", {"--tetrahedral"}).exitStatus, 0);
    const Planes cells = decoded(path("cells.png"), "gbrp"), tetrahedra = decoded(path("tetrahedra.png"), "gbrp");
    for (std::size_t i = 0; i < from[0].size(); ++i) {
        const int r = from[0][i], g = from[1][i], b = from[2][i];
        ASSERT_EQ(cells[0][i], std::lround(r / 255.0 * g / 255.0 * b)) << i;
        ASSERT_EQ(tetrahedra[0][i], std::min({r, g, b})) << i;
    }
}

TEST_F(LutPictureEndToEnd, failuresSayWhyAndLeaveNothingBehind) {
    const std::string good = picture("good.png", "gbrap", 255, "rgb24");
    const std::string luma = picture("luma.tif", "gbrap", 255, "yuv420p");
    const std::string bytes = readFile(good);
    writeFile(path("short.png"), std::string_view(bytes).substr(0, bytes.size() / 2));
    std::string flipped = bytes;
    flipped[bytes.size() / 2] ^= 1;
    writeFile(path("flipped.png"), flipped);
    const std::string tiff = readFile(picture("good.tif", "gbrap", 255, "rgb24"));
    writeFile(path("short.tif"), std::string_view(tiff).substr(0, tiff.size() / 2));
    writeFile(path("empty.png"), "");
    writeFile(path("taken.png"), "mine");
    struct Row {
        const char* table;
        std::string in;
        const char* out;
        Words more;
        int status;
        const char* problem;
    };
    const Row rows[] = {
        {"exchange.cube", good, "out.jpg", {}, 2, "ends in .png, .tif, .tiff or .dpx"},
        {"exchange.cube", good, "out.png", {"--as-stated", "--tetrahedral"}, 2, "--tetrahedral"},
        {"exchange.cube", good, "taken.png", {}, 1, "the file exists; --overwrite would replace it"},
        {"exchange.cube", good, "missing/out.png", {}, 1, "No such file or directory"},
        {"exchange.cube", path("absent.png"), "out.png", {}, 1, "cannot be opened"},
        {"exchange.cube", path(""), "out.png", {}, 1, "is no regular file"},
        {"exchange.cube", path("exchange.cube"), "out.png", {}, 1, "is no picture of PNG, TIFF or DPX"},
        {"exchange.cube", path("empty.png"), "out.png", {}, 1, "is no picture of PNG, TIFF or DPX"},
        {"exchange.cube", path("short.png"), "out.png", {}, 1, "short.png' is damaged"},
        {"exchange.cube", path("flipped.png"), "out.png", {}, 1, "flipped.png' is damaged"},
        {"exchange.cube", path("short.tif"), "out.png", {}, 1, "short.tif' is damaged"},
        {"exchange.cube", luma, "out.png", {}, 1, "pixels of the sort 'yuv420p'"},
        {"good.png", good, "out.png", {}, 1, "good.png' is no look-up table: The name has no extension"},
        {"backwards.cube", good, "out.png", {}, 1, "must end above its beginning"},
        {"table.cube", good, "out.png", {"--tetrahedral"}, 1, "tetrahedral blending goes with"},
    };
    const Words before = entries();
    for (const Row& row : rows) {
        const CommandResult result = apply(row.table, row.in, row.out, row.more);
        EXPECT_EQ(result.exitStatus, row.status) << row.problem << result.error;
        EXPECT_THAT(result.error, HasSubstr(row.problem));
        EXPECT_EQ(lineCount(result.error), 1U) << result.error;
    }
    EXPECT_EQ(entries(), before);
    EXPECT_EQ(readFile(path("taken.png")), "mine");

    const CommandResult clipped = apply("far.cube", good, "out.png");
    EXPECT_EQ(clipped.exitStatus, 0);
    EXPECT_THAT(clipped.error, HasSubstr("were clipped"));
    EXPECT_EQ(decoded(path("out.png"), "gbrp")[2], std::vector<int>(std::size_t{width} * height, 255));
}

class LutCheck : public LutPictures {
protected:
    Value check(const std::string& name, const std::string& bytes, int status) {
        writeFile(path(name), bytes);
        const CommandResult result = corvex({"lut", "check", "--json", path(name)});
        EXPECT_EQ(result.exitStatus, status) << name << result.error;
        const Value all = Value::parse(result.output, nullptr, false);
        return all.is_array() && all.size() == 1 ? all[0] : Value();
    }
    /// The identity with `n` points, red fastest.
    static std::string identity(int n) {
        std::string text = "LUT_3D_SIZE " + std::to_string(n) + "\n";
        for (int i = 0; i < n * n * n; ++i) {
            for (const int at : {i % n, i / n % n, i / n / n}) {
                text += std::to_string(static_cast<double>(at) / (n - 1)) + " ";
            }
            text.back() = '\n';
        }
        return text;
    }
};

TEST_F(LutCheck, tellsWhatAColouristShouldKnow) {
    const Value plain = check("plain.cube", identity(3), 0)["result"];
    const Value expected = Value::parse(R"({"dimensions": "cube", "points": 3, "lowValue": 0, "highValue": 1,
        "fullScale": 1, "clips": false, "missingEntries": 0, "surplusEntries": 0, "axisOrder": "redFastest",
        "apparentAxisOrder": "redFastest", "greyAxis": {"isMonotone": true, "falls": {}},
        "domain": {"minimum": [0, 0, 0], "maximum": [1, 1, 1]},
        "corners": [[0,0,0], [1,0,0], [0,1,0], [1,1,0], [0,0,1], [1,0,1], [0,1,1], [1,1,1]]})");
    EXPECT_EQ(plain, expected);

    // The same entries where blue is fastest: the dialect and the data disagree, and corners follow the dialect.
    const Value turned = check("turned.3dl", identity(3), 0)["result"];
    EXPECT_EQ(turned["axisOrder"], "blueFastest");
    EXPECT_EQ(turned["apparentAxisOrder"], "redFastest");
    EXPECT_EQ(turned["corners"][1], Value::parse("[0, 0, 1]"));

    const Value green = check("green.cube", exchange(), 0)["result"]["greyAxis"];
    EXPECT_EQ(green, Value::parse(R"({"isMonotone": false, "falls": {"green": {"count": 1, "firstPoint": 0}}})"));

    const Value odd = check("odd.cube", "3D\n" + eightLines("0 0 0").substr(6) + "0 0 1.5\n1 1 -0.25\n", 0)["result"];
    EXPECT_EQ(odd["surplusEntries"], 1);
    EXPECT_EQ(odd["clips"], true);
    EXPECT_EQ(odd["apparentAxisOrder"], nullptr) << "blue rises along all axes alike";
    EXPECT_EQ(check("short.cube", "3D\n" + eightLines("0 0 1").substr(6), 0)["result"]["missingEntries"], 1);
    EXPECT_THAT(check("backwards.cube", readFile(path("backwards.cube")), 0)["cannotBeApplied"].dump(),
                HasSubstr("must end above"));
}

TEST_F(LutCheck, saysWhyAFileIsNoTableAndWhichLinesLookLikeEntries) {
    const Value padded = check("padded.cube", "3D\n" + eightLines("0  0 0") + "1 2 3 4\n1 nan 2\n# end\n", 1);
    EXPECT_EQ(padded["result"], nullptr);
    EXPECT_EQ(padded["problem"]["name"], "noEntries");
    const Value skipped = Value::parse(R"({
        "paddedColumns": {"count": 8, "firstLine": 2, "looksLikeAnEntry": true},
        "columnCount": {"count": 1, "firstLine": 10, "looksLikeAnEntry": true},
        "notANumber": {"count": 1, "firstLine": 11, "looksLikeAnEntry": true},
        "comment": {"count": 1, "firstLine": 12, "looksLikeAnEntry": false}})");
    EXPECT_EQ(padded["lines"]["skipped"], skipped);

    const CommandResult text = corvex({"lut", "check", path("padded.cube"), path("exchange.cube")});
    EXPECT_EQ(text.exitStatus, 1);
    EXPECT_THAT(text.output, HasSubstr("no table      No line of the file is three numbers"));
    EXPECT_THAT(text.output, HasSubstr("look-alikes   8, the first in line 2"));
    EXPECT_THAT(text.output, HasSubstr("look like blue fastest: red and blue may be exchanged"));
    EXPECT_THAT(text.output, HasSubstr("green falls after 1 of 2 points"));
}

TEST_F(LutCheck, plotShowsGreysAndCorners) {
    const LibraryMessages messages;
    ASSERT_EQ(corvex({"lut", "check", path("exchange.cube"), "--plot", path("plot.png")}).exitStatus, 0);
    StillImage plot = StillImage::read(path("plot.png"));
    const PixelBuffer pixels = plot.pixels();
    using Pixel = std::array<int, 3>;
    const auto at = [&](std::size_t x, std::size_t y) {
        const auto code = [&](std::size_t channel) { return std::to_integer<int>(*pixels.sample(channel, y, x)); };
        return Pixel{code(0), code(1), code(2)};
    };
    // Red and blue rise from the lower left to the upper right, green falls; each leaves the ground as it is elsewhere.
    EXPECT_EQ(at(16, 16 + 511), (Pixel{255, 64, 255}));
    EXPECT_EQ(at(16 + 511, 16), (Pixel{255, 64, 255}));
    EXPECT_EQ(at(16, 16)[1], 255);
    EXPECT_EQ(at(16 + 511, 16 + 511)[1], 255);
    EXPECT_EQ(at(16 + 300, 16 + 211), (Pixel{255, 24, 255}));
    // Corner 1 is red, and becomes blue and green.
    EXPECT_EQ(at(544 + 10, 16 + 64 + 10), (Pixel{255, 0, 0}));
    EXPECT_EQ(at(544 + 48 + 10, 16 + 64 + 10), (Pixel{0, 255, 255}));

    struct Row {
        Words words;
        int status;
        const char* problem;
    };
    const Row rows[] = {
        {{path("exchange.cube"), "--plot", path("plot.png")}, 1, "--overwrite would replace it"},
        {{path("exchange.cube"), "--plot", path("plot.tif")}, 2, "ends in .png"},
        {{path("exchange.cube"), path("far.cube"), "--plot", path("two.png")}, 2, "give one FILE"},
        {{path("plot.png"), "--plot", path("none.png")}, 1, ""},
    };
    const Words before = entries();
    for (const Row& row : rows) {
        Words words{"lut", "check"};
        words.insert(words.end(), row.words.begin(), row.words.end());
        const CommandResult result = corvex(words);
        EXPECT_EQ(result.exitStatus, row.status) << row.problem;
        EXPECT_THAT(result.error, HasSubstr(row.problem));
    }
    EXPECT_EQ(entries(), before);
}

}  // namespace
}  // namespace corvex::tool::test::lutPictureTests

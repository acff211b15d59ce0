#include <array>
#include <fstream>

#include <gmock/gmock.h>

#include <Corvex/platform/InputFile.h>
#include <tests/Places.h>
#include <tests/tools/Command.h>

namespace corvex::tool::test::lutCommandTests {
namespace {

using ::testing::DoubleNear;
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

}  // namespace
}  // namespace corvex::tool::test::lutCommandTests

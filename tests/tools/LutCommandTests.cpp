#include <fstream>

#include <gmock/gmock.h>

#include <Corvex/platform/InputFile.h>
#include <tests/Places.h>
#include <tests/tools/Command.h>

namespace corvex::tool::test::lutCommandTests {
namespace {

using ::testing::HasSubstr;
using Value = nlohmann::json;

const std::string directory = std::string(corvex::test::dataDirectory) + "/luts/";

std::string replaced(std::string text, std::string_view mark, const std::string& by) {
    const auto at = text.find(mark);
    return at == std::string::npos ? text : text.replace(at, mark.size(), by);
}

/// A field file's object as `info` is to print it: only members that apply.
Value expectedInfo(const std::string& path, const Value& expected) {
    Value info{{"path", path}, {"result", nullptr}, {"log", Value::array()}};
    for (const std::string line : expected["log"]) {
        info["log"].push_back(replaced(replaced(line, "{URL}", fileUrlText(path)), "{PATH}", path));
    }
    if (expected["result"].is_null()) return info;
    for (const auto& [name, value] : expected["result"].items()) {
        if (value.is_null() || name.starts_with("explicit")) continue;
        info["result"][name == "kind" ? "converter" : name] = value;
    }
    return info;
}

TEST(LutCommand, infoTellsWhatFieldFilesAre) {
    std::string line = "lut info --json";
    Value expected = Value::array();
    const Value files = Value::parse(std::ifstream(directory + "expected.json"));
    for (const auto& [key, file] : files.items()) {
        const std::string path = directory + key.substr(key.find('/') + 1);
        line += " " + path;
        expected.push_back(expectedInfo(path, file));
    }
    const CommandResult all = corvex(line);
    EXPECT_EQ(all.exitStatus, 1) << "some of them are no LUTs";
    EXPECT_EQ(Value::parse(all.output), expected);
    EXPECT_THAT(answerTo("lut info " + fileUrlText(directory + "baked_flame17.3dl")),
                HasSubstr("converter     Integer3DSampleConverter\n"));
    EXPECT_THAT(corvex("lut info " + directory + "ocio_houdini.lut").output, HasSubstr("no LUT        "));
}

/// Tables of 256 entries: n of 255 as numbers, n as codes, and from -0.5 on.
class LutSample : public RoomTest {
protected:
    LutSample() {
        std::string numbers = "LUT_1D_SIZE 256\n", codes = numbers, negative = numbers;
        for (int i = 0; i < 256; ++i) {
            const auto add = [](std::string& to, const std::string& word) {
                to.append(word).append(" ").append(word).append(" ").append(word).append("\n");
            };
            add(numbers, std::to_string(i / 255.0));
            add(codes, std::to_string(i));
            add(negative, std::to_string(i / 170.0 - 0.5));
        }
        writeFile("numbers.cube", numbers);
        writeFile("codes.cube", codes);
        writeFile("negative.cube", negative);
        writeFile("black.cube", "LUT_3D_SIZE 1\n0 0 0\n");
        writeFile("deep.cube", "LUT_3D_SIZE 2\n-1e300 0 0\n0 0 1e-300\n0 0 0\n0 0 0\n0 0 0\n0 0 0\n0 0 0\n0 0 0\n");
    }
};

TEST_F(LutSample, answersAsTheConvertersDo) {
    struct Row {
        const char* line;
        double output[3];
    };
    constexpr Row rows[] = {
        {"numbers.cube 0 128 255 --in-depth 8", {0, 128, 255}},
        {"numbers.cube 255 255 255 --in-depth 8 --out-depth 10", {1023, 1023, 1023}},
        {"codes.cube 1023 4 3 --in-depth 10 --out-depth 12", {4080, 16, 0}},
        {"negative.cube 255 85 170 --in-depth 8", {254, 0, 127}},
    };
    for (const Row& row : rows) {
        const Value output = jsonAnswerTo(std::string("lut sample ") + row.line)["output"];
        for (std::size_t i = 0; i < 3; ++i) {
            // The decimals of the file have six digits: truncation may take one code.
            EXPECT_NEAR(output[i].get<double>(), row.output[i], 1) << row.line << output;
        }
    }
    // As in the expectations of the field file.
    EXPECT_EQ(jsonAnswerTo("lut sample " + directory +
                           "baked_flame17.3dl 761.8540739653632 147.21642937548458 2555.949091719836")["output"],
              Value({66.22141893068672, 140.18111709430804, 2366.6329803049566}));
}

TEST_F(LutSample, refusesInOneLineWithoutEverBeingStopped) {
    expectRefusals(
        {
            {"", 2, "subcommand"},
            {"info", 2, "FILE"},
            {"sample black.cube 0 0", 2, "RGB"},
            {"sample black.cube 0 0 0", 1, "largest value, which is not above 0"},
            {"sample deep.cube -1e300 0 0", 1, "too far below"},
            {"sample deep.cube nan 0 0", 2, "'nan' is no decimal number"},
            {"sample numbers.cube 0 0 0", 2, "--in-depth is needed"},
            {"sample numbers.cube 256 0 0 --in-depth 8", 2, "the largest is 255"},
            {"sample numbers.cube 0.5 0 0 --in-depth 8", 2, "whole number"},
            {"sample numbers.cube 0 0 0 --in-depth 64", 2, "--in-depth"},
            {"sample numbers.cube 0 0 0 --out-depth 8", 2, "--in-depth"},
            {"sample negative.cube 0 0 0 --in-depth 8", 1, "is no code value"},
            {"sample absent.cube 0 0 0", 1, "is no look-up table: The file cannot be opened"},
        },
        "lut ");
}

}  // namespace
}  // namespace corvex::tool::test::lutCommandTests

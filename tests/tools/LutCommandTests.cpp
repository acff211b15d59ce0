#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <Corvex/platform/InputFile.h>
#include <tests/Places.h>
#include <tests/tools/Command.h>

namespace corvex::tool::test::lutCommandTests {
namespace {

using ::testing::HasSubstr;
using Value = nlohmann::json;

const std::string directory = std::string(corvex::test::dataDirectory) + "/luts/";

const Value& fieldFiles() {
    static const Value files = Value::parse(std::ifstream(directory + "expected.json"));
    return files;
}
std::string pathOf(const std::string& key) { return directory + key.substr(key.find('/') + 1); }

std::string replaced(std::string text, std::string_view mark, const std::string& by) {
    const auto at = text.find(mark);
    return at == std::string::npos ? text : text.replace(at, mark.size(), by);
}

/// A field file's object as `info` is to print it: only members that apply.
Value expectedInfo(const std::string& key, const Value& expected) {
    const std::string path = pathOf(key);
    Value info{{"path", path}, {"result", nullptr}, {"log", Value::array()}};
    for (const std::string line : expected["log"]) {
        info["log"].push_back(replaced(replaced(line, "{URL}", fileUrlText(path)), "{PATH}", path));
    }
    if (expected["result"].is_null()) return info;
    for (const auto& [name, value] : expected["result"].items()) {
        if (!value.is_null() && !name.starts_with("explicit"))
            info["result"][name == "kind" ? "converter" : name] = value;
    }
    return info;
}

TEST(LutCommand, infoTellsWhatFieldFilesAre) {
    Words words{"lut", "info", "--json"};
    Value expected = Value::array();
    for (const auto& [key, file] : fieldFiles().items()) {
        words.push_back(pathOf(key));
        expected.push_back(expectedInfo(key, file));
    }
    const CommandResult all = corvex(words);
    EXPECT_EQ(all.exitStatus, 1) << "some of them are no LUTs";
    EXPECT_EQ(Value::parse(all.output), expected);

    const CommandResult one = corvex({"lut", "info", directory + "baked_flame17.3dl"});
    EXPECT_EQ(one.exitStatus, 0) << one.error;
    EXPECT_THAT(one.output, HasSubstr("converter     Integer3DSampleConverter\n"));
    EXPECT_THAT(corvex({"lut", "info", directory + "ocio_houdini.lut"}).output, HasSubstr("no LUT        "));
}

/// Tables of 256 entries: n of 255 as numbers, n as codes, and from -0.5 on.
struct Tables {
    Tables() {
        std::string numbers = "LUT_1D_SIZE 256\n", codes = numbers, negative = numbers;
        for (int i = 0; i < 256; ++i) {
            const auto add = [](std::string& to, const std::string& word) {
                to += word;
                to += " " + word;
                to += " " + word + "\n";
            };
            add(numbers, std::to_string(i / 255.0));
            add(codes, std::to_string(i));
            add(negative, std::to_string(i / 170.0 - 0.5));
        }
        writeFile(room.path("numbers.cube"), numbers);
        writeFile(room.path("codes.cube"), codes);
        writeFile(room.path("negative.cube"), negative);
        writeFile(room.path("black.cube"), "LUT_3D_SIZE 1\n0 0 0\n");
        writeFile(room.path("deep.cube"),
                  "LUT_3D_SIZE 2\n-1e300 0 0\n0 0 1e-300\n0 0 0\n0 0 0\n0 0 0\n0 0 0\n0 0 0\n0 0 0\n");
    }
    TemporaryDirectory room;
};

TEST(LutCommand, samplesAsTheConvertersDo) {
    const Tables tables;
    struct Row {
        const char* file;
        Words words;
        Value output;
    };
    const Row rows[] = {
        {"numbers.cube", {"0", "128", "255", "--in-depth", "8"}, {0, 128, 255}},
        {"numbers.cube", {"255", "255", "255", "--in-depth", "8", "--out-depth", "10"}, {1023, 1023, 1023}},
        {"codes.cube", {"1023", "4", "3", "--in-depth", "10", "--out-depth", "12"}, {4080, 16, 0}},
        {"negative.cube", {"255", "85", "170", "--in-depth", "8"}, {254, 0, 127}},
    };
    for (const Row& row : rows) {
        Words words{"lut", "sample", "--json", tables.room.path(row.file)};
        words.insert(words.end(), row.words.begin(), row.words.end());
        const CommandResult result = corvex(words);
        EXPECT_EQ(result.exitStatus, 0) << row.file << result.error;
        const Value output = Value::parse(result.output)["output"];
        for (std::size_t i = 0; i < 3; ++i) {
            // The decimals of the file have six digits: truncation may take one code.
            EXPECT_NEAR(output[i].get<double>(), row.output[i].get<double>(), 1) << row.file << output;
        }
    }
}

/// Runs the samples of one file of the field; those below 0 are an error where a library's caller would be stopped.
TEST(LutCommand, samplesFieldFilesAsExpected) {
    for (const char* name : {"baked_flame17.3dl", "colour_iridas_cube_Colour_Correct.cube", "baked_houdini.lut"}) {
        // Each is a process; that the library answers all of them alike is tested beside it.
        const Value& samples = fieldFiles()["shared/" + std::string(name)]["samples"];
        for (std::size_t i = 0; i < samples.size(); i += 5) {
            const Value& sample = samples[i];
            const Value& in = sample["in"];
            Words words{"lut", "sample", "--json", directory + name};
            if (in.contains("rgb")) {
                for (const Value& number : in["rgb"]) words.push_back(number.dump());
            } else {
                for (const char* channel : {"r", "g", "b"}) words.push_back(in[channel].dump());
                const Value& out = in[in["answerInInputBitDepth"].get<bool>() ? "inputBitDepth" : "outputBitDepth"];
                // The command takes depths from 1 to 63.
                if (in["inputBitDepth"] < 1 || in["inputBitDepth"] > 63 || out < 1 || out > 63) continue;
                words.insert(words.end(), {"--in-depth", in["inputBitDepth"].dump(), "--out-depth", out.dump()});
            }
            const CommandResult result = corvex(words);
            EXPECT_EQ(result.signal, 0) << name << in;
            if (result.exitStatus == 0) {
                EXPECT_EQ(Value::parse(result.output)["output"], sample["out"]["rgb"]) << name << in;
            } else if (result.exitStatus == 1) {
                EXPECT_TRUE(sample["out"].contains("fatal")) << name << in << result.error;
            } else {
                EXPECT_THAT(result.error, HasSubstr("is no code value of")) << name << in;
            }
        }
    }
}

TEST(LutCommand, refusesInOneLineWithoutEverBeingStopped) {
    const Tables tables;
    const auto table = [&](const char* name) { return tables.room.path(name); };
    struct Row {
        Words words;
        int status;
        const char* problem;
    };
    const Row rows[] = {
        {{"lut"}, 2, "subcommand"},
        {{"lut", "info"}, 2, "FILE"},
        {{"lut", "sample", table("black.cube"), "0", "0"}, 2, "RGB"},
        {{"lut", "sample", table("black.cube"), "0", "0", "0"}, 1, "largest value, which is not above 0"},
        {{"lut", "sample", table("deep.cube"), "-1e300", "0", "0"}, 1, "too far below"},
        {{"lut", "sample", table("deep.cube"), "nan", "0", "0"}, 2, "'nan' is no decimal number"},
        {{"lut", "sample", table("numbers.cube"), "0", "0", "0"}, 2, "--in-depth is needed"},
        {{"lut", "sample", table("numbers.cube"), "256", "0", "0", "--in-depth", "8"}, 2, "the largest is 255"},
        {{"lut", "sample", table("numbers.cube"), "0.5", "0", "0", "--in-depth", "8"}, 2, "whole number"},
        {{"lut", "sample", table("numbers.cube"), "0", "0", "0", "--in-depth", "64"}, 2, "--in-depth"},
        {{"lut", "sample", table("numbers.cube"), "0", "0", "0", "--out-depth", "8"}, 2, "--in-depth"},
        {{"lut", "sample", table("negative.cube"), "0", "0", "0", "--in-depth", "8"}, 1, "is no code value"},
        {{"lut", "sample", table("absent.cube"), "0", "0", "0"}, 1, "is no look-up table: The file cannot be opened"},
    };
    for (const Row& row : rows) {
        const CommandResult result = corvex(row.words);
        EXPECT_EQ(result.exitStatus, row.status) << row.problem << result.error;
        EXPECT_THAT(result.error, HasSubstr(row.problem));
        EXPECT_EQ(lineCount(result.error), 1U) << result.error;
        EXPECT_EQ(result.output, "") << row.problem;
    }
}

}  // namespace
}  // namespace corvex::tool::test::lutCommandTests

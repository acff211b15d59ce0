#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <Corvex/lut/ParsedLutFactory.h>
#include <Corvex/lut/ParsedLutFile.h>
#include <Corvex/platform/InputFile.h>
#include <Corvex/platform/Log.h>
#include <tests/Places.h>

namespace corvex::lutFieldFileTests {
namespace {

using Value = nlohmann::json;

const std::filesystem::path directory = std::filesystem::path(test::dataDirectory) / "luts";

/// Every file of the field with what the rules of reading and sampling give for it, computed apart from this library.
const Value& fieldFiles() {
    static const Value files = Value::parse(std::ifstream(directory / "expected.json"));
    return files;
}

std::filesystem::path pathOf(const std::string& key) { return directory / key.substr(key.find('/') + 1); }

/// The result in the form of the expected one.
Value described(const ParsedLutFile& file) {
    const auto& converter = file.converter();
    Value result{{"dimensions", rawValue(file.dimensions())},
                 {"kind", converter.className()},
                 {"entryCount", file.orderedEntries().size()}};
    if (const auto* cube = dynamic_cast<const ThreeDimensionalSampleConverter*>(&converter)) {
        result["faceSize"] = cube->cube().faceSize();
        result["lowValue"] = result["explicitMinValue"] = cube->cube().lowValue();
        result["highValue"] = result["explicitMaxValue"] = cube->cube().highValue();
        result["lutBitDepth"] = nullptr;
    }
    const auto* integer = dynamic_cast<const Integer3DSampleConverter*>(&converter);
    result["bitDepth"] = integer != nullptr ? Value(integer->bitDepth()) : Value();
    return result;
}

/// Tells the values and the order of the entries.
double checksum(std::span<const LutValueTriplet> entries) {
    double sum = 0;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const auto& [r, g, b] = entries[i];
        sum += static_cast<double>((i + 1) % 1009) * (r + 2 * g + 3 * b);
    }
    return sum;
}

std::string replaced(std::string text, std::string_view mark, const std::string& by) {
    const auto at = text.find(mark);
    return at == std::string::npos ? text : text.replace(at, mark.size(), by);
}

Value sampled(const ParsedLutFile& file, const Value& input) {
    if (input.contains("rgb")) {
        const auto& converter = dynamic_cast<const ThreeDimensionalSampleConverter&>(file.converter());
        const auto [r, g, b] = converter.interpolator().interpolate(
            converter.cube(),
            {input["rgb"][0].get<double>(), input["rgb"][1].get<double>(), input["rgb"][2].get<double>()});
        return {r, g, b};
    }
    const auto [r, g, b] = file.converter().sample(
        {input["r"].get<std::uint64_t>(), input["g"].get<std::uint64_t>(), input["b"].get<std::uint64_t>()},
        input["inputBitDepth"].get<std::int64_t>(), input["outputBitDepth"].get<std::int64_t>(),
        input["answerInInputBitDepth"].get<bool>() ? AnswerDepth::input : AnswerDepth::output);
    return {r, g, b};
}

TEST(LutFieldFiles, areReadAndSampledAsExpected) {
    ASSERT_GE(fieldFiles().size(), 20U);
    for (const auto& [key, expected] : fieldFiles().items()) {
        const auto path = pathOf(key);
        const LutReading reading = ParsedLutFactory::read(path);
        std::vector<std::string> log, expectedLog;
        for (const auto& message : reading.messages) log.push_back(message.text);
        for (const std::string line : expected["log"]) {
            expectedLog.push_back(replaced(replaced(line, "{URL}", fileUrlText(path)), "{PATH}", path.string()));
        }
        EXPECT_EQ(log, expectedLog) << key;
        EXPECT_EQ(reading.lines.dataLineCount, expected["dataLines"]) << key;
        const auto declared = reading.lines.declaredDimensions;
        EXPECT_EQ(declared ? Value(rawValue(*declared)) : Value(), expected["declaredDimensions"]) << key;
        if (!reading.file) {
            EXPECT_TRUE(expected["result"].is_null()) << key;
            continue;
        }
        EXPECT_EQ(described(*reading.file), expected["result"]) << key;
        EXPECT_DOUBLE_EQ(checksum(reading.file->orderedEntries()), expected["checksum"].get<double>()) << key;
        for (const auto& sample : expected["samples"]) {    // bit for bit
            if (sample["out"].contains("fatal")) continue;  // samples below 0: in LutSamplingTests.cpp
            EXPECT_EQ(sampled(*reading.file, sample["in"]), sample["out"]["rgb"]) << key << ' ' << sample["in"];
        }
    }
}

}  // namespace
}  // namespace corvex::lutFieldFileTests

// corvex lut: what a look-up table file is, what it answers, and what it does to pictures.

#include <algorithm>
#include <cmath>
#include <concepts>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <fmt/format.h>
#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <Corvex/lut/BitDepth.h>
#include <Corvex/lut/ParsedLutFactory.h>
#include <Corvex/lut/ParsedLutFile.h>
#include <Corvex/platform/DoubleText.h>
#include <Corvex/platform/NumberText.h>
#include <tools/corvex/Subcommand.h>
#include <tools/corvex/jsonOutput.h>
#include <tools/corvex/lut/LutApply.h>
#include <tools/corvex/lut/LutCheck.h>
#include <tools/corvex/worker/LookUpTable.h>

namespace corvex::tool {
namespace {

struct LutChoices {
    std::vector<std::string> files;
    std::string file;
    std::vector<std::string> color;
    std::optional<std::int64_t> inputDepth, outputDepth;
    bool json = false;
};

Json resultJson(const ParsedLutFile& file) {
    const RGBSampleConverter& converter = file.converter();
    Json json{{"dimensions", std::string(rawValue(file.dimensions()))},
              {"converter", std::string(converter.className())},
              {"entryCount", file.orderedEntries().size()}};
    if (const auto* cube = dynamic_cast<const ThreeDimensionalSampleConverter*>(&converter)) {
        json["faceSize"] = cube->cube().faceSize();
        json["lowValue"] = numberJson(cube->cube().lowValue());
        json["highValue"] = numberJson(cube->cube().highValue());
    }
    if (const auto* integer = dynamic_cast<const Integer3DSampleConverter*>(&converter)) {
        json["bitDepth"] = integer->bitDepth();
    }
    if (const auto* table = dynamic_cast<const OneDimensionConverter*>(&converter)) {
        json["lowValue"] = numberJson(table->lowValue());
        json["highValue"] = numberJson(table->highValue());
        json["lutBitDepth"] = table->lutBitDepth();
    }
    return json;
}

ExitStatus describeTables(const LutChoices& choices) {
    Json all = Json::array();
    ExitStatus status = ExitStatus::success;
    for (const std::string& path : choices.files) {
        const LutReading reading = ParsedLutFactory::read(path);
        if (!reading.file) status = ExitStatus::jobFailed;
        Json log = Json::array();
        for (const auto& message : reading.messages) log.push_back(message.text);
        all.push_back(
            {{"path", path}, {"result", reading.file ? resultJson(*reading.file) : Json(nullptr)}, {"log", log}});
        if (choices.json) continue;
        fmt::print("{}\n", path);
        if (reading.problem) fmt::print("  {:<14}{}\n", "no LUT", description(*reading.problem));
        for (const auto& [name, value] : all.back()["result"].items()) {
            if (all.back()["result"].is_null()) break;
            fmt::print("  {:<14}{}\n", name, value.is_string() ? value.get<std::string>() : value.dump());
        }
        for (const Json& line : log) fmt::print("  {:<14}{}\n", "log", line.get<std::string>());
    }
    if (choices.json) printJson(all);
    return status;
}

[[noreturn]] void refuseSample(const std::string& path, const std::string& reason) {
    throw JobError(inQuotes(path) + " cannot be sampled there: " + reason);
}

/// The cube's answer to an input in its own units. Checks what would otherwise stop the process.
RGB<double> checkedInterpolation(const std::string& path, const ThreeDimensionalSampleConverter& converter,
                                 const RGB<double>& input) {
    const LutCube& cube = converter.cube();
    if (!(cube.highValue() > 0)) refuseSample(path, "inputs are divided by its largest value, which is not above 0");
    const double last = static_cast<double>(cube.faceSize()) - 1;
    constexpr double largestPosition = 9223372036854774784.0;  // the largest double below 2^63
    for (const double value : {input.r, input.g, input.b}) {
        const double position = std::max(value, cube.lowValue()) / cube.highValue() * last;
        if (value <= cube.highValue() && !(std::abs(position) <= largestPosition)) {
            refuseSample(path, "its smallest value lies too far below its largest");
        }
    }
    const RGB<double> result = converter.interpolator().interpolate(cube, input);
    for (const double value : {result.r, result.g, result.b}) {
        if (!std::isfinite(value)) refuseSample(path, "the result is beyond floating point");
    }
    return result;
}

/// What a 1D table answers before it is truncated; of code values the entry itself.
RGB<double> untruncatedEntries(const OneDimensionConverter& table, const RGB<std::uint64_t>& input,
                               std::int64_t inputDepth, double outputMaximum) {
    const bool isInteger = dynamic_cast<const OneDimensionsUnsignedIntegerConverter*>(&table) != nullptr;
    const double last = static_cast<double>(table.totalEntries()) - 1;
    const auto position = table.boundCheckedRGBInput(mapped(input, [&](std::uint64_t value) {
        if (isInteger) return static_cast<double>(normalizedUnsignedInteger(value, inputDepth, table.lutBitDepth()));
        return static_cast<double>(value) / static_cast<double>(largestCodeValue(inputDepth)) * last;
    }));
    const auto blended = [&](double at, double LutValueTriplet::*channel) {
        const auto lower = static_cast<std::size_t>(at);
        const std::size_t upper = std::min<std::size_t>(lower + 1, table.totalEntries() - 1);
        const double fraction = at - static_cast<double>(lower);
        const auto entries = table.orderedEntries();
        const double value = (1.0 - fraction) * entries[lower].*channel + fraction * entries[upper].*channel;
        return isInteger ? value : value * outputMaximum;
    };
    return {blended(position.r, &LutValueTriplet::first), blended(position.g, &LutValueTriplet::second),
            blended(position.b, &LutValueTriplet::third)};
}

/// Throws unless the converter's answer, before it is truncated, fits an unsigned integer of 64 bits.
void checkCodeSample(const std::string& path, const RGBSampleConverter& converter, const RGB<std::uint64_t>& input,
                     std::int64_t inputDepth, std::int64_t outputDepth) {
    const auto inputMaximum = static_cast<double>(largestCodeValue(inputDepth));
    const auto outputMaximum = static_cast<double>(largestCodeValue(outputDepth));
    RGB<double> result;
    if (const auto* integer = dynamic_cast<const Integer3DSampleConverter*>(&converter)) {
        result = checkedInterpolation(
            path, *integer, mapped(input, [&](std::uint64_t value) {
                return static_cast<double>(normalizedUnsignedInteger(value, inputDepth, integer->bitDepth()));
            }));
    } else if (const auto* cube = dynamic_cast<const ThreeDimensionalSampleConverter*>(&converter)) {
        result =
            mapped(checkedInterpolation(
                       path, *cube,
                       mapped(input, [&](std::uint64_t value) { return static_cast<double>(value) / inputMaximum; })),
                   [&](double value) { return value * outputMaximum; });
    } else {
        result =
            untruncatedEntries(dynamic_cast<const OneDimensionConverter&>(converter), input, inputDepth, outputMaximum);
    }
    for (const double value : {result.r, result.g, result.b}) {
        if (value > -1.0 && value < 18446744073709551616.0) continue;
        refuseSample(path, "the result " + defaultText(value) + " is no code value");
    }
}

template <class T>
RGB<T> parsedColor(const std::vector<std::string>& words, std::optional<T> (*parse)(std::string_view),
                   const char* what) {
    RGB<T> color;
    T* const components[] = {&color.r, &color.g, &color.b};
    for (std::size_t i = 0; i < 3; ++i) {
        const auto value = parse(words[i]);
        if (!value) throw UsageError(inQuotes(words[i]) + " is no " + what);
        *components[i] = *value;
    }
    return color;
}

template <class T>
Json colorJson(const RGB<T>& color) {
    if constexpr (std::floating_point<T>) {
        return {numberJson(color.r), numberJson(color.g), numberJson(color.b)};
    } else {
        return {color.r, color.g, color.b};
    }
}

template <class T>
ExitStatus printSample(const LutChoices& choices, const RGB<T>& input, const RGB<T>& output) {
    if (choices.json) {
        Json json{{"path", choices.file}, {"input", colorJson(input)}};
        if (choices.inputDepth) {
            json["inputBitDepth"] = *choices.inputDepth;
            json["outputBitDepth"] = choices.outputDepth.value_or(*choices.inputDepth);
        }
        json["output"] = colorJson(output);
        printJson(json);
    } else {
        fmt::print("{} {} {}\n", output.r, output.g, output.b);
    }
    return ExitStatus::success;
}

ExitStatus sampleCodes(const LutChoices& choices, const RGBSampleConverter& converter) {
    const std::int64_t inputDepth = *choices.inputDepth;
    const std::int64_t outputDepth = choices.outputDepth.value_or(inputDepth);
    const auto parse = [](std::string_view word) { return parseInteger<std::uint64_t>(word, SignRule::plusOnly); };
    const auto input = parsedColor<std::uint64_t>(choices.color, parse, "code value; expected a whole number");
    for (const std::uint64_t value : {input.r, input.g, input.b}) {
        if (value <= largestCodeValue(inputDepth)) continue;
        throw UsageError(fmt::format("{} is no code value of {} bits; the largest is {}", value, inputDepth,
                                     largestCodeValue(inputDepth)));
    }
    checkCodeSample(choices.file, converter, input, inputDepth, outputDepth);
    return printSample(choices, input, converter.sample(input, inputDepth, outputDepth, AnswerDepth::output));
}

ExitStatus sample(const LutChoices& choices) {
    const auto file = readTable(choices.file);
    const RGBSampleConverter& converter = file->converter();
    if (choices.inputDepth) return sampleCodes(choices, converter);
    const auto* cube = dynamic_cast<const ThreeDimensionalSampleConverter*>(&converter);
    if (cube == nullptr) {
        throw UsageError(inQuotes(choices.file) +
                         " is a 1D table, which answers code values alone; --in-depth is needed");
    }
    const auto input = parsedColor<double>(choices.color, parseFloat<double>, "decimal number");
    return printSample(choices, input, checkedInterpolation(choices.file, *cube, input));
}

void addApply(CLI::App& command, Action& action) {
    auto choices = std::make_shared<LutApplyChoices>();
    CLI::App* apply = command.add_subcommand("apply", "Look up the colours of a still picture");
    apply->add_option("FILE", choices->table, "A text file of any dialect")->required();
    apply->add_option("IN", choices->input, "A PNG, TIFF or DPX of 8 to 16 bits")->required();
    apply->add_option("OUT", choices->output, "The result: a name that ends in .png, .tif, .tiff or .dpx")->required();
    CLI::Option* stated = apply->add_flag("--as-stated", choices->asStated,
                                          "As `sample` answers, instead of as other tools show the file");
    apply->add_flag("--tetrahedral", choices->tetrahedral, "Blend in tetrahedra; cubes only")->excludes(stated);
    apply->add_flag("--overwrite", choices->overwrites, "Replace an existing OUT");
    apply->callback([choices, &action] { action = [choices] { return applyLut(*choices); }; });
    apply->footer("Example:\n  corvex lut apply look.cube frame.dpx graded.tif --tetrahedral");
}

void addCheck(CLI::App& command, Action& action) {
    auto choices = std::make_shared<LutCheckChoices>();
    CLI::App* check = command.add_subcommand("check", "Why files are no tables, or what to know of those that are");
    check->add_option("FILE", choices->files, "Text files of any dialect")->required();
    check->add_flag("--json", choices->json, "Print one JSON array");
    CLI::Option* plot = check->add_option("--plot", choices->plot, "Draw one FILE's table as a PNG")->type_name("FILE");
    check->add_flag("--overwrite", choices->overwrites, "Replace an existing PNG")->needs(plot);
    check->callback([choices, &action] { action = [choices] { return checkLuts(*choices); }; });
    check->footer(
        "Exit status 1 when one of them is no table.\nExample:\n  corvex lut check look.cube --plot look.png");
}

}  // namespace

void addLutCommand(CLI::App& app, const Invocation& /*invocation*/, Action& action) {
    auto choices = std::make_shared<LutChoices>();
    CLI::App* command = app.add_subcommand("lut", "Look-up table files: what they are, what they answer");
    command->require_subcommand(1);
    const auto add = [&](const char* name, const char* purpose, const char* json,
                         ExitStatus (*run)(const LutChoices&)) {
        CLI::App* added = command->add_subcommand(name, purpose);
        added->add_flag("--json", choices->json, json);
        added->callback([choices, run, &action] { action = [choices, run] { return run(*choices); }; });
        return added;
    };
    CLI::App* teller = add("info", "What files are as look-up tables", "Print one JSON array", describeTables);
    teller->add_option("FILE", choices->files, "Text files of any dialect")->required();
    teller->footer("Exit status 1 when one of them is no LUT.\nExample:\n  corvex lut info --json look.cube");

    CLI::App* sampler = add("sample", "What a table answers to a colour", "Print one JSON object", sample);
    sampler->add_option("FILE", choices->file, "A text file of any dialect")->required();
    sampler->add_option("RGB", choices->color, "Numbers in the units of the cube, or code values")
        ->required()
        ->expected(3);
    constexpr std::int64_t deepest = 63;
    CLI::Option* input = sampler->add_option("--in-depth", choices->inputDepth, "Bits of the code values given")
                             ->check(CLI::Range(std::int64_t{1}, deepest));
    sampler->add_option("--out-depth", choices->outputDepth, "Bits of the answer; those given unless stated")
        ->check(CLI::Range(std::int64_t{1}, deepest))
        ->needs(input);
    sampler->footer("Example:\n  corvex lut sample look.cube 512 512 512 --in-depth 10 --out-depth 12");
    addApply(*command, action);
    addCheck(*command, action);
}

}  // namespace corvex::tool

// corvex rate: frame rates by name, by value and in every form.

#include <fmt/format.h>
#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <Corvex/platform/DoubleText.h>
#include <Corvex/platform/NumberText.h>
#include <Corvex/timing/FrameRate.h>
#include <tools/corvex/RateText.h>
#include <tools/corvex/Subcommand.h>
#include <tools/corvex/jsonOutput.h>

namespace corvex::tool {
namespace {

struct RateChoices {
    std::string text;
    std::string tolerance = "0.01";
    bool json = false;
};

double parseDecimal(const std::string& text, const char* what) {
    const auto value = parseFloat<double>(text);
    if (!value) throw UsageError(fmt::format("{} must be a decimal number, not {}", what, inQuotes(text)));
    return *value;
}

ExitStatus listRates(const RateChoices& choices) {
    Json rates = Json::array();
    Json offered = Json::array();
    for (const auto rate : allCases<CommonVideoFrameRate>) rates.push_back(rateJson(VideoFrameRate(rate)));
    for (const FrameRate& rate : FrameRate::allCases()) {
        offered.push_back({{"rawValue", rate.rawValue()}, {"description", rate.pickerDescription()}});
    }
    if (choices.json) {
        printJson({{"rates", rates}, {"choices", offered}});
        return ExitStatus::success;
    }
    fmt::print("Common rates\n");
    for (const auto rate : allCases<CommonVideoFrameRate>) {
        fmt::print("  {:<12}{:<14}{}\n", rawValue(rate), rateText(rational(rate)), description(rate));
    }
    fmt::print("RateChoices for a transcode\n");
    for (const FrameRate& rate : FrameRate::allCases()) {
        fmt::print("  {:<12}{}\n", defaultText(rate.rawValue()), rate.pickerDescription());
    }
    return ExitStatus::success;
}

ExitStatus closest(const RateChoices& choices) {
    const double value = parseDecimal(choices.text, "a rate to compare with");
    const double tolerance = parseDecimal(choices.tolerance, "the tolerance");
    if (!(value > 0)) throw UsageError("a frame rate must be above 0, not " + inQuotes(choices.text));
    if (!(tolerance >= 0)) throw UsageError("the tolerance must not be negative: " + inQuotes(choices.tolerance));
    const auto found = closestFrameRate(value, tolerance);
    if (choices.json) {
        printJson({{"closest", found ? rateJson(VideoFrameRate(*found)) : Json(nullptr)}});
    } else if (found) {
        fmt::print("{} {}\n", rawValue(*found), rateText(rational(*found)));
    }
    if (found) return ExitStatus::success;
    throw JobError(fmt::format("no common rate lies within {} of {}", choices.tolerance, choices.text));
}

ExitStatus describeRate(const RateChoices& choices) {
    const VideoFrameRate rate = parseRate(choices.text);
    const MediaRational& pair = rate.rational();
    const bool dropsFrames = pair.isNTSCDropFrameCompliant();
    if (choices.json) {
        Json json = rateJson(rate);
        json["quanta"] = rate.quanta();
        json["isNTSCStyle"] = rate.isNTSCStyle();
        json["isDropFrameCompliant"] = dropsFrames;
        printJson(json);
        return ExitStatus::success;
    }
    const auto yesOrNo = [](bool holds) { return holds ? "yes" : "no"; };
    const auto common = rate.commonValue();
    fmt::print("{:<26}{}\n", "rate", rateText(pair));
    fmt::print("{:<26}{}\n", "frames per second", defaultText(rate.doubleValue()));
    fmt::print("{:<26}{}\n", "common rate", common ? rawValue(*common) : "none");
    fmt::print("{:<26}{}\n", "frames in a label second", rate.quanta());
    fmt::print("{:<26}{}\n", "a frame lasts", rateText(*pair.inverse()) + " s");
    fmt::print("{:<26}{}\n", "NTSC style", yesOrNo(rate.isNTSCStyle()));
    fmt::print("{:<26}{}\n", "drop frame", yesOrNo(dropsFrames));
    return ExitStatus::success;
}

}  // namespace

void addRateCommand(CLI::App& app, const Invocation& /*invocation*/, Action& action) {
    auto choices = std::make_shared<RateChoices>();
    CLI::App* command = app.add_subcommand("rate", "Frame rates by name, by value and in every form");
    command->require_subcommand(1);
    const auto add = [&](const char* name, const char* purpose, ExitStatus (*run)(const RateChoices&)) {
        CLI::App* added = command->add_subcommand(name, purpose);
        added->add_flag("--json", choices->json, "Print one JSON object");
        added->callback([choices, run, &action] { action = [choices, run] { return run(*choices); }; });
        return added;
    };
    add("list", "The 36 common rates and what a transcode offers", listRates);
    CLI::App* nearest = add("closest", "The common rate nearest to a number of frames per second", closest);
    nearest->add_option("VALUE", choices->text, "Frames per second")->required();
    nearest->add_option("--tolerance", choices->tolerance, "How far off it may be, in frames per second")
        ->capture_default_str();
    nearest->footer("Exit status 1 when none is near enough.\nExample:\n  corvex rate closest 29.97 --tolerance 0.01");
    CLI::App* facts = add("info", "What a rate means for timecode", describeRate);
    facts->add_option("RATE", choices->text, "As 29.97, 30000/1001 or fps29_97")->required();
}

}  // namespace corvex::tool

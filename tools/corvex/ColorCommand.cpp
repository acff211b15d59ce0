// corvex color: the colour vocabulary, and what maps to what.

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <Corvex/color/GammaColorSpaceSignal.h>
#include <Corvex/color/OrvanePixelColorRange.h>
#include <Corvex/color/OrvaneVideoColorSpace.h>
#include <Corvex/color/definedSignals.h>
#include <Corvex/platform/Text.h>
#include <tools/corvex/Subcommand.h>
#include <tools/corvex/jsonOutput.h>

namespace corvex::tool {
namespace {

/// One of the five enumerations and how it is called.
template <class E>
struct Kind {
    using Enumeration = E;
    const char* name;
    const char* plural;  ///< Its member in a list.
    const char* title;
    std::optional<E> (*fromCodePoint)(int);  ///< nullptr: a colour space has no code point of its own.
};

template <class Visitor>
void forEachKind(Visitor&& visit) {
    visit(Kind<OrvaneVideoColorSpace>{"colorSpace", "colorSpaces", "Colour spaces", nullptr});
    visit(Kind<OrvaneVideoColorPrimaries>{"primaries", "primaries", "Primaries", colorPrimariesFromCodePoint});
    visit(Kind<OrvanePixelTransferFunction>{"transferFunction", "transferFunctions", "Transfer functions",
                                            transferFunctionFromCodePoint});
    visit(Kind<OrvaneVideoColorMatrix>{"matrix", "matrices", "Matrices", colorMatrixFromCodePoint});
    visit(Kind<OrvanePixelColorRange>{"range", "ranges", "Ranges", colorRangeFromCodePoint});
}

/// The flag and the value by which a transcode is asked for it; empty if it cannot be.
template <class Enumeration>
std::pair<std::string_view, std::string> commandLineOf(Enumeration value) {
    if constexpr (std::same_as<Enumeration, OrvanePixelColorRange>) {
        return {videoFlag(value).rawValue(), std::string(cliFlag(value))};
    } else {
        if (const auto equivalent = cliEquivalent(value)) {
            if constexpr (requires { cliFlag(value); }) return {cliFlag(value), std::string(equivalent->rawValue())};
        }
        return {};
    }
}

Json orNull(const std::string& text) { return text.empty() ? Json(nullptr) : Json(text); }

template <class Enumeration>
Json nameOrNull(std::optional<Enumeration> value) {
    return value ? Json(std::string(caseName(*value))) : Json(nullptr);
}

template <class Enumeration>
Json caseJson(Enumeration value) {
    const auto point = codePoint(value);
    return {{"rawValue", rawValue(value)},
            {"caseName", std::string(caseName(value))},
            {"displayName", std::string(description(value))},
            {"cliValue", orNull(commandLineOf(value).second)},
            {"codePoint", point ? Json(*point) : Json(nullptr)}};
}

Json signalsJson(OrvaneVideoColorSpace space) {
    const auto signals = definedSignals(space);
    if (!signals) return nullptr;
    Json json = Json::array();
    for (const auto& signal : *signals) {
        Json one{{"primaries", nameOrNull(signal->primaries())},
                 {"transferFunction", nameOrNull(signal->transferFunction())},
                 {"matrix", nameOrNull(signal->matrix())}};
        if (const auto* gamma = dynamic_cast<const GammaColorSpaceSignal*>(signal.get())) {
            one["gamma"] = numberJson(gamma->gamma());
        }
        json.push_back(std::move(one));
    }
    return json;
}

/// Everything about one case.
template <class Enumeration>
Json factsJson(const Kind<Enumeration>& kind, Enumeration value) {
    Json json{{"kind", kind.name}};
    json.update(caseJson(value));
    json["flag"] = orNull(std::string(commandLineOf(value).first));
    if (kind.fromCodePoint != nullptr) {
        json["codePointsRead"] = Json::array();
        for (int point = 0; point < 256; ++point) {
            if (kind.fromCodePoint(point) == value) json["codePointsRead"].push_back(point);
        }
    }
    if constexpr (std::same_as<Enumeration, OrvaneVideoColorSpace>) {
        json["defaultColorPrimaries"] = nameOrNull(defaultColorPrimaries(value));
        json["signals"] = signalsJson(value);
    }
    return json;
}

/// For people: a text as it is, a number, "-" for what is absent.
std::string shown(const Json& value) {
    if (value.is_null()) return "-";
    return value.is_string() ? value.get<std::string>() : value.dump();
}

ExitStatus listColorSpaces(bool isJson) {
    Json json;
    forEachKind([&json](const auto& kind) {
        using Enumeration = typename std::remove_cvref_t<decltype(kind)>::Enumeration;
        for (const auto value : allCases<Enumeration>) json[kind.plural].push_back(caseJson(value));
    });
    if (isJson) {
        printJson(json);
        return ExitStatus::success;
    }
    forEachKind([&json](const auto& kind) {
        fmt::print("{}\n  {:<5}{:<14}{:<27}{:<22}{}\n", kind.title, "raw", "case", "name", "command line",
                   "code point");
        for (const Json& row : json[kind.plural]) {
            fmt::print("  {:<5}{:<14}{:<27}{:<22}{}\n", shown(row["rawValue"]), shown(row["caseName"]),
                       shown(row["displayName"]), shown(row["cliValue"]), shown(row["codePoint"]));
        }
    });
    return ExitStatus::success;
}

template <class Enumeration>
bool isCalled(Enumeration value, std::string_view name) {
    if (name.empty()) return false;  // as is the value of what the command line cannot ask for
    return equalsIgnoringCase(caseName(value), name) || equalsIgnoringCase(description(value), name) ||
           equalsIgnoringCase(commandLineOf(value).second, name);
}

void printFacts(const Json& facts) {
    const auto line = [](const char* label, const std::string& text) { fmt::print("  {:<20}{}\n", label, text); };
    fmt::print("{} {}\n", shown(facts["kind"]), shown(facts["caseName"]));
    line("name", shown(facts["displayName"]));
    line("raw value", shown(facts["rawValue"]));
    line("command line", facts["cliValue"].is_null() ? "-" : shown(facts["flag"]) + " " + shown(facts["cliValue"]));
    if (facts.contains("codePointsRead")) {
        line("code point", shown(facts["codePoint"]));
        std::string read;
        for (const Json& point : facts["codePointsRead"]) read += (read.empty() ? "" : ", ") + shown(point);
        line("code points read", read.empty() ? "-" : read);
    }
    if (!facts.contains("signals")) return;
    line("default primaries", shown(facts["defaultColorPrimaries"]));
    if (facts["signals"].is_null()) line("signal", "-");
    for (const Json& signal : facts["signals"]) {
        std::string text = fmt::format("primaries {}, transfer function {}, matrix {}", shown(signal["primaries"]),
                                       shown(signal["transferFunction"]), shown(signal["matrix"]));
        if (signal.contains("gamma")) text += ", gamma " + shown(signal["gamma"]);
        line("signal", text);
    }
}

ExitStatus show(const std::string& name, bool isJson) {
    Json found = Json::array();
    std::vector<std::string_view> known;
    forEachKind([&](const auto& kind) {
        using Enumeration = typename std::remove_cvref_t<decltype(kind)>::Enumeration;
        for (const auto value : allCases<Enumeration>) {
            if (isCalled(value, name)) found.push_back(factsJson(kind, value));
            if (std::find(known.begin(), known.end(), caseName(value)) == known.end()) {
                known.push_back(caseName(value));
            }
        }
    });
    if (found.empty()) {
        throw UsageError(fmt::format("no colour is called {}; known are {}", inQuotes(name), fmt::join(known, ", ")));
    }
    if (isJson) {
        printJson(found);
    } else {
        for (const Json& facts : found) printFacts(facts);
    }
    return ExitStatus::success;
}

}  // namespace

void addColorCommand(CLI::App& app, const Invocation& /*invocation*/, Action& action) {
    struct ColorChoices {
        std::string name;
        bool json = false;
    };
    auto choices = std::make_shared<ColorChoices>();
    CLI::App* command = app.add_subcommand("color", "Colour spaces, primaries, transfer functions, matrices, ranges");
    command->require_subcommand(1);
    CLI::App* all = command->add_subcommand("list", "The whole vocabulary");
    all->add_flag("--json", choices->json, "Print one JSON object");
    all->callback([choices, &action] { action = [choices] { return listColorSpaces(choices->json); }; });
    CLI::App* one = command->add_subcommand("show", "What a name stands for, in every enumeration that has it");
    one->add_option("NAME", choices->name, "A case, a name or a value of the command line, in upper or lower case")
        ->required();
    one->add_flag("--json", choices->json, "Print one JSON array");
    one->footer("Example:\n  corvex color show rec_2020_pq");
    one->callback([choices, &action] { action = [choices] { return show(choices->name, choices->json); }; });
}

}  // namespace corvex::tool

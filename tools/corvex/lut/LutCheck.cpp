#include <tools/corvex/lut/LutCheck.h>

#include <optional>
#include <string_view>

#include <fmt/format.h>

#include <Corvex/lut/ParsedLutFactory.h>
#include <Corvex/platform/DoubleText.h>
#include <tools/corvex/jsonOutput.h>
#include <tools/corvex/lut/LutFacts.h>
#include <tools/corvex/lut/LutPlot.h>
#include <tools/corvex/worker/OutputFile.h>

namespace corvex::tool {
namespace {

constexpr std::string_view channelNames[] = {"red", "green", "blue"};

std::string_view nameOf(LutAxisOrder order) noexcept {
    return order == LutAxisOrder::redFastest ? "redFastest" : "blueFastest";
}
std::string_view wordsOf(LutAxisOrder order) noexcept {
    return order == LutAxisOrder::redFastest ? "red fastest" : "blue fastest";
}

/// Why pictures cannot be given to the table, as other tools show it; nothing where they can.
std::optional<std::string> refusal(const ParsedLutFile& file) {
    try {
        const LutApplier applier(file, {});
        return std::nullopt;
    } catch (const LutApplierError& error) {
        return error.what();
    }
}

/// Lines that look like entries, which a user wants to hear of.
bool isLookAlike(SkippedLutLine kind) noexcept { return kind <= SkippedLutLine::tooLong; }

// As JSON.

Json linesJson(const LutLineReport& lines) {
    Json skipped = Json::object();
    for (const SkippedLutLine kind : allCases<SkippedLutLine>) {
        const auto& [count, firstLine] = lines.skipped(kind);
        if (count == 0) continue;
        skipped[std::string(rawValue(kind))] = {
            {"count", count}, {"firstLine", firstLine}, {"looksLikeAnEntry", isLookAlike(kind)}};
    }
    return {{"total", lines.lineCount},
            {"headers", lines.headerLineCount},
            {"entries", lines.dataLineCount},
            {"skipped", skipped}};
}

Json tripletJson(const RGB<double>& value) { return {numberJson(value.r), numberJson(value.g), numberJson(value.b)}; }
Json tripletJson(const LutValueTriplet& value) {
    return tripletJson(RGB<double>{value.first, value.second, value.third});
}

Json factsJson(const LutFacts& facts, LutDimensions dimensions) {
    Json falls = Json::object();
    for (std::size_t channel = 0; channel < 3; ++channel) {
        const auto& [count, firstPoint] = facts.greyFalls[channel];
        if (count > 0) falls[std::string(channelNames[channel])] = {{"count", count}, {"firstPoint", firstPoint}};
    }
    Json json{
        {"dimensions", std::string(rawValue(dimensions))},
        {"points", facts.pointCount},
        {"lowValue", numberJson(facts.lowValue)},
        {"highValue", numberJson(facts.highValue)},
        {"fullScale", numberJson(facts.fullScale)},
        {"clips", facts.clips()},
        {"domain", {{"minimum", tripletJson(facts.domain.minimum)}, {"maximum", tripletJson(facts.domain.maximum)}}},
        {"greyAxis", {{"isMonotone", facts.isGreyAxisMonotone()}, {"falls", falls}}}};
    if (facts.bitDepth > 0) json["bitDepth"] = facts.bitDepth;
    if (!facts.isCube) return json;
    json["missingEntries"] = facts.missingEntries;
    json["surplusEntries"] = facts.surplusEntries;
    json["axisOrder"] = std::string(nameOf(facts.axisOrder));
    json["apparentAxisOrder"] =
        facts.apparentAxisOrder ? Json(std::string(nameOf(*facts.apparentAxisOrder))) : Json(nullptr);
    for (const LutValueTriplet& corner : facts.corners) json["corners"].push_back(tripletJson(corner));
    return json;
}

Json reportJson(const std::string& path, const LutReading& reading, const std::optional<LutFacts>& facts) {
    Json json{{"path", path},
              {"isValidText", reading.isValidText},
              {"lines", linesJson(reading.lines)},
              {"result", facts ? factsJson(*facts, reading.file->dimensions()) : Json(nullptr)}};
    if (reading.problem) {
        json["problem"] = {{"name", std::string(rawValue(*reading.problem))},
                           {"description", std::string(description(*reading.problem))}};
    } else if (const auto reason = refusal(*reading.file)) {
        json["cannotBeApplied"] = *reason;
    }
    return json;
}

// As text.

void printRow(std::string_view name, const std::string& text) { fmt::print("  {:<14}{}\n", name, text); }

std::string textOf(const RGB<double>& value) {
    return defaultText(value.r) + " " + defaultText(value.g) + " " + defaultText(value.b);
}

std::string sizeText(const LutFacts& facts) {
    std::string text = facts.isCube ? fmt::format("cube of {} points on each axis", facts.pointCount)
                                    : fmt::format("1D table of {} points", facts.pointCount);
    text += facts.bitDepth > 0 ? fmt::format(", code values of {} bits", facts.bitDepth) : ", numbers, full scale 1";
    if (facts.missingEntries > 0)
        text += fmt::format("; {} points are missing and read as white", facts.missingEntries);
    if (facts.surplusEntries > 0) text += fmt::format("; {} entries stand for no point", facts.surplusEntries);
    return text;
}

std::string axisText(const LutFacts& facts) {
    const std::string text = fmt::format("{}, as usual in this dialect; the entries ", wordsOf(facts.axisOrder));
    if (!facts.apparentAxisOrder) return text + "do not show it";
    if (*facts.apparentAxisOrder == facts.axisOrder) return text + "agree";
    return text + fmt::format("look like {}: red and blue may be exchanged", wordsOf(*facts.apparentAxisOrder));
}

std::string greyText(const LutFacts& facts) {
    if (facts.isGreyAxisMonotone()) return "never falls";
    std::string text;
    for (std::size_t channel = 0; channel < 3; ++channel) {
        const auto& [count, firstPoint] = facts.greyFalls[channel];
        if (count == 0) continue;
        text += fmt::format("{}{} falls after {} of {} points, first after point {}", text.empty() ? "" : "; ",
                            channelNames[channel], count, facts.pointCount, firstPoint);
    }
    return text;
}

void printReport(const std::string& path, const LutReading& reading, const std::optional<LutFacts>& facts) {
    fmt::print("{}\n", path);
    if (reading.problem) printRow("no table", std::string(description(*reading.problem)));
    if (!reading.isValidText) printRow("text", "not UTF-8; what stands before the fault was read");
    if (facts) {
        printRow("table", sizeText(*facts));
        printRow("range", defaultText(facts->lowValue) + " to " + defaultText(facts->highValue) +
                              (facts->clips() ? "; what is below 0 or above full scale clips in integers" : ""));
        if (facts->domain != LutDomain()) {
            printRow("domain", textOf(facts->domain.minimum) + " to " + textOf(facts->domain.maximum));
        }
        if (facts->isCube) printRow("axis order", axisText(*facts));
        printRow("grey axis", greyText(*facts));
        if (const auto reason = refusal(*reading.file)) printRow("not applicable", *reason);
    }
    const LutLineReport& lines = reading.lines;
    printRow("lines", fmt::format("{}, of them {} entries and {} headers", lines.lineCount, lines.dataLineCount,
                                  lines.headerLineCount));
    for (const SkippedLutLine kind : allCases<SkippedLutLine>) {
        const auto& [count, firstLine] = lines.skipped(kind);
        if (count == 0) continue;
        printRow(isLookAlike(kind) ? "look-alikes" : "skipped",
                 fmt::format("{}, the first in line {}: {}", count, firstLine, description(kind)));
    }
}

}  // namespace

ExitStatus checkLuts(const LutCheckChoices& choices) {
    if (!choices.plot.empty() && choices.files.size() != 1) throw UsageError("--plot draws one table; give one FILE");
    if (!choices.plot.empty() && stillFileKindOf(choices.plot) != StillFileKind::png) {
        throw UsageError(inQuotes(choices.plot) + ": expected a name that ends in .png");
    }
    const LibraryMessages messages;
    std::optional<OutputFile> target;
    if (!choices.plot.empty()) target.emplace(choices.plot, "", choices.overwrites, "--overwrite");
    Json all = Json::array();
    ExitStatus status = ExitStatus::success;
    for (const std::string& path : choices.files) {
        const LutReading reading = ParsedLutFactory::read(path);
        std::optional<LutFacts> facts;
        if (reading.file) facts.emplace(*reading.file);
        if (choices.json) {
            all.push_back(reportJson(path, reading, facts));
        } else {
            printReport(path, reading, facts);
        }
        if (!facts) {
            status = ExitStatus::jobFailed;
        } else if (target) {
            plotted(*facts).write(*target, StillFileKind::png);
            target->publish();
        }
    }
    if (choices.json) printJson(all);
    return status;
}

}  // namespace corvex::tool

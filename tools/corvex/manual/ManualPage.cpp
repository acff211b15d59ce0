#include <tools/corvex/manual/ManualPage.h>

#include <algorithm>
#include <string_view>

#include <Corvex/platform/Text.h>
#include <Corvex/platform/Version.h>

namespace corvex::tool {
namespace {

/// Text that stands for itself: the formatter's own characters are written as names.
std::string plain(std::string_view text) {
    std::string result;
    if (text.starts_with('.')) result = "\\&";
    for (const char character : text) {
        switch (character) {
            case '\\': result += "\\e"; break;
            case '-': result += "\\-"; break;
            case '\'': result += "\\(aq"; break;
            case '^': result += "\\(ha"; break;
            case '~': result += "\\(ti"; break;
            case '`': result += "\\(ga"; break;
            default: result += character;
        }
    }
    return result;
}

std::string bold(std::string_view text) { return "\\fB" + plain(text) + "\\fR"; }
std::string italic(std::string_view text) { return "\\fI" + plain(text) + "\\fR"; }

/// Lines that begin with blanks are kept as they are, others are running text.
std::string notes(const std::string& text) {
    std::string result;
    bool isKept = false;
    bool isText = false;
    forEachPiece(text, "\n", [&](std::string_view line) {
        if (line.empty()) return;
        const bool keeps = line.front() == ' ';
        if (keeps && !isKept) result += ".PP\n.RS\n.nf\n";
        if (!keeps && isKept) result += ".fi\n.RE\n";
        if (!keeps) result += isText ? ".br\n" : ".PP\n";
        isText = !keeps;
        isKept = keeps;
        line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
        result += plain(line) + "\n";
    });
    return result + (isKept ? ".fi\n.RE\n" : "");
}

std::string entry(const CommandWord& word) {
    std::string result = ".TP\n" + bold(word.text);
    if (!word.valueName.empty()) result += " " + italic(word.valueName);
    result += "\n" + plain(word.meaning);
    if (!word.valueName.empty() && !word.valueFacts.empty()) result += " (" + plain(word.valueFacts) + ")";
    result += "\n";
    if (word.values.empty()) return result;
    result += ".br\n";
    for (const std::string& value : word.values) {
        result += (&value == &word.values.front() ? "Values: " : ", ") + italic(value);
    }
    return result + "\n";
}

std::string entries(const CommandPlace& place) {
    std::string result;
    for (const CommandWord& operand : place.operands) result += entry(operand);
    std::string_view group;
    for (const CommandWord& option : place.options) {
        if (option.group != group) result += ".SS " + plain(option.group) + "\n";
        group = option.group;
        result += entry(option);
    }
    return result;
}

constexpr std::string_view exitStatusOfAnalysis =
    ".TP\n64\nWords that cannot be used, or something needed is missing among them.\n"
    ".TP\n66\nA path to analyse, or the work directory, does not exist.\n"
    ".TP\n73\nThe results file exists, or cannot be created.\n";
constexpr std::string_view exitStatus =
    ".SH EXIT STATUS\n"
    ".TP\n0\nDone, or the question answered.\n"
    ".TP\n1\nThe words were fine, but the job cannot be done or failed.\n"
    ".TP\n2\nThe words cannot be used.\n";

bool liesBelow(const CommandPlace& place, const CommandPlace& page) { return place.path.starts_with(page.path + " "); }

}  // namespace

bool hasManualPage(const CommandPlace& place) { return std::count(place.path.begin(), place.path.end(), ' ') <= 1; }

std::string manualName(const CommandPlace& page) {
    std::string name = page.path;
    std::replace(name.begin(), name.end(), ' ', '-');
    return name;
}

std::string manualPage(const CommandPlace& page, std::span<const CommandPlace> places) {
    const bool isTool = page.path.find(' ') == std::string::npos;
    std::string title = manualName(page);
    std::transform(title.begin(), title.end(), title.begin(), [](char letter) {
        return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
    });
    std::string purpose = page.purpose;
    if (purpose.ends_with('.')) purpose.pop_back();
    std::string text = ".TH " + title + " 1 \"\" \"Corvex " + std::string(versionString) + "\" \"User Commands\"\n";
    text += ".SH NAME\n" + plain(manualName(page)) + " \\- " + plain(purpose) + "\n.SH SYNOPSIS\n.nf\n";
    text += bold(page.synopsis) + "\n";
    for (const CommandPlace& place : places) {
        if (!isTool && liesBelow(place, page)) text += bold(place.synopsis) + "\n";
    }
    text += ".fi\n.SH DESCRIPTION\n" + plain(purpose) + ".\n" + notes(page.notes);
    text += ".SH OPTIONS\n" + entries(page);
    if (!page.subcommands.empty()) text += ".SH COMMANDS\n";
    for (const CommandPlace& place : places) {
        if (!liesBelow(place, page)) continue;
        if (isTool) {
            if (!hasManualPage(place)) continue;
            text += ".TP\n\\fB" + plain(manualName(place)) + "\\fR(1)\n" + plain(place.purpose) + "\n";
        } else {
            text +=
                ".SS " + plain(place.path) + "\n" + plain(place.purpose) + ".\n" + entries(place) + notes(place.notes);
        }
    }
    text += exitStatus;
    if (page.path == "corvex analyze") text += exitStatusOfAnalysis;
    text += ".PP\nAn error is one line on standard error: what was wrong, then what would be right.\n";
    text += ".SH SEE ALSO\n" + std::string(isTool ? "\\fBffmpeg\\fR(1)\n" : "\\fBcorvex\\fR(1)\n");
    return text;
}

}  // namespace corvex::tool

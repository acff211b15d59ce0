#include <tools/corvex/host/ProgressDisplay.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <functional>
#include <map>
#include <optional>
#include <utility>

#include <fmt/format.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <Corvex/platform/NumberText.h>
#include <Corvex/platform/Text.h>

namespace corvex::tool {
namespace {

using Pairs = std::map<std::string, std::string, std::less<>>;

/// The pairs of a progress line; none when it is something else.
std::optional<Pairs> pairsOf(std::string_view line, std::string_view prefix) {
    if (!line.starts_with(prefix)) return std::nullopt;
    Pairs pairs;
    forEachPiece(trimmed(line.substr(prefix.size())), " ", [&](std::string_view piece) {
        const std::size_t mark = piece.find('=');
        if (mark != std::string_view::npos) pairs.emplace(piece.substr(0, mark), piece.substr(mark + 1));
    });
    return pairs.contains("state") ? std::optional(std::move(pairs)) : std::nullopt;
}

double numberOf(const Pairs& pairs, std::string_view key) {
    const auto found = pairs.find(key);
    return found == pairs.end() ? 0 : parseFloat<double>(found->second).value_or(0);
}

/// Past the standard stream, which would keep what it could not write and fail later: a reader that has gone must not end
/// the job.
void printText(std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = write(STDOUT_FILENO, text.data(), text.size());
        if (count < 0 && errno != EINTR) return;
        text.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    }
}

/// From 0 to some years, whatever the worker wrote.
std::string timeText(double seconds) {
    const auto whole = static_cast<long>(std::clamp(seconds, 0.0, 1e9));
    return whole < 3600 ? fmt::format("{}:{:02}", whole / 60, whole % 60)
                        : fmt::format("{}:{:02}:{:02}", whole / 3600, whole / 60 % 60, whole % 60);
}

/// What may still follow the rates: the time that is left.
constexpr std::size_t longestRest = 14;

std::size_t terminalWidth() {
    winsize size{};
    return ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

/// Nothing where the worker tells no rates.
std::string rateText(const Pairs& pairs) {
    if (!pairs.contains("read") || !pairs.contains("written")) return {};
    return fmt::format("  read {:.1f} MB/s  write {:.1f} MB/s", numberOf(pairs, "read") / 1e6,
                       numberOf(pairs, "written") / 1e6);
}

}  // namespace

ProgressDisplay::ProgressDisplay(std::string prefix, std::string label)
    : prefix_(std::move(prefix)),
      label_(label.empty() ? "" : std::move(label) + ": "),
      isTerminal_(label_.empty() && isatty(STDOUT_FILENO) != 0) {}

void ProgressDisplay::takeLine(std::string_view line) {
    const auto pairs = pairsOf(line, prefix_);
    if (!pairs) {
        clear();
        printText(fmt::format("{}{}\n", label_, line));
        return;
    }
    const std::string& state = pairs->find("state")->second;
    if (state == "failed") return;  // the worker's own line says why
    const double percent = numberOf(*pairs, "percent");
    const double frame = numberOf(*pairs, "frame"), total = numberOf(*pairs, "total");
    std::string text;
    if (isTerminal_) {
        constexpr int barWidth = 30;
        const int filled = static_cast<int>(std::clamp(percent / 100, 0.0, 1.0) * barWidth);
        text += fmt::format("[{:#<{}}{:.<{}}] ", "", filled, "", barWidth - filled);
    }
    text += fmt::format("{:5.1f} %", percent);
    if (total > 0) text += fmt::format("  {:.0f}/{:.0f} frames  {:.1f} fps", frame, total, numberOf(*pairs, "fps"));
    const std::string rates = rateText(*pairs);
    if (!isTerminal_ || text.size() + rates.size() + longestRest <= terminalWidth()) text += rates;
    const double left = numberOf(*pairs, "eta");
    if (state == "running" && left >= 0) text += "  " + timeText(left) + " left";
    if (state != "running") text += "  " + state;
    show(text, state == "done");
}

void ProgressDisplay::show(const std::string& line, bool isLast) {
    if (isTerminal_) {
        printText(fmt::format("\r\x1b[K{}{}", line, isLast ? "\n" : ""));
        isShown_ = !isLast;
    } else {
        const auto now = std::chrono::steady_clock::now();
        if (!isLast && now - lastLine_ < std::chrono::seconds(1)) return;
        lastLine_ = now;
        printText(label_ + line + "\n");
    }
}

void ProgressDisplay::clear() {
    if (!isShown_) return;
    printText("\r\x1b[K");
    isShown_ = false;
}

}  // namespace corvex::tool

#pragma once

#include <chrono>
#include <string>
#include <string_view>

namespace corvex::tool {

/// Shows a worker's progress lines to a person: one bar that redraws itself on a terminal, else a plain line every
/// second.
class ProgressDisplay {
public:
    /// `prefix` is what the worker was told to begin its lines with. With a `label`, which tells one of several jobs
    /// that run at once, there are plain lines that begin with it, also on a terminal.
    explicit ProgressDisplay(std::string prefix, std::string label = {});

    /// Takes one line of the worker's standard output; one that reports no progress is printed as it is.
    void takeLine(std::string_view line);
    /// Removes the bar, so that something else can be printed in its place.
    void clear();

private:
    void show(const std::string& line, bool isLast);

    std::string prefix_, label_;
    bool isTerminal_;
    bool isShown_ = false;
    std::chrono::steady_clock::time_point lastLine_{};
};

}  // namespace corvex::tool

#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <Corvex/platform/Log.h>

namespace corvex::test {

/// The lines that are logged while `run` runs.
std::vector<std::string> loggedBy(const auto& run) {
    std::vector<std::string> lines;
    setLogSink([&lines](LogLevel, std::string_view line) { lines.emplace_back(line); });
    run();
    setLogSink({});
    return lines;
}

}  // namespace corvex::test

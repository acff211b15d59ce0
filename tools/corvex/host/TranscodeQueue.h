#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include <Corvex/cli/transcode/TranscodeCliArguments.h>
#include <tools/corvex/ToolError.h>

namespace corvex::tool {

/// What of the user's settings concerns a transcode.
struct TranscodePreferences {
    std::size_t mostAtOnce = 1;  ///< From 1.
    std::size_t attempts = 1;    ///< Of one transcode, with the first; from 1.
    bool usesGpu = false;
    bool usesLegacyPipeline = false;

    /// The defaults where the user has no home to keep settings in, and where the store cannot be read, which one line on
    /// standard error says.
    [[nodiscard]] static TranscodePreferences ofUser();
};

/// One transcode: the argument vector of its worker.
struct QueuedJob {
    TranscodeCliArguments arguments;
    std::string label;  ///< Tells it from others; empty for the only one.
};

/// The transcodes that a command line asks for: one, or where "-out" is a folder (its name ends in "/", or it exists and
/// has no extension) one for each group of inputs, named after the group's first. Throws UsageError.
[[nodiscard]] std::vector<QueuedJob> jobsOf(const TranscodeCliArguments& arguments);

/// Runs transcodes, each in a worker of its own, several at once, and failed ones again as the user has set it.
class TranscodeQueue {
public:
    TranscodeQueue(std::vector<QueuedJob> jobs, const TranscodePreferences& preferences)
        : jobs_(std::move(jobs)), preferences_(preferences) {}

    /// Waits for all. The status of the only job; of several the worst. After words that cannot be used, and after a
    /// signal, no further one is started.
    ExitStatus run();

private:
    ExitStatus runJob(const QueuedJob& job) const;
    ExitStatus runWorker(const QueuedJob& job) const;

    std::vector<QueuedJob> jobs_;
    TranscodePreferences preferences_;
};

}  // namespace corvex::tool

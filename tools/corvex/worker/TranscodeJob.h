#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

#include <Corvex/cli/transcode/TranscodeCliArguments.h>
#include <tools/corvex/worker/AudioRequest.h>
#include <tools/corvex/worker/TimecodeRequest.h>
#include <tools/corvex/worker/VideoRequest.h>

namespace corvex::tool {

/// Whether this worker does what the flag says. Another known flag is an error: none is ever ignored.
[[nodiscard]] bool isCarriedOut(std::string_view flag) noexcept;

/// One transcode in checked terms: everything that the worker does is decided by this.
struct TranscodeJob {
    std::vector<std::string> inputs;  ///< In the order in which they follow each other; never empty.
    std::filesystem::path output;
    std::filesystem::path workDirectory;  ///< Empty: beside the output.
    bool overwrites = false;
    OAVTranscodeArgumentFileFormatValue format;
    bool indexInFront = false;
    std::optional<VideoRequest> video;
    std::optional<AudioRequest> audio;
    std::optional<TimecodeRequest> timecode;
    std::string language;      ///< ISO 639-2; empty: not stated.
    std::string progressFile;  ///< Empty: none.
    std::string progressPrefix;
    pid_t parentPid = 0;  ///< 0: not watched.

    /// Throws UsageError naming the first flag or value that cannot be used, or JobError for what this machine lacks.
    [[nodiscard]] static TranscodeJob make(const TranscodeCliArguments& arguments);
};

}  // namespace corvex::tool

#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

#include <Corvex/cli/transcode/TranscodeCliArguments.h>
#include <tools/corvex/worker/AudioFormatSettings.h>
#include <tools/corvex/worker/FrameGeometry.h>
#include <tools/corvex/worker/VideoCodecSettings.h>

namespace corvex::tool {

/// What is asked of the video.
struct VideoRequest {
    const VideoCodecSettings* codec = nullptr;
    FrameRequest frame;
    std::optional<std::int64_t> bitsPerSecond;
};

/// What is asked of the audio: copied as it is (`format` is nullptr), or encoded.
struct AudioRequest {
    const AudioFormatSettings* format = nullptr;
    std::optional<int> sampleRate;  ///< Samples per second; the source's own when absent.
};

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
    std::string progressFile;  ///< Empty: none.
    std::string progressPrefix;
    pid_t parentPid = 0;  ///< 0: not watched.

    /// Throws UsageError naming the first flag or value that cannot be used, or JobError for what this machine lacks.
    [[nodiscard]] static TranscodeJob make(const TranscodeCliArguments& arguments);
};

}  // namespace corvex::tool

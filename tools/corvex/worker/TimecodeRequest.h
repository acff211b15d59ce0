#pragma once

#include <optional>
#include <string>

#include <Corvex/cli/transcode/TranscodeCliArguments.h>
#include <Corvex/timing/TimecodeComponents.h>
#include <tools/corvex/worker/FFmpeg.h>
#include <tools/corvex/worker/MediaInput.h>
#include <tools/corvex/worker/TimecodeCount.h>

namespace corvex::tool {

/// The first "timecode" that a file states, for itself or for one of its streams; none when it states none.
[[nodiscard]] std::optional<std::string> statedTimecode(const MediaInput& input);

/// What is asked of the timecode, of its track as of the burnt-in one.
struct TimecodeRequest {
    bool addsTrack = false;
    TimecodeSource source = TimecodeSource::match;
    std::optional<TimecodeComponents> custom;  ///< Of the source `custom`.
    DropFrameState dropFrameState = DropFrameState::unknown;
    bool bypassesNtscDrop = false;
    std::optional<AVRational> frameRate;  ///< The video's own when absent.

    /// None when no timecode is wanted. Throws UsageError naming the flag at fault.
    [[nodiscard]] static std::optional<TimecodeRequest> make(const TranscodeCliArguments& arguments);

    /// The label of the first frame at `frameRate`. A source without timecode starts at zero.
    /// Throws JobError where the rate or the drop state cannot be had.
    [[nodiscard]] TimecodeComponents start(const MediaInput& first, AVRational frameRate) const;

    /// The labels of the pictures of a video of `frameRate`. A rate of the request's own may be lower than that by a
    /// whole factor, unless there is a track. Throws as `start` does.
    [[nodiscard]] TimecodeCount count(const MediaInput& first, AVRational frameRate) const;
};

}  // namespace corvex::tool

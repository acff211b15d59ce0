#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include <Corvex/cli/transcode/TranscodeCliArguments.h>
#include <tools/corvex/worker/ColorConversion.h>
#include <tools/corvex/worker/FrameGeometry.h>
#include <tools/corvex/worker/LookUpTable.h>
#include <tools/corvex/worker/OverlayRequest.h>
#include <tools/corvex/worker/TimecodeRequest.h>
#include <tools/corvex/worker/VideoCodecSettings.h>

namespace corvex::tool {

/// What is asked of the video.
struct VideoRequest {
    const VideoCodecSettings* codec = nullptr;
    const CodecProfile* profile = nullptr;  ///< nullptr: the codec's own.
    std::optional<int> bitDepth;
    FrameRequest frame;
    std::optional<float> sourceScale;  ///< "-vscale": of the first input's size, instead of the box.
    std::optional<std::int64_t> bitsPerSecond;
    std::optional<int> keyFrameDistance;    ///< Frames from one key frame to the next, exactly.
    std::optional<AVRational> frameRate;    ///< Constant rate of the output; pictures are repeated or left out.
    std::optional<std::int64_t> maxFrames;  ///< The output ends after so many.
    ColorRequest color;
    std::optional<LookUpTable> table;
    OverlayRequest overlays;
    std::optional<TimecodeRequest> burntTimecode;  ///< What the timecode among the overlays counts.
    std::optional<std::uint64_t> frameCapacity;    ///< Pictures in flight.
    std::optional<std::int64_t> frameMemory;       ///< Bytes of pictures in flight.
    std::map<std::string, std::string> decodeOptions;

    /// How the colours of source pictures become those of the output; parameters as those of ColorConversion.
    [[nodiscard]] ColorConversion colorConversion(int format, int height, const ColorTags& source,
                                                  AVColorRange codecRange) const;

    /// None when no video is wanted. Throws UsageError or JobError naming the flag at fault.
    [[nodiscard]] static std::optional<VideoRequest> make(const TranscodeCliArguments& arguments,
                                                          const OAVTranscodeArgumentFileFormatValue& format);
};

}  // namespace corvex::tool

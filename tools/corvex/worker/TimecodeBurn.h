#pragma once

#include <cstdint>
#include <vector>

#include <tools/corvex/worker/OverlayPlace.h>
#include <tools/corvex/worker/PictureStamp.h>
#include <tools/corvex/worker/TextImage.h>
#include <tools/corvex/worker/TimecodeCount.h>

namespace corvex::tool {

/// Writes the timecode into pictures. Immutable; any number of threads.
class TimecodeBurn {
public:
    /// Throws JobError where the label does not fit into pictures of that size, or cannot be drawn.
    TimecodeBurn(const TimecodeCount& count, const OAVTranscodeArgumentOverlayAnchorValue& anchor, TextStyle style,
                 const PictureStamp::Target& target, int pictureWidth, int pictureHeight);

    /// `picture` counts the output's pictures from 0.
    void apply(AVFrame& frame, std::int64_t picture) const;

private:
    [[nodiscard]] const PictureStamp& cell(char character) const;

    TimecodeCount count_;
    std::vector<PictureStamp> cells_;  ///< One size each, so that a label's box never moves.
    OverlayPlace place_;
};

}  // namespace corvex::tool

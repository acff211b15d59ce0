#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <Corvex/timing/TimecodeFrame.h>
#include <tools/corvex/worker/OverlayPlace.h>
#include <tools/corvex/worker/PictureStamp.h>
#include <tools/corvex/worker/TextImage.h>

namespace corvex::tool {

/// The timecodes of consecutive pictures, counted from a first one. A day ends at 24:00:00:00, where the labels start
/// again.
class TimecodeCount {
public:
    /// Each label stands for `picturesPerLabel` pictures.
    TimecodeCount(const TimecodeFrame& first, int picturesPerLabel);

    [[nodiscard]] TimecodeComponents label(std::int64_t picture) const;
    /// Of the longest label.
    [[nodiscard]] int characters() const noexcept { return first_.fullFramesPerSecond() > 100 ? 12 : 11; }

private:
    TimecodeFrame first_;
    std::int64_t picturesPerLabel_;
    std::int64_t framesPerDay_;
};

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

#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include <tools/corvex/worker/OverlayRequest.h>
#include <tools/corvex/worker/PictureStamp.h>
#include <tools/corvex/worker/TimecodeBurn.h>

namespace corvex::tool {

/// What is laid over every picture just before it is encoded: the image watermark, over it the text watermark, over it
/// the timecode. Immutable; any number of threads.
class PictureOverlays {
public:
    /// `timecodes` counts the burnt-in timecode. Throws JobError where something cannot be read, drawn, or does not fit.
    PictureOverlays(const OverlayRequest& request, const PictureStamp::Target& target, int pictureWidth,
                    int pictureHeight, const std::optional<TimecodeCount>& timecodes);

    /// Draws onto picture number `picture` of the output, counted from 0. Throws JobError when memory is short.
    void apply(AVFrame& frame, std::int64_t picture) const;

private:
    struct Placed {
        PictureStamp stamp;
        OverlayPlace place;
    };

    std::vector<Placed> marks_;
    std::optional<TimecodeBurn> timecode_;
};

}  // namespace corvex::tool

#include <tools/corvex/worker/TimecodeCount.h>

namespace corvex::tool {
namespace {

std::int64_t framesOfDay(const TimecodeFrame& frame) {
    constexpr std::int64_t hours = 24;
    const DropFrameState state = frame.components().dropFrameState;
    return TimecodeFrame({hours, 0, 0, 0, state}, frame.frameRate()).frameNumber();
}

}  // namespace

TimecodeCount::TimecodeCount(const TimecodeFrame& first, std::int64_t picturesPerLabel)
    : first_(first), picturesPerLabel_(picturesPerLabel), framesPerDay_(framesOfDay(first)) {}

TimecodeComponents TimecodeCount::label(std::int64_t picture) const {
    const std::int64_t frame = (first_.frameNumber() + picture / picturesPerLabel_) % framesPerDay_;
    return TimecodeComponents::timecodeComponents(frame, first_.fullFramesPerSecond(),
                                                  first_.components().isDropFrame());
}

}  // namespace corvex::tool

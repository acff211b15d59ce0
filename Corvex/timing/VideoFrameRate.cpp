#include <Corvex/timing/VideoFrameRate.h>

#include <Corvex/timing/FrameRateError.h>

namespace corvex::inline v0 {

VideoFrameRate::VideoFrameRate(std::int64_t timeValue, std::int64_t timeScale) {
    const auto rational = MediaRational::make(timeValue, timeScale);
    if (!rational) throw FrameRateError::invalidRationalComponents(timeValue, timeScale);
    *this = VideoFrameRate(*rational);
}

}  // namespace corvex::inline v0

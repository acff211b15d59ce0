#include <Corvex/lut/LutCube.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace corvex::inline v0 {
namespace {

std::size_t faceSizeOf(std::size_t entryCount) noexcept {
    return static_cast<std::size_t>(std::lround(std::cbrt(static_cast<float>(entryCount))));
}

}  // namespace

ThreeDimensionalLutCube::~ThreeDimensionalLutCube() = default;

LutCube::LutCube(std::vector<LutValueTriplet> entries, double lowValue, double highValue)
    : entryCount_(entries.size()),
      faceSize_(faceSizeOf(entries.size())),
      entries_(std::move(entries)),
      lowValue_(lowValue),
      highValue_(highValue) {
    const std::size_t pointCount = faceSize_ * faceSize_ * faceSize_;
    if (pointCount > entryCount_) entries_.resize(pointCount, {highValue, highValue, highValue});
}

LutCube LutCube::computingBounds(std::vector<LutValueTriplet> entries) {
    if (entries.empty()) return {std::move(entries), 0, 0};
    const std::size_t face = faceSizeOf(entries.size());
    const std::size_t stored = std::min(entries.size(), face * face * face);
    double low = entries.front().smallest();
    double high = entries.front().largest();
    for (std::size_t i = 1; i < stored; ++i) {
        low = std::min(low, entries[i].smallest());
        high = std::max(high, entries[i].largest());
    }
    return {std::move(entries), low, high};
}

}  // namespace corvex::inline v0

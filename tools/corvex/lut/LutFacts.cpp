#include <tools/corvex/lut/LutFacts.h>

#include <cmath>
#include <utility>

#include <Corvex/lut/BitDepth.h>

namespace corvex::tool {
namespace {

using Channel = double LutValueTriplet::*;
constexpr Channel channels[] = {&LutValueTriplet::first, &LutValueTriplet::second, &LutValueTriplet::third};

LutValueTriplet partsOf(const LutValueTriplet& entry, double fullScale) noexcept {
    return {entry.first / fullScale, entry.second / fullScale, entry.third / fullScale};
}

/// How much a channel rises from the first to the last points of the fastest axis, and of the slowest, on average.
std::pair<double, double> risesAlong(std::span<const LutValueTriplet> lattice, std::size_t n, Channel channel) {
    double alongFast = 0, alongSlow = 0;
    const std::size_t slow = n * n;
    for (std::size_t i = 0; i < slow; ++i) {
        alongFast += lattice[i * n + n - 1].*channel - lattice[i * n].*channel;
        alongSlow += lattice[(n - 1) * slow + i].*channel - lattice[i].*channel;
    }
    const auto count = static_cast<double>(slow);
    return {alongFast / count, alongSlow / count};
}

std::optional<LutAxisOrder> apparentOrder(std::span<const LutValueTriplet> lattice, std::size_t n, double fullScale) {
    const auto [redFast, redSlow] = risesAlong(lattice, n, &LutValueTriplet::first);
    const auto [blueFast, blueSlow] = risesAlong(lattice, n, &LutValueTriplet::third);
    const double forRed = std::abs(redFast) + std::abs(blueSlow), forBlue = std::abs(redSlow) + std::abs(blueFast);
    // Where colours lose their saturation, or are all the same, nothing stands out.
    if (!(std::abs(forRed - forBlue) > 0.1 * fullScale)) return std::nullopt;
    return forRed > forBlue ? LutAxisOrder::redFastest : LutAxisOrder::blueFastest;
}

}  // namespace

LutFacts::LutFacts(const ParsedLutFile& file) : domain(file.domain()) {
    const RGBSampleConverter& converter = file.converter();
    if (const auto* integer = dynamic_cast<const Integer3DSampleConverter*>(&converter)) bitDepth = integer->bitDepth();
    if (const auto* table = dynamic_cast<const OneDimensionsUnsignedIntegerConverter*>(&converter)) {
        bitDepth = table->valueBitDepth();
    }
    if (bitDepth > 0) fullScale = static_cast<double>(largestCodeValue(bitDepth));
    if (const auto* cube = dynamic_cast<const ThreeDimensionalSampleConverter*>(&converter)) {
        readCube(cube->cube(), file);
    } else {
        const auto& table = dynamic_cast<const OneDimensionConverter&>(converter);
        pointCount = file.orderedEntries().size();
        lowValue = table.lowValue();
        highValue = table.highValue();
        for (const auto& entry : file.orderedEntries()) greyAxis.push_back(partsOf(entry, fullScale));
    }
    countFalls();
}

void LutFacts::readCube(const ThreeDimensionalLutCube& cube, const ParsedLutFile& file) {
    isCube = true;
    const std::size_t n = pointCount = cube.faceSize();
    const auto lattice = cube.lattice();
    const std::size_t entryCount = file.orderedEntries().size();
    missingEntries = lattice.size() > entryCount ? lattice.size() - entryCount : 0;
    surplusEntries = entryCount > lattice.size() ? entryCount - lattice.size() : 0;
    lowValue = cube.lowValue();
    highValue = cube.highValue();
    axisOrder = conventionalAxisOrder(file.file());
    apparentAxisOrder = apparentOrder(lattice, n, fullScale);
    // The diagonal is the same in either order.
    for (std::size_t i = 0; i < n; ++i) greyAxis.push_back(partsOf(lattice[(i * n + i) * n + i], fullScale));
    const std::size_t strides[] = {axisOrder == LutAxisOrder::redFastest ? 1 : n * n, n,
                                   axisOrder == LutAxisOrder::redFastest ? n * n : 1};
    for (std::size_t corner = 0; corner < corners.size(); ++corner) {
        std::size_t entry = 0;
        for (std::size_t axis = 0; axis < 3; ++axis) entry += (corner >> axis & 1U) * (n - 1) * strides[axis];
        corners[corner] = partsOf(lattice[entry], fullScale);
    }
}

void LutFacts::countFalls() {
    for (std::size_t channel = 0; channel < 3; ++channel) {
        for (std::size_t i = 0; i + 1 < greyAxis.size(); ++i) {
            if (greyAxis[i + 1].*channels[channel] >= greyAxis[i].*channels[channel]) continue;
            if (greyFalls[channel].count++ == 0) greyFalls[channel].firstPoint = i;
        }
    }
}

}  // namespace corvex::tool

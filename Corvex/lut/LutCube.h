#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include <Corvex/lut/LutValueTriplet.h>
#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

/// What an interpolator needs of a cube. A host may interpolate in a cube of its own; what it returns must not change
/// meanwhile.
class CORVEX_EXPORT ThreeDimensionalLutCube {
public:
    virtual ~ThreeDimensionalLutCube();

    /// Points on each axis.
    [[nodiscard]] virtual std::size_t faceSize() const noexcept = 0;
    /// The smallest value of the entries: inputs below are raised to it.
    [[nodiscard]] virtual double lowValue() const noexcept = 0;
    /// The largest: inputs above are lowered to it, and it is also what positions are divided by.
    [[nodiscard]] virtual double highValue() const noexcept = 0;
    /// faceSize^3 entries: entry [i][j][k] is number i * faceSize^2 + j * faceSize + k.
    [[nodiscard]] virtual std::span<const LutValueTriplet> lattice() const noexcept = 0;

protected:
    ThreeDimensionalLutCube() = default;
    ThreeDimensionalLutCube(const ThreeDimensionalLutCube&) = default;
    ThreeDimensionalLutCube(ThreeDimensionalLutCube&&) = default;
    ThreeDimensionalLutCube& operator=(const ThreeDimensionalLutCube&) = default;
    ThreeDimensionalLutCube& operator=(ThreeDimensionalLutCube&&) = default;
};

/// A lattice of colours in the order of the file: the first index, which is red's, varies slowest, whatever order the
/// file's dialect means. The entries are kept once, for the lattice and as they were given. Immutable; any thread.
class CORVEX_EXPORT LutCube final : public ThreeDimensionalLutCube {
public:
    /// The face is the cube root of the number of entries, to the nearest integer. A lattice with more points than
    /// entries is filled up with the high value; entries without a point are kept but stand in no lattice.
    LutCube(std::vector<LutValueTriplet> entries, double lowValue, double highValue);

    /// With the smallest and the largest value in the lattice as bounds; 0 and 0 without entries.
    [[nodiscard]] static LutCube computingBounds(std::vector<LutValueTriplet> entries);

    [[nodiscard]] std::size_t faceSize() const noexcept override { return faceSize_; }
    [[nodiscard]] double lowValue() const noexcept override { return lowValue_; }
    [[nodiscard]] double highValue() const noexcept override { return highValue_; }
    [[nodiscard]] std::span<const LutValueTriplet> lattice() const noexcept override {
        return std::span(entries_).first(faceSize_ * faceSize_ * faceSize_);
    }
    /// All entries as given, those beyond the lattice too.
    [[nodiscard]] std::span<const LutValueTriplet> orderedEntries() const noexcept {
        return std::span(entries_).first(entryCount_);
    }

private:
    std::size_t entryCount_, faceSize_;
    std::vector<LutValueTriplet> entries_;  ///< The larger of both counts.
    double lowValue_, highValue_;
};

}  // namespace corvex::inline v0

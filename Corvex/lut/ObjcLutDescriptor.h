#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>

#include <Corvex/lut/LutCube.h>
#include <Corvex/platform/Export.h>
#include <Corvex/platform/Object.h>

namespace corvex::inline v0 {

/// A cube as an object, for callers that handle every value through Object. Shares the table with the file it came
/// from: copying copies no entries. Equal by faces, bounds and lattice, which takes time for each entry. Immutable; any
/// thread.
class CORVEX_EXPORT ObjcLutCube final : public Object {
public:
    /// `cube` must not be null.
    explicit ObjcLutCube(std::shared_ptr<const LutCube> cube);
    ~ObjcLutCube() override;

    /// Points of an edge.
    [[nodiscard]] std::size_t faceSize() const noexcept { return cube_->faceSize(); }
    /// faceSize^3 entries: entry [i][j][k] is number i * faceSize^2 + j * faceSize + k. Valid as long as this or a
    /// copy.
    [[nodiscard]] std::span<const LutValueTriplet> lattice() const noexcept { return cube_->lattice(); }
    /// The smallest value of the entries; highValue() is the largest. Inputs are limited to them.
    [[nodiscard]] double lowValue() const noexcept { return cube_->lowValue(); }
    [[nodiscard]] double highValue() const noexcept { return cube_->highValue(); }

    [[nodiscard]] std::string description() const override;
    [[nodiscard]] bool isEqual(const Object& other) const override;
    [[nodiscard]] std::size_t hash() const override;

private:
    std::shared_ptr<const LutCube> cube_;
};

/// Whether a table is a cube, and which. Immutable; any thread.
class CORVEX_EXPORT ObjcLutDimensionDescriptor final : public Object {
public:
    explicit ObjcLutDimensionDescriptor(std::optional<ObjcLutCube> cube) : cube_(std::move(cube)) {}
    ~ObjcLutDimensionDescriptor() override;

    /// None for a table of one dimension.
    [[nodiscard]] const std::optional<ObjcLutCube>& cube() const noexcept { return cube_; }
    /// 3 with a cube, 1 without: the number of axes.
    [[nodiscard]] std::int64_t dimensions() const noexcept { return cube_ ? 3 : 1; }

    [[nodiscard]] std::string description() const override;
    [[nodiscard]] bool isEqual(const Object& other) const override;
    [[nodiscard]] std::size_t hash() const override;

private:
    std::optional<ObjcLutCube> cube_;
};

/// The range of a table of code values. Of a cube: the depth of its values in bits, and the largest and the smallest of
/// them. Of a table of one dimension: the bits that number its entries, the last number, and 0. Immutable; any thread.
class CORVEX_EXPORT ObjcIntegerLutDescriptor final : public Object {
public:
    /// Not checked against each other.
    ObjcIntegerLutDescriptor(std::int64_t bitDepth, std::uint64_t maxColor, std::uint64_t minColor) noexcept
        : bitDepth_(bitDepth), maxColor_(maxColor), minColor_(minColor) {}
    ~ObjcIntegerLutDescriptor() override;

    [[nodiscard]] std::int64_t bitDepth() const noexcept { return bitDepth_; }
    [[nodiscard]] std::uint64_t maxColor() const noexcept { return maxColor_; }
    [[nodiscard]] std::uint64_t minColor() const noexcept { return minColor_; }

    [[nodiscard]] std::string description() const override;
    [[nodiscard]] bool isEqual(const Object& other) const override;
    [[nodiscard]] std::size_t hash() const override;

private:
    std::int64_t bitDepth_;
    std::uint64_t maxColor_, minColor_;
};

/// The range of a table whose full scale is 1.0: its largest and its smallest value, which may lie outside of 0 to 1.
/// Immutable; any thread.
class CORVEX_EXPORT ObjcFloatingPointLutDescriptor final : public Object {
public:
    /// Not checked against each other.
    ObjcFloatingPointLutDescriptor(double maxColor, double minColor) noexcept
        : maxColor_(maxColor), minColor_(minColor) {}
    ~ObjcFloatingPointLutDescriptor() override;

    [[nodiscard]] double maxColor() const noexcept { return maxColor_; }
    [[nodiscard]] double minColor() const noexcept { return minColor_; }

    [[nodiscard]] std::string description() const override;
    [[nodiscard]] bool isEqual(const Object& other) const override;
    [[nodiscard]] std::size_t hash() const override;

private:
    double maxColor_, minColor_;
};

}  // namespace corvex::inline v0

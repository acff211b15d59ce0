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

/// A cube as an object. Shares the table with the file it came from. Immutable; any thread.
class CORVEX_EXPORT ObjcLutCube final : public Object {
public:
    /// `cube` must not be null.
    explicit ObjcLutCube(std::shared_ptr<const LutCube> cube);
    ~ObjcLutCube() override;

    [[nodiscard]] std::size_t faceSize() const noexcept { return cube_->faceSize(); }
    /// faceSize^3 entries: entry [i][j][k] is number i * faceSize^2 + j * faceSize + k.
    [[nodiscard]] std::span<const LutValueTriplet> lattice() const noexcept { return cube_->lattice(); }
    [[nodiscard]] double lowValue() const noexcept { return cube_->lowValue(); }
    [[nodiscard]] double highValue() const noexcept { return cube_->highValue(); }

    [[nodiscard]] std::string description() const override;
    [[nodiscard]] bool isEqual(const Object& other) const override;
    [[nodiscard]] std::size_t hash() const override;

private:
    std::shared_ptr<const LutCube> cube_;
};

/// Whether a table is a cube, and which.
class CORVEX_EXPORT ObjcLutDimensionDescriptor final : public Object {
public:
    explicit ObjcLutDimensionDescriptor(std::optional<ObjcLutCube> cube) : cube_(std::move(cube)) {}
    ~ObjcLutDimensionDescriptor() override;

    [[nodiscard]] const std::optional<ObjcLutCube>& cube() const noexcept { return cube_; }
    /// 3 with a cube, 1 without.
    [[nodiscard]] std::int64_t dimensions() const noexcept { return cube_ ? 3 : 1; }

    [[nodiscard]] std::string description() const override;
    [[nodiscard]] bool isEqual(const Object& other) const override;
    [[nodiscard]] std::size_t hash() const override;

private:
    std::optional<ObjcLutCube> cube_;
};

/// The range of a table of code values.
class CORVEX_EXPORT ObjcIntegerLutDescriptor final : public Object {
public:
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

/// The range of a table whose full scale is 1.0.
class CORVEX_EXPORT ObjcFloatingPointLutDescriptor final : public Object {
public:
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

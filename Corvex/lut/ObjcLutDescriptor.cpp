#include <Corvex/lut/ObjcLutDescriptor.h>

#include <algorithm>
#include <functional>

#include <Corvex/platform/Checked.h>
#include <Corvex/platform/DoubleText.h>

namespace corvex::inline v0 {
namespace {

std::size_t hashOf(double a, double b) noexcept { return combinedHash(std::hash<double>{}(a), std::hash<double>{}(b)); }

}  // namespace

ObjcLutCube::~ObjcLutCube() = default;
ObjcLutDimensionDescriptor::~ObjcLutDimensionDescriptor() = default;
ObjcIntegerLutDescriptor::~ObjcIntegerLutDescriptor() = default;
ObjcFloatingPointLutDescriptor::~ObjcFloatingPointLutDescriptor() = default;

ObjcLutCube::ObjcLutCube(std::shared_ptr<const LutCube> cube) : cube_(std::move(cube)) {
    require(cube_ != nullptr, "a cube object needs a cube");
}

std::string ObjcLutCube::description() const {
    return "cube of " + std::to_string(faceSize()) + " points, " + defaultText(lowValue()) + " to " +
           defaultText(highValue());
}

bool ObjcLutCube::isEqual(const Object& other) const {
    const auto* cube = dynamic_cast<const ObjcLutCube*>(&other);
    return cube != nullptr && lowValue() == cube->lowValue() && highValue() == cube->highValue() &&
           std::ranges::equal(lattice(), cube->lattice());
}

std::size_t ObjcLutCube::hash() const { return combinedHash(faceSize(), hashOf(lowValue(), highValue())); }

std::string ObjcLutDimensionDescriptor::description() const { return cube_ ? cube_->description() : "1D table"; }

bool ObjcLutDimensionDescriptor::isEqual(const Object& other) const {
    const auto* descriptor = dynamic_cast<const ObjcLutDimensionDescriptor*>(&other);
    if (descriptor == nullptr || cube_.has_value() != descriptor->cube_.has_value()) return false;
    return !cube_ || cube_->isEqual(*descriptor->cube_);
}

std::size_t ObjcLutDimensionDescriptor::hash() const { return cube_ ? cube_->hash() : 1; }

std::string ObjcIntegerLutDescriptor::description() const {
    return std::to_string(bitDepth_) + " bits, " + std::to_string(minColor_) + " to " + std::to_string(maxColor_);
}

bool ObjcIntegerLutDescriptor::isEqual(const Object& other) const {
    const auto* descriptor = dynamic_cast<const ObjcIntegerLutDescriptor*>(&other);
    return descriptor != nullptr && bitDepth_ == descriptor->bitDepth_ && maxColor_ == descriptor->maxColor_ &&
           minColor_ == descriptor->minColor_;
}

std::size_t ObjcIntegerLutDescriptor::hash() const {
    return combinedHash(static_cast<std::size_t>(bitDepth_), combinedHash(maxColor_, minColor_));
}

std::string ObjcFloatingPointLutDescriptor::description() const {
    return defaultText(minColor_) + " to " + defaultText(maxColor_);
}

bool ObjcFloatingPointLutDescriptor::isEqual(const Object& other) const {
    const auto* descriptor = dynamic_cast<const ObjcFloatingPointLutDescriptor*>(&other);
    return descriptor != nullptr && maxColor_ == descriptor->maxColor_ && minColor_ == descriptor->minColor_;
}

std::size_t ObjcFloatingPointLutDescriptor::hash() const { return hashOf(maxColor_, minColor_); }

}  // namespace corvex::inline v0

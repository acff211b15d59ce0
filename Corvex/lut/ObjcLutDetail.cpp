#include <Corvex/lut/ObjcLutDetail.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <utility>

#include <Corvex/lut/BitDepth.h>
#include <Corvex/lut/ParsedLutFactory.h>
#include <Corvex/lut/ParsedLutFile.h>

namespace corvex::inline v0 {

ObjcLutRGBNumericTriplet::~ObjcLutRGBNumericTriplet() = default;
ObjcLutDetail::~ObjcLutDetail() = default;

std::string ObjcLutRGBNumericTriplet::description() const {
    return r_.description() + ' ' + g_.description() + ' ' + b_.description();
}

bool ObjcLutRGBNumericTriplet::isEqual(const Object& other) const {
    const auto* triplet = dynamic_cast<const ObjcLutRGBNumericTriplet*>(&other);
    return triplet != nullptr && r_.isEqual(triplet->r_) && g_.isEqual(triplet->g_) && b_.isEqual(triplet->b_);
}

std::size_t ObjcLutRGBNumericTriplet::hash() const {
    return combinedHash(combinedHash(r_.hash(), g_.hash()), b_.hash());
}

ObjcLutDetail::ObjcLutDetail(std::vector<ObjcLutRGBNumericTriplet> orderedLutValues,
                             const ObjcLutDimensionDescriptor& dimensions, const ObjcIntegerLutDescriptor& range)
    : orderedLutValues_(std::move(orderedLutValues)), dimensionDescriptor_(dimensions), integerDescriptor_(range) {}

ObjcLutDetail::ObjcLutDetail(std::vector<ObjcLutRGBNumericTriplet> orderedLutValues,
                             const ObjcLutDimensionDescriptor& dimensions, const ObjcFloatingPointLutDescriptor& range)
    : orderedLutValues_(std::move(orderedLutValues)),
      dimensionDescriptor_(dimensions),
      floatingPointDescriptor_(range) {}

const Object& ObjcLutDetail::range() const noexcept {
    if (integerDescriptor_) return *integerDescriptor_;
    return *floatingPointDescriptor_;
}

std::string ObjcLutDetail::description() const {
    return dimensionDescriptor_.description() + ", " + std::to_string(orderedLutValues_.size()) + " entries, " +
           range().description();
}

bool ObjcLutDetail::isEqual(const Object& other) const {
    const auto* detail = dynamic_cast<const ObjcLutDetail*>(&other);
    return detail != nullptr && dimensionDescriptor_.isEqual(detail->dimensionDescriptor_) &&
           range().isEqual(detail->range()) &&
           std::ranges::equal(orderedLutValues_, detail->orderedLutValues_,
                              [](const auto& a, const auto& b) { return a.isEqual(b); });
}

std::size_t ObjcLutDetail::hash() const {
    return combinedHash(combinedHash(orderedLutValues_.size(), dimensionDescriptor_.hash()), range().hash());
}

std::optional<ObjcLutDetail> ObjcLutConversionFactory::buildParsedLut(const std::filesystem::path& lutFilePath) {
    const auto file = ParsedLutFactory::parsedLut(lutFilePath);
    if (!file) return std::nullopt;
    std::vector<ObjcLutRGBNumericTriplet> values;
    values.reserve(file->orderedEntries().size());
    for (const LutValueTriplet& entry : file->orderedEntries()) {
        values.emplace_back(Number(entry.first), Number(entry.second), Number(entry.third));
    }
    const ObjcLutDimensionDescriptor table(std::nullopt);
    const auto cubeOf = [&file](const ThreeDimensionalSampleConverter& converter) {
        return ObjcLutDimensionDescriptor(ObjcLutCube(std::shared_ptr<const LutCube>(file, &converter.cube())));
    };
    const RGBSampleConverter& converter = file->converter();
    if (const auto* whole = dynamic_cast<const OneDimensionsUnsignedIntegerConverter*>(&converter)) {
        return ObjcLutDetail(std::move(values), table,
                             ObjcIntegerLutDescriptor(whole->lutBitDepth(), whole->maxInputColor(), 0));
    }
    if (const auto* real = dynamic_cast<const OneDimensionFloatingPointConverter*>(&converter)) {
        return ObjcLutDetail(std::move(values), table,
                             ObjcFloatingPointLutDescriptor(real->highValue(), real->lowValue()));
    }
    if (const auto* real = dynamic_cast<const NormalizedFloatingPoint3DSampleConverter*>(&converter)) {
        return ObjcLutDetail(std::move(values), cubeOf(*real),
                             ObjcFloatingPointLutDescriptor(real->cube().highValue(), real->cube().lowValue()));
    }
    if (const auto* whole = dynamic_cast<const Integer3DSampleConverter*>(&converter)) {
        return ObjcLutDetail(
            std::move(values), cubeOf(*whole),
            ObjcIntegerLutDescriptor(whole->bitDepth(), checkedUnsignedInteger(whole->cube().highValue()),
                                     checkedUnsignedInteger(whole->cube().lowValue())));
    }
    return std::nullopt;
}

}  // namespace corvex::inline v0

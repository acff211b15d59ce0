#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include <Corvex/lut/ObjcLutDescriptor.h>
#include <Corvex/platform/Export.h>
#include <Corvex/platform/FilesystemForward.h>
#include <Corvex/platform/Number.h>
#include <Corvex/platform/Object.h>

namespace corvex::inline v0 {

/// One entry as an object: the numbers of the file as doubles, code values too. A plain value; copies are independent.
/// Equal by numeric value.
class CORVEX_EXPORT ObjcLutRGBNumericTriplet final : public Object {
public:
    /// Any numbers; nothing is checked.
    ObjcLutRGBNumericTriplet(const Number& r, const Number& g, const Number& b) : r_(r), g_(g), b_(b) {}
    ~ObjcLutRGBNumericTriplet() override;
    ObjcLutRGBNumericTriplet(const ObjcLutRGBNumericTriplet&) = default;
    ObjcLutRGBNumericTriplet& operator=(const ObjcLutRGBNumericTriplet&) = default;

    /// Red; g() is green, b() blue. Valid until it is set.
    [[nodiscard]] const Number& r() const noexcept { return r_; }
    [[nodiscard]] const Number& g() const noexcept { return g_; }
    [[nodiscard]] const Number& b() const noexcept { return b_; }
    void setR(const Number& r) { r_ = r; }
    void setG(const Number& g) { g_ = g; }
    void setB(const Number& b) { b_ = b; }

    [[nodiscard]] std::string description() const override;
    [[nodiscard]] bool isEqual(const Object& other) const override;
    [[nodiscard]] std::size_t hash() const override;

private:
    Number r_, g_, b_;
};

/// A LUT file as a tree of objects. Exactly one of the two range descriptors is there. Immutable; any thread. An entry
/// takes 80 bytes here and 24 in a ParsedLutFile, which is for work, as this is for bindings.
class CORVEX_EXPORT ObjcLutDetail final : public Object {
public:
    /// With a table of code values.
    ObjcLutDetail(std::vector<ObjcLutRGBNumericTriplet> orderedLutValues, const ObjcLutDimensionDescriptor& dimensions,
                  const ObjcIntegerLutDescriptor& range);
    /// With a table of numbers.
    ObjcLutDetail(std::vector<ObjcLutRGBNumericTriplet> orderedLutValues, const ObjcLutDimensionDescriptor& dimensions,
                  const ObjcFloatingPointLutDescriptor& range);
    ~ObjcLutDetail() override;

    /// In the order of the file, those beyond a cube's lattice too.
    [[nodiscard]] const std::vector<ObjcLutRGBNumericTriplet>& orderedLutValues() const noexcept {
        return orderedLutValues_;
    }
    /// Whether it is a cube, and which.
    [[nodiscard]] const ObjcLutDimensionDescriptor& dimensionDescriptor() const noexcept {
        return dimensionDescriptor_;
    }
    /// There for tables and cubes of code values.
    [[nodiscard]] const std::optional<ObjcIntegerLutDescriptor>& integerDescriptor() const noexcept {
        return integerDescriptor_;
    }
    /// There for all other tables.
    [[nodiscard]] const std::optional<ObjcFloatingPointLutDescriptor>& floatingPointDescriptor() const noexcept {
        return floatingPointDescriptor_;
    }

    [[nodiscard]] std::string description() const override;
    [[nodiscard]] bool isEqual(const Object& other) const override;
    [[nodiscard]] std::size_t hash() const override;

private:
    /// The descriptor that is there.
    [[nodiscard]] const Object& range() const noexcept;

    std::vector<ObjcLutRGBNumericTriplet> orderedLutValues_;
    ObjcLutDimensionDescriptor dimensionDescriptor_;
    std::optional<ObjcIntegerLutDescriptor> integerDescriptor_;
    std::optional<ObjcFloatingPointLutDescriptor> floatingPointDescriptor_;
};

/// Reads a LUT file into a tree of objects. Any thread; what goes wrong is only logged.
class ObjcLutConversionFactory {
public:
    /// None where ParsedLutFactory::parsedLut gives nothing. A code value that fits no unsigned integer, as a negative
    /// one in a cube of code values, stops the process.
    [[nodiscard]] CORVEX_EXPORT static std::optional<ObjcLutDetail> buildParsedLut(
        const std::filesystem::path& lutFilePath);
};

}  // namespace corvex::inline v0

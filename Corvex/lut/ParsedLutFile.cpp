#include <Corvex/lut/ParsedLutFile.h>

#include <Corvex/platform/Checked.h>

namespace corvex::inline v0 {

LutFile::~LutFile() = default;
ParsedLutFile::~ParsedLutFile() = default;
ParsedOneDimensionLutFile::~ParsedOneDimensionLutFile() = default;
ParsedThreeDimensionalFloatingPointFile::~ParsedThreeDimensionalFloatingPointFile() = default;
ParsedThreeDimensionalIntegerFile::~ParsedThreeDimensionalIntegerFile() = default;

ParsedOneDimensionLutFile::ParsedOneDimensionLutFile(std::filesystem::path file, LutMarkupType fileMarkup,
                                                     std::unique_ptr<const OneDimensionConverter> converter,
                                                     const LutDomain& domain) noexcept
    : ParsedLutFile(std::move(file), LutDimensions::oneD, fileMarkup, domain), converter_(std::move(converter)) {
    require(converter_ != nullptr, "a parsed file needs a converter");
}

ParsedThreeDimensionalFloatingPointFile::ParsedThreeDimensionalFloatingPointFile(
    std::filesystem::path file, LutMarkupType fileMarkup, NormalizedFloatingPoint3DSampleConverter converter,
    const LutDomain& domain) noexcept
    : ParsedLutFile(std::move(file), LutDimensions::cube, fileMarkup, domain), converter_(std::move(converter)) {}

ParsedThreeDimensionalIntegerFile::ParsedThreeDimensionalIntegerFile(std::filesystem::path file,
                                                                     LutMarkupType fileMarkup,
                                                                     Integer3DSampleConverter converter,
                                                                     const LutDomain& domain) noexcept
    : ParsedLutFile(std::move(file), LutDimensions::cube, fileMarkup, domain), converter_(std::move(converter)) {}

}  // namespace corvex::inline v0

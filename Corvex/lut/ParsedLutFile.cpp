#include <Corvex/lut/ParsedLutFile.h>

#include <filesystem>

#include <Corvex/platform/Checked.h>

namespace corvex::inline v0 {

LutFile::LutFile(const std::filesystem::path& file, LutDimensions dimensions, LutMarkupType fileMarkup,
                 const LutDomain& domain)
    : file_(file.native()), domain_(domain), dimensions_(dimensions), fileMarkup_(fileMarkup) {}

LutFile::~LutFile() = default;
std::filesystem::path LutFile::file() const { return file_; }

ParsedLutFile::~ParsedLutFile() = default;
ParsedOneDimensionLutFile::~ParsedOneDimensionLutFile() = default;
ParsedThreeDimensionalFloatingPointFile::~ParsedThreeDimensionalFloatingPointFile() = default;
ParsedThreeDimensionalIntegerFile::~ParsedThreeDimensionalIntegerFile() = default;

ParsedOneDimensionLutFile::ParsedOneDimensionLutFile(const std::filesystem::path& file, LutMarkupType fileMarkup,
                                                     std::unique_ptr<const OneDimensionConverter> converter,
                                                     const LutDomain& domain)
    : ParsedLutFile(file, LutDimensions::oneD, fileMarkup, domain), converter_(std::move(converter)) {
    require(converter_ != nullptr, "a parsed file needs a converter");
}

ParsedThreeDimensionalFloatingPointFile::ParsedThreeDimensionalFloatingPointFile(
    const std::filesystem::path& file, LutMarkupType fileMarkup, NormalizedFloatingPoint3DSampleConverter converter,
    const LutDomain& domain)
    : ParsedLutFile(file, LutDimensions::cube, fileMarkup, domain), converter_(std::move(converter)) {}

ParsedThreeDimensionalIntegerFile::ParsedThreeDimensionalIntegerFile(const std::filesystem::path& file,
                                                                     LutMarkupType fileMarkup,
                                                                     Integer3DSampleConverter converter,
                                                                     const LutDomain& domain)
    : ParsedLutFile(file, LutDimensions::cube, fileMarkup, domain), converter_(std::move(converter)) {}

}  // namespace corvex::inline v0

#pragma once

#include <array>
#include <memory>
#include <string_view>

#include <Corvex/exported/FileExtension.h>
#include <Corvex/lut/ExtensionFilter.h>
#include <Corvex/lut/LutReading.h>
#include <Corvex/platform/Export.h>
#include <Corvex/platform/FilesystemForward.h>

namespace corvex::inline v0 {

struct LutValueTriplet;
class GenericTextLutInterpreter;
class ParsedLutFile;
class ParsedOneDimensionLutFile;
class ParsedThreeDimensionalFloatingPointFile;
class ParsedThreeDimensionalIntegerFile;
class LutCube;
class OneDimensionConverter;
class Integer3DSampleConverter;
class NormalizedFloatingPoint3DSampleConverter;

/// Reads LUT text files. The extension decides only whether a file is read; all go through one grammar (docs/LUTS.md).
/// Cost     Linear in the file, read in chunks; the table takes 24 bytes an entry, at most 384 MiB.
/// Errors   A reason, which LutReading carries and parsedLut() logs; nothing but std::bad_alloc is thrown.
/// Threads  Any; calls are independent.
class ParsedLutFactory {
    /// Extensions that look-up tables of the field have, in lower case. They do not tell the grammar.
    static constexpr std::array permittedExtensions = {
        FileExtension::alut,   FileExtension::cms, FileExtension::cube, FileExtension::dat,   FileExtension::ilut,
        FileExtension::lut,    FileExtension::mga, FileExtension::olut, FileExtension::lut1d, FileExtension::lut3dl,
        FileExtension::mesh3d, FileExtension::txt, FileExtension::xml,
    };

public:
    // The types of which a table is made, under the name of their factory.
    using LutValueTriplet = corvex::LutValueTriplet;
    using GenericTextLutInterpreter = corvex::GenericTextLutInterpreter;
    using ParsedOneDimensionLutFile = corvex::ParsedOneDimensionLutFile;
    using ParsedThreeDimensionalFloatingPointFile = corvex::ParsedThreeDimensionalFloatingPointFile;
    using ParsedThreeDimensionalIntegerFile = corvex::ParsedThreeDimensionalIntegerFile;
    using LutCube = corvex::LutCube;
    using OneDimensionConverter = corvex::OneDimensionConverter;
    using Integer3DSampleConverter = corvex::Integer3DSampleConverter;
    using NormalizedFloatingPoint3DSampleConverter = corvex::NormalizedFloatingPoint3DSampleConverter;

    /// Which files are read, by their extension.
    static constexpr ExtensionFilter extensionFilter{permittedExtensions};

    /// The table in a file; null for every failure, which is only logged: at level info, with the file and the reason.
    /// read() says why; this is for hosts that take a file as a table or not at all.
    [[nodiscard]] CORVEX_EXPORT static std::shared_ptr<const ParsedLutFile> parsedLut(
        const std::filesystem::path& lutFilePath);

    /// The same, with the reason of a failure and an account of the lines; logs nothing.
    [[nodiscard]] CORVEX_EXPORT static LutReading read(const std::filesystem::path& lutFilePath);

    /// The same for the bytes of a file that is in memory. `name` stands for its path.
    [[nodiscard]] CORVEX_EXPORT static LutReading readText(std::string_view bytes, const std::filesystem::path& name);
};

}  // namespace corvex::inline v0

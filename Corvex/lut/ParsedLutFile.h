#pragma once

#include <concepts>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <utility>

#include <Corvex/lut/LutDimensions.h>
#include <Corvex/lut/LutDomain.h>
#include <Corvex/lut/OneDimensionConverter.h>
#include <Corvex/lut/ThreeDimensionalSampleConverter.h>
#include <Corvex/platform/Export.h>
#include <Corvex/platform/FilesystemForward.h>

namespace corvex::inline v0 {

/// A LUT file: where it lies and what it is. The file itself is not looked at any more. Immutable; any thread.
class CORVEX_EXPORT LutFile {
public:
    virtual ~LutFile();
    LutFile(const LutFile&) = delete;
    LutFile& operator=(const LutFile&) = delete;

    /// As it was given to the reader, or the name that stood for it.
    [[nodiscard]] std::filesystem::path file() const;
    /// What was found, whether or not the file declares it.
    [[nodiscard]] LutDimensions dimensions() const noexcept { return dimensions_; }
    /// So far there is one.
    [[nodiscard]] LutMarkupType fileMarkup() const noexcept { return fileMarkup_; }
    /// What the file declares as its domain; 0 to 1 where it says nothing.
    [[nodiscard]] const LutDomain& domain() const noexcept { return domain_; }

protected:
    /// Only readers make files; a host that has a table of its own derives from ParsedLutFile.
    LutFile(const std::filesystem::path& file, LutDimensions dimensions, LutMarkupType fileMarkup,
            const LutDomain& domain);

private:
    std::string file_;
    LutDomain domain_;
    LutDimensions dimensions_;
    LutMarkupType fileMarkup_;
};

/// A LUT file that was read. Immutable; owns its table; any thread. Its class says what the values are;
/// ParsedLutFactory makes it, LutApplier applies it to pictures.
class CORVEX_EXPORT ParsedLutFile : public LutFile {
public:
    ~ParsedLutFile() override;

    /// Samples the table, one colour at a time. Valid as long as the file.
    [[nodiscard]] virtual const RGBSampleConverter& converter() const noexcept = 0;
    /// The entries of the file in its order, at least one. Valid as long as the file.
    [[nodiscard]] virtual std::span<const LutValueTriplet> orderedEntries() const noexcept = 0;

protected:
    using LutFile::LutFile;
};

/// One table for each channel, of code values or of numbers whose full scale is 1.0.
class CORVEX_EXPORT ParsedOneDimensionLutFile final : public ParsedLutFile {
public:
    /// `converter` must not be null; it is owned from now on.
    ParsedOneDimensionLutFile(const std::filesystem::path& file, LutMarkupType fileMarkup,
                              std::unique_ptr<const OneDimensionConverter> converter, const LutDomain& domain = {});
    ~ParsedOneDimensionLutFile() override;

    /// For code values OneDimensionsUnsignedIntegerConverter, else OneDimensionFloatingPointConverter.
    [[nodiscard]] const OneDimensionConverter& converter() const noexcept override { return *converter_; }
    [[nodiscard]] std::span<const LutValueTriplet> orderedEntries() const noexcept override {
        return converter_->orderedEntries();
    }

private:
    /// Never null.
    std::unique_ptr<const OneDimensionConverter> converter_;
};

/// A cube whose full scale is 1.0: one whose largest value is at most 1, or has a fraction.
class CORVEX_EXPORT ParsedThreeDimensionalFloatingPointFile final : public ParsedLutFile {
public:
    /// `file` need not lie there; nothing is read.
    ParsedThreeDimensionalFloatingPointFile(const std::filesystem::path& file, LutMarkupType fileMarkup,
                                            NormalizedFloatingPoint3DSampleConverter converter,
                                            const LutDomain& domain = {});
    ~ParsedThreeDimensionalFloatingPointFile() override;

    /// Its cube() is the table.
    [[nodiscard]] const NormalizedFloatingPoint3DSampleConverter& converter() const noexcept override {
        return converter_;
    }
    [[nodiscard]] std::span<const LutValueTriplet> orderedEntries() const noexcept override {
        return converter_.cube().orderedEntries();
    }

private:
    NormalizedFloatingPoint3DSampleConverter converter_;
};

/// A cube of whole code values: one whose largest value is whole and above 1. The depth follows from that value.
class CORVEX_EXPORT ParsedThreeDimensionalIntegerFile final : public ParsedLutFile {
public:
    /// `file` need not lie there; nothing is read.
    ParsedThreeDimensionalIntegerFile(const std::filesystem::path& file, LutMarkupType fileMarkup,
                                      Integer3DSampleConverter converter, const LutDomain& domain = {});
    ~ParsedThreeDimensionalIntegerFile() override;

    /// Bits of the values.
    [[nodiscard]] std::int64_t bitDepth() const noexcept { return converter_.bitDepth(); }
    /// Its cube() is the table.
    [[nodiscard]] const Integer3DSampleConverter& converter() const noexcept override { return converter_; }
    [[nodiscard]] std::span<const LutValueTriplet> orderedEntries() const noexcept override {
        return converter_.cube().orderedEntries();
    }

private:
    Integer3DSampleConverter converter_;
};

/// A LUT file whose values are unsigned integers of a bit depth.
template <class File>
concept UnsignedIntegerLutFile = std::derived_from<File, LutFile> && requires(const File& file) {
    { file.bitDepth() } -> std::convertible_to<std::int64_t>;
};
static_assert(UnsignedIntegerLutFile<ParsedThreeDimensionalIntegerFile>);

}  // namespace corvex::inline v0

#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

#include <Corvex/lut/LutApplierError.h>
#include <Corvex/lut/PixelBuffer.h>
#include <Corvex/platform/Export.h>
#include <Corvex/platform/FilesystemForward.h>

namespace corvex::inline v0 {

class ParsedLutFile;
struct LutPlan;

/// What a table's numbers mean (docs/LUTS.md opens with an example of the difference).
/// conventional  as other tools of the field show the same file: the axis order of the dialect, the declared domain,
///               straight blending, code values over their depth's full scale.
/// asStated      as the file's converter samples one pixel.
enum class LutApplication : std::uint8_t { conventional, asStated };

/// Which channel varies fastest in the lines of a cube, for the conventional application.
enum class LutAxisOrder : std::uint8_t { redFastest, blueFastest };

/// Source  Tetrahedral: Kasson, Nin, Plouffe and Hafner, Journal of Electronic Imaging 4(3), 1995.
enum class LutBlending : std::uint8_t { trilinear, tetrahedral };

/// exact  doubles, the same bits on every machine, with vector code or without.
/// fast   single precision, at most 1e-6 of full scale off (one code value in integers); exact where a table or a
///        machine does not allow for that, and under OutOfRangePolicy::report.
enum class LutArithmetic : std::uint8_t { fast, exact };

/// What happens to a number that is NaN, outside of what the table covers, or outside of an integer destination.
/// clamp   the nearest number that fits; NaN reads as the lowest.
/// report  the first such pixel is told; pixels before it are written, it and what follows are not.
enum class OutOfRangePolicy : std::uint8_t { clamp, report };

/// The axis order of a file's dialect, by its extension: blue fastest for 3dl, red fastest for all others.
[[nodiscard]] CORVEX_EXPORT LutAxisOrder conventionalAxisOrder(const std::filesystem::path& lutFilePath);

/// How a table is applied. The defaults are what other tools of the field do.
struct LutApplierSettings {
    LutApplication application = LutApplication::conventional;
    std::optional<LutAxisOrder> axisOrder = std::nullopt;  ///< Absent: that of the file's dialect.
    LutBlending blending = LutBlending::trilinear;         ///< Of cubes; asStated has trilinear alone.
    LutArithmetic arithmetic = LutArithmetic::fast;
    OutOfRangePolicy outOfRange = OutOfRangePolicy::clamp;
    SampleFormat source = SampleFormat::float32;
    SampleFormat destination = SampleFormat::float32;
    bool allowsVectorCode = true;  ///< False: portable code alone, as on a machine without 256-bit vectors.
};

/// The first pixel that OutOfRangePolicy::report stopped at.
struct OffendingPixel {
    std::size_t row = 0, column = 0;
    unsigned channel = 0;   ///< 0 red, 1 green, 2 blue.
    bool isResult = false;  ///< The table's answer does not fit the destination; else the input is at fault.
    double value = 0;       ///< In the units of its buffer: full scale is 1.0 or the largest code value.

    friend bool operator==(const OffendingPixel&, const OffendingPixel&) = default;
};

/// Applies a table to pixels. asStated and exact, integers come out as RGBSampleConverter::sample answers one pixel
/// (limited to the destination's largest code value); conventional integers are rounded to nearest.
/// Threads  Immutable: any number of threads may apply it at once, for instance each to rows of its own.
class CORVEX_EXPORT LutApplier {
public:
    /// Throws LutApplierError where the table cannot be applied so. `file` must not be null; it is not kept.
    LutApplier(const ParsedLutFile& file, const LutApplierSettings& settings);
    ~LutApplier();
    LutApplier(LutApplier&&) noexcept;             ///< The other can only be destroyed or assigned to.
    LutApplier& operator=(LutApplier&&) noexcept;  ///< The table that it had is gone.

    /// Whether vector code is at work: allowed, and supported by this machine.
    [[nodiscard]] bool usesVectorCode() const noexcept;

    /// Looks up the colours of rows `firstRow` to `firstRow + rowCount - 1`. Alpha is copied, rescaled between formats;
    /// opaque where only the destination has it. Both buffers have the same size and the formats of the settings, and
    /// are the same memory with the same strides, or do not overlap; anything else stops the process.
    std::optional<OffendingPixel> apply(const ConstPixelBuffer& source, const PixelBuffer& destination,
                                        std::size_t firstRow, std::size_t rowCount) const noexcept;
    /// All rows.
    std::optional<OffendingPixel> apply(const ConstPixelBuffer& source, const PixelBuffer& destination) const noexcept {
        return apply(source, destination, 0, source.height());
    }

private:
    std::unique_ptr<const LutPlan> plan_;
};

}  // namespace corvex::inline v0

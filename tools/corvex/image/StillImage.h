#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include <Corvex/lut/PixelBuffer.h>
#include <Corvex/platform/CaseTable.h>
#include <tools/corvex/worker/FFmpeg.h>
#include <tools/corvex/worker/OutputFile.h>

namespace corvex::tool {

/// Files of still pictures. Sources  ISO/IEC 15948 (PNG); TIFF 6.0 (Adobe, 1992); SMPTE ST 268-1 (DPX).
enum class StillFileKind : std::uint8_t { png, tiff, dpx };

/// The kind that a path's extension names, in any case: png, tif, tiff, dpx.
[[nodiscard]] std::optional<StillFileKind> stillFileKindOf(const std::string& path);
/// The kind that the first bytes of a file show.
[[nodiscard]] std::optional<StillFileKind> stillFileKindOfBytes(std::string_view bytes) noexcept;

/// A still picture: planes of R'G'B', and of alpha if it has any, in code values of 8, 10, 12 or 16 bits. What else its
/// file says of it (pixel aspect, colour tags) goes along. One thread at a time.
class StillImage {
public:
    /// Black, transparent where there is alpha. Sides are positive. Throws JobError without memory.
    StillImage(int width, int height, SampleFormat format, bool hasAlpha);

    /// Reads a file whatever its name; of several pages the first. Grey and palettes become R'G'B' of the same depth.
    /// Throws JobError: no readable file, no picture of a known kind, damaged, pixels of another sort or depth. A
    /// LibraryMessages must live.
    [[nodiscard]] static StillImage read(const std::string& path);

    /// An empty picture of the same size, alpha and tags in another depth.
    [[nodiscard]] StillImage blankCopy(SampleFormat format) const;

    [[nodiscard]] int width() const noexcept { return frame_->width; }
    [[nodiscard]] int height() const noexcept { return frame_->height; }
    [[nodiscard]] SampleFormat format() const noexcept { return format_; }
    [[nodiscard]] bool hasAlpha() const noexcept { return tool::hasAlpha(frame_->format); }
    [[nodiscard]] PixelBuffer pixels() noexcept;

    /// The depth in which a kind of file keeps this picture: its own, else the next deeper one, with alpha if it has any.
    [[nodiscard]] SampleFormat formatIn(StillFileKind kind) const;

    /// Writes a file that holds the picture in the depth that `formatIn` gives, which must be its own. Throws JobError.
    void write(const OutputFile& file, StillFileKind kind) const;

private:
    StillImage(FramePointer frame, SampleFormat format) noexcept : frame_(std::move(frame)), format_(format) {}

    FramePointer frame_;  ///< Planes in the libraries' order: green, blue, red, alpha.
    SampleFormat format_;
};

}  // namespace corvex::tool

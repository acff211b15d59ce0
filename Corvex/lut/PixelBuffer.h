#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <type_traits>

#include <Corvex/platform/CaseTable.h>
#include <Corvex/platform/Checked.h>

namespace corvex::inline v0 {

/// How a sample lies in memory: code values of 10 and 12 bits in the low bits of 16, in the machine's byte order. Raw
/// values ("u10") name them on command lines. What stands in bits above a code value's depth is the caller's fault.
enum class SampleFormat : std::uint8_t { unsigned8, unsigned10, unsigned12, unsigned16, float32 };

/// A row of the table: the bytes of a sample, too.
struct SampleFormatCase : Case<SampleFormat> {
    std::size_t byteCount;
    unsigned bitDepth;  ///< Of code values; 0 for numbers, whose full scale is 1.0.
};

template <>
inline constexpr auto caseTable<SampleFormat> = std::to_array<SampleFormatCase>({
    {{SampleFormat::unsigned8, "u8", "8-bit code values"}, 1, 8},
    {{SampleFormat::unsigned10, "u10", "10-bit code values in 16 bits"}, 2, 10},
    {{SampleFormat::unsigned12, "u12", "12-bit code values in 16 bits"}, 2, 12},
    {{SampleFormat::unsigned16, "u16", "16-bit code values"}, 2, 16},
    {{SampleFormat::float32, "f32", "32-bit floating point"}, 4, 0},
});
static_assert(isComplete<SampleFormat>(caseTable<SampleFormat>));

/// The bytes of one sample.
[[nodiscard]] constexpr std::size_t byteCount(SampleFormat format) noexcept { return caseOf(format).byteCount; }
/// The bits of a code value; 0 for floating point.
[[nodiscard]] constexpr unsigned bitDepth(SampleFormat format) noexcept { return caseOf(format).bitDepth; }
/// What stands for full scale: the largest code value, or 1.0.
[[nodiscard]] constexpr double fullScale(SampleFormat format) noexcept {
    return format == SampleFormat::float32 ? 1.0 : static_cast<double>((1U << bitDepth(format)) - 1U);
}

/// The channels of a pixel, in this order. Alpha is straight, not multiplied into the colours.
enum class ChannelLayout : std::uint8_t { rgb, rgba };

/// Pixels in somebody's memory: red, green, blue and perhaps alpha, interleaved or as planes. `Byte` is std::byte, or
/// const std::byte for pixels that are only read.
/// Shape    Samples must be aligned to their size. Rows may lie apart by any number of bytes, also upwards (a negative
///          stride); the first address is then that of the last row in memory.
/// Lifetime A view: copies share the memory, which must outlive them.
/// Errors   Colours without memory stop the process, unless there are no pixels. Sizes and strides are not checked.
/// Threads  Those of the memory: this holds nothing that changes.
template <class Byte>
class BasicPixelBuffer {
public:
    using Address = std::conditional_t<std::is_const_v<Byte>, const void*, void*>;

    /// Pixels as R G B, or R G B A, one behind the other. `first` is the red of the pixel at the top left; `rowStride`
    /// is in bytes from one row to the next below.
    [[nodiscard]] static BasicPixelBuffer interleaved(Address first, SampleFormat format, ChannelLayout layout,
                                                      std::size_t width, std::size_t height,
                                                      std::ptrdiff_t rowStride) noexcept {
        auto* const red = static_cast<Byte*>(first);
        const std::size_t size = byteCount(format);
        const bool hasAlpha = layout == ChannelLayout::rgba;
        return {{red, red + size, red + 2 * size, hasAlpha ? red + 3 * size : nullptr},
                {rowStride, rowStride, rowStride, rowStride},
                format,
                hasAlpha ? 4U : 3U,
                width,
                height};
    }

    /// A plane for each channel; that of alpha may be null.
    struct Plane {
        Address first = nullptr;
        std::ptrdiff_t rowStride = 0;  ///< In bytes.
    };
    /// One plane for each channel; the last may be empty.
    [[nodiscard]] static BasicPixelBuffer planar(Plane red, Plane green, Plane blue, Plane alpha, SampleFormat format,
                                                 std::size_t width, std::size_t height) noexcept {
        const auto bytes = [](Plane plane) { return static_cast<Byte*>(plane.first); };
        return {{bytes(red), bytes(green), bytes(blue), bytes(alpha)},
                {red.rowStride, green.rowStride, blue.rowStride, alpha.rowStride},
                format,
                1,
                width,
                height};
    }

    /// The same pixels, to be read.
    // NOLINTNEXTLINE(google-explicit-constructor): reading what may be written is always right
    operator BasicPixelBuffer<const std::byte>() const noexcept
        requires(!std::is_const_v<Byte>)
    {
        return {{channels_[0], channels_[1], channels_[2], channels_[3]},
                rowStrides_,
                format_,
                pixelStride_,
                width_,
                height_};
    }

    [[nodiscard]] SampleFormat format() const noexcept { return format_; }
    [[nodiscard]] std::size_t width() const noexcept { return width_; }
    [[nodiscard]] std::size_t height() const noexcept { return height_; }
    /// Whether channel 3 is there.
    [[nodiscard]] bool hasAlpha() const noexcept { return channels_[3] != nullptr; }
    /// The samples from one pixel's red to the next one's: 1 in planes.
    [[nodiscard]] std::size_t pixelStride() const noexcept { return pixelStride_; }

    /// The sample of a pixel's channel: 0 red, 1 green, 2 blue, 3 alpha, which must be there. Row 0 is the top one. Not
    /// checked.
    [[nodiscard]] Byte* sample(std::size_t channel, std::size_t row, std::size_t column) const noexcept {
        return channels_[channel] + static_cast<std::ptrdiff_t>(row) * rowStrides_[channel] +
               static_cast<std::ptrdiff_t>(column * pixelStride_ * byteCount(format_));
    }

private:
    template <class>
    friend class BasicPixelBuffer;

    BasicPixelBuffer(std::array<Byte*, 4> channels, std::array<std::ptrdiff_t, 4> rowStrides, SampleFormat format,
                     std::size_t pixelStride, std::size_t width, std::size_t height) noexcept
        : channels_(channels),
          rowStrides_(rowStrides),
          pixelStride_(pixelStride),
          width_(width),
          height_(height),
          format_(format) {
        require(width == 0 || height == 0 || (channels[0] && channels[1] && channels[2]),
                "a pixel buffer needs memory for its colours");
    }

    std::array<Byte*, 4> channels_;
    std::array<std::ptrdiff_t, 4> rowStrides_;
    std::size_t pixelStride_, width_, height_;
    SampleFormat format_;
};

/// Pixels that may be written; a view that is constant still writes them.
using PixelBuffer = BasicPixelBuffer<std::byte>;
using ConstPixelBuffer = BasicPixelBuffer<const std::byte>;

}  // namespace corvex::inline v0

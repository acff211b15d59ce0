#include <Corvex/lut/BitDepth.h>

#include <limits>

#include <Corvex/platform/Checked.h>

namespace corvex::inline v0 {

std::uint64_t normalizedUnsignedInteger(std::uint64_t value, std::int64_t ofBitDepth,
                                        std::int64_t toBitDepth) noexcept {
    if (ofBitDepth < 1 || toBitDepth < 1 || ofBitDepth == toBitDepth || value == 0) return value;
    if (toBitDepth < ofBitDepth) {
        const std::int64_t shift = ofBitDepth - toBitDepth;
        return shift < 64 ? value >> static_cast<unsigned>(shift) : 0;
    }
    const std::int64_t shift = toBitDepth - ofBitDepth;
    constexpr std::uint64_t most = std::numeric_limits<std::uint64_t>::max();
    return shift < 64 && value <= most >> static_cast<unsigned>(shift) ? value << static_cast<unsigned>(shift) : most;
}

std::uint64_t largestCodeValue(std::int64_t bitDepth) noexcept {
    return bitDepth < 1 || bitDepth > 63 ? 0 : (std::uint64_t{1} << static_cast<unsigned>(bitDepth)) - 1;
}

std::uint64_t checkedUnsignedInteger(double value, const std::source_location& where) noexcept {
    require(value > -1.0 && value < 18446744073709551616.0, "a sample does not fit into an unsigned integer", where);
    return value > 0 ? static_cast<std::uint64_t>(value) : 0;
}

}  // namespace corvex::inline v0

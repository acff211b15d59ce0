#pragma once

#include <cstdint>
#include <string_view>

#include <Corvex/lut/LutValueTriplet.h>
#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

/// In which depth a sample is answered: that which the caller asks for, or that of the input.
enum class AnswerDepth : std::uint8_t { output, input };

/// Looks code values up in a table, one colour at a time and as the file's numbers say; pictures are for LutApplier.
/// Immutable; any thread.
class CORVEX_EXPORT RGBSampleConverter {
public:
    virtual ~RGBSampleConverter();

    /// `input` has `inputBitDepth` bits; the answer has `outputBitDepth` bits, or those of the input. A result that is
    /// not above -1 or not below 2^64, or a position that is no number, stops the process: check a table before use.
    [[nodiscard]] virtual RGB<std::uint64_t> sample(const RGB<std::uint64_t>& input, std::int64_t inputBitDepth,
                                                    std::int64_t outputBitDepth,
                                                    AnswerDepth answerDepth) const noexcept = 0;

    /// The name of the converter's class, for logs and tools. A literal.
    [[nodiscard]] virtual std::string_view className() const noexcept = 0;

protected:
    RGBSampleConverter() = default;
    RGBSampleConverter(const RGBSampleConverter&) = default;
    RGBSampleConverter(RGBSampleConverter&&) = default;
    RGBSampleConverter& operator=(const RGBSampleConverter&) = default;
    RGBSampleConverter& operator=(RGBSampleConverter&&) = default;
};

}  // namespace corvex::inline v0

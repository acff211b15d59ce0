#pragma once

#include <concepts>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include <Corvex/lut/RGBSampleConverter.h>
#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

/// One table for each channel: entry number i answers input i of n - 1. Immutable; any thread; looking up takes
/// constant time.
class CORVEX_EXPORT OneDimensionConverter : public RGBSampleConverter {
public:
    ~OneDimensionConverter() override;

    /// As given. Valid as long as the converter.
    [[nodiscard]] std::span<const LutValueTriplet> orderedEntries() const noexcept { return orderedEntries_; }
    [[nodiscard]] std::uint64_t totalEntries() const noexcept { return orderedEntries_.size(); }
    /// The bits that number the entries, rounded down; 8 for no entries, 0 for one.
    [[nodiscard]] std::int64_t lutBitDepth() const noexcept;
    /// 2^lutBitDepth - 1.
    [[nodiscard]] std::uint64_t maxInputColor() const noexcept;
    [[nodiscard]] double maxInputValue() const noexcept { return static_cast<double>(maxInputColor()); }
    /// Always: entry 0 answers it.
    [[nodiscard]] double minInputValue() const noexcept { return 0; }
    /// The bounds of the table's values.
    [[nodiscard]] double lowValue() const noexcept { return lowValue_; }
    [[nodiscard]] double highValue() const noexcept { return highValue_; }

    /// A position among the entries, each component limited to the first and the last of them.
    [[nodiscard]] RGB<double> boundCheckedRGBInput(const RGB<double>& position) const noexcept;

protected:
    /// The bounds are those of the entries' values.
    OneDimensionConverter(std::vector<LutValueTriplet> entries, double lowValue, double highValue) noexcept;
    /// Takes the bounds from the entries; without any, 0 and -1.
    explicit OneDimensionConverter(std::vector<LutValueTriplet> entries) noexcept;

private:
    std::vector<LutValueTriplet> orderedEntries_;
    double lowValue_, highValue_;
};

/// For tables of whole code values: the entry whose number the input is, without blending.
class CORVEX_EXPORT OneDimensionsUnsignedIntegerConverter final : public OneDimensionConverter {
public:
    /// `valueBitDepth` is that of the table's values. There must be an entry.
    OneDimensionsUnsignedIntegerConverter(std::vector<LutValueTriplet> entries, std::int64_t valueBitDepth) noexcept;
    ~OneDimensionsUnsignedIntegerConverter() override;

    [[nodiscard]] std::int64_t valueBitDepth() const noexcept { return valueBitDepth_; }

    [[nodiscard]] RGB<std::uint64_t> sample(const RGB<std::uint64_t>& input, std::int64_t inputBitDepth,
                                            std::int64_t outputBitDepth,
                                            AnswerDepth answerDepth) const noexcept override;
    [[nodiscard]] std::string_view className() const noexcept override {
        return "OneDimensionsUnsignedIntegerConverter";
    }

private:
    std::int64_t valueBitDepth_;
};

/// For tables of which 1.0 is full scale: neighbours are blended. (0, 0, 0) where a depth is below 1 or above 63.
class CORVEX_EXPORT OneDimensionFloatingPointConverter final : public OneDimensionConverter {
public:
    /// There must be an entry.
    OneDimensionFloatingPointConverter(std::vector<LutValueTriplet> entries, double lowValue,
                                       double highValue) noexcept;
    ~OneDimensionFloatingPointConverter() override;

    [[nodiscard]] RGB<std::uint64_t> sample(const RGB<std::uint64_t>& input, std::int64_t inputBitDepth,
                                            std::int64_t outputBitDepth,
                                            AnswerDepth answerDepth) const noexcept override;
    [[nodiscard]] std::string_view className() const noexcept override { return "OneDimensionFloatingPointConverter"; }
};

/// A converter that has its table at hand, in the order of the file.
template <class Converter>
concept LutRGBSampleConverter =
    std::derived_from<Converter, RGBSampleConverter> && requires(const Converter& converter) {
        { converter.orderedEntries() } -> std::convertible_to<std::span<const LutValueTriplet>>;
    };
static_assert(LutRGBSampleConverter<OneDimensionConverter>);

}  // namespace corvex::inline v0

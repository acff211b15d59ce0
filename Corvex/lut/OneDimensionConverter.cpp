#include <Corvex/lut/OneDimensionConverter.h>

#include <algorithm>
#include <bit>
#include <cstddef>
#include <utility>

#include <Corvex/lut/BitDepth.h>
#include <Corvex/platform/Checked.h>

namespace corvex::inline v0 {

OneDimensionConverter::~OneDimensionConverter() = default;
OneDimensionsUnsignedIntegerConverter::~OneDimensionsUnsignedIntegerConverter() = default;
OneDimensionFloatingPointConverter::~OneDimensionFloatingPointConverter() = default;

OneDimensionConverter::OneDimensionConverter(std::vector<LutValueTriplet> entries, double lowValue,
                                             double highValue) noexcept
    : orderedEntries_(std::move(entries)), lowValue_(lowValue), highValue_(highValue) {}

OneDimensionConverter::OneDimensionConverter(std::vector<LutValueTriplet> entries) noexcept
    : OneDimensionConverter(std::move(entries), 0, -1) {
    if (orderedEntries_.empty()) return;
    lowValue_ = orderedEntries_.front().smallest();
    highValue_ = orderedEntries_.front().largest();
    for (const LutValueTriplet& entry : orderedEntries_) {
        lowValue_ = std::min(lowValue_, entry.smallest());
        highValue_ = std::max(highValue_, entry.largest());
    }
}

std::int64_t OneDimensionConverter::lutBitDepth() const noexcept {
    return orderedEntries_.empty() ? 8 : static_cast<std::int64_t>(std::bit_width(orderedEntries_.size())) - 1;
}

std::uint64_t OneDimensionConverter::maxInputColor() const noexcept { return largestCodeValue(lutBitDepth()); }

RGB<double> OneDimensionConverter::boundCheckedRGBInput(const RGB<double>& position) const noexcept {
    const double last = static_cast<double>(totalEntries()) - 1;
    return mapped(position, [&](double value) { return std::clamp(value, minInputValue(), last); });
}

OneDimensionsUnsignedIntegerConverter::OneDimensionsUnsignedIntegerConverter(std::vector<LutValueTriplet> entries,
                                                                             std::int64_t valueBitDepth) noexcept
    : OneDimensionConverter(std::move(entries)), valueBitDepth_(valueBitDepth) {
    require(totalEntries() > 0, "a table needs an entry");
}

RGB<std::uint64_t> OneDimensionsUnsignedIntegerConverter::sample(const RGB<std::uint64_t>& input,
                                                                 std::int64_t inputBitDepth,
                                                                 std::int64_t outputBitDepth,
                                                                 AnswerDepth answerDepth) const noexcept {
    const auto position = boundCheckedRGBInput(mapped(input, [&](std::uint64_t value) {
        return static_cast<double>(normalizedUnsignedInteger(value, inputBitDepth, lutBitDepth()));
    }));
    const auto entries = orderedEntries();
    const RGB<double> found{entries[static_cast<std::size_t>(position.r)].first,
                            entries[static_cast<std::size_t>(position.g)].second,
                            entries[static_cast<std::size_t>(position.b)].third};
    const std::int64_t depth = answerDepth == AnswerDepth::input ? inputBitDepth : outputBitDepth;
    return mapped(found, [&](double value) {
        return normalizedUnsignedInteger(checkedUnsignedInteger(value), valueBitDepth_, depth);
    });
}

OneDimensionFloatingPointConverter::OneDimensionFloatingPointConverter(std::vector<LutValueTriplet> entries,
                                                                       double lowValue, double highValue) noexcept
    : OneDimensionConverter(std::move(entries), lowValue, highValue) {
    require(totalEntries() > 0, "a table needs an entry");
}

RGB<std::uint64_t> OneDimensionFloatingPointConverter::sample(const RGB<std::uint64_t>& input,
                                                              std::int64_t inputBitDepth, std::int64_t outputBitDepth,
                                                              AnswerDepth answerDepth) const noexcept {
    const auto inputMaximum = static_cast<double>(largestCodeValue(inputBitDepth));
    const std::int64_t depth = answerDepth == AnswerDepth::input ? inputBitDepth : outputBitDepth;
    const auto outputMaximum = static_cast<double>(largestCodeValue(depth));
    if (inputMaximum <= 0 || outputMaximum <= 0) return {};
    const auto entries = orderedEntries();
    const auto last = static_cast<double>(entries.size() - 1);
    const auto position = boundCheckedRGBInput(
        mapped(input, [&](std::uint64_t value) { return static_cast<double>(value) / inputMaximum * last; }));
    const auto blended = [&](double at, double LutValueTriplet::*channel) {
        const auto lower = static_cast<std::size_t>(at);
        const std::size_t upper = std::min(lower + 1, entries.size() - 1);
        const double fraction = at - static_cast<double>(lower);
        const double value = (1.0 - fraction) * entries[lower].*channel + fraction * entries[upper].*channel;
        return checkedUnsignedInteger(value * outputMaximum);
    };
    return {blended(position.r, &LutValueTriplet::first), blended(position.g, &LutValueTriplet::second),
            blended(position.b, &LutValueTriplet::third)};
}

}  // namespace corvex::inline v0

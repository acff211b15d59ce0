#include <Corvex/timing/FrameRate.h>

#include <algorithm>
#include <array>

#include <Corvex/platform/DoubleText.h>
#include <Corvex/platform/Localization.h>
#include <Corvex/platform/Log.h>
#include <Corvex/timing/internal/rateText.h>

namespace corvex::inline v0 {
namespace {

constexpr std::array cases{FrameRate::match,    FrameRate::halfstep, FrameRate::fps23_98,   FrameRate::fps24,
                           FrameRate::fps25,    FrameRate::fps29_97, FrameRate::fps30,      FrameRate::fps50,
                           FrameRate::fps59_94, FrameRate::fps60,    FrameRate::custom(0.0)};
constexpr std::string_view unit = " fps";

}  // namespace

std::optional<FrameRate> FrameRate::fromRawValue(double value) {
    const auto fixed = wellDefinedCases();
    const auto found =
        std::find_if(fixed.begin(), fixed.end(), [value](auto rate) { return rate.rawValue() == value; });
    if (found != fixed.end()) return *found;
    if (value > 0) return custom(value);
    logError("Could not convert raw value to frame rate: " + defaultText(value));
    return std::nullopt;
}

std::span<const FrameRate> FrameRate::wellDefinedCases() noexcept { return std::span(cases).first(cases.size() - 1); }
std::span<const FrameRate> FrameRate::allCases() noexcept { return cases; }

std::string FrameRate::description() const {
    switch (choice_) {
        case Choice::match: return localizedText("Match Source");
        case Choice::halfstep: return localizedText("Half Step");
        case Choice::custom: break;
        default: return wholeOrHundredths(rawValue_).append(unit);
    }
    std::string text = pickerDescription();
    if (rawValue_ > 0) text.append(": ").append(defaultText(rawValue_)).append(unit);
    return text;
}

std::string FrameRate::pickerDescription() const {
    return choice_ == Choice::custom ? localizedText("Custom") : description();
}

std::string FrameRate::tag() const {
    std::string text = description();
    if (text.ends_with(unit)) text.resize(text.size() - unit.size());
    return text;
}

}  // namespace corvex::inline v0

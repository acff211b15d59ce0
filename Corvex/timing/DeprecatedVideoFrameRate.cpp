#include <Corvex/timing/DeprecatedVideoFrameRate.h>

#include <nlohmann/json.hpp>

#include <array>
#include <atomic>
#include <functional>

#include <Corvex/platform/CaseTable.h>
#include <Corvex/platform/Object.h>
#include <Corvex/timing/internal/decodeMember.h>
#include <Corvex/timing/internal/rateText.h>

namespace corvex::inline v0 {

using Choice = DeprecatedVideoFrameRate::Choice;

/// The fixed cases with their frames per second; those of an NTSC case are over `ntscTimeScale`.
struct DeprecatedRateCase : Case<Choice> {
    std::int64_t timeValue;
    bool isNtsc;
};

template <>
inline constexpr auto caseTable<Choice> = std::to_array<DeprecatedRateCase>({
    {{Choice::ntsc24p, "ntsc24p", "24p NTSC"}, 24000, true},
    {{Choice::p24, "p24", "24p"}, 24, false},
    {{Choice::pal25p, "pal25p", "25p PAL"}, 25, false},
    {{Choice::ntsc30p, "ntsc30p", "30p NTSC"}, 30000, true},
    {{Choice::p30, "p30", "30p"}, 30, false},
    {{Choice::p48, "p48", "48p"}, 48, false},
    {{Choice::p50, "p50", "50p"}, 50, false},
    {{Choice::ntsc60p, "ntsc60p", "60p NTSC"}, 60000, true},
    {{Choice::p60, "p60", "60p"}, 60, false},
    {{Choice::p72, "p72", "72p"}, 72, false},
    {{Choice::ntsc120p, "ntsc120p", "120p NTSC"}, 120000, true},
    {{Choice::p120, "p120", "120p"}, 120, false},
    {{Choice::p300, "p300", "300p"}, 300, false},
    {{Choice::p600, "p600", "600p"}, 600, false},
    {{Choice::custom, "custom", "custom"}, 0, false},
});
static_assert(isComplete<Choice>(caseTable<Choice>));

namespace {

std::atomic<std::int64_t> currentTimeScale{MediaTiming::ntscTimeScale};

}  // namespace

DeprecatedVideoFrameRate DeprecatedVideoFrameRate::fromRawValue(const MediaRational& rate) noexcept {
    for (const Choice choice : allCases<Choice>) {
        if (choice == Choice::custom) break;
        const DeprecatedVideoFrameRate fixed(choice);
        if (fixed.rawValue() == rate) return fixed;
    }
    return custom(rate);
}

MediaRational DeprecatedVideoFrameRate::rawValue() const noexcept {
    if (choice_ == Choice::custom) return custom_;
    const auto& row = caseOf(choice_);
    return {row.timeValue, row.isNtsc ? ntscTimeScale() : 1};
}

bool DeprecatedVideoFrameRate::hasNTSCTimeBase() const noexcept {
    return choice_ == Choice::custom ? custom_.timeScale() == ntscTimeScale() : caseOf(choice_).isNtsc;
}

std::span<const DeprecatedVideoFrameRate> DeprecatedVideoFrameRate::definedNTSCRates() noexcept {
    static constexpr std::array rates{
        DeprecatedVideoFrameRate(Choice::ntsc24p), DeprecatedVideoFrameRate(Choice::ntsc30p),
        DeprecatedVideoFrameRate(Choice::ntsc60p), DeprecatedVideoFrameRate(Choice::ntsc120p)};
    return rates;
}

std::string DeprecatedVideoFrameRate::formattedString() const { return wholeOrHundredths(rawValue().rawValue()); }

std::int64_t DeprecatedVideoFrameRate::ntscTimeScale() noexcept {
    return currentTimeScale.load(std::memory_order_relaxed);
}

void DeprecatedVideoFrameRate::setNtscTimeScale(std::int64_t timeScale) noexcept {
    require(timeScale != 0, "a time scale must not be 0");
    currentTimeScale.store(timeScale, std::memory_order_relaxed);
}

template <class JsonType>
void to_json(JsonType& json, const DeprecatedVideoFrameRate& value) {
    const bool isCustom = value.choice() == Choice::custom;
    json = Json::object();
    json[std::string(rawValue(value.choice()))] = isCustom ? Json(value.rawValue()) : Json::object();
}

template <class JsonType>
void from_json(const JsonType& coded, DeprecatedVideoFrameRate& value) {
    const Json& json = coded;  // converted where it is of the other kind
    const auto [key, payload] = decodeKeyedCase(json, "DeprecatedVideoFrameRate");
    const auto choice = fromRawValue<Choice>(key);
    if (!choice) throw DecodingError(std::string(key), "is no frame rate");
    value = *choice == Choice::custom ? DeprecatedVideoFrameRate::custom(payload.get<MediaRational>())
                                      : DeprecatedVideoFrameRate(*choice);
}

template CORVEX_EXPORT void to_json(Json&, const DeprecatedVideoFrameRate&);
template CORVEX_EXPORT void to_json(nlohmann::json&, const DeprecatedVideoFrameRate&);
template CORVEX_EXPORT void from_json(const Json&, DeprecatedVideoFrameRate&);
template CORVEX_EXPORT void from_json(const nlohmann::json&, DeprecatedVideoFrameRate&);

}  // namespace corvex::inline v0

std::size_t std::hash<corvex::DeprecatedVideoFrameRate>::operator()(
    const corvex::DeprecatedVideoFrameRate& rate) const noexcept {
    const bool isCustom = rate.choice() == corvex::DeprecatedVideoFrameRate::Choice::custom;
    return corvex::combinedHash(static_cast<std::size_t>(rate.choice()),
                                isCustom ? std::hash<corvex::MediaRational>{}(rate.rawValue()) : 0);
}

#include <Corvex/timing/MediaRational.h>

#include <nlohmann/json.hpp>

#include <Corvex/platform/DoubleText.h>
#include <Corvex/platform/Error.h>
#include <Corvex/timing/CommonVideoFrameRate.h>
#include <Corvex/timing/internal/decodeMember.h>

namespace corvex::inline v0 {

std::string MediaRational::roundedDecimalString() const { return fixedText(rawValue(), 2); }

std::string MediaRational::fStopDescription() const { return "f/" + roundedDecimalString(); }

MediaRational MediaRational::quantizedRepresentation() const noexcept {
    const auto common = definedFrameRate(*this);
    return common ? rational(*common) : *this;
}

template <class JsonType>
void to_json(JsonType& json, const MediaRational& value) {
    json = value.rawValue();
}

template <class JsonType>
void from_json(const JsonType& coded, MediaRational& value) {
    const Json& json = coded;                        // converted where it is of the other kind
    constexpr double limit = 9223372036854775808.0;  // 2^63
    const double number = decodeNumber(json, "rawValue");
    // What comes from outside must not reach the fatal case of fromRawValue.
    const auto decoded = number > -limit ? MediaRational::fromRawValue(number) : std::nullopt;
    if (!decoded) throw DecodingError("rawValue", "is no media rational: " + jsonText(json));
    value = *decoded;
}

template CORVEX_EXPORT void to_json(Json&, const MediaRational&);
template CORVEX_EXPORT void to_json(nlohmann::json&, const MediaRational&);
template CORVEX_EXPORT void from_json(const Json&, MediaRational&);
template CORVEX_EXPORT void from_json(const nlohmann::json&, MediaRational&);

}  // namespace corvex::inline v0

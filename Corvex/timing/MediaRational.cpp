#include <Corvex/timing/MediaRational.h>

#include <nlohmann/json.hpp>

#include <Corvex/platform/DoubleText.h>
#include <Corvex/platform/Error.h>
#include <Corvex/timing/CommonVideoFrameRate.h>
#include <Corvex/timing/decodeMember.h>

namespace corvex::inline v0 {

std::string MediaRational::roundedDecimalString() const { return fixedText(rawValue(), 2); }

std::string MediaRational::fStopDescription() const { return "f/" + roundedDecimalString(); }

MediaRational MediaRational::quantizedRepresentation() const noexcept {
    const auto common = definedFrameRate(*this);
    return common ? rational(*common) : *this;
}

void to_json(Json& json, const MediaRational& value) { json = value.rawValue(); }

void from_json(const Json& json, MediaRational& value) {
    constexpr double limit = 9223372036854775808.0;  // 2^63
    const double coded = decodeNumber(json, "rawValue");
    // What comes from outside must not reach the fatal case of fromRawValue.
    const auto decoded = coded > -limit ? MediaRational::fromRawValue(coded) : std::nullopt;
    if (!decoded) throw DecodingError("rawValue", "is no media rational: " + jsonText(json));
    value = *decoded;
}

}  // namespace corvex::inline v0

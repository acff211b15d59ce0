#include <Corvex/timing/DropFrameState.h>

#include <nlohmann/json.hpp>

#include <Corvex/timing/internal/decodeMember.h>

namespace corvex::inline v0 {

template <class JsonType>
void to_json(JsonType& json, DropFrameState value) {
    json = Json::object();
    json[std::string(rawValue(value))] = Json::object();
}

template <class JsonType>
void from_json(const JsonType& coded, DropFrameState& value) {
    const Json& json = coded;  // converted where it is of the other kind
    const auto [key, payload] = decodeKeyedCase(json, "DropFrameState");
    const auto decoded = fromRawValue<DropFrameState>(key);
    if (!decoded) throw DecodingError(std::string(key), "is no drop-frame state");
    value = *decoded;
}

template CORVEX_EXPORT void to_json(Json&, DropFrameState);
template CORVEX_EXPORT void to_json(nlohmann::json&, DropFrameState);
template CORVEX_EXPORT void from_json(const Json&, DropFrameState&);
template CORVEX_EXPORT void from_json(const nlohmann::json&, DropFrameState&);

}  // namespace corvex::inline v0

#include <Corvex/timing/DropFrameState.h>

#include <nlohmann/json.hpp>

#include <Corvex/timing/decodeMember.h>

namespace corvex::inline v0 {

void to_json(Json& json, DropFrameState value) {
    json = Json::object();
    json[std::string(rawValue(value))] = Json::object();
}

void from_json(const Json& json, DropFrameState& value) {
    const auto [key, payload] = decodeKeyedCase(json, "DropFrameState");
    const auto decoded = fromRawValue<DropFrameState>(key);
    if (!decoded) throw DecodingError(std::string(key), "is no drop-frame state");
    value = *decoded;
}

}  // namespace corvex::inline v0

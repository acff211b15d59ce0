#include <Corvex/platform/Json.h>

#include <nlohmann/json.hpp>

#include <Corvex/platform/Error.h>

namespace corvex::inline v0 {

const Json* findMember(const Json& json, std::string_view key) {
    if (!json.is_object()) throw DecodingError(std::string(key), "expected in an object, not in " + jsonText(json));
    const auto found = json.find(std::string(key));
    return found == json.end() ? nullptr : &*found;
}

const Json& requireMember(const Json& json, std::string_view key) {
    const Json* member = findMember(json, key);
    if (member == nullptr) throw DecodingError(std::string(key), "is missing");
    return *member;
}

std::string jsonText(const Json& json, int indent) {
    return json.dump(indent, ' ', false, Json::error_handler_t::replace);
}

}  // namespace corvex::inline v0

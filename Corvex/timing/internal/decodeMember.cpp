#include <Corvex/timing/internal/decodeMember.h>

#include <nlohmann/json.hpp>

#include <string>

#include <Corvex/platform/Error.h>

namespace corvex::inline v0 {

std::int64_t decodeInteger(const Json& json, std::string_view key) {
    const auto number = wholeNumberOf(json);
    if (!number) throw DecodingError(std::string(key), "expected a whole number of 64 bits, not " + jsonText(json));
    return *number;
}

double decodeNumber(const Json& json, std::string_view key) {
    if (!json.is_number()) throw DecodingError(std::string(key), "expected a number, not " + jsonText(json));
    return json.get<double>();
}

KeyedCase decodeKeyedCase(const Json& json, std::string_view type) {
    if (!json.is_object() || json.size() != 1) {
        throw DecodingError(std::string(type), "expected an object with one case as its key, not " + jsonText(json));
    }
    const auto member = json.begin();
    return {member.key(), member.value()};
}

}  // namespace corvex::inline v0

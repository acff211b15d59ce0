#include <Corvex/timing/decodeMember.h>

#include <nlohmann/json.hpp>

#include <string>
#include <utility>

#include <Corvex/platform/Error.h>

namespace corvex::inline v0 {

std::int64_t decodeInteger(const Json& json, std::string_view key) {
    const bool fits =
        json.is_number_unsigned() ? std::in_range<std::int64_t>(json.get<std::uint64_t>()) : json.is_number_integer();
    if (!fits) throw DecodingError(std::string(key), "expected a whole number of 64 bits, not " + jsonText(json));
    return json.get<std::int64_t>();
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

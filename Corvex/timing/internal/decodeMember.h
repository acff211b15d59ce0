#pragma once

#include <cstdint>
#include <string_view>

#include <Corvex/platform/Json.h>

namespace corvex::inline v0 {

/// The whole number of 64 bits, or the number, that `json` is. `key` is what DecodingError names when it is not.
[[nodiscard]] std::int64_t decodeInteger(const Json& json, std::string_view key);
/// Throws DecodingError, which names the key, unless the member is a number.
[[nodiscard]] double decodeNumber(const Json& json, std::string_view key);

/// The member `key` of `json` as a whole number. Throws DecodingError when it is absent or is none.
[[nodiscard]] inline std::int64_t decodeIntegerMember(const Json& json, std::string_view key) {
    return decodeInteger(requireMember(json, key), key);
}

/// The only member of an object whose one key names a case; an enumeration with payloads is coded so.
struct KeyedCase {
    std::string_view key;
    const Json& payload;
};

/// Throws DecodingError naming `type` unless `json` is an object with exactly one member. Refers into `json`.
[[nodiscard]] KeyedCase decodeKeyedCase(const Json& json, std::string_view type);

}  // namespace corvex::inline v0

#pragma once

#include <nlohmann/json_fwd.hpp>

#include <string>
#include <string_view>

#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

/// What Corvex codes to: keeps the order in which members were added. Include <nlohmann/json.hpp> to use one.
using Json = nlohmann::ordered_json;

/// The member of an object, or none. Throws DecodingError naming the key when `json` is no object.
[[nodiscard]] CORVEX_EXPORT const Json* findMember(const Json& json, std::string_view key);

/// The member of an object. Throws DecodingError naming the key when it is absent.
[[nodiscard]] CORVEX_EXPORT const Json& requireMember(const Json& json, std::string_view key);

/// The JSON text of `json` on one line (or indented by `indent` blanks if not negative); bytes that are no UTF-8 become
/// U+FFFD, as JSON (RFC 8259, section 8.1) has no other way to carry them.
[[nodiscard]] CORVEX_EXPORT std::string jsonText(const Json& json, int indent = -1);

}  // namespace corvex::inline v0

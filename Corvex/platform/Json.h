#pragma once

#include <nlohmann/json_fwd.hpp>

#include <cstdint>
#include <optional>
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

/// The text that `json` is, or none. Valid while `json` lives and is not changed.
[[nodiscard]] CORVEX_EXPORT std::optional<std::string_view> textOf(const Json& json) noexcept;

/// The whole number of 64 bits that `json` is, or none; 2.0 is none.
[[nodiscard]] CORVEX_EXPORT std::optional<std::int64_t> wholeNumberOf(const Json& json) noexcept;

/// For headers that know Json by name only.
CORVEX_EXPORT void setJson(Json& json, std::string_view text);
CORVEX_EXPORT void setJson(Json& json, std::int64_t number);

/// The JSON text of `json` on one line (or indented by `indent` blanks if not negative); bytes that are no UTF-8 become
/// U+FFFD, as JSON (RFC 8259, section 8.1) has no other way to carry them.
[[nodiscard]] CORVEX_EXPORT std::string jsonText(const Json& json, int indent = -1);

}  // namespace corvex::inline v0

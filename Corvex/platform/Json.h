#pragma once

#include <nlohmann/json_fwd.hpp>

#include <concepts>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include <Corvex/platform/CaseTable.h>
#include <Corvex/platform/Error.h>
#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

/// What Corvex codes to: keeps the order in which members were added. Include <nlohmann/json.hpp> to use one.
/// Types are coded to and from nlohmann::json as well, which orders members by their keys.
using Json = nlohmann::ordered_json;

/// The member of an object, or none. Throws DecodingError naming the key when `json` is no object.
[[nodiscard]] CORVEX_EXPORT const Json* findMember(const Json& json, std::string_view key);

/// The member of an object. Throws DecodingError naming the key when it is absent.
[[nodiscard]] CORVEX_EXPORT const Json& requireMember(const Json& json, std::string_view key);

/// The text that `json` is, or none. Valid while `json` lives and is not changed.
[[nodiscard]] CORVEX_EXPORT std::optional<std::string_view> textOf(const Json& json) noexcept;

/// The whole number of 64 bits that `json` is, or none; 2.0 is none.
[[nodiscard]] CORVEX_EXPORT std::optional<std::int64_t> wholeNumberOf(const Json& json) noexcept;

/// The JSON text of `json` on one line (or indented by `indent` blanks if not negative); bytes that are no UTF-8 become
/// U+FFFD, as JSON (RFC 8259, section 8.1) has no other way to carry them.
[[nodiscard]] CORVEX_EXPORT std::string jsonText(const Json& json, int indent = -1);

}  // namespace corvex::inline v0

namespace nlohmann {

/// Codes a case of a closed enumeration as its raw value. Decoding anything else throws DecodingError.
template <corvex::CodedAsRawValue Enumeration>
struct adl_serializer<Enumeration> {
    // NOLINTBEGIN(readability-identifier-naming): the JSON library looks for these names
    template <class JsonType>
    static void to_json(JsonType& json, Enumeration value) {
        if constexpr (std::integral<decltype(corvex::rawValue(value))>) {
            json = static_cast<std::int64_t>(corvex::rawValue(value));
        } else {
            json = std::string(corvex::rawValue(value));
        }
    }

    static void from_json(const corvex::Json& json, Enumeration& value) {
        std::optional<Enumeration> decoded;
        if constexpr (std::integral<decltype(corvex::rawValue(value))>) {
            if (const auto number = corvex::wholeNumberOf(json)) decoded = corvex::fromRawValue<Enumeration>(*number);
        } else {
            if (const auto text = corvex::textOf(json)) decoded = corvex::fromRawValue<Enumeration>(*text);
        }
        if (!decoded) throw corvex::DecodingError("rawValue", "no case has " + corvex::jsonText(json));
        value = *decoded;
    }
    // NOLINTEND(readability-identifier-naming)
};

}  // namespace nlohmann

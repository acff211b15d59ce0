#include <Corvex/platform/Json.h>

#include <utility>

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

std::optional<std::string_view> textOf(const Json& json) noexcept {
    const auto* text = json.get_ptr<const std::string*>();
    return text == nullptr ? std::nullopt : std::optional<std::string_view>(*text);
}

std::optional<std::int64_t> wholeNumberOf(const Json& json) noexcept {
    if (const auto* number = json.get_ptr<const std::uint64_t*>(); number != nullptr) {
        return std::in_range<std::int64_t>(*number) ? std::optional(static_cast<std::int64_t>(*number)) : std::nullopt;
    }
    const auto* number = json.get_ptr<const std::int64_t*>();
    return number == nullptr ? std::nullopt : std::optional(*number);
}

std::string jsonText(const Json& json, int indent) {
    return json.dump(indent, ' ', false, Json::error_handler_t::replace);
}

}  // namespace corvex::inline v0

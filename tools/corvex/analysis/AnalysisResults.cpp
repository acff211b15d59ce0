#include <tools/corvex/analysis/AnalysisResults.h>

#include <algorithm>
#include <cmath>
#include <concepts>

#include <nlohmann/json.hpp>

#include <Corvex/platform/Error.h>

namespace corvex::tool {
namespace {

template <class T>
constexpr bool isOptional = false;
template <class T>
constexpr bool isOptional<std::optional<T>> = true;

template <class T>
Json encoded(const T& value);

template <class T>
Json encodedRecord(const T& record) {
    Json json = Json::object();
    T::members(record, [&]<class Member>(const char* key, const Member& member) {
        if constexpr (isOptional<Member>) {
            if (member) json[key] = encoded(*member);
        } else {
            json[key] = encoded(member);
        }
    });
    return json;
}

template <class T>
Json encodedList(const std::vector<T>& values) {
    Json json = Json::array();
    for (const T& value : values) json.push_back(encoded(value));
    return json;
}

template <class T>
Json encoded(const T& value) {
    if constexpr (requires { typename T::value_type; } && !std::same_as<T, std::string>) {
        return encodedList(value);
    } else if constexpr (std::is_class_v<T> && !std::same_as<T, std::string>) {
        return encodedRecord(value);
    } else {
        return Json(value);
    }
}

template <class T>
void decode(const Json& json, const char* key, T& value);

template <class T>
void decodeRecord(const Json& json, const char* key, T& record) {
    if (!json.is_object()) throw DecodingError(key, "expected an object");
    T::members(record, [&]<class Member>(const char* name, Member& member) {
        if constexpr (isOptional<Member>) {
            if (const Json* found = findMember(json, name)) decode(*found, name, member.emplace());
        } else {
            decode(requireMember(json, name), name, member);
        }
    });
}

template <class T>
void decodeList(const Json& json, const char* key, std::vector<T>& values) {
    if (!json.is_array()) throw DecodingError(key, "expected a list");
    for (const Json& element : json) decode(element, key, values.emplace_back());
}

template <class T>
void decode(const Json& json, const char* key, T& value) {
    if constexpr (std::same_as<T, bool>) {
        if (!json.is_boolean()) throw DecodingError(key, "expected true or false");
        value = json.get<bool>();
    } else if constexpr (std::same_as<T, std::int64_t>) {
        const auto number = wholeNumberOf(json);
        if (!number) throw DecodingError(key, "expected a whole number");
        value = *number;
    } else if constexpr (std::same_as<T, double>) {
        if (!json.is_number() || !std::isfinite(json.get<double>())) throw DecodingError(key, "expected a number");
        value = json.get<double>();
    } else if constexpr (std::same_as<T, std::string>) {
        const auto text = textOf(json);
        if (!text) throw DecodingError(key, "expected a text");
        value = *text;
    } else if constexpr (requires { typename T::value_type; }) {
        decodeList(json, key, value);
    } else {
        decodeRecord(json, key, value);
    }
}

}  // namespace

bool FileResult::hasProblem() const {
    const auto isBroken = [](const auto& part) { return part.problem.has_value(); };
    const bool hasErrors =
        deep && (deep->problem || std::any_of(deep->tracks.begin(), deep->tracks.end(),
                                              [](const auto& track) { return track.decodeErrors > 0; }));
    return problem || hasErrors || std::any_of(snapshots.begin(), snapshots.end(), isBroken);
}

std::string AnalysisResults::text() const { return jsonText(encoded(*this), 2) + "\n"; }

AnalysisResults AnalysisResults::parse(std::string_view text) {
    const Json json = Json::parse(text, nullptr, false);
    if (json.is_discarded()) throw DecodingError("version", "no JSON");
    AnalysisResults results;
    decode(requireMember(json, "version"), "version", results.version);
    if (results.version != currentVersion) {
        throw DecodingError("version",
                            "expected " + std::to_string(currentVersion) + ", not " + std::to_string(results.version));
    }
    decode(json, "results", results);
    return results;
}

}  // namespace corvex::tool

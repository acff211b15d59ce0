#include <Corvex/cli/transcode/TranscodeCliArguments.h>

#include <algorithm>
#include <functional>
#include <utility>

#include <nlohmann/json.hpp>

#include <Corvex/cli/transcode/KnownTranscodeFlags.h>
#include <Corvex/cli/transcode/TranscodeCliPreset.h>
#include <Corvex/cli/transcode/internal/TranscodeArgumentParser.h>
#include <Corvex/platform/Error.h>
#include <Corvex/platform/Json.h>
#include <Corvex/platform/Text.h>

namespace corvex::inline v0 {
namespace {

template <class Value>
Value decoded(const Json& json, std::string_view key) {
    try {
        return json.get<Value>();
    } catch (const Json::exception&) {
        throw DecodingError(std::string(key), "has a value of another kind: " + jsonText(json));
    }
}

}  // namespace

std::span<const std::string_view> TranscodeCliArguments::allKnownCommandFlags() noexcept {
    return knownTranscodeFlags();
}

const ArgumentLookup& TranscodeCliArguments::orvaneCloudPresetArguments() {
    return presetArguments(TranscodeCliPreset::cloud);
}

const ArgumentLookup& TranscodeCliArguments::orvaneProRes4444XQPresetArguments() {
    return presetArguments(TranscodeCliPreset::proRes4444XQ);
}

TranscodeCliArguments::TranscodeCliArguments(std::span<const std::string> cliArgs, bool maintainOriginalOrdering) {
    TranscodeArgumentParser(*this).parseWords(cliArgs, maintainOriginalOrdering);
}

TranscodeCliArguments::TranscodeCliArguments(const ArgumentLookup& argumentLookup) {
    TranscodeArgumentParser(*this).parseLookup(argumentLookup);
}

std::optional<std::string_view> TranscodeCliArguments::argumentFlagValue(std::string_view flag) const {
    const auto found = flagValueLookup_.find(trimmed(flag));
    return found == flagValueLookup_.end() ? std::nullopt : std::optional<std::string_view>(found->second);
}

void TranscodeCliArguments::setArgumentFlagValue(std::optional<std::string_view> value, std::string_view flag) {
    if (value) {
        flagValueLookup_.insert_or_assign(flag, std::string(*value));  // a copy: the value may be part of an entry
    } else {
        flagValueLookup_.erase(flag);
    }
}

bool TranscodeCliArguments::hasArgumentFlag(std::string_view flag) const { return argumentFlagValue(flag).has_value(); }

bool TranscodeCliArguments::hasVideoArgumentFlag(const OAVTranscodeVideoArgumentFlag& flag) const {
    return hasArgumentFlag(flag.cliFlag());
}

std::optional<std::vector<std::string>> TranscodeCliArguments::unknownFlags() const {
    if (allFlagsAreValid()) return std::nullopt;
    std::vector<std::string> keys;
    keys.reserve(invalidKeyValueLookup_->size());
    for (const auto& [key, value] : *invalidKeyValueLookup_) keys.push_back(key);
    return keys;
}

bool TranscodeCliArguments::allFlagsAreValid() const noexcept {
    return !invalidKeyValueLookup_ || invalidKeyValueLookup_->empty();
}

std::vector<std::string> TranscodeCliArguments::commandLineArguments() const {
    if (!orderedFlags_) return renderArguments(flagValueLookup_);
    std::vector<std::string> words;
    words.reserve(flagValueLookup_.size() * 2);
    std::vector<bool> isRendered(flagValueLookup_.size());
    const auto renderOnce = [&](ArgumentLookup::const_iterator entry) {
        auto rendered = isRendered[static_cast<std::size_t>(entry - flagValueLookup_.begin())];
        if (rendered) return;
        rendered = true;
        words.push_back(entry->first);
        words.push_back(entry->second);
    };
    auto next = flagValueLookup_.end();
    for (const std::string& flag : *orderedFlags_) {
        // Numbered inputs mostly stand in the order of the lookup, so that each is found next to the one before.
        const auto found = next != flagValueLookup_.end() && next->first == flag ? next : flagValueLookup_.find(flag);
        if (found == flagValueLookup_.end()) continue;
        renderOnce(found);
        next = std::next(found);
    }
    if (words.size() < flagValueLookup_.size() * 2) {
        for (auto entry = flagValueLookup_.begin(); entry != flagValueLookup_.end(); ++entry) renderOnce(entry);
    }
    return words;
}

std::string TranscodeCliArguments::description() const {
    std::string text = "TranscodeCliArguments:";
    for (const std::string& word : commandLineArguments()) {
        text += ' ';
        text += word.empty() ? "\"\"" : word;
    }
    return text;
}

bool TranscodeCliArguments::isEqual(const Object& other) const {
    const auto* arguments = dynamic_cast<const TranscodeCliArguments*>(&other);
    return arguments != nullptr && *this == *arguments;
}

std::size_t TranscodeCliArguments::hash() const {
    std::size_t seed = flagValueLookup_.size();
    for (const auto& [flag, value] : flagValueLookup_) {
        seed = combinedHash(seed, std::hash<std::string>{}(flag));
        seed = combinedHash(seed, std::hash<std::string>{}(value));
    }
    return seed;
}

template <class JsonType>
void to_json(JsonType& json, const TranscodeCliArguments& arguments) {
    json = Json::object();
    json["flagValueLookup"] = arguments.flagValueLookup_;
    if (arguments.orderedFlags_) json["orderedFlags"] = *arguments.orderedFlags_;
    if (arguments.invalidKeyValueLookup_) json["invalidKeyValueLookup"] = *arguments.invalidKeyValueLookup_;
}

template <class JsonType>
void from_json(const JsonType& coded, TranscodeCliArguments& arguments) {
    const Json& json = coded;  // converted where it is of the other kind
    TranscodeCliArguments result;
    result.flagValueLookup_ = decoded<ArgumentLookup>(requireMember(json, "flagValueLookup"), "flagValueLookup");
    if (const Json* ordered = findMember(json, "orderedFlags"); ordered != nullptr && !ordered->is_null()) {
        result.orderedFlags_ = decoded<std::vector<std::string>>(*ordered, "orderedFlags");
    }
    if (const Json* invalid = findMember(json, "invalidKeyValueLookup"); invalid != nullptr && !invalid->is_null()) {
        result.invalidKeyValueLookup_ = decoded<ArgumentLookup>(*invalid, "invalidKeyValueLookup");
    }
    arguments = std::move(result);
}

template CORVEX_EXPORT void to_json(Json&, const TranscodeCliArguments&);
template CORVEX_EXPORT void to_json(nlohmann::json&, const TranscodeCliArguments&);
template CORVEX_EXPORT void from_json(const Json&, TranscodeCliArguments&);
template CORVEX_EXPORT void from_json(const nlohmann::json&, TranscodeCliArguments&);

}  // namespace corvex::inline v0

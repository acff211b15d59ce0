// corvex settings: the user's transcode preferences, which all applications share.

#include <algorithm>
#include <iterator>
#include <optional>
#include <string_view>

#include <fmt/format.h>
#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <Corvex/platform/DoubleText.h>
#include <Corvex/platform/NumberText.h>
#include <Corvex/settings/TranscodeSettings.h>
#include <tools/corvex/Subcommand.h>
#include <tools/corvex/jsonOutput.h>

namespace corvex::tool {
namespace {

using Value = UserDefaults::Value;

/// A preference that the tool knows: it has a default, and only values of its type can be set.
struct Preference {
    std::string (*key)();
    const char* accessor;  ///< By this name it can be called, too.
    Value (*effective)(const TranscodeSettings& settings);
    std::int64_t lowest;  ///< Of an integer.
    const char* about;
};

constexpr Preference preferences[] = {
    {TranscodeSettings::kUseTranscodeGPUAcceleration, "useTranscodeGPUAcceleration",
     [](const TranscodeSettings& settings) { return Value(settings.useTranscodeGPUAcceleration()); }, 0,
     "compute on a GPU where there is one"},
    {TranscodeSettings::kExplicitNumberOfConcurrentTranscodes, "explicitNumberOfConcurrentTranscodes",
     [](const TranscodeSettings& settings) { return Value(settings.explicitNumberOfConcurrentTranscodes()); }, 1,
     "transcodes that run at once"},
    {TranscodeSettings::kPermitAutoReattemptOfFailedTranscodes, "permitAutoReattemptOfFailedTranscodes",
     [](const TranscodeSettings& settings) { return Value(settings.permitAutoReattemptOfFailedTranscodes()); }, 0,
     "try a failed transcode again"},
    {TranscodeSettings::kNumberOfReattemptsPerFailedTranscode, "numberOfReattemptsPerFailedTranscode",
     [](const TranscodeSettings& settings) { return Value(settings.numberOfReattemptsPerFailedTranscode()); }, 0,
     "how often it is tried again"},
    {[] { return std::string(TranscodeSettings::kUseLegacyTranscodePipeline); }, "useLegacyTranscodePipeline",
     [](const TranscodeSettings& settings) { return Value(settings.useLegacyTranscodePipeline()); }, 0,
     "ask workers for their legacy pipeline"},
};

const char* const typeNames[] = {"boolean", "integer", "real", "text"};
static_assert(std::size(typeNames) == std::variant_size_v<Value>);

const Preference* preferenceOf(std::string_view name) {
    const auto* found = std::find_if(std::begin(preferences), std::end(preferences),
                                     [&](const Preference& row) { return row.key() == name || row.accessor == name; });
    return found == std::end(preferences) ? nullptr : found;
}

std::string keyOf(const std::string& name) {
    const Preference* preference = preferenceOf(name);
    return preference == nullptr ? name : preference->key();
}

std::string valueText(const Value& value) {
    if (const auto* text = std::get_if<std::string>(&value)) return *text;
    if (const auto* number = std::get_if<std::int64_t>(&value)) return std::to_string(*number);
    if (const auto* real = std::get_if<double>(&value)) return defaultText(*real);
    return std::get<bool>(value) ? "true" : "false";
}

Json jsonOf(const Value& value) {
    return std::visit([](const auto& held) { return Json(held); }, value);
}

/// VALUE as the type asks; none for another text.
std::optional<Value> parsed(const std::string& text, std::string_view type) {
    if (type == "boolean")
        return text == "true" || text == "false" ? std::optional<Value>(text == "true") : std::nullopt;
    if (type == "integer") {
        const auto number = parseInteger<std::int64_t>(text);
        return number ? std::optional<Value>(*number) : std::nullopt;
    }
    if (type == "real") {
        const auto number = parseFloat<double>(text);
        return number ? std::optional<Value>(*number) : std::nullopt;
    }
    return text;
}

struct SettingsChoices {
    std::string key, value, type;
    bool json = false;
};

struct SettingRow {
    std::string key;
    Value value;
    std::optional<Value> stored;
    const Preference* preference = nullptr;
};

/// The known preferences, then whatever else is stored.
std::vector<SettingRow> rowsOf(const UserDefaults& store) {
    const TranscodeSettings settings(store);
    auto stored = store.values();
    std::vector<SettingRow> rows;
    for (const Preference& preference : preferences) {
        SettingRow row{preference.key(), preference.effective(settings), std::nullopt, &preference};
        if (auto node = stored.extract(row.key)) row.stored = std::move(node.mapped());
        rows.push_back(std::move(row));
    }
    for (const auto& [key, value] : stored) rows.push_back({key, value, value, nullptr});
    return rows;
}

ExitStatus listSettings(const SettingsChoices& choices) {
    const UserDefaults store = UserDefaults::standard();
    const auto rows = rowsOf(store);
    if (choices.json) {
        Json settings = Json::array();
        for (const SettingRow& row : rows) {
            settings.push_back({{"key", row.key},
                                {"type", typeNames[row.value.index()]},
                                {"value", jsonOf(row.value)},
                                {"stored", row.stored ? jsonOf(*row.stored) : Json(nullptr)}});
        }
        printJson({{"file", store.file().string()}, {"settings", std::move(settings)}});
        return ExitStatus::success;
    }
    fmt::print("{}\n", store.file().string());
    for (const SettingRow& row : rows) {
        const char* about = row.preference == nullptr ? "" : row.preference->about;
        const bool isIgnored = row.stored && row.stored->index() != row.value.index();
        const std::string origin = !row.stored ? "default"
                                   : isIgnored ? "default; the stored " + std::string(typeNames[row.stored->index()]) +
                                                     " " + inQuotes(valueText(*row.stored)) + " is not used"
                                               : "stored";
        fmt::print("  {:<40}{:<8}{:<10}{}\n", row.key, valueText(row.value), origin, about);
    }
    return ExitStatus::success;
}

ExitStatus get(const SettingsChoices& choices) {
    const UserDefaults store = UserDefaults::standard();
    const Preference* preference = preferenceOf(choices.key);
    const auto value = preference == nullptr ? store.value(choices.key)
                                             : std::optional(preference->effective(TranscodeSettings(store)));
    if (!value) throw JobError("settings get: nothing is stored under " + inQuotes(choices.key));
    if (choices.json) {
        printJson(jsonOf(*value));
    } else {
        fmt::print("{}\n", valueText(*value));
    }
    return ExitStatus::success;
}

ExitStatus set(const SettingsChoices& choices) {
    UserDefaults store = UserDefaults::standard();
    const Preference* preference = preferenceOf(choices.key);
    std::string type = choices.type;
    if (preference != nullptr) {
        const std::string own = typeNames[preference->effective(TranscodeSettings(store)).index()];
        if (!type.empty() && type != own) throw UsageError("settings set: " + choices.key + " is of the type " + own);
        type = own;
    } else if (type.empty()) {
        std::string known;
        for (const Preference& row : preferences) known += (known.empty() ? "" : ", ") + row.key();
        throw UsageError("settings set: " + inQuotes(choices.key) + ": expected one of " + known +
                         ", or --type for a key of your own");
    }
    const auto value = parsed(choices.value, type);
    const auto* number = value ? std::get_if<std::int64_t>(&*value) : nullptr;
    if (!value || (preference != nullptr && number != nullptr && *number < preference->lowest)) {
        std::string expected = type == "boolean" ? "true or false" : "a number of the type " + type;
        if (preference != nullptr && type == "integer") expected += " from " + std::to_string(preference->lowest);
        throw UsageError("settings set: " + choices.key + " " + inQuotes(choices.value) + ": expected " + expected);
    }
    store.set(keyOf(choices.key), *value);
    return ExitStatus::success;
}

ExitStatus unset(const SettingsChoices& choices) {
    UserDefaults store = UserDefaults::standard();
    const bool isRemoved = store.remove(keyOf(choices.key));
    if (!isRemoved && preferenceOf(choices.key) == nullptr) {
        throw JobError("settings unset: nothing is stored under " + inQuotes(choices.key));
    }
    return ExitStatus::success;
}

}  // namespace

void addSettingsCommand(CLI::App& app, const Invocation& /*invocation*/, Action& action) {
    auto choices = std::make_shared<SettingsChoices>();
    CLI::App* command = app.add_subcommand("settings", "The user's transcode preferences");
    command->require_subcommand(1);
    const auto add = [&](const char* name, const char* about, ExitStatus (*run)(const SettingsChoices&)) {
        CLI::App* sub = command->add_subcommand(name, about);
        sub->callback([choices, &action, run] { action = [choices, run] { return run(*choices); }; });
        return sub;
    };
    const auto addKey = [&](CLI::App* sub) {
        sub->add_option("KEY", choices->key, "A key of 'settings list', or its accessor's name")->required();
    };
    CLI::App* all = add("list", "What is set, and what is not with its default", listSettings);
    all->add_flag("--json", choices->json, "Print one JSON object");
    CLI::App* one = add("get", "The value that counts: what is stored, or the default", get);
    addKey(one);
    one->add_flag("--json", choices->json, "Print it as JSON");
    CLI::App* write = add("set", "Store a value", set);
    addKey(write);
    write->add_option("VALUE", choices->value, "true or false, a number, or a text")->required();
    write->add_option("--type", choices->type, "For a key of your own: the type of its value")
        ->check(CLI::IsMember({"boolean", "integer", "real", "text"}));
    write->footer("Example:\n  corvex settings set kExplicitNumberOfConcurrentTranscodes 2");
    addKey(add("unset", "Forget a value, so that the default counts", unset));
}

}  // namespace corvex::tool

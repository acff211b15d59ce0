#include <Corvex/cli/transcode/TranscodeArgumentParser.h>

#include <algorithm>
#include <utility>

#include <Corvex/cli/transcode/TranscodeCliArguments.h>
#include <Corvex/cli/transcode/TranscodeCliPreset.h>
#include <Corvex/platform/Text.h>

namespace corvex::inline v0 {
namespace {

/// Lower-casing makes and removes neither white space nor "-", so trimming alone tells.
bool isFlag(std::string_view word) noexcept { return trimmed(word).starts_with('-'); }

std::string testFormOf(std::string_view word) {
    std::string testForm(trimmed(word));
    makeLowercase(testForm);
    return testForm;
}

/// `value` cleaned where it stands: copies nothing when there is nothing to trim.
void sanitizeInPlace(std::string& value, CLISanitizationOptions options) {
    const std::string_view rest = trimmed(value);
    if (rest.size() != value.size()) {
        const auto start = static_cast<std::size_t>(rest.data() - value.data());
        const std::size_t size = rest.size();
        value.erase(start + size);
        value.erase(0, start);
    }
    if (options.contains(CLISanitizationOptions::lowercase)) makeLowercase(value);
}

}  // namespace

TranscodeArgumentParser::TranscodeArgumentParser(TranscodeCliArguments& arguments) noexcept
    : arguments_(arguments), nextInput_(arguments.flagValueLookup_.end()) {}

void TranscodeArgumentParser::store(const RecognizedKey& facts, std::string_view testForm, std::string_view givenKey,
                                    std::string value) {
    if (!facts.isKnown) {
        unknown_.insert_or_assign(std::string(givenKey), std::move(value));
        return;
    }
    bool isNew = false;
    if (facts.isPreset) {
        isNew = presetValues_.insert_or_assign(std::string(testForm), std::move(value)).second;
    } else if (facts.sortedIndex != RecognizedKey::noFlag) {
        isNew = !std::exchange(isExactFound_[facts.sortedIndex], true);
        exactValues_[facts.sortedIndex] = std::move(value);
    } else {
        // Numbered inputs mostly come in the order of the lookup, so that each belongs next to the one before.
        auto& lookup = arguments_.flagValueLookup_;
        const std::size_t count = lookup.size();
        const auto entry = lookup.emplace_hint(facts.isInput ? nextInput_ : lookup.end(), testForm, std::string());
        entry->second = std::move(value);
        if (facts.isInput) nextInput_ = std::next(entry);
        isNew = lookup.size() != count;
    }
    if (keepsOrder_ && isNew) wordOrder_.emplace_back(testForm);
}

void TranscodeArgumentParser::storeExactFlags() {
    auto& lookup = arguments_.flagValueLookup_;
    auto next = lookup.begin();
    for (std::size_t i = 0; i < isExactFound_.size(); ++i) {
        if (!isExactFound_[i]) continue;
        next = std::next(lookup.emplace_hint(next, sortedKnownTranscodeFlags()[i], std::move(exactValues_[i])));
    }
}

void TranscodeArgumentParser::parseWords(std::span<const std::string> words, bool maintainOriginalOrdering) {
    keepsOrder_ = maintainOriginalOrdering;
    std::string cleaned;
    std::size_t i = 0;
    while (i < words.size() && !isFlag(words[i])) ++i;  // stray text is dropped
    while (i < words.size()) {
        std::string_view key = trimmed(words[i]);
        const RecognizedKey* exact = findKnownTranscodeFlag(key);
        if (exact == nullptr) {
            cleaned = key;
            makeLowercase(cleaned);
            key = cleaned;
        }
        const RecognizedKey facts = exact != nullptr ? *exact : recognizeTranscodeKey(key);
        std::string value;
        const std::size_t first = ++i;
        for (; i < words.size() && !isFlag(words[i]); ++i) {
            if (i != first) value += ' ';
            value += words[i];
        }
        sanitizeInPlace(value, facts.valueOptions());
        store(facts, key, key, std::move(value));  // a parsed key is in test form already
    }
    finish();
}

void TranscodeArgumentParser::parseLookup(const ArgumentLookup& lookup) {
    for (const auto& [key, given] : lookup) {
        std::string testForm = testFormOf(key);
        const RecognizedKey facts = testForm.starts_with('-') ? recognizeTranscodeKey(testForm) : RecognizedKey{};
        if (facts.isKnown && testForm != key && lookup.contains(testForm)) continue;  // that one wins
        std::string value = given;
        if (facts.isKnown) sanitizeInPlace(value, facts.valueOptions());
        store(facts, testForm, key, std::move(value));
    }
    finish();
}

void TranscodeArgumentParser::expand(std::string_view presetValue) {
    auto& lookup = arguments_.flagValueLookup_;
    const auto preset = fromRawValue<TranscodeCliPreset>(presetValue);
    if (!preset) {
        const auto [entry, isNew] =
            lookup.insert_or_assign(std::string(OAVPresetFlag.rawValue()), std::string(presetValue));
        if (isNew) presetKeys_.push_back(entry->first);
        return;
    }
    for (const auto& [flag, value] : orderedArguments(*preset)) {
        if (lookup.contains(flag)) continue;
        presetKeys_.emplace_back(flag);
        lookup.emplace(flag, value);
    }
}

void TranscodeArgumentParser::finish() {
    storeExactFlags();
    for (const auto& [key, value] : presetValues_) expand(value);
    if (!unknown_.empty()) arguments_.invalidKeyValueLookup_ = std::move(unknown_);
    if (!keepsOrder_) return;

    // A preset's own key has a place only if it is stored after all; what presets brought in follows, by key.
    if (!presetValues_.empty()) {
        std::erase_if(wordOrder_, [&](const std::string& key) { return !arguments_.flagValueLookup_.contains(key); });
    }
    std::sort(presetKeys_.begin(), presetKeys_.end());
    for (std::string& key : presetKeys_) {
        if (std::find(wordOrder_.begin(), wordOrder_.end(), key) == wordOrder_.end()) {
            wordOrder_.push_back(std::move(key));
        }
    }
    if (!wordOrder_.empty()) arguments_.orderedFlags_ = std::move(wordOrder_);
}

}  // namespace corvex::inline v0

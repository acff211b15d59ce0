#include <Corvex/cli/transcode/internal/TranscodeArgumentParser.h>

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

TranscodeArgumentParser::TranscodeArgumentParser(TranscodeCliArguments& arguments) noexcept : arguments_(arguments) {}

bool TranscodeArgumentParser::storeExact(std::size_t sortedIndex, std::string value) {
    exactValues_[sortedIndex] = std::move(value);
    if (std::exchange(isExactFound_[sortedIndex], true)) return false;
    ++exactCount_;
    return true;
}

void TranscodeArgumentParser::store(const RecognizedKey& facts, std::string_view testForm, std::string_view givenKey,
                                    std::string value) {
    if (!facts.isKnown) {
        unknown_.emplace_back(givenKey, std::move(value));
        return;
    }
    bool mayBeNew = true;
    if (facts.isPreset) {
        presetValues_.insert_or_assign(testForm, std::move(value));
    } else if (facts.sortedIndex != RecognizedKey::noFlag) {
        mayBeNew = storeExact(facts.sortedIndex, std::move(value));
    } else {
        others_.emplace_back(testForm, std::move(value));
    }
    if (keepsOrder_ && mayBeNew) wordOrder_.emplace_back(testForm);
}

void TranscodeArgumentParser::parseWords(std::span<const std::string> words, bool maintainOriginalOrdering) {
    keepsOrder_ = maintainOriginalOrdering;
    const std::size_t usualFlags = words.size() / 2;
    if (keepsOrder_) wordOrder_.reserve(usualFlags);
    if (usualFlags > knownTranscodeFlagCount) others_.reserve(usualFlags);  // so many can only be numbered inputs
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
    const auto bringIn = [&](std::string_view flag, std::string_view value) {
        if (storeExact(findKnownTranscodeFlag(flag)->sortedIndex, std::string(value))) presetKeys_.emplace_back(flag);
    };
    const auto preset = fromRawValue<TranscodeCliPreset>(presetValue);
    if (!preset) return bringIn(OAVPresetFlag.rawValue(), presetValue);
    for (const auto& [flag, value] : orderedArguments(*preset)) {
        if (!isExactFound_[findKnownTranscodeFlag(flag)->sortedIndex]) bringIn(flag, value);
    }
}

void TranscodeArgumentParser::finish() {
    for (const auto& [key, value] : presetValues_) expand(value);
    others_.reserve(others_.size() + exactCount_);
    for (std::size_t i = 0; i < isExactFound_.size(); ++i) {
        if (isExactFound_[i]) others_.emplace_back(sortedKnownTranscodeFlags()[i], std::move(exactValues_[i]));
    }
    const std::size_t given = others_.size();
    arguments_.flagValueLookup_ = ArgumentLookup(std::move(others_));
    if (!unknown_.empty()) arguments_.invalidKeyValueLookup_ = ArgumentLookup(std::move(unknown_));
    if (keepsOrder_) finishOrder(arguments_.flagValueLookup_.size() != given);
}

void TranscodeArgumentParser::finishOrder(bool hasRepeats) {
    const ArgumentLookup& lookup = arguments_.flagValueLookup_;
    // What presets brought in follows the words, by key.
    std::sort(presetKeys_.begin(), presetKeys_.end());
    for (std::string& key : presetKeys_) wordOrder_.push_back(std::move(key));
    // A preset's own key has a place only if it is stored after all; a repeated key has its first.
    if (hasRepeats || !presetValues_.empty()) {
        std::vector<bool> isPlaced(lookup.size());
        std::erase_if(wordOrder_, [&](const std::string& key) {
            const auto found = lookup.find(key);
            if (found == lookup.end()) return true;
            auto placed = isPlaced[static_cast<std::size_t>(found - lookup.begin())];
            const bool isRepeat = placed;
            placed = true;
            return isRepeat;
        });
    }
    if (!wordOrder_.empty()) arguments_.orderedFlags_ = std::move(wordOrder_);
}

}  // namespace corvex::inline v0

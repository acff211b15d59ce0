#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <Corvex/cli/ArgumentLookup.h>
#include <Corvex/cli/transcode/KnownTranscodeFlags.h>

namespace corvex::inline v0 {

class TranscodeCliArguments;

/// Sorts entries into known flags, presets and unknown ones, then expands the presets. Used once, then thrown away. One
/// pass over the words; a key that is a known flag letter for letter costs no search among the others.
class TranscodeArgumentParser {
public:
    /// `arguments` are to be filled, and outlive the parser.
    explicit TranscodeArgumentParser(TranscodeCliArguments& arguments) noexcept;

    /// Fills the arguments from the words of a command line, as TranscodeCliArguments says of its constructor.
    void parseWords(std::span<const std::string> words, bool maintainOriginalOrdering);
    void parseLookup(const ArgumentLookup& lookup);  ///< Fills the arguments from a ready lookup.

private:
    /// `testForm` is what a known key is stored under, `givenKey` what an unknown one is kept under.
    void store(const RecognizedKey& facts, std::string_view testForm, std::string_view givenKey, std::string value);
    /// For a known flag letter for letter. Returns whether it is the first value.
    bool storeExact(std::size_t sortedIndex, std::string value);
    /// Stores what a preset stands for where no word said otherwise; a preset that is not known is stored under its own
    /// flag.
    void expand(std::string_view presetValue);
    /// Hands everything over to the arguments, once all entries are stored.
    void finish();
    void finishOrder(bool hasRepeats);

    TranscodeCliArguments& arguments_;
    /// Keys that are a known flag letter for letter, which most are, wait here by the flag's place in the sorted list
    /// and then enter the lookup in order, so that none has to search for its place.
    std::array<bool, knownTranscodeFlagCount> isExactFound_{};
    std::array<std::string, knownTranscodeFlagCount> exactValues_;
    std::size_t exactCount_ = 0;
    std::vector<ArgumentLookup::Entry> others_;  ///< Known keys of other spellings, numbered inputs above all.
    std::vector<ArgumentLookup::Entry> unknown_;
    ArgumentLookup presetValues_;          ///< By key: that is the order in which they are expanded.
    std::vector<std::string> wordOrder_;   ///< Keys in the order of their words, if that is wanted.
    std::vector<std::string> presetKeys_;  ///< Keys that presets brought in.
    bool keepsOrder_ = false;
};

}  // namespace corvex::inline v0

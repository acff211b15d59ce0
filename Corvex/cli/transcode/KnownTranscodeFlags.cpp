#include <Corvex/cli/transcode/KnownTranscodeFlags.h>

#include <algorithm>
#include <array>

#include <Corvex/cli/transcode/TranscodeCLIFlag.h>
#include <Corvex/exported/TranscodeVocabulary.h>
#include <Corvex/platform/Checked.h>
#include <Corvex/platform/Text.h>

namespace corvex::inline v0 {
namespace {

constexpr auto knownFlags = [] {
    std::array<std::string_view, knownTranscodeFlagCount> flags{};
    std::size_t count = 0;
    const auto append = [&](const auto& family) {
        for (const auto& flag : family) flags[count++] = flag.cliFlag();
    };
    append(OAVTranscodeCliCommand::allCases());
    append(OAVTranscodeArgumentFlag::allCases());
    append(OAVTranscodeVideoArgumentFlag::allCases());
    append(OAVTranscodeAudioArgumentFlag::allCases());
    append(OAVTranscodeTimecodeArgumentFlag::allCases());
    append(OAVTranscodeWatermarkFileArgumentFlag::allCases());
    append(OAVTranscodeWatermarkTextArgumentFlag::allCases());
    append(OAVTranscodeArriLookArgumentFlag::allCases());
    for (const auto& row : caseTable<TranscodeCLIFlag>) flags[count++] = row.cliFlag;
    require(count == flags.size(), "the families have another number of flags");
    return flags;
}();

constexpr auto sortedFlags = [] {
    auto flags = knownFlags;
    std::sort(flags.begin(), flags.end());
    return flags;
}();

constexpr std::array caseKeepingFlags{
    OAVColorLutFileFlag.rawValue(),          OAVOutputFileFlag.rawValue(),
    OAVProgressFileFlag.rawValue(),          OAVWorkDirectoryFlag.rawValue(),
    OAVWatermarkTextBurnTextFlag.rawValue(), OAVVideoAdditionalDecodeOptionsFlag.rawValue(),
};

constexpr RecognizedKey factsOf(std::string_view key, bool isKnown) noexcept {
    RecognizedKey facts;
    facts.isKnown = isKnown;
    facts.isInput = key.starts_with(OAVInputPrefixFlag.rawValue());
    facts.isPreset = key.starts_with(OAVPresetFlag.rawValue());
    facts.keepsCaseOfValue =
        facts.isInput || std::find(caseKeepingFlags.begin(), caseKeepingFlags.end(), key) != caseKeepingFlags.end();
    return facts;
}

/// An open-addressed table, filled by the compiler: a key that is a known flag is found in one or two comparisons.
class ExactFlags {
public:
    constexpr ExactFlags() noexcept {
        for (std::size_t i = 0; i < sortedFlags.size(); ++i) {
            std::size_t slot = slotOf(sortedFlags[i]);
            while (!slots_[slot].flag.empty()) slot = (slot + 1) % slots_.size();
            slots_[slot] = {sortedFlags[i], factsOf(sortedFlags[i], true)};
            slots_[slot].facts.sortedIndex = static_cast<std::uint8_t>(i);
        }
    }
    [[nodiscard]] constexpr const RecognizedKey* find(std::string_view key) const noexcept {
        for (std::size_t slot = slotOf(key); !slots_[slot].flag.empty(); slot = (slot + 1) % slots_.size()) {
            if (slots_[slot].flag == key) return &slots_[slot].facts;
        }
        return nullptr;
    }

private:
    struct Slot {
        std::string_view flag;
        RecognizedKey facts;
    };
    /// The length and four letters tell the flags apart (1.1 comparisons each) and cost less than a hash of all letters.
    static constexpr std::size_t slotOf(std::string_view key) noexcept {
        const std::size_t size = key.size();
        if (size < 2) return 0;
        const auto letter = [&](std::size_t at) { return std::size_t{static_cast<unsigned char>(key[at])}; };
        return (size * 131 + letter(1) * 31 + letter(size / 2) * 77 + letter(size - 2) * 13 + letter(size - 1) * 7) %
               slotCount;
    }
    static constexpr std::size_t slotCount = 512;
    static_assert(sortedFlags.size() * 4 <= slotCount && sortedFlags.size() < RecognizedKey::noFlag);
    std::array<Slot, slotCount> slots_{};
};
constexpr ExactFlags exactFlags;

/// The known flags that no other known flag occurs in, sorted: whether one of these occurs decides for all.
constexpr auto shortestFlags = [] {
    std::array<std::string_view, knownTranscodeFlagCount> flags{};
    std::size_t count = 0;
    for (const std::string_view flag : knownFlags) {
        const bool isImplied = std::any_of(knownFlags.begin(), knownFlags.end(), [&](std::string_view other) {
            return other != flag && flag.find(other) != std::string_view::npos;
        });
        if (!isImplied) flags[count++] = flag;
    }
    std::sort(flags.begin(), flags.begin() + count);
    return std::pair(flags, count);
}();

/// Whether a known flag begins at the front of `text`, which begins with "-": no two of the shortest flags begin with
/// each other, so the one that could is the last that is not above the text.
bool beginsWithKnownFlag(std::string_view text) noexcept {
    const auto begin = shortestFlags.first.begin();
    const auto end = begin + shortestFlags.second;
    const auto above = std::upper_bound(begin, end, text);
    return above != begin && text.starts_with(*(above - 1));
}

bool holdsKnownFlag(std::string_view folded) noexcept {
    for (std::size_t at = folded.find('-'); at != std::string_view::npos; at = folded.find('-', at + 1)) {
        if (beginsWithKnownFlag(folded.substr(at))) return true;
    }
    return false;
}

}  // namespace

std::span<const std::string_view> knownTranscodeFlags() noexcept { return knownFlags; }

const std::array<std::string_view, knownTranscodeFlagCount>& sortedKnownTranscodeFlags() noexcept {
    return sortedFlags;
}

const RecognizedKey* findKnownTranscodeFlag(std::string_view word) noexcept { return exactFlags.find(word); }

RecognizedKey recognizeTranscodeKey(std::string_view testForm) {
    if (const RecognizedKey* exact = findKnownTranscodeFlag(testForm)) return *exact;
    const bool isKnown = isAscii(testForm) ? holdsKnownFlag(testForm) : holdsKnownFlag(caseFolded(testForm));
    return factsOf(testForm, isKnown);
}

}  // namespace corvex::inline v0

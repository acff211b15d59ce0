#include <tools/corvex/SuggestedFlag.h>

#include <algorithm>
#include <numeric>
#include <vector>

#include <Corvex/cli/transcode/TranscodeCliArguments.h>

namespace corvex::tool {
namespace {

/// Number of letters to insert, delete, replace or swap with their neighbour (optimal string alignment).
std::size_t editDistance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> beforeLast(b.size() + 1), last(b.size() + 1), row(b.size() + 1);
    std::iota(last.begin(), last.end(), std::size_t{0});
    for (std::size_t i = 1; i <= a.size(); ++i) {
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (a[i - 1] == b[j - 1] ? 0U : 1U)});
            const bool isSwap = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
            if (isSwap) row[j] = std::min(row[j], beforeLast[j - 2] + 1);
        }
        beforeLast.swap(last);
        last.swap(row);
    }
    return last[b.size()];
}

}  // namespace

std::optional<std::string_view> suggestedWord(std::string_view unknown, std::span<const std::string_view> known) {
    constexpr std::size_t longestWord = 64;  // what is longer was no word with a slip of the finger
    if (unknown.size() > longestWord) return std::nullopt;
    std::optional<std::string_view> best;
    std::size_t bestDistance = unknown.size() / 3 + 1;
    for (const std::string_view word : known) {
        const std::size_t distance = editDistance(unknown, word);
        if (distance < bestDistance) {
            bestDistance = distance;
            best = word;
        }
    }
    return best;
}

std::optional<std::string_view> suggestedFlag(std::string_view unknown) {
    return suggestedWord(unknown, TranscodeCliArguments::allKnownCommandFlags());
}

}  // namespace corvex::tool

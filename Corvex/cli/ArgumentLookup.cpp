#include <Corvex/cli/ArgumentLookup.h>

#include <algorithm>
#include <bit>
#include <functional>
#include <iterator>
#include <limits>
#include <map>

#include <nlohmann/json.hpp>

#include <Corvex/platform/Checked.h>
#include <Corvex/platform/Json.h>

namespace corvex::inline v0 {
namespace {

using Entry = ArgumentLookup::Entry;

/// From so many entries on a table is worth its memory; fewer are compared one by one, most by their lengths alone.
constexpr std::size_t fewestToIndex = 16;

bool isBelow(const Entry& a, const Entry& b) noexcept { return a.first < b.first; }

/// Stable. The numbered inputs of a job come in a few ascending stretches, which are found and merged: less work than
/// to sort them as if nothing were known.
void sortByFlag(std::vector<Entry>& entries) {
    std::vector<std::ptrdiff_t> borders;
    for (auto border = entries.begin(); border != entries.end();) {
        border = std::is_sorted_until(border, entries.end(), isBelow);
        if (borders.empty() && border == entries.end()) return;
        if (borders.empty()) borders.push_back(0);
        borders.push_back(border - entries.begin());
    }
    while (borders.size() > 2) {
        std::size_t kept = 1;
        for (std::size_t i = 2; i < borders.size(); i += 2) {
            std::inplace_merge(entries.begin() + borders[i - 2], entries.begin() + borders[i - 1],
                               entries.begin() + borders[i], isBelow);
            borders[kept++] = borders[i];
        }
        if (borders.size() % 2 == 0) borders[kept++] = borders.back();
        borders.resize(kept);
    }
}

std::size_t hashOf(std::string_view flag) noexcept { return std::hash<std::string_view>{}(flag); }

std::uint32_t upperHalf(std::size_t hash) noexcept { return static_cast<std::uint32_t>(std::uint64_t{hash} >> 32U); }

}  // namespace

ArgumentLookup::ArgumentLookup(std::vector<Entry> entries) : entries_(std::move(entries)) { arrangeEntries(); }

ArgumentLookup::ArgumentLookup(std::initializer_list<Entry> entries) : entries_(entries) { arrangeEntries(); }

void ArgumentLookup::arrangeEntries() {
    sortByFlag(entries_);
    // Of equal flags the last is kept: in the reversed order that is the first.
    const auto firstKept = std::unique(entries_.rbegin(), entries_.rend(),
                                       [](const Entry& a, const Entry& b) { return a.first == b.first; });
    entries_.erase(entries_.begin(), firstKept.base());
    indexEntries();
}

void ArgumentLookup::indexEntries() {
    slots_.clear();
    if (entries_.size() < fewestToIndex) return;
    require(entries_.size() < std::numeric_limits<std::uint32_t>::max(), "too many arguments");
    slots_.resize(std::bit_ceil(2 * entries_.size()));
    const std::size_t mask = slots_.size() - 1;
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        const std::size_t hash = hashOf(entries_[i].first);
        std::size_t slot = hash & mask;
        while (slots_[slot].place != 0) slot = (slot + 1) & mask;
        slots_[slot] = {upperHalf(hash), static_cast<std::uint32_t>(i + 1)};
    }
}

ArgumentLookup::const_iterator ArgumentLookup::find(std::string_view flag) const noexcept {
    if (slots_.empty()) return std::find_if(begin(), end(), [&](const Entry& entry) { return entry.first == flag; });
    const std::size_t mask = slots_.size() - 1;
    const std::size_t hash = hashOf(flag);
    for (std::size_t slot = hash & mask; slots_[slot].place != 0; slot = (slot + 1) & mask) {
        if (slots_[slot].hash != upperHalf(hash)) continue;
        const auto entry = entries_.begin() + static_cast<std::ptrdiff_t>(slots_[slot].place - 1);
        if (entry->first == flag) return entry;
    }
    return end();
}

ArgumentLookup::const_iterator ArgumentLookup::lower_bound(std::string_view flag) const noexcept {
    return std::lower_bound(entries_.begin(), entries_.end(), flag,
                            [](const Entry& entry, std::string_view wanted) { return entry.first < wanted; });
}

bool ArgumentLookup::insert_or_assign(std::string_view flag, std::string value) {
    const auto place = lower_bound(flag);
    if (place != end() && place->first == flag) {
        entries_[static_cast<std::size_t>(place - begin())].second = std::move(value);
        return false;
    }
    entries_.emplace(place, std::string(flag), std::move(value));
    indexEntries();
    return true;
}

void ArgumentLookup::insertAll(std::vector<Entry> entries) {
    entries_.insert(entries_.end(), std::move_iterator(entries.begin()), std::move_iterator(entries.end()));
    arrangeEntries();
}

void ArgumentLookup::erase(std::string_view flag) {
    const auto place = find(flag);
    if (place == end()) return;
    entries_.erase(place);
    indexEntries();
}

template <class JsonType>
void to_json(JsonType& json, const ArgumentLookup& lookup) {
    json = Json::object();
    for (const auto& [flag, value] : lookup.entries_) json.emplace(flag, value);
}

template <class JsonType>
void from_json(const JsonType& coded, ArgumentLookup& lookup) {
    const Json& json = coded;  // converted where it is of the other kind
    auto members = json.get<std::map<std::string, std::string>>();
    lookup = ArgumentLookup(std::vector<ArgumentLookup::Entry>(members.begin(), members.end()));
}

template CORVEX_EXPORT void to_json(Json&, const ArgumentLookup&);
template CORVEX_EXPORT void to_json(nlohmann::json&, const ArgumentLookup&);
template CORVEX_EXPORT void from_json(const Json&, ArgumentLookup&);
template CORVEX_EXPORT void from_json(const nlohmann::json&, ArgumentLookup&);

}  // namespace corvex::inline v0

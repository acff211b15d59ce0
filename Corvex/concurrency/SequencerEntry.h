#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <optional>  // std::hash
#include <utility>

namespace corvex::inline v0 {

/// What an IndeterminateItemSequencer takes. Equal, hashed and ordered by the key alone.
template <class Key, class Item>
class SequencerEntry {
public:
    SequencerEntry(Key ownKey, Item ownValue) noexcept : key(std::move(ownKey)), value(std::move(ownValue)) {}

    Key key;
    Item value;
    std::int64_t outrankings = 0;  ///< How many entries with larger keys have come since.

    friend bool operator==(const SequencerEntry& a, const SequencerEntry& b) { return a.key == b.key; }
    friend std::weak_ordering operator<=>(const SequencerEntry& a, const SequencerEntry& b) {
        return a.key < b.key   ? std::weak_ordering::less
               : b.key < a.key ? std::weak_ordering::greater
                               : std::weak_ordering::equivalent;
    }
};

}  // namespace corvex::inline v0

template <class Key, class Item>
struct std::hash<corvex::SequencerEntry<Key, Item>> {
    std::size_t operator()(const corvex::SequencerEntry<Key, Item>& entry) const
        noexcept(noexcept(std::hash<Key>()(entry.key))) {
        return std::hash<Key>()(entry.key);
    }
};

#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <optional>  // std::hash
#include <utility>

namespace corvex::inline v0 {

/// What an IndeterminateItemSequencer takes. Equal, hashed and ordered by the key alone, whatever the items are. As any
/// value type; one that was moved from has no meaning.
template <class Key, class Item>
class SequencerEntry {
public:
    /// With no outrankings.
    SequencerEntry(Key ownKey, Item ownValue) noexcept : key(std::move(ownKey)), value(std::move(ownValue)) {}

    /// Where in the sequence the item belongs.
    Key key;
    /// Handed out once the key's turn has come; a sequencer never looks at it.
    Item value;
    /// How many entries with larger keys have come since. Above 0 at the start, the item is ready so many arrivals
    /// earlier.
    std::int64_t outrankings = 0;

    friend bool operator==(const SequencerEntry& a, const SequencerEntry& b) { return a.key == b.key; }
    /// By `<` of the key, so that a key needs no operator of three ways.
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

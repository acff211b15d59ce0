#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

/// Flag to value, each flag once. The order (by the bytes of the flag) is the same on every run; callers should not rely
/// on which it is.
/// Cost     The entries lie in one piece of memory. A look-up costs the same among many as among few; a change moves
///          whatever lies behind it, so many entries are best given at once.
/// Threads  As a standard container; every change ends the validity of iterators and of texts handed out.
class CORVEX_EXPORT ArgumentLookup {
public:
    using Entry = std::pair<std::string, std::string>;
    using value_type = Entry;
    using const_iterator = std::vector<Entry>::const_iterator;
    using iterator = const_iterator;

    ArgumentLookup() = default;
    /// In any order; of entries with the same flag the last counts. O(n log n), less for entries that come nearly
    /// sorted.
    explicit ArgumentLookup(std::vector<Entry> entries);
    ArgumentLookup(std::initializer_list<Entry> entries);  ///< As insertAll() does.

    [[nodiscard]] const_iterator begin() const noexcept { return entries_.begin(); }
    [[nodiscard]] const_iterator end() const noexcept { return entries_.end(); }
    [[nodiscard]] std::size_t size() const noexcept { return entries_.size(); }
    [[nodiscard]] bool empty() const noexcept { return entries_.empty(); }

    /// Letter for letter; end() where it is absent. O(1) on average.
    [[nodiscard]] const_iterator find(std::string_view flag) const noexcept;
    /// Letter for letter.
    [[nodiscard]] bool contains(std::string_view flag) const noexcept { return find(flag) != end(); }
    /// The first entry whose flag is not below this one.
    [[nodiscard]] const_iterator lower_bound(std::string_view flag) const noexcept;

    /// Returns whether the flag is new. `flag` may be part of an entry. O(n) for a new flag, O(log n) for one that is
    /// there.
    bool insert_or_assign(std::string_view flag, std::string value);
    /// As one insertion for each, in their order.
    void insertAll(std::vector<Entry> entries);
    void erase(std::string_view flag);  ///< Does nothing where it is absent.
    /// Removes every entry for which `predicate(entry)` is true.
    template <class Predicate>
    void eraseIf(Predicate predicate) {
        if (std::erase_if(entries_, predicate) > 0) indexEntries();
    }

    friend bool operator==(const ArgumentLookup& a, const ArgumentLookup& b) noexcept {
        return a.entries_ == b.entries_;
    }
    /// Coded as one object from flag to value. Decoding throws what the JSON library throws for a value of another
    /// kind.
    template <class JsonType>
    friend CORVEX_EXPORT void to_json(JsonType& json, const ArgumentLookup& lookup);
    template <class JsonType>
    friend CORVEX_EXPORT void from_json(const JsonType& json, ArgumentLookup& lookup);

private:
    struct Slot {
        std::uint32_t hash = 0;   ///< The half of the flag's hash that does not choose the slot.
        std::uint32_t place = 0;  ///< In the entries, from 1; 0: empty.
    };
    void arrangeEntries();
    void indexEntries();

    std::vector<Entry> entries_;  ///< Ascending by flag.
    std::vector<Slot> slots_;     ///< An open-addressed table of the entries' places; empty while they are few.
};

}  // namespace corvex::inline v0

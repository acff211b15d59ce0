#pragma once

#include <utility>

namespace corvex::inline v0 {

/// An item and the key that says where in a sequence it belongs. Equal when both are. A class with a constructor and no
/// aggregate: g++ 12 destroys aggregates in `co_await` expressions twice.
template <class Key, class Item>
class KeyedItem {
public:
    KeyedItem(Key ownKey, Item ownItem) noexcept : key(std::move(ownKey)), item(std::move(ownItem)) {}

    Key key;
    Item item;

    friend bool operator==(const KeyedItem&, const KeyedItem&) = default;
};

}  // namespace corvex::inline v0

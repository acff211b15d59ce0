#pragma once

#include <concepts>
#include <utility>

#include <Corvex/concurrency/PipelineProtocols.h>

namespace corvex::inline v0 {

/// A stock of items of its `ItemType` that tasks borrow and bring back: `add(item)` enlarges it, `co_await checkOut()`
/// borrows one, `checkIn(item)` brings one back. SimpleAsyncPool is the library's own; code that takes any pool names
/// this.
template <class T>
concept AsyncPool = requires(T& pool, typename T::ItemType item) {
    pool.add(std::move(item));
    requires std::same_as<AwaitResult<decltype(pool.checkOut())>, typename T::ItemType>;
    pool.checkIn(std::move(item));
};

}  // namespace corvex::inline v0

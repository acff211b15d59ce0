#pragma once

#include <concepts>
#include <optional>
#include <utility>

namespace corvex::inline v0 {

namespace detail {

/// What `co_await` asks: the value, or what its member operator co_await gives. A free operator is not looked for.
template <class Awaitable>
decltype(auto) awaiterOf(Awaitable&& awaitable) {
    if constexpr (requires { std::forward<Awaitable>(awaitable).operator co_await(); }) {
        return std::forward<Awaitable>(awaitable).operator co_await();
    } else {
        return std::forward<Awaitable>(awaitable);
    }
}

}  // namespace detail

/// What `co_await` makes of a value of that type.
template <class Awaitable>
using AwaitResult = decltype(detail::awaiterOf(std::declval<Awaitable>()).await_resume());

/// Gives items of its `SuppliedType`; how, the concepts that refine this say.
template <class T>
concept PipelineSupplier = requires { typename T::SuppliedType; };

/// Takes items of its `ConsumableType` until `close()`, which any thread may call and which does not wait.
template <class T>
concept PipelineConsumer = requires(T& consumer) {
    typename T::ConsumableType;
    consumer.close();
};

/// `co_await supplier.next()` gives the next item, or nothing when none will come any more; it may throw.
template <class T>
concept PullSupplier = PipelineSupplier<T> && requires(T& supplier) {
    requires std::same_as<AwaitResult<decltype(supplier.next())>, std::optional<typename T::SuppliedType>>;
};

/// `co_await consumer.add(item)` hands over one item; DataCoordinationError when the consumer is closed.
template <class T>
concept PushConsumer = PipelineConsumer<T> && requires(T& consumer, typename T::ConsumableType item) {
    requires std::same_as<AwaitResult<decltype(consumer.add(std::move(item)))>, void>;
};

/// What items go in at one end of and come out at the other: the buffer and the sequencers.
template <class T>
concept PushPullConduit = PushConsumer<T> && PullSupplier<T>;

/// Runs a pipeline by pulling what it consumes. Nothing more is asked of its type than of any consumer; the name says
/// who drives.
template <class T>
concept PullPipelineController = PipelineConsumer<T>;

/// Writes what it pulls from its `DataSupplyType` to a file.
template <class T>
concept FileWriterPullController = PullPipelineController<T> && PullSupplier<typename T::DataSupplyType>;

}  // namespace corvex::inline v0

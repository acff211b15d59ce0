#pragma once

#include <concepts>
#include <cstddef>
#include <type_traits>

namespace corvex::inline v0 {

/// What an enumeration calls: a reference to a caller's callable that takes the arguments and, if it wants, a `bool&
/// stop` behind them; or nothing (nullptr), which takes every call. A parameter type: it must not outlive the call.
/// Allocates nothing; what the callable throws ends the enumeration and reaches the caller.
template <class... Arguments>
class StoppableBlock {
public:
    // NOLINTNEXTLINE(google-explicit-constructor,hicpp-explicit-conversions): the absent block
    constexpr StoppableBlock(std::nullptr_t) noexcept {}  ///< Takes every call.

    /// Refers to the caller's callable.
    template <class Block>
        requires(!std::same_as<std::remove_cvref_t<Block>, StoppableBlock> &&
                 (std::invocable<Block&, Arguments..., bool&> || std::invocable<Block&, Arguments...>))
    // NOLINTNEXTLINE(google-explicit-constructor,hicpp-explicit-conversions,bugprone-forwarding-reference-overload)
    constexpr StoppableBlock(Block&& block) noexcept
        : block_(__builtin_addressof(block)), call_([](const void* address, bool& stop, Arguments... arguments) {
              auto& callee = *static_cast<std::remove_reference_t<Block>*>(const_cast<void*>(address));
              if constexpr (std::invocable<Block&, Arguments..., bool&>) {
                  callee(arguments..., stop);
              } else {
                  callee(arguments...);
              }
          }) {}

    /// Calls the block. Whether it asks for no further call; an absent block and one without the flag never do.
    [[nodiscard]] constexpr bool operator()(Arguments... arguments) const {
        bool stop = false;
        if (call_ != nullptr) call_(block_, stop, arguments...);
        return stop;
    }

private:
    /// The caller's callable, not owned; nullptr for the absent block.
    const void* block_ = nullptr;
    void (*call_)(const void*, bool&, Arguments...) = nullptr;
};

}  // namespace corvex::inline v0

#pragma once

#include <Corvex/platform/Executor.h>

namespace corvex::inline v0 {

/// Timer nodes by deadline, equal ones in order of arrival: a pairing heap (Fredman, Sedgewick, Sleator and Tarjan,
/// Algorithmica 1, 1986) that is linked through the nodes, so it allocates nothing. Adding is constant, removing
/// logarithmic on average. Not synchronised: whoever owns it guards it and the nodes' states with one lock.
class TimerHeap {
public:
    [[nodiscard]] TimerNode* earliest() const noexcept { return root_; }
    /// False if the node has been refused beforehand: the caller then posts it at once.
    bool add(TimerNode& node, TimePoint deadline) noexcept;
    /// True if the node was waiting. A node that has not been added yet is refused from here on.
    bool cancel(TimerNode& node) noexcept;
    /// The earliest node if it is due; it counts as posted.
    TimerNode* takeDue(TimePoint now) noexcept;

private:
    void remove(TimerNode& node) noexcept;

    TimerNode* root_ = nullptr;
    std::uint64_t count_ = 0;
};

}  // namespace corvex::inline v0

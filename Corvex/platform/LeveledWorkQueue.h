#pragma once

#include <array>
#include <bit>
#include <cstddef>

#include <Corvex/platform/WorkQueue.h>

namespace corvex::inline v0 {

/// Nodes by the level of their priority, highest first, those of one level in order of arrival. Four levels:
/// user-initiated and above, medium, utility, below. Not synchronised; every function is O(1) and allocates nothing.
/// A host's own executor may keep its work in one, under its own lock. It does not own the nodes, and forgets those that
/// are left at its end.
class LeveledWorkQueue {
public:
    [[nodiscard]] bool isEmpty() const noexcept { return filledLevels_ == 0; }
    /// Behind those of the same level, whatever their priorities within it.
    void append(WorkNode& node) noexcept {
        const std::size_t level = levelOf(node.priority);
        levels_[level].append(node);
        filledLevels_ |= 1U << level;
    }
    /// The oldest node of the highest level, nullptr if empty. A lower level waits as long as a higher one has work.
    WorkNode* takeFirst() noexcept {
        if (filledLevels_ == 0) return nullptr;
        const auto level = static_cast<unsigned>(std::countr_zero(filledLevels_));
        WorkNode* const node = levels_[level].takeFirst();
        if (levels_[level].isEmpty()) filledLevels_ &= ~(1U << level);
        return node;
    }

private:
    /// 0 is the highest. Raw values between the named ones belong to the level below them.
    [[nodiscard]] static std::size_t levelOf(TaskPriority priority) noexcept {
        if (priority >= TaskPriority::userInitiated) return 0;
        if (priority >= TaskPriority::medium) return 1;
        return priority >= TaskPriority::utility ? 2 : 3;
    }

    /// Bit n: level n holds work.
    unsigned filledLevels_ = 0;
    std::array<WorkQueue, 4> levels_;
};

}  // namespace corvex::inline v0

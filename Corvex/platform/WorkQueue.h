#pragma once

#include <utility>

#include <Corvex/platform/Executor.h>

namespace corvex::inline v0 {

/// Nodes in order of arrival, linked through themselves. Not synchronised; every function is O(1) and allocates
/// nothing. It does not own the nodes, and forgets those that are left at its end.
class WorkQueue {
public:
    WorkQueue() noexcept = default;
    WorkQueue(const WorkQueue&) = delete;
    WorkQueue& operator=(const WorkQueue&) = delete;

    /// To be asked by whoever guards the queue: a moment later another thread may have added to it.
    [[nodiscard]] bool isEmpty() const noexcept { return first_ == nullptr; }
    /// At the end. The node must be in no queue.
    void append(WorkNode& node) noexcept {
        node.next = nullptr;
        (first_ ? last_->next : first_) = &node;
        last_ = &node;
    }
    /// The oldest node, nullptr if empty; it stays.
    [[nodiscard]] WorkNode* first() const noexcept { return first_; }
    /// The oldest node, nullptr if empty. From here on it is the caller's.
    WorkNode* takeFirst() noexcept {
        WorkNode* const node = first_;
        if (node) first_ = node->next;
        return node;
    }

private:
    /// The last one counts only while there is a first.
    WorkNode *first_ = nullptr, *last_ = nullptr;
};

}  // namespace corvex::inline v0

#include <Corvex/platform/TimerHeap.h>

namespace corvex::inline v0 {
namespace {

bool isEarlier(const TimerNode& a, const TimerNode& b) noexcept {
    return a.deadline != b.deadline ? a.deadline < b.deadline : a.order < b.order;
}

/// One tree of two roots. The later root becomes the first child of the earlier one.
TimerNode* meld(TimerNode* a, TimerNode* b) noexcept {
    if (!a) return b;
    if (!b) return a;
    if (isEarlier(*b, *a)) std::swap(a, b);
    b->previous = a;
    b->nextSibling = a->firstChild;
    if (a->firstChild) a->firstChild->previous = b;
    a->firstChild = b;
    return a;
}

/// One tree of a list of siblings: pairs from the left, then all of those from the right.
TimerNode* meldSiblings(TimerNode* first) noexcept {
    TimerNode* pairs = nullptr;  // linked in reverse through nextSibling
    while (first) {
        TimerNode* const a = first;
        TimerNode* const b = a->nextSibling;
        first = b ? b->nextSibling : nullptr;
        a->nextSibling = nullptr;
        if (b) b->nextSibling = nullptr;
        TimerNode* const pair = meld(a, b);
        pair->nextSibling = pairs;
        pairs = pair;
    }
    TimerNode* root = nullptr;
    while (pairs) {
        TimerNode* const rest = std::exchange(pairs->nextSibling, nullptr);
        root = meld(root, pairs);
        pairs = rest;
    }
    if (root) root->previous = nullptr;
    return root;
}

}  // namespace

bool TimerHeap::add(TimerNode& node, TimePoint deadline) noexcept {
    if (node.state == TimerNode::State::refused) {
        node.state = TimerNode::State::posted;
        return false;
    }
    node.state = TimerNode::State::waiting;
    node.deadline = deadline;
    node.order = count_++;
    node.firstChild = node.nextSibling = node.previous = nullptr;
    root_ = meld(root_, &node);
    return true;
}

bool TimerHeap::cancel(TimerNode& node) noexcept {
    if (node.state == TimerNode::State::idle) node.state = TimerNode::State::refused;
    if (node.state != TimerNode::State::waiting) return false;
    remove(node);
    node.state = TimerNode::State::posted;
    return true;
}

TimerNode* TimerHeap::takeDue(TimePoint now) noexcept {
    TimerNode* const node = root_;
    if (!node || node->deadline > now) return nullptr;
    remove(*node);
    node->state = TimerNode::State::posted;
    return node;
}

void TimerHeap::remove(TimerNode& node) noexcept {
    TimerNode* const children = meldSiblings(std::exchange(node.firstChild, nullptr));
    if (root_ == &node) {
        root_ = children;
        return;
    }
    (node.previous->firstChild == &node ? node.previous->firstChild : node.previous->nextSibling) = node.nextSibling;
    if (node.nextSibling) node.nextSibling->previous = node.previous;
    root_ = meld(root_, children);
}

}  // namespace corvex::inline v0

#pragma once

#include <concepts>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>

#include <Corvex/collections/AVLTreeNode.h>
#include <Corvex/collections/NodePool.h>
#include <Corvex/platform/Checked.h>

namespace corvex::inline v0 {

/// A balanced search tree from keys to optional payloads, with the neighbours of a key and an ordered walk. Keys
/// differ; the sequencers keep what waits for its turn in these.
/// Cost     Search, insertion and deletion take logarithmic time; inserting above the largest key and taking the
///          smallest compare one key at most. A walk is linear.
/// Lifetime Nodes come from blocks that the tree keeps until it goes. A node, and what refers into it, is valid until
///          any key is deleted, as deletion moves entries between nodes.
/// Errors   What copying or comparing a key throws leaves the tree as it was. A tree whose links contradict each other,
///          as memory that somebody else wrote to, stops the process.
/// Threads  None of its own; the owner serialises access.
/// Source   Adelson-Velsky and Landis, Doklady Akademii Nauk 146(2), 1962.
template <std::totally_ordered Key, class Payload>
class AVLTree {
public:
    using Node = AVLTreeNode<Key, Payload>;

    /// The entries on either side of a key, or twice the one entry that has it. Never null. Valid as nodes are.
    template <class NodeType>
    struct Neighbours {
        NodeType* low;
        NodeType* high;
    };

    /// An entry that has left the tree.
    struct Entry {
        Key key;
        std::optional<Payload> payload;
    };

    /// Allocates nothing.
    AVLTree() = default;
    AVLTree(const AVLTree&) = delete;
    AVLTree& operator=(const AVLTree&) = delete;
    /// Linear in the entries that have something to destroy, else in the blocks; without recursion.
    ~AVLTree() {
        if constexpr (!std::is_trivially_destructible_v<Node>) destroyBelow(root_);
    }

    /// Null when the tree is empty, which `size` does not tell. For walks and for looking at the shape; the tree alone
    /// changes it.
    [[nodiscard]] const Node* root() const noexcept { return root_; }
    [[nodiscard]] Node* root() noexcept { return root_; }

    /// How many calls inserted less how many deleted: a key that was there already counts again.
    [[nodiscard]] std::int64_t size() const noexcept { return size_; }

    /// An equal key keeps its entry, payload included; `size` counts the call all the same.
    void insert(Key key, std::optional<Payload> payload = std::nullopt) {
        const std::int64_t grownSize = checkedAdd(size_, std::int64_t{1});
        if (!root_) {
            root_ = first_ = last_ = pool_.make(std::move(key), std::move(payload));
        } else if (const Place place = placeFor(key); place.parent) {
            attach(place, std::move(key), std::move(payload));
        }
        size_ = grownSize;
    }

    /// `delete`, under a name that the language allows; an absent key is no error. When `size` is 1, empties the tree
    /// whatever the key is.
    void deleteKey(const Key& key) {
        // By the count, which repeated insertions make larger than the tree: see size().
        if (size_ == 1) {
            if (root_) pool_.destroy(root_);
            root_ = first_ = last_ = nullptr;
            size_ = 0;
        } else if (Node* const node = find(root_, key)) {
            remove(node);
        }
    }

    /// Deletes the entry with the smallest key and hands it out; nothing when there is none.
    [[nodiscard]] std::optional<Entry> takeMinimum() { return takeOut(first_); }
    /// As takeMinimum(), the entry with that key. Unlike deleteKey() it never looks at `size`.
    [[nodiscard]] std::optional<Entry> take(const Key& key) {
        return takeOut(first_ && first_->key_ == key ? first_ : find(root_, key));
    }

    /// The payload under the key; null when the key is absent or has no payload. Valid as nodes are.
    [[nodiscard]] const Payload* search(const Key& key) const { return payloadOf(find(root_, key)); }
    [[nodiscard]] Payload* search(const Key& key) { return payloadOf(find(root_, key)); }

    /// The entries with the nearest keys at or below and at or above `key`; nothing unless there are both, as for a key
    /// above the largest. One descent.
    [[nodiscard]] std::optional<Neighbours<const Node>> lowHighSearch(const Key& key) const {
        return neighbours<const Node>(root_, key);
    }
    [[nodiscard]] std::optional<Neighbours<Node>> lowHighSearch(const Key& key) { return neighbours<Node>(root_, key); }

    /// Calls `visit(node, stop)` or `visit(node)` in key order; none is visited after one that sets `stop`, a bool that
    /// is false at first. For this and the following: `node` may be null, `visit` may change payloads but must not
    /// change the tree, and what it throws ends the walk.
    template <class NodeType, class Visitor>
    static void inOrderTraversal(NodeType* node, Visitor&& visit) {
        walk(
            node, ignore, [&](NodeType& entry) { return !callVisitor(visit, entry); }, ignore);
    }

    /// Calls `visit(node)` for every node of a subtree: left, node, right. The other two differ in their order alone.
    template <class NodeType, class Visitor>
    static void doInOrder(NodeType* node, Visitor&& visit) {
        walk(
            node, ignore, [&](NodeType& entry) { return visit(entry), true; }, ignore);
    }
    /// As doInOrder(): node, left, right.
    template <class NodeType, class Visitor>
    static void doInPreOrder(NodeType* node, Visitor&& visit) {
        walk(node, visit, proceed, ignore);
    }
    /// As doInOrder(): left, right, node.
    template <class NodeType, class Visitor>
    static void doInPostOrder(NodeType* node, Visitor&& visit) {
        walk(node, ignore, proceed, visit);
    }

    /// Calls `decide(node, stop)` in key order and deletes each entry for which it returns true, also when it sets
    /// `stop`. It may change or move out the payload, but not the tree. Linear for the walk, and logarithmic for each
    /// entry that goes.
    template <class Decider>
    void deleteWhere(Decider&& decide) {
        bool stop = false;
        for (Node* node = first_; node && !stop;) {
            const bool isDeleted = decide(*node, stop);
            // Deletion moves the entry before into a node with a left child, the one behind into one with a right only.
            Node* const next = isDeleted && !node->children_[left] && node->children_[right] ? node : successor(node);
            if (isDeleted) remove(node);
            node = next;
        }
    }

    /// The keys of a subtree in the order of the traversals, with blanks between; `node` may be null.
    [[nodiscard]] static std::string inorder(const Node* node) {
        std::string text;
        doInOrder(node, [&](const Node& entry) { text += (text.empty() ? "" : " ") + plainText(entry.key_); });
        return text;
    }
    /// The same: node, left, right.
    [[nodiscard]] static std::string preorder(const Node* node) {
        std::string text;
        doInPreOrder(node, [&](const Node& entry) { text += (text.empty() ? "" : " ") + plainText(entry.key_); });
        return text;
    }

    /// Prints the node's `description()` and a newline to standard output; an empty line for null. For debugging.
    static void display(const Node* node) { std::puts(node ? node->description().c_str() : ""); }

    /// Those of the root; empty for an empty tree.
    [[nodiscard]] std::string description() const { return root_ ? root_->description() : std::string(); }
    [[nodiscard]] std::string debugDescription() const { return root_ ? root_->debugDescription() : std::string(); }

private:
    static constexpr unsigned left = 0, right = 1;
    static constexpr auto ignore = [](const Node&) {};
    static constexpr auto proceed = [](const Node&) { return true; };

    /// Where a key belongs: the vacant side of a node; no node when the tree has the key.
    struct Place {
        Node* parent;
        unsigned side;
    };

    /// The last nodes on the way to `key` that lie below it, and at or above it. One comparison a node, whose result is an
    /// index and no branch, and no exit at an equal key: nothing to guess, so that several searches overlap.
    static Neighbours<Node> descend(Node* node, const Key& key) {
        Node* passed[2] = {nullptr, nullptr};
        while (node) {
            const unsigned isBelow = node->key_ < key;
            passed[isBelow] = node;
            node = node->children_[isBelow];
        }
        return {passed[1], passed[0]};
    }

    /// The node with the key, or null. One comparison a level and one for equality at the end.
    static Node* find(Node* root, const Key& key) {
        Node* const node = descend(root, key).high;
        return node && node->key_ == key ? node : nullptr;
    }

    /// Null for no node and for a node without a payload.
    static Payload* payloadOf(Node* node) noexcept { return node && node->payload_ ? &*node->payload_ : nullptr; }

    /// Both or nothing.
    template <class NodeType>
    static std::optional<Neighbours<NodeType>> neighbours(Node* root, const Key& key) {
        const auto [low, high] = descend(root, key);
        if (!high) return std::nullopt;  // above the largest key
        if (high->key_ == key) return Neighbours<NodeType>{high, high};
        if (!low) return std::nullopt;  // below the smallest
        return Neighbours<NodeType>{low, high};
    }

    /// The three moments of a node; a walk that `between` ends has visited no more.
    template <class NodeType, class Before, class Between, class After>
    static void walk(NodeType* node, Before&& before, Between&& between, After&& after) {
        walkBinaryTree(node, Node::leftOf, Node::rightOf, before, between, after);
    }

    /// Whether the visitor wants to stop.
    template <class Visitor, class NodeType>
    static bool callVisitor(Visitor& visit, NodeType& node) {
        bool stop = false;
        if constexpr (std::is_invocable_v<Visitor&, NodeType&, bool&>) {
            visit(node, stop);
        } else {
            visit(node);
        }
        return stop;
    }

    /// The node with the next larger key, or null. O(1) on average over a walk.
    static Node* successor(Node* node) noexcept {
        if (node->children_[right]) return node->children_[right]->minimum();
        // The nearest node above that has this one below its left side.
        while (node->isRightChild()) node = node->parent_;
        return node->parent_;
    }

    /// Where a new key is attached. Looks at the end first, as keys mostly come in ascending order.
    Place placeFor(const Key& key) {
        if (last_->key_ < key) return {last_, right};
        // Keys that come nearly in order belong near the end: few steps from a node a little above it.
        Node* near = last_;
        for (int i = 0; i < 6 && near->parent_; ++i) near = near->parent_;
        Node* node = near->key_ < key ? near : root_;
        Node* passed[2] = {last_, nullptr};
        for (unsigned isBelow = 0;;) {  // as in `descend`
            isBelow = node->key_ < key;
            passed[isBelow] = node;
            if (!node->children_[isBelow]) return {passed[0]->key_ == key ? nullptr : node, isBelow};
            node = node->children_[isBelow];
        }
    }

    /// Makes the node, and keeps the ends and the balance.
    void attach(const Place& place, Key&& key, std::optional<Payload>&& payload) {
        Node* const node = pool_.make(std::move(key), std::move(payload), nullptr, nullptr, place.parent, 1);
        place.parent->children_[place.side] = node;
        if (place.side == left && place.parent == first_) first_ = node;
        if (place.side == right && place.parent == last_) last_ = node;
        rebalanceAboveGrown(node);
    }

    /// What is taken out is moved, and the node is then removed as if it held nothing.
    std::optional<Entry> takeOut(Node* node) {
        if (!node) return std::nullopt;
        std::optional<Entry> entry(std::in_place, std::move(node->key_), std::move(node->payload_));
        remove(node);
        return entry;
    }

    /// Only leaves are unlinked: an inner node takes over its neighbour's entry, and so on down to a leaf.
    void remove(Node* node) {
        const std::int64_t shrunkSize = checkedSubtract(size_, std::int64_t{1});
        while (Node* const below = node->children_[left]    ? node->children_[left]->maximum()
                                   : node->children_[right] ? node->children_[right]->minimum()
                                                            : nullptr) {
            node->key_ = std::move(below->key_);
            node->payload_ = std::move(below->payload_);
            node = below;
        }
        unlinkLeaf(node);
        size_ = shrunkSize;
    }

    /// Frees a node without children; `first_` and `last_` follow.
    void unlinkLeaf(Node* leaf) noexcept {
        Node* const parent = leaf->parent_;
        const unsigned side = leaf->isRightChild();
        if (!parent) {
            root_ = nullptr;
        } else if (side == right || leaf->isLeftChild()) {
            parent->children_[side] = nullptr;
        } else {
            stopForInvalidTree();
        }
        // A leaf at an end has its neighbour above it.
        if (leaf == first_) first_ = parent;
        if (leaf == last_) last_ = parent;
        pool_.destroy(leaf);
        rebalanceShrunk(parent, side);
    }

    /// What a child that is higher by one adds to the lean of its parent.
    static std::int32_t leanTowards(unsigned side) noexcept { return side == right ? 1 : -1; }

    /// Refreshes heights and restores the balance above a node that is higher by one. One restructuring is always enough.
    void rebalanceAboveGrown(Node* node) noexcept {
        for (Node* parent = node->parent_; parent; parent = node->parent_) {
            const unsigned side = parent->children_[right] == node;
            const std::int32_t lean = parent->lean_ + leanTowards(side);
            if (lean < -1 || lean > 1) {
                restructure(parent, side);
                return;
            }
            parent->lean_ = lean;
            // The lower side has caught up: the whole is as high as before.
            if (lean == 0) return;
            ++parent->height_;
            node = parent;
        }
    }

    /// Refreshes heights and restores the balance from `node` upwards, whose subtree on `side` is lower by one. Ends where
    /// one is as high as before: nothing above it changes. Unlike growth, it may restructure at every level.
    void rebalanceShrunk(Node* node, unsigned side) noexcept {
        while (node) {
            const std::int32_t lean = node->lean_ - leanTowards(side);
            if (lean < -1 || lean > 1) {
                const std::int32_t before = node->height_;
                node = restructure(node, !side);
                if (node->height_ == before) return;
            } else {
                node->lean_ = lean;
                // Was even and leans now: the other side keeps it as high as before.
                if (lean != 0) return;
                --node->height_;
            }
            side = node->isRightChild();
            node = node->parent_;
        }
    }

    /// Trinode restructuring of `top`, whose child on `side` is too high: the middle one of top, that child and the child's
    /// higher child takes the place of `top`. Returns it. Heights and leans follow from those of these three alone.
    Node* restructure(Node* top, unsigned side) noexcept {
        const std::int32_t outwards = leanTowards(side);
        Node* const child = top->children_[side];
        Node* middle = child;
        if (child->lean_ == -outwards) {
            // Its higher child lies inside: that one rises by two levels.
            middle = child->children_[!side];
            link(child, !side, middle->children_[side]);
            top->height_ = --child->height_;
            ++middle->height_;
            top->lean_ = middle->lean_ == outwards ? -outwards : 0;
            child->lean_ = middle->lean_ == -outwards ? outwards : 0;
            middle->lean_ = 0;
        } else {
            const bool isEven = child->lean_ == 0;  // after a deletion: the whole is as high as before
            top->height_ = isEven ? child->height_++ : child->height_ - 1;
            top->lean_ = isEven ? outwards : 0;
            child->lean_ = isEven ? -outwards : 0;
        }
        replace(top, middle);
        link(top, side, middle->children_[!side]);
        link(middle, !side, top);
        if (middle != child) link(middle, side, child);
        return middle;
    }

    /// Both directions at once; `child` may be null.
    static void link(Node* parent, unsigned side, Node* child) noexcept {
        parent->children_[side] = child;
        if (child) child->parent_ = parent;
    }

    /// Puts a node into the place of another below that one's parent, or at the root.
    void replace(Node* node, Node* replacement) noexcept {
        if (Node* const parent = node->parent_) {
            link(parent, parent->children_[right] == node, replacement);
        } else {
            root_ = replacement;
            replacement->parent_ = nullptr;
        }
    }

    /// Recursive on one side: a balanced tree of every size that memory can hold is less than a hundred nodes high.
    void destroyBelow(Node* node) noexcept {
        while (node) {
            destroyBelow(node->children_[right]);
            pool_.destroy(std::exchange(node, node->children_[left]));
        }
    }

    NodePool<Node> pool_;
    Node* root_ = nullptr;
    /// The entries with the smallest and the largest key.
    Node *first_ = nullptr, *last_ = nullptr;
    /// What size() says, which need not be the number of nodes.
    std::int64_t size_ = 0;
};

}  // namespace corvex::inline v0

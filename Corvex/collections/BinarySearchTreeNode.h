#pragma once

#include <concepts>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <Corvex/collections/BinaryTree.h>

namespace corvex::inline v0 {

/// A node of a plain search tree, and with it the subtree that it owns. Nothing balances: values that arrive in order
/// make a list, whose operations take linear time but no more stack than others. Equal values are kept, to the right.
/// AVLTree is for everything that must be quick.
/// Cost     Operations on one value take time for each level that they pass; each value is one allocation.
/// Lifetime References to nodes and values are valid until the value is deleted, or another one moves into its node.
/// Threads  None of its own; the owner serialises access.
template <std::totally_ordered Value>
class BinarySearchTreeNode {
public:
    /// Owns a subtree, or nothing.
    using Pointer = std::unique_ptr<BinarySearchTreeNode>;

    /// A tree of one value, without children.
    explicit BinarySearchTreeNode(Value value) : value_(std::move(value)) {}
    BinarySearchTreeNode(const BinarySearchTreeNode&) = delete;
    BinarySearchTreeNode& operator=(const BinarySearchTreeNode&) = delete;
    /// Linear in the subtree, without recursion.
    ~BinarySearchTreeNode() {
        flatten(std::move(left_));
        flatten(std::move(right_));
    }

    /// Valid until another value moves into the node.
    [[nodiscard]] const Value& value() const noexcept { return value_; }
    /// Null where there is no child.
    [[nodiscard]] const BinarySearchTreeNode* left() const noexcept { return left_.get(); }
    [[nodiscard]] const BinarySearchTreeNode* right() const noexcept { return right_.get(); }

    /// Into the subtree below this node. Throws std::bad_alloc, and then nothing has changed.
    void insert(Value value) {
        BinarySearchTreeNode* node = this;
        for (;;) {
            Pointer& child = value < node->value_ ? node->left_ : node->right_;
            if (!child) {
                child = std::make_unique<BinarySearchTreeNode>(std::move(value));
                return;
            }
            node = child.get();
        }
    }

    /// In the subtree of this node, itself included.
    [[nodiscard]] bool contains(const Value& value) const { return find(value) != nullptr; }

    /// Calls `visit(const Value&)` for each value of the subtree in order. What it throws ends the walk. It must not
    /// change the tree.
    template <class Visitor>
    void inOrderTraversal(Visitor&& visit) const {
        walkBinaryTree(
            this, leftOf, rightOf, [](const auto&) {},
            [&](const BinarySearchTreeNode& node) {
                visit(node.value_);
                return true;
            },
            [](const auto&) {});
    }

    /// Copies of the values below the first node on the search path that holds `value`, on its left, in order. Empty
    /// when there is no such node, and when it has no left child.
    [[nodiscard]] std::vector<Value> leftSubtreeValues(const Value& value) const {
        const BinarySearchTreeNode* const node = find(value);
        return valuesBelow(node ? node->left() : nullptr);
    }
    /// As leftSubtreeValues(), on its right; further values that are equal are among these.
    [[nodiscard]] std::vector<Value> rightSubtreeValues(const Value& value) const {
        const BinarySearchTreeNode* const node = find(value);
        return valuesBelow(node ? node->right() : nullptr);
    }

    /// The node with the smallest value of the subtree, itself where it has no left child.
    [[nodiscard]] const BinarySearchTreeNode* minNode() const noexcept {
        const BinarySearchTreeNode* node = this;
        while (node->left_) node = node->left_.get();
        return node;
    }

    /// `delete` of the tree under `root`, under a name that the language allows and static because the root itself may
    /// go: takes out the first node on the search path that holds `value` and returns the new root, null for none left.
    /// A value that is not there changes nothing; `root` may be null.
    /// A node with a right child stays and takes over the smallest value of its right subtree.
    [[nodiscard]] static Pointer deleteValue(Pointer root, const Value& value) {
        Pointer* slot = &root;
        while (*slot) {
            BinarySearchTreeNode& node = **slot;
            if (value < node.value_) {
                slot = &node.left_;
            } else if (node.value_ < value) {
                slot = &node.right_;
            } else {
                break;
            }
        }
        if (*slot) remove(*slot);
        return root;
    }

    /// The values in order, each child's text in brackets: "[1] 2 [3]".
    [[nodiscard]] std::string description() const {
        return bracketedText(this, leftOf, rightOf,
                             [](const BinarySearchTreeNode& node) { return plainText(node.value_); });
    }

private:
    static constexpr auto leftOf = [](const auto& node) { return node.left(); };
    static constexpr auto rightOf = [](const auto& node) { return node.right(); };

    /// The first node on the search path that holds the value; null for none.
    const BinarySearchTreeNode* find(const Value& value) const {
        const BinarySearchTreeNode* node = this;
        while (node && !(value == node->value_)) node = value < node->value_ ? node->left() : node->right();
        return node;
    }

    /// Copies, in order; empty for null.
    static std::vector<Value> valuesBelow(const BinarySearchTreeNode* node) {
        std::vector<Value> values;
        if (node) node->inOrderTraversal([&](const Value& value) { values.push_back(value); });
        return values;
    }

    /// Empties one node: the hole moves down to the smallest value on its right until there is no right.
    static void remove(Pointer& hole) {
        Pointer* slot = &hole;
        while ((*slot)->right_) {
            Pointer* smallest = &(*slot)->right_;
            while ((*smallest)->left_) smallest = &(*smallest)->left_;
            (*slot)->value_ = std::move((*smallest)->value_);
            slot = smallest;
        }
        *slot = std::move((*slot)->left_);
    }

    /// Frees a subtree without recursion: turns left children up until the top has none, then frees the top.
    static void flatten(Pointer node) noexcept {
        while (node) {
            if (Pointer child = std::move(node->left_)) {
                node->left_ = std::move(child->right_);
                child->right_ = std::move(node);
                node = std::move(child);
            } else {
                Pointer next = std::move(node->right_);
                node = std::move(next);
            }
        }
    }

    Value value_;
    /// Smaller values on the left, others on the right.
    Pointer left_, right_;
};

}  // namespace corvex::inline v0

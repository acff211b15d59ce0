#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>

#include <Corvex/collections/BinaryTree.h>
#include <Corvex/platform/Checked.h>

namespace corvex::inline v0 {

template <std::totally_ordered Key, class Payload>
class AVLTree;

/// One entry of an AVLTree and its place there. The tree owns its nodes and alone changes key, children and height; the
/// payload is free to change.
/// Lifetime A node lives until the tree deletes it, and deleting another key may move another entry into it. A node
///          built by hand owns nothing either: its caller keeps the children and the parent alive.
/// Threads  As its tree.
template <std::totally_ordered Key, class Payload>
class AVLTreeNode {
    static_assert(std::is_nothrow_move_constructible_v<Key> && std::is_nothrow_move_assignable_v<Key> &&
                      std::is_nothrow_move_constructible_v<Payload> && std::is_nothrow_move_assignable_v<Payload>,
                  "deletion moves entries between nodes and could not undo half of a move");

public:
    /// Takes height and links as they are given; the children do not learn of their parent. For tests and for trees of
    /// a host's own. A height beyond 32 bits stops the process.
    AVLTreeNode(Key key, std::optional<Payload> payload, AVLTreeNode* leftChild, AVLTreeNode* rightChild,
                AVLTreeNode* parent, std::int64_t height) noexcept
        : key_(std::move(key)),
          children_{leftChild, rightChild},
          parent_(parent),
          height_(checkedCast<std::int32_t>(height)),
          payload_(std::move(payload)) {}
    /// A leaf of height 1, in no tree.
    AVLTreeNode(Key key, std::optional<Payload> payload) noexcept
        : AVLTreeNode(std::move(key), std::move(payload), nullptr, nullptr, nullptr, 1) {}
    /// The same, without a payload.
    explicit AVLTreeNode(Key key) noexcept : AVLTreeNode(std::move(key), std::nullopt) {}
    AVLTreeNode(const AVLTreeNode&) = delete;
    AVLTreeNode& operator=(const AVLTreeNode&) = delete;

    /// Never changed from outside: the place in the tree follows from it.
    [[nodiscard]] const Key& key() const noexcept { return key_; }
    /// None for a key that was inserted alone.
    [[nodiscard]] const std::optional<Payload>& payload() const noexcept { return payload_; }
    [[nodiscard]] std::optional<Payload>& payload() noexcept { return payload_; }

    /// Null where there is no child.
    [[nodiscard]] const AVLTreeNode* leftChild() const noexcept { return children_[left]; }
    [[nodiscard]] AVLTreeNode* leftChild() noexcept { return children_[left]; }
    [[nodiscard]] const AVLTreeNode* rightChild() const noexcept { return children_[right]; }
    [[nodiscard]] AVLTreeNode* rightChild() noexcept { return children_[right]; }

    /// 1 for a leaf, otherwise one more than the higher child's.
    [[nodiscard]] std::int64_t height() const noexcept { return height_; }

    /// False for a root.
    [[nodiscard]] bool isLeftChild() const noexcept { return parent_ && parent_->children_[left] == this; }
    [[nodiscard]] bool isRightChild() const noexcept { return parent_ && parent_->children_[right] == this; }

    /// The node with the smallest key of this subtree, itself where it has no left child. O(height).
    [[nodiscard]] const AVLTreeNode* minimum() const noexcept {
        const AVLTreeNode* node = this;
        while (node->children_[left]) node = node->children_[left];
        return node;
    }
    [[nodiscard]] AVLTreeNode* minimum() noexcept { return const_cast<AVLTreeNode*>(std::as_const(*this).minimum()); }
    /// The node with the largest key of this subtree. O(height).
    [[nodiscard]] const AVLTreeNode* maximum() const noexcept {
        const AVLTreeNode* node = this;
        while (node->children_[right]) node = node->children_[right];
        return node;
    }
    [[nodiscard]] AVLTreeNode* maximum() noexcept { return const_cast<AVLTreeNode*>(std::as_const(*this).maximum()); }

    /// The keys of this subtree in order, each child's text in brackets: "[1] 2 [3]". Takes no stack, however large the
    /// subtree.
    [[nodiscard]] std::string description() const {
        return bracketedText(this, leftOf, rightOf, [](const AVLTreeNode& node) { return plainText(node.key_); });
    }

    /// "key: 2, payload: nil, height: 2, parent: 4, left = [...], right = [...]": the last three only when present. Of
    /// the whole subtree; no form to parse.
    [[nodiscard]] std::string debugDescription() const;

private:
    friend class AVLTree<Key, Payload>;
    /// Sides by number, so that a comparison chooses one without a branch.
    static constexpr unsigned left = 0, right = 1;

    static constexpr auto leftOf = [](auto& node) { return node.leftChild(); };
    static constexpr auto rightOf = [](auto& node) { return node.rightChild(); };

    // What a search reads comes first, then what keeping the balance needs: no node that is not on the way is read for it.
    Key key_;
    AVLTreeNode* children_[2];
    AVLTreeNode* parent_;
    std::int32_t height_;
    std::int32_t lean_ = 0;  ///< How much higher the right child is than the left one. The tree alone keeps it.
    std::optional<Payload> payload_;
};

template <std::totally_ordered Key, class Payload>
std::string AVLTreeNode<Key, Payload>::debugDescription() const {
    std::string text;
    walkBinaryTree(
        this, leftOf, rightOf,
        [&](const AVLTreeNode& node) {
            text += "key: " + plainText(node.key_) + ", payload: " + debugText(node.payload_) +
                    ", height: " + std::to_string(node.height_);
            if (node.parent_) text += ", parent: " + plainText(node.parent_->key_);
            if (node.leftChild()) text += ", left = [";
        },
        [&](const AVLTreeNode& node) {
            if (node.leftChild()) text += "]";
            if (node.rightChild()) text += ", right = [";
            return true;
        },
        [&](const AVLTreeNode& node) { text += node.rightChild() ? "]" : ""; });
    return text;
}

}  // namespace corvex::inline v0

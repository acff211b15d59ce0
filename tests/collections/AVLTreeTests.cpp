#include <Corvex/collections/AVLTree.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "SmallStack.h"

using Tree = corvex::AVLTree<int, std::string>;
using Node = Tree::Node;

namespace corvex::aVLTreeTests {
namespace {

/// "2(1)(3)"; "." for a missing child beside one that is there.
std::string shapeOf(const Node* node) {
    if (!node) return ".";
    std::string key = std::to_string(node->key());
    if (!node->leftChild() && !node->rightChild()) return key;
    return key + "(" + shapeOf(node->leftChild()) + ")(" + shapeOf(node->rightChild()) + ")";
}

/// Heights, balance and parents.
bool isSound(const Node* node) {
    if (!node) return true;
    const Node *const left = node->leftChild(), *const right = node->rightChild();
    const std::int64_t leftHeight = left ? left->height() : 0, rightHeight = right ? right->height() : 0;
    return node->height() == std::max(leftHeight, rightHeight) + 1 && std::abs(leftHeight - rightHeight) <= 1 &&
           (!left || (left->isLeftChild() && !left->isRightChild())) &&
           (!right || (right->isRightChild() && !right->isLeftChild())) && isSound(left) && isSound(right);
}

/// A key that is there counts again; at size 1 any key empties the tree.
TEST(AVLTree, shapesAndSizes) {
    using Keys = std::vector<int>;
    const std::tuple<Keys, Keys, const char*, std::int64_t> rows[] = {
        {{1, 2, 3, 4, 5, 6, 7}, {}, "4(2(1)(3))(6(5)(7))", 7},
        {{3, 1, 2}, {}, "2(1)(3)", 3},
        {{5}, {9}, ".", 0},
        {{4, 4}, {4}, ".", 1},
        {{4, 4}, {4, 7, 7}, ".", 0},
        {{4, 2, 6, 7}, {6}, "4(2)(7)", 3},                          // the one behind it moves up
        {{5, 3, 8, 2, 4, 9, 1}, {5, 4}, "3(2(1)(.))(8(.)(9))", 5},  // rather the one before it
        {{4, 2, 5, 1, 3}, {5}, "2(1)(4(3)(.))", 4},                 // a balanced child turns once
    };
    for (const auto& [inserted, deleted, shape, size] : rows) {
        Tree tree;
        for (const int key : inserted) tree.insert(key);
        for (const int key : deleted) tree.deleteKey(key);
        EXPECT_EQ(shapeOf(tree.root()), shape);
        EXPECT_EQ(tree.size(), size) << shape;
    }
}

TEST(AVLTree, staysBalancedAndHoldsWhatAMapDoes) {
    std::mt19937 random(1);
    for (const unsigned keyCount : {4U, 40U, 400U}) {
        Tree tree;
        std::map<int, std::string> entries;
        std::int64_t size = 0;
        for (int step = 0; step < 4000; ++step) {
            const int key = static_cast<int>(random() % keyCount);
            // Growth and decline in turns, by key, from the smallest and in walks.
            if (random() % 8 < (step / 500 % 2 == 0 ? 5U : 3U)) {
                tree.insert(key, std::to_string(step));
                entries.emplace(key, std::to_string(step));
                ++size;
            } else if (step % 64 == 0) {
                auto at = entries.begin();
                tree.deleteWhere([&](const Node& node, bool& stop) {
                    EXPECT_EQ(node.key(), at->first);
                    stop = node.key() >= key;
                    const bool isDeleted = random() % 3 == 0;
                    at = isDeleted ? entries.erase(at) : std::next(at);
                    size -= isDeleted ? 1 : 0;
                    return isDeleted;
                });
                ASSERT_TRUE(at == entries.end() || at->first > key) << "ended too early";
            } else if (step % 4 != 0) {
                tree.deleteKey(key);
                size -= size == 1 || entries.contains(key) ? 1 : 0;
                if (size == 0) entries.clear();
                entries.erase(key);
            } else if (const auto taken = tree.takeMinimum()) {
                ASSERT_EQ(taken->key, entries.begin()->first);
                ASSERT_EQ(taken->payload, entries.begin()->second);
                entries.erase(entries.begin());
                --size;
            }
            std::map<int, std::string> found;
            Tree::doInOrder(tree.root(), [&](const Node& node) {
                found.emplace_hint(found.end(), node.key(), *node.payload());
                ASSERT_EQ(*tree.search(node.key()), *node.payload());
            });
            ASSERT_EQ(found, entries) << step;
            ASSERT_TRUE(isSound(tree.root())) << step;
            ASSERT_EQ(tree.size(), size) << step;
            ASSERT_EQ(tree.search(key) != nullptr, entries.contains(key)) << step;
        }
    }
}

TEST(AVLTree, searchAndNeighbours) {
    Tree tree;
    EXPECT_FALSE(tree.lowHighSearch(1));
    for (const int key : {10, 20, 30}) tree.insert(key, std::to_string(key));
    tree.insert(20, "second");
    tree.insert(40);
    EXPECT_EQ(*tree.search(20), "20");
    EXPECT_EQ(tree.search(40), nullptr);
    EXPECT_EQ(tree.search(41), nullptr);
    const std::pair<int, std::optional<std::pair<int, int>>> rows[] = {
        {20, {{20, 20}}}, {25, {{20, 30}}}, {10, {{10, 10}}}, {5, {}}, {45, {}}};
    for (const auto& [key, expected] : rows) {
        const auto found = std::as_const(tree).lowHighSearch(key);
        EXPECT_EQ(found ? std::optional(std::pair(found->low->key(), found->high->key())) : std::nullopt, expected)
            << key;
    }
}

TEST(AVLTree, traversalsAndTexts) {
    Tree tree;
    EXPECT_EQ(tree.description() + tree.debugDescription() + Tree::inorder(tree.root()), "");
    for (const int key : {4, 2, 6, 1}) tree.insert(key);
    tree.root()->payload() = "four";
    std::string order;
    const auto note = [&](const Node& node) { order += std::to_string(node.key()); };
    Tree::doInOrder(tree.root(), note);
    Tree::doInPreOrder(std::as_const(tree).root(), note);
    Tree::doInPostOrder(tree.root(), note);
    Tree::inOrderTraversal(tree.root(), [&](const Node& node, bool& stop) { note(node), stop = node.key() == 2; });
    Tree::inOrderTraversal(tree.root()->leftChild(), note);
    EXPECT_EQ(order, std::string("1246") + "4216" + "1264" + "12" + "12");
    EXPECT_EQ(Tree::inorder(tree.root()) + "; " + Tree::preorder(tree.root()), "1 2 4 6; 4 2 1 6");
    EXPECT_EQ(tree.description(), "[[1] 2] 4 [6]");
    EXPECT_EQ(
        tree.debugDescription(),
        "key: 4, payload: Optional(\"four\"), height: 3, left = [key: 2, payload: nil, height: 2, parent: 4, "
        "left = [key: 1, payload: nil, height: 1, parent: 2]], right = [key: 6, payload: nil, height: 1, parent: 4]");
    EXPECT_EQ(std::pair(tree.root()->minimum()->key(), tree.root()->maximum()->key()), std::pair(1, 6));
}

TEST(AVLTree, freesEveryEntry) {
    const auto shared = std::make_shared<int>();
    {
        AVLTree<int, std::shared_ptr<int>> tree;
        for (int key = 0; key < 3000; ++key) tree.insert(key, shared);
        for (int key = 0; key < 3000; key += 3) tree.deleteKey(key);
        EXPECT_EQ(shared.use_count(), 2001);
    }
    EXPECT_EQ(shared.use_count(), 1);
}

TEST(AVLTreeNode, builtByHandKeepsWhatItIsGiven) {
    std::vector<std::unique_ptr<Node>> list;
    for (int key = 0; key < 20'000; ++key) {
        Node* const left = list.empty() ? nullptr : list.back().get();
        list.push_back(std::make_unique<Node>(key, std::nullopt, left, nullptr, nullptr, 7));
    }
    EXPECT_EQ(list.back()->height(), 7);
    EXPECT_FALSE(list.front()->isLeftChild());
    onSmallStack([&] {
        EXPECT_EQ(list.back()->minimum(), list.front().get());
        EXPECT_EQ(list.back()->description().substr(19'998, 12), "[0] 1] 2] 3]");
    });
}

TEST(AVLTreeDeathTest, corruptTreesStopTheProcess) {
    Tree tree;
    for (const int key : {2, 1, 3}) tree.insert(key);
    Node* const leaf = tree.root()->leftChild();
    std::destroy_at(leaf);
    std::construct_at(leaf, 1, std::nullopt, nullptr, nullptr, tree.root()->rightChild(), 1);
    EXPECT_DEATH(tree.deleteKey(1), "BinaryTree.*Error: tree is invalid\\.");
}

}  // namespace
}  // namespace corvex::aVLTreeTests

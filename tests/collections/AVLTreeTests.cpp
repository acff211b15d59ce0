#include <Corvex/collections/AVLTree.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "SmallStack.h"

using Tree = corvex::AVLTree<int, std::string>;
using Node = Tree::Node;

// Private members that two tests spoil on purpose: an explicit instantiation may name them.
std::int64_t& sizeOf(Tree& tree);
Node*& parentOf(Node& node);
template <auto size, auto parent>
struct Spoil {
    friend std::int64_t& sizeOf(Tree& tree) { return tree.*size; }
    friend Node*& parentOf(Node& node) { return node.*parent; }
};
template struct Spoil<&Tree::size_, &Node::parent_>;

namespace corvex::aVLTreeTests {
namespace {

/// The textbook tree, slow and plain: heights are counted anew and every ancestor is looked at.
struct Model {
    using Link = std::unique_ptr<Model>;
    int number;
    Link children[2];

    int key() const { return number; }
    const Model* leftChild() const { return children[0].get(); }
    const Model* rightChild() const { return children[1].get(); }

    static int height(const Link& top) {
        return top ? 1 + std::max(height(top->children[0]), height(top->children[1])) : 0;
    }
    static int lean(const Link& top, int side) { return height(top->children[side]) - height(top->children[1 - side]); }
    static void raise(Link& top, int side) {
        Link child = std::move(top->children[side]);
        top->children[side] = std::move(child->children[1 - side]);
        child->children[1 - side] = std::move(top);
        top = std::move(child);
    }
    static void balance(Link& top) {
        const int side = lean(top, 1) > 0 ? 1 : 0;
        if (lean(top, side) < 2) return;
        if (lean(top->children[side], side) < 0) raise(top->children[side], 1 - side);
        raise(top, side);
    }
    static void insert(Link& top, int key) {
        if (!top) {
            top = std::make_unique<Model>(Model{key, {}});
        } else if (key != top->number) {
            insert(top->children[key > top->number], key);
            balance(top);
        }
    }
    static void remove(Link& top, int key) {
        if (!top) return;
        if (key == top->number) {
            if (height(top) == 1) return top.reset();
            const int side = top->children[0] ? 0 : 1;
            const Model* below = top->children[side].get();
            while (below->children[1 - side]) below = below->children[1 - side].get();
            key = top->number = below->number;
            remove(top->children[side], key);
        } else {
            remove(top->children[key > top->number], key);
        }
        balance(top);
    }
};

/// "2(1)(3)"; "." for a missing child beside one that is there.
template <class AnyNode>
std::string shapeOf(const AnyNode* node) {
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

struct ShapeRow {
    const char* name;
    std::vector<int> inserted, deleted;
    const char* shape;
    std::int64_t size;
};

const ShapeRow shapeRows[] = {
    {"empty", {}, {1}, ".", 0},
    {"ascending", {1, 2, 3, 4, 5, 6, 7}, {}, "4(2(1)(3))(6(5)(7))", 7},
    {"leftRight", {3, 1, 2}, {}, "2(1)(3)", 3},
    {"rightLeft", {1, 3, 2}, {}, "2(1)(3)", 3},
    {"leftLeft", {3, 2, 1}, {}, "2(1)(3)", 3},
    {"duplicateCounts", {4, 4}, {}, "4", 2},
    {"anyKeyEmptiesOneEntry", {5}, {9}, ".", 0},
    {"absentKey", {1, 2}, {3}, "1(.)(2)", 2},
    {"leafRootOfSizeTwo", {4, 4}, {4}, ".", 1},
    {"leafRootThenAny", {4, 4}, {4, 7}, ".", 0},
    {"insertAfterEmptiedRoot", {4, 4}, {4, 7, 7}, ".", 0},
    {"predecessorMovesUp", {4, 2, 6, 1, 3}, {4}, "3(2(1)(.))(6)", 4},
    {"successorWithoutLeft", {4, 2, 6, 7}, {6}, "4(2)(7)", 3},
    {"predecessorHasALeftChild", {5, 3, 8, 2, 4, 9, 1}, {5, 4}, "3(2(1)(.))(8(.)(9))", 5},
    {"balancedChildTurnsOnce", {4, 2, 5, 1, 3}, {5}, "2(1)(4(3)(.))", 4},
    {"twoTurnsUpThePath", {5, 2, 8, 1, 4, 7, 10, 3, 6, 9, 11, 12}, {1}, "8(5(3(2)(4))(7(6)(.)))(10(9)(11(.)(12)))", 11},
};

TEST(AVLTree, shapesAndSizes) {
    for (const auto& row : shapeRows) {
        Tree tree;
        for (const int key : row.inserted) tree.insert(key);
        for (const int key : row.deleted) tree.deleteKey(key);
        EXPECT_EQ(shapeOf(tree.root()), row.shape) << row.name;
        EXPECT_EQ(tree.size(), row.size) << row.name;
        EXPECT_TRUE(isSound(tree.root())) << row.name;
    }
}

TEST(AVLTree, behavesAsTheTextbookTree) {
    std::mt19937 random(1);
    for (const unsigned keyCount : {4U, 40U, 400U}) {
        Tree tree;
        Model::Link model;
        std::map<int, std::string> entries;
        std::int64_t size = 0;
        for (int step = 0; step < 4000; ++step) {
            const int key = static_cast<int>(random() % keyCount);
            // Growth and decline in turns; near the end of each, the smallest is taken instead.
            if (random() % 8 < (step / 500 % 2 == 0 ? 5U : 3U)) {
                tree.insert(key, std::to_string(step));
                Model::insert(model, key);
                entries.emplace(key, std::to_string(step));
                ++size;
            } else if (step % 4 != 0) {
                tree.deleteKey(key);
                size -= size == 1 || entries.contains(key) ? 1 : 0;
                if (size == 0) model.reset(), entries.clear();
                Model::remove(model, key);
                entries.erase(key);
            } else if (const auto taken = tree.takeMinimum()) {
                ASSERT_EQ(taken->key, entries.begin()->first);
                ASSERT_EQ(taken->payload, entries.begin()->second);
                Model::remove(model, taken->key);
                entries.erase(entries.begin());
                --size;
            }
            ASSERT_EQ(shapeOf(tree.root()), shapeOf(model.get())) << step;
            ASSERT_TRUE(isSound(tree.root())) << step;
            ASSERT_EQ(tree.size(), size) << step;
            const std::string* const payload = tree.search(key);
            ASSERT_EQ(payload ? std::optional(*payload) : std::nullopt,
                      entries.contains(key) ? std::optional(entries[key]) : std::nullopt);
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
        {20, {{20, 20}}}, {25, {{20, 30}}}, {11, {{10, 20}}}, {39, {{30, 40}}}, {10, {{10, 10}}}, {5, {}}, {45, {}},
    };
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
    Tree::inOrderTraversal(tree.root(), note);
    Tree::inOrderTraversal(tree.root(), [&](const Node& node, bool& stop) { note(node), stop = node.key() == 2; });
    Tree::doInPostOrder(tree.root()->leftChild(), note);
    EXPECT_EQ(order,
              "1246"
              "4216"
              "1264"
              "1246"
              "12"
              "12");
    EXPECT_EQ(Tree::inorder(tree.root()) + "; " + Tree::preorder(tree.root()), "1 2 4 6; 4 2 1 6");
    EXPECT_EQ(tree.description(), "[[1] 2] 4 [6]");
    EXPECT_EQ(
        tree.debugDescription(),
        "key: 4, payload: Optional(\"four\"), height: 3, left = [key: 2, payload: nil, height: 2, parent: 4, "
        "left = [key: 1, payload: nil, height: 1, parent: 2]], right = [key: 6, payload: nil, height: 1, parent: 4]");
    EXPECT_EQ(std::pair(tree.root()->minimum()->key(), tree.root()->maximum()->key()), std::pair(1, 6));
}

TEST(AVLTree, deletesWhatAWalkDecides) {
    std::mt19937 random(2);
    for (int round = 0; round < 200; ++round) {
        AVLTree<int, std::unique_ptr<int>> tree;
        for (int key = 0; key < 40; ++key) tree.insert(key, std::make_unique<int>(key));
        const unsigned odds = 1 + random() % 8;
        std::vector<int> visited, expected, kept, moved;
        tree.deleteWhere([&](auto& node, bool& stop) {
            visited.push_back(node.key());
            stop = node.key() == 35;
            const bool isDeleted = random() % odds == 0;
            isDeleted ? moved.push_back(*std::exchange(node.payload(), std::nullopt).value())
                      : kept.push_back(node.key());
            return isDeleted;
        });
        for (int key = 0; key < 40; ++key) key <= 35 ? expected.push_back(key) : kept.push_back(key);
        ASSERT_EQ(visited, expected);
        ASSERT_EQ(static_cast<std::size_t>(tree.size()), kept.size());
        for (const int key : kept) ASSERT_EQ(**tree.search(key), key);
        for (const int key : moved) ASSERT_EQ(tree.search(key), nullptr);
    }
}

TEST(AVLTree, freesEveryEntryWithLittleStack) {
    onSmallStack([] {
        const auto shared = std::make_shared<int>();
        {
            AVLTree<int, std::shared_ptr<int>> tree;
            for (int key = 0; key < 300'000; ++key) tree.insert(key, shared);
            for (int key = 0; key < 300'000; key += 3) tree.deleteKey(key);
            EXPECT_EQ(shared.use_count(), 200'001);
        }
        EXPECT_EQ(shared.use_count(), 1);
    });
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

TEST(AVLTreeDeathTest, corruptTreesAndOverflowingSizes) {
    Tree tree;
    for (const int key : {2, 1, 3}) tree.insert(key);
    parentOf(*tree.root()->leftChild()) = tree.root()->rightChild();
    EXPECT_DEATH(tree.deleteKey(1), "BinaryTree.*Error: tree is invalid\\.");
    sizeOf(tree) = std::numeric_limits<std::int64_t>::max();
    EXPECT_DEATH(tree.insert(2), "overflow");
    parentOf(*tree.root()->leftChild()) = tree.root();
    sizeOf(tree) = std::numeric_limits<std::int64_t>::min();
    EXPECT_DEATH(tree.deleteKey(1), "overflow");
}

}  // namespace
}  // namespace corvex::aVLTreeTests

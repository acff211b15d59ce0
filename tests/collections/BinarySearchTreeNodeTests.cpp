#include <Corvex/collections/BinarySearchTreeNode.h>

#include <memory>
#include <random>
#include <set>
#include <tuple>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "SmallStack.h"

namespace corvex::binarySearchTreeNodeTests {
namespace {

using Node = BinarySearchTreeNode<int>;

Node::Pointer treeOf(const std::vector<int>& values) {
    auto root = std::make_unique<Node>(values.front());
    for (std::size_t i = 1; i < values.size(); ++i) root->insert(values[i]);
    return root;
}

TEST(BinarySearchTreeNode, deletions) {
    const std::tuple<std::vector<int>, int, const char*> rows[] = {
        {{5}, 5, ""},                           // the last
        {{5, 3, 9, 7, 8}, 5, "[3] 7 [[8] 9]"},  // the smallest of the right moves up
        {{1, 2, 3, 4}, 1, "2 [3 [4]]"},         // the hole moves down the right
        {{5, 3, 8, 5}, 5, "[3] 5 [8]"},         // an equal one on the right
    };
    for (const auto& [inserted, deleted, description] : rows) {
        const auto root = Node::deleteValue(treeOf(inserted), deleted);
        EXPECT_EQ(root ? root->description() : "", description);
    }
}

TEST(BinarySearchTreeNode, valuesOnEitherSide) {
    using Values = std::vector<int>;
    const auto root = treeOf({5, 3, 8, 5});
    EXPECT_EQ(root->rightSubtreeValues(5), Values({5, 8}));
    EXPECT_EQ(root->leftSubtreeValues(5), Values({3}));
    EXPECT_EQ(root->leftSubtreeValues(4), Values());
    EXPECT_EQ(root->rightSubtreeValues(8), Values());
    EXPECT_EQ(root->minNode()->value(), 3);
}

TEST(BinarySearchTreeNode, behavesAsAMultiset) {
    std::mt19937 random(1);
    auto root = treeOf({50});
    std::multiset<int> values{50};
    for (int step = 0; step < 4000 && root; ++step) {
        const int value = static_cast<int>(random() % 100);
        if (random() % 8 < (step / 500 % 2 == 0 ? 5U : 3U)) {
            root->insert(value);
            values.insert(value);
        } else if (values.size() > 1) {
            root = Node::deleteValue(std::move(root), value);
            if (const auto at = values.find(value); at != values.end()) values.erase(at);
        }
        std::vector<int> inOrder;
        root->inOrderTraversal([&](int each) { inOrder.push_back(each); });
        ASSERT_EQ(inOrder, std::vector<int>(values.begin(), values.end())) << step;
        ASSERT_EQ(root->contains(value), values.contains(value)) << step;
    }
}

TEST(BinarySearchTreeNode, listsNeedNoMoreStackThanBushes) {
    onSmallStack([] {
        for (const int direction : {1, -1}) {
            auto root = treeOf({0});
            constexpr int count = 8000;
            for (int i = 1; i < count; ++i) root->insert(i * direction);
            EXPECT_TRUE(root->contains((count - 1) * direction));
            root = Node::deleteValue(std::move(root), 0);
            EXPECT_EQ(root->value(), direction);
            EXPECT_EQ((direction > 0 ? root->rightSubtreeValues(1) : root->leftSubtreeValues(-1)).size(), count - 2U);
        }
    });
}

}  // namespace
}  // namespace corvex::binarySearchTreeNodeTests

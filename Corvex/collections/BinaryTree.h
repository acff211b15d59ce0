#pragma once

#include <concepts>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <Corvex/platform/Checked.h>
#include <Corvex/platform/DoubleText.h>

namespace corvex::inline v0 {

// What the trees of this directory share: one walk, and texts for debugging.

/// Walks a subtree without recursion, since a tree need not be balanced: `before` takes each node on the way down,
/// `between` after its left subtree (false ends the walk), `after` after its right subtree. `node` may be null.
/// `leftOf` and `rightOf` lead from a node to its children. The visitors must not change the tree's shape; what they
/// throw ends the walk. Linear time; one allocation, more for a path of more than 64 nodes.
template <class Node, class LeftOf, class RightOf, class Before, class Between, class After>
void walkBinaryTree(Node* node, LeftOf&& leftOf, RightOf&& rightOf, Before&& before, Between&& between, After&& after) {
    /// A node whose left subtree has been walked, and whether the right one has.
    struct Step {
        Node* node;
        bool isRightDone;
    };
    // The nodes above, of which something is still to be visited.
    std::vector<Step> path;
    path.reserve(node ? 64 : 0);  // the height of any balanced tree that fits into memory, and most others
    for (;;) {
        for (; node; node = leftOf(*node)) {
            before(*node);
            path.push_back({node, false});
        }
        // Back up over all nodes whose both subtrees are done.
        while (!path.empty() && path.back().isRightDone) {
            after(*path.back().node);
            path.pop_back();
        }
        if (path.empty()) return;
        Step& step = path.back();
        step.isRightDone = true;
        if (!between(*step.node)) return;
        node = rightOf(*step.node);
    }
}

/// For a tree whose links contradict each other, as after somebody else wrote to its memory: going on would do more
/// damage.
[[noreturn]] inline void stopForInvalidTree() noexcept { fatalError("Error: tree is invalid."); }

/// A key or value as text: texts as they are, Booleans as true and false, numbers in decimal (2.0 for a double that is
/// whole), other types by their own `description()`. "(opaque)" for a type that has none of these. For people and logs;
/// nothing reads it back.
template <class Value>
[[nodiscard]] std::string plainText(const Value& value) {
    // The order matters: a Boolean is an integral type, and a text of one's own may have a description, too.
    if constexpr (std::convertible_to<const Value&, std::string_view>) {
        return std::string(std::string_view(value));
    } else if constexpr (std::same_as<Value, bool>) {
        return value ? "true" : "false";
    } else if constexpr (std::integral<Value>) {
        return std::to_string(value);
    } else if constexpr (std::floating_point<Value>) {
        return defaultText(static_cast<double>(value));
    } else if constexpr (requires { std::string(value.description()); }) {
        return std::string(value.description());
    } else {
        return "(opaque)";
    }
}

/// A subtree in order, each child's text in brackets: "[1] 2 [3]". `textOf(node)` is a node's own. Empty for null.
/// Linear in the text, and takes no stack, however deep the tree. `leftOf` and `rightOf` are those of walkBinaryTree().
template <class Node, class LeftOf, class RightOf, class TextOf>
[[nodiscard]] std::string bracketedText(Node* node, LeftOf&& leftOf, RightOf&& rightOf, TextOf&& textOf) {
    std::string text;
    walkBinaryTree(
        // A bracket opens before a subtree is walked and closes behind it, so that no text is built twice.
        node, leftOf, rightOf, [&](Node& from) { text += leftOf(from) ? "[" : ""; },
        [&](Node& from) {
            text += (leftOf(from) ? "] " : "") + textOf(from) + (rightOf(from) ? " [" : "");
            return true;
        },
        [&](Node& from) { text += rightOf(from) ? "]" : ""; });
    return text;
}

/// An optional payload for a debugger: "nil", or "Optional(7)" with texts in quotation marks and, where the type has
/// one, its `debugDescription()`. Quotation marks within texts are not escaped.
template <class Value>
[[nodiscard]] std::string debugText(const std::optional<Value>& value) {
    if (!value) return "nil";
    if constexpr (std::convertible_to<const Value&, std::string_view>) {
        return "Optional(\"" + plainText(*value) + "\")";
    } else if constexpr (requires { std::string(value->debugDescription()); }) {
        return "Optional(" + std::string(value->debugDescription()) + ")";
    } else {
        return "Optional(" + plainText(*value) + ")";
    }
}

}  // namespace corvex::inline v0

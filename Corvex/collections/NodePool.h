#pragma once

#include <cstddef>
#include <new>
#include <type_traits>
#include <utility>

namespace corvex::inline v0 {

/// Storage for the nodes of one tree: blocks that grow up to 512 nodes, and a list of the slots that were given back,
/// used again last first. Blocks return to the heap when the pool goes, which destroys no node that is still there: the
/// tree does that first.
/// Cost     O(1) for a node; memory is that of the largest number of nodes that were there at once.
/// Threads  None of its own; the tree's owner serialises access.
template <class Node>
class NodePool {
public:
    /// Allocates nothing until the first node.
    NodePool() = default;
    NodePool(const NodePool&) = delete;
    NodePool& operator=(const NodePool&) = delete;
    /// Linear in the blocks.
    ~NodePool() {
        while (blocks_) delete[] std::exchange(blocks_, blocks_->next);
    }

    /// A node in memory of the pool. What it throws is only std::bad_alloc, and then nothing has changed: nodes are
    /// made without exceptions.
    template <class... Arguments>
    [[nodiscard]] Node* make(Arguments&&... arguments) {
        static_assert(std::is_nothrow_constructible_v<Node, Arguments...>, "the slot would be lost");
        if (!free_ && unused_ == end_) addBlock();
        Slot* const slot = free_ ? std::exchange(free_, free_->next) : unused_++;
        return ::new (static_cast<void*>(slot->bytes)) Node(std::forward<Arguments>(arguments)...);
    }

    /// Keeps the memory for the next node.
    void destroy(Node* node) noexcept {
        node->~Node();
        free_ = ::new (static_cast<void*>(node)) Slot{free_};
    }

private:
    /// Memory for a node, or a link: to the next slot that was given back, or to the block before.
    union Slot {
        Slot* next;
        alignas(Node) std::byte bytes[sizeof(Node)];
    };

    /// 8 nodes, then twice as many each time, up to 512: small trees stay small.
    void addBlock() {
        Slot* const block = new Slot[blockSize_ + 1];
        block->next = std::exchange(blocks_, block);
        unused_ = block + 1;
        end_ = unused_ + blockSize_;
        if (blockSize_ < 512) blockSize_ *= 2;
    }

    /// The last one; the first slot of each leads to the one before.
    Slot* blocks_ = nullptr;
    std::size_t blockSize_ = 8;
    Slot* free_ = nullptr;
    /// The rest of the last block.
    Slot *unused_ = nullptr, *end_ = nullptr;
};

}  // namespace corvex::inline v0

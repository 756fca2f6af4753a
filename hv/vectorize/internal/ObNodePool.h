// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Storage for the many small nodes of a tracing.

#ifndef HV_VECTORIZE_INTERNAL_OBNODEPOOL_H
#define HV_VECTORIZE_INTERNAL_OBNODEPOOL_H

#include <hv/foundation/HvMemory.h>

#include <algorithm>
#include <cstddef>
#include <type_traits>

/// Hands out nodes from blocks and takes them back for the next time; all memory goes with the
/// pool, whatever is still in use. A node has the links `previous` and `next` to its like.
template <class Node>
class ObNodePool {
    static_assert(std::is_trivially_copyable<Node>::value, "nodes are used as raw memory");

public:
    ObNodePool() = default;
    ObNodePool(ObNodePool const&) = delete;
    ObNodePool& operator=(ObNodePool const&) = delete;
    ~ObNodePool()
    {
        while (blocks_ != nullptr) {
            Block* const block = blocks_;
            blocks_ = block->next;
            HvFree(block);
        }
    }

    /// A node that holds `contents`.
    Node* Take(Node const& contents)
    {
        Node* node = free_;
        if (node != nullptr) {
            free_ = node->next;
        } else {
            if (fresh_ == freshEnd_) {
                AddBlock();
            }
            node = fresh_++;
        }
        *node = contents;
        return node;
    }

    /// Takes back one node.
    void Give(Node* node)
    {
        node->next = free_;
        free_ = node;
    }

    /// Takes back all nodes of a ring at once.
    void GiveRing(Node* node)
    {
        node->previous->next = free_;
        free_ = node;
    }

private:
    /// Head of a block; its nodes follow.
    struct alignas(std::max_align_t) Block {
        Block* next;
    };

    /// Small, as most pools hold a few nodes: what a drawing needs comes by doubling.
    static constexpr std::size_t kFirstBlockNodes = 32;
    /// Ends the doubling where a block is large enough for its cost not to matter; the last block
    /// then wastes a megabyte or two at most.
    static constexpr std::size_t kMostBlockNodes = std::size_t(1) << 15;

    void AddBlock()
    {
        std::size_t const nodes = nextBlockNodes_;
        auto* const block = static_cast<Block*>(HvAllocate(sizeof(Block) + nodes * sizeof(Node)));
        block->next = blocks_;
        blocks_ = block;
        fresh_ = reinterpret_cast<Node*>(block + 1);
        freshEnd_ = fresh_ + nodes;
        nextBlockNodes_ = std::min(nodes * 2, kMostBlockNodes);
    }

    Block* blocks_ = nullptr;
    Node* free_ = nullptr;
    // The part of the newest block that was never handed out.
    Node* fresh_ = nullptr;
    Node* freshEnd_ = nullptr;
    std::size_t nextBlockNodes_ = kFirstBlockNodes;
};

#endif

// NodePool.h: memory for the nodes of lists and maps, fetched in blocks.
#pragma once

#include <kelgen/framework/base/Exceptions.h>

#include <cstddef>
#include <cstdlib>
#include <limits>

namespace kelgen::detail {

/// Raw memory for NODE objects. Nodes come from blocks of a fixed count; freed ones are reused, and blocks go all at once.
template <class NODE>
class NodePool
{
    static_assert(alignof(NODE) <= alignof(std::max_align_t), "blocks are aligned as malloc aligns");

public:
    /// @p blockSize nodes a block, at least 1.
    explicit NodePool(int blockSize) : m_blockSize(blockSize > 0 ? static_cast<std::size_t>(blockSize) : 1) {}
    ~NodePool() { FreeBlocks(); }
    NodePool(const NodePool&) = delete;
    NodePool& operator=(const NodePool&) = delete;

    /// Room for one node. Throws: the memory exception.
    void* Take()
    {
        if (m_free == nullptr)
            AddBlock();
        Slot* slot = m_free;
        m_free = slot->next;
        return slot->node;
    }

    /// Gives back the room of a node whose destructor has run.
    void GiveBack(NODE* node)
    {
        Slot* slot = reinterpret_cast<Slot*>(node);
        slot->next = m_free;
        m_free = slot;
    }

    /// Gives all blocks back to the heap; no node may be in use.
    void FreeBlocks()
    {
        while (m_blocks != nullptr) {
            Block* next = m_blocks->next;
            std::free(m_blocks);
            m_blocks = next;
        }
        m_free = nullptr;
    }

private:
    union Slot {
        Slot* next;
        alignas(NODE) unsigned char node[sizeof(NODE)];
    };
    struct Block
    {
        Block* next;
        Slot slots[1];
    };

    void AddBlock()
    {
        if (m_blockSize > std::numeric_limits<std::ptrdiff_t>::max() / sizeof(Slot) - 1)
            AfxThrowMemoryException();
        void* memory = std::malloc(offsetof(Block, slots) + m_blockSize * sizeof(Slot));
        if (memory == nullptr)
            AfxThrowMemoryException();
        Block* block = static_cast<Block*>(memory);
        block->next = m_blocks;
        m_blocks = block;

        // Linked from the back, so that nodes are handed out in the order in which they lie.
        Slot* slots = reinterpret_cast<Slot*>(static_cast<unsigned char*>(memory) + offsetof(Block, slots));
        for (std::size_t i = m_blockSize; i-- > 0;) {
            slots[i].next = m_free;
            m_free = &slots[i];
        }
    }

    std::size_t m_blockSize;
    Block* m_blocks = nullptr;
    Slot* m_free = nullptr;
};

}  // namespace kelgen::detail

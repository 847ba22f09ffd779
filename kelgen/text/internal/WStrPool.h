// WStrPool.h: fixed-size blocks for short strings.
#pragma once

#include <kelgen/Export.h>

#include <cstddef>
#include <mutex>

/// Hands out blocks of one size from chunks of the general heap. Blocks that come back are handed out again; chunks go back to
/// the heap together, when the pool is destroyed.
///
/// Threads: any; a lock guards every call.
/// Cost: one lock a call, and one heap allocation in nBlocksPerChunk blocks.
class KELGEN_TESTED_API CWStrBlockPool
{
public:
    /// A block that nobody holds.
    struct FreeBlock
    {
        FreeBlock* next;
    };

    /// @p nBlockSize in bytes: a multiple of 16.
    explicit CWStrBlockPool(std::size_t nBlockSize, int nBlocksPerChunk = 64);
    ~CWStrBlockPool();
    CWStrBlockPool(const CWStrBlockPool&) = delete;
    CWStrBlockPool& operator=(const CWStrBlockPool&) = delete;

    /// A block with undefined content. Throws: the framework's memory exception, with the lock released.
    [[nodiscard]] void* Alloc();
    /// Takes back a block of this pool.
    void Free(void* block);

    /// A chain of @p count blocks, for a cache in front of the lock. Throws: as Alloc, with no block taken.
    [[nodiscard]] FreeBlock* AllocMany(int count);
    /// Takes back the chain from @p first to @p last.
    void FreeMany(FreeBlock* first, FreeBlock* last);

    /// The heap allocations made so far.
    [[nodiscard]] int GetChunkCount() const;

private:
    struct Chunk;

    bool Reserve(int count);

    const std::size_t m_blockSize;
    const int m_blocksPerChunk;
    mutable std::mutex m_lock;
    Chunk* m_chunks = nullptr;
    FreeBlock* m_free = nullptr;
    int m_freeCount = 0;
    int m_chunkCount = 0;
};

// WStrPool.cpp: chunks cut into blocks, in a chain of free ones.
#include <kelgen/text/internal/WStrPool.h>

#include <kelgen/framework/base/Exceptions.h>

#include <cstdint>
#include <cstdlib>
#include <new>

namespace {

// The heap aligns to 16 bytes, vectors of the processor are of 32.
constexpr std::size_t kAlignment = 32;

}  // namespace

/// The head of a heap allocation. Its blocks follow, the first one aligned for vectors: what a long copy takes
/// depends on where in a vector it begins, which so is the same in all blocks whose size is a multiple.
struct alignas(16) CWStrBlockPool::Chunk
{
    Chunk* next;

    char* FirstBlock()
    {
        const auto end = reinterpret_cast<std::uintptr_t>(this + 1);
        return reinterpret_cast<char*>(this + 1) + (kAlignment - end % kAlignment) % kAlignment;
    }
};

CWStrBlockPool::CWStrBlockPool(std::size_t nBlockSize, int nBlocksPerChunk) : m_blockSize(nBlockSize), m_blocksPerChunk(nBlocksPerChunk) {}

CWStrBlockPool::~CWStrBlockPool()
{
    while (m_chunks) {
        Chunk* const next = m_chunks->next;
        std::free(m_chunks);
        m_chunks = next;
    }
}

/// Makes @p count blocks free; false when memory ends.
bool CWStrBlockPool::Reserve(int count)
{
    while (m_freeCount < count) {
        const std::size_t room = m_blockSize * static_cast<std::size_t>(m_blocksPerChunk);
        void* const memory = std::malloc(sizeof(Chunk) + kAlignment - alignof(Chunk) + room);
        if (!memory)
            return false;
        m_chunks = new (memory) Chunk{m_chunks};
        ++m_chunkCount;

        // The block nearest the chunk's head is handed out first.
        char* const blocks = m_chunks->FirstBlock();
        for (int i = m_blocksPerChunk; i-- > 0;)
            m_free = new (blocks + m_blockSize * static_cast<std::size_t>(i)) FreeBlock{m_free};
        m_freeCount += m_blocksPerChunk;
    }
    return true;
}

void* CWStrBlockPool::Alloc()
{
    return AllocMany(1);
}

void CWStrBlockPool::Free(void* block)
{
    FreeBlock* const free = new (block) FreeBlock{nullptr};
    FreeMany(free, free);
}

CWStrBlockPool::FreeBlock* CWStrBlockPool::AllocMany(int count)
{
    FreeBlock* first = nullptr;
    {
        const std::lock_guard guard(m_lock);
        if (Reserve(count)) {
            first = m_free;
            FreeBlock* last = first;
            for (int i = 1; i < count; ++i)
                last = last->next;
            m_free = last->next;
            m_freeCount -= count;
            last->next = nullptr;
        }
    }
    if (!first)
        AfxThrowMemoryException();
    return first;
}

void CWStrBlockPool::FreeMany(FreeBlock* first, FreeBlock* last)
{
    int count = 1;
    for (const FreeBlock* block = first; block != last; block = block->next)
        ++count;
    const std::lock_guard guard(m_lock);
    last->next = m_free;
    m_free = first;
    m_freeCount += count;
}

int CWStrBlockPool::GetChunkCount() const
{
    const std::lock_guard guard(m_lock);
    return m_chunkCount;
}

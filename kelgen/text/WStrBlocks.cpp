// WStrBlocks.cpp: the five pools, and what passes between them and the threads.
#include <kelgen/text/internal/WStrBlocks.h>

#include <kelgen/framework/base/Exceptions.h>
#include <kelgen/platform/support/ThreadSlot.h>

#include <climits>
#include <cstdlib>

namespace kelgen::detail {

constinit thread_local ThreadBlocks* threadBlocks [[gnu::tls_model("initial-exec")]] = nullptr;

namespace {

/// The thread is ending, or has no place to keep blocks: it goes to the pools for each.
constinit thread_local bool threadKeepsNone [[gnu::tls_model("initial-exec")]] = false;

void WINAPI ReturnThreadBlocks(void* blocks);

struct Pools
{
    std::array<CWStrBlockPool, kBlockClasses> byClass = {
        {CWStrBlockPool(kBlockClass[0].blockSize), CWStrBlockPool(kBlockClass[1].blockSize), CWStrBlockPool(kBlockClass[2].blockSize),
         CWStrBlockPool(kBlockClass[3].blockSize), CWStrBlockPool(kBlockClass[4].blockSize)}};
    // Destroyed before the pools: what it returns still has a place to go.
    ThreadSlot threads{ReturnThreadBlocks};

    static Pools& Get()
    {
        static Pools pools;
        return pools;
    }
};

// Made before the other static objects here and in hosts, so that strings among those find the pools alive at their end.
struct PoolsFirst
{
    PoolsFirst() { Pools::Get(); }
};
[[gnu::init_priority(101)]] const PoolsFirst poolsFirst;

/// Gives the first @p count of the blocks kept back to their pool.
void ReturnKept(ThreadBlocks::Kept& kept, std::size_t blockClass, int count)
{
    if (count == 0)
        return;
    CWStrBlockPool::FreeBlock* const first = kept.first;
    CWStrBlockPool::FreeBlock* last = first;
    for (int i = 1; i < count; ++i)
        last = last->next;
    kept.first = last->next;
    kept.count -= count;
    Pools::Get().byClass[blockClass].FreeMany(first, last);
}

void WINAPI ReturnThreadBlocks(void* blocks)
{
    const auto ended = static_cast<ThreadBlocks*>(blocks);
    if (threadBlocks == ended) {
        threadBlocks = nullptr;
        threadKeepsNone = true;
    }
    for (std::size_t blockClass = 0; blockClass < kBlockClasses; ++blockClass)
        ReturnKept(ended->kept[blockClass], blockClass, ended->kept[blockClass].count);
    delete ended;
}

/// The calling thread's blocks, made at its first string; null when it keeps none.
ThreadBlocks* GetThreadBlocks() noexcept
{
    if (threadBlocks || threadKeepsNone)
        return threadBlocks;

    ThreadBlocks* const blocks = new (std::nothrow) ThreadBlocks;
    if (!blocks || !Pools::Get().threads.Set(blocks)) {
        delete blocks;
        threadKeepsNone = true;
        return nullptr;
    }
    return threadBlocks = blocks;
}

}  // namespace

void* TakeFromPool(std::size_t blockClass)
{
    CWStrBlockPool& pool = Pools::Get().byClass[blockClass];
    ThreadBlocks* const blocks = GetThreadBlocks();
    if (!blocks)
        return pool.Alloc();

    const int count = kBlockClass[blockClass].kept / 2;
    CWStrBlockPool::FreeBlock* const first = pool.AllocMany(count);
    blocks->kept[blockClass] = {first->next, count - 1};
    return first;
}

void ReturnToPool(void* block, std::size_t blockClass) noexcept
{
    if (ThreadBlocks* const blocks = GetThreadBlocks()) {
        ThreadBlocks::Kept& kept = blocks->kept[blockClass];
        if (kept.count > 0)
            ReturnKept(kept, blockClass, kept.count / 2);
        ReturnBlock(block, blockClass);
        return;
    }
    Pools::Get().byClass[blockClass].Free(block);
}

void* TakeFromHeap(int length)
{
    void* const block = std::malloc(sizeof(CWStrData) + (HeapRoom(length) + 1) * sizeof(unsigned short));
    if (!block)
        AfxThrowMemoryException();
    return block;
}

void ReturnToHeap(void* block) noexcept
{
    std::free(block);
}

int AddLengths(long long left, long long right)
{
    if (left + right > INT_MAX)
        AfxThrowMemoryException();
    return static_cast<int>(left + right);
}

}  // namespace kelgen::detail

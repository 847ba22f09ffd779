// WStrBlocks.cpp: the five pools, and for each thread a few blocks in front of their locks.
#include <kelgen/text/WStrBlocks.h>

#include <kelgen/framework/Exceptions.h>
#include <kelgen/platform/ThreadSlot.h>
#include <kelgen/text/WStrPool.h>

#include <array>
#include <climits>
#include <cstdlib>
#include <new>

namespace kelgen::detail {

namespace {

constexpr int kClasses = 5;
constexpr int kHeap = -1;

struct SizeClass
{
    int capacity;          // units without the terminator
    std::size_t blockSize;  // bytes
    int cached;            // blocks that a thread keeps at most
};

constexpr std::array<SizeClass, kClasses> kSizeClasses = {
    {{8, 32, 64}, {64, 144, 64}, {128, 272, 32}, {256, 528, 16}, {512, 1040, 16}}};

int ClassForLength(int length)
{
    if (length <= 8)
        return 0;
    if (length <= 64)
        return 1;
    if (length <= 128)
        return 2;
    if (length <= 256)
        return 3;
    return length <= 512 ? 4 : kHeap;
}

int ClassOfCapacity(int capacity)
{
    switch (capacity) {
    case 8: return 0;
    case 64: return 1;
    case 128: return 2;
    case 256: return 3;
    case 512: return 4;
    default: return kHeap;
    }
}

using FreeBlock = CWStrBlockPool::FreeBlock;

/// Blocks that one thread keeps for itself.
struct ThreadBlocks
{
    struct Kept
    {
        FreeBlock* first = nullptr;
        int count = 0;
    };
    std::array<Kept, kClasses> kept;
};

/// The calling thread's blocks: null before its first string and after its end.
[[gnu::tls_model("initial-exec")]] thread_local ThreadBlocks* threadBlocks = nullptr;
[[gnu::tls_model("initial-exec")]] thread_local bool threadEnded = false;

void WINAPI ReturnThreadBlocks(void* blocks);

struct Pools
{
    std::array<CWStrBlockPool, kClasses> bySize = {
        {CWStrBlockPool(32), CWStrBlockPool(144), CWStrBlockPool(272), CWStrBlockPool(528), CWStrBlockPool(1040)}};
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

void ReturnBlocks(ThreadBlocks::Kept& kept, int size, int count)
{
    if (count == 0)
        return;
    FreeBlock* const first = kept.first;
    FreeBlock* last = first;
    for (int i = 1; i < count; ++i)
        last = last->next;
    kept.first = last->next;
    kept.count -= count;
    Pools::Get().bySize[static_cast<std::size_t>(size)].FreeMany(first, last);
}

void WINAPI ReturnThreadBlocks(void* blocks)
{
    const auto ended = static_cast<ThreadBlocks*>(blocks);
    if (threadBlocks == ended) {
        threadBlocks = nullptr;
        threadEnded = true;
    }
    for (int size = 0; size < kClasses; ++size) {
        ThreadBlocks::Kept& kept = ended->kept[static_cast<std::size_t>(size)];
        ReturnBlocks(kept, size, kept.count);
    }
    delete ended;
}

/// The calling thread's blocks, made at its first use; null for a thread that is ending or cannot be told apart.
ThreadBlocks* GetThreadBlocks()
{
    if (threadBlocks || threadEnded)
        return threadBlocks;

    ThreadBlocks* const blocks = new (std::nothrow) ThreadBlocks;
    if (!blocks || !Pools::Get().threads.Set(blocks)) {
        delete blocks;
        threadEnded = true;
        return nullptr;
    }
    return threadBlocks = blocks;
}

/// A block when the thread has none of that size left.
[[gnu::noinline]] void* AllocFromPool(int size)
{
    CWStrBlockPool& pool = Pools::Get().bySize[static_cast<std::size_t>(size)];
    ThreadBlocks* const blocks = GetThreadBlocks();
    if (!blocks)
        return pool.Alloc();

    const int count = kSizeClasses[static_cast<std::size_t>(size)].cached / 2;
    FreeBlock* const first = pool.AllocMany(count);
    blocks->kept[static_cast<std::size_t>(size)] = {first->next, count - 1};
    return first;
}

void* AllocOfClass(int size)
{
    if (ThreadBlocks* const blocks = threadBlocks) {
        ThreadBlocks::Kept& kept = blocks->kept[static_cast<std::size_t>(size)];
        if (FreeBlock* const block = kept.first) {
            kept.first = block->next;
            --kept.count;
            return block;
        }
    }
    return AllocFromPool(size);
}

void FreeOfClass(void* memory, int size) noexcept
{
    ThreadBlocks* const blocks = GetThreadBlocks();
    if (!blocks) {
        Pools::Get().bySize[static_cast<std::size_t>(size)].Free(memory);
        return;
    }

    ThreadBlocks::Kept& kept = blocks->kept[static_cast<std::size_t>(size)];
    const int limit = kSizeClasses[static_cast<std::size_t>(size)].cached;
    if (kept.count == limit)
        ReturnBlocks(kept, size, limit / 2);
    kept.first = new (memory) FreeBlock{kept.first};
    ++kept.count;
}

}  // namespace

CWStrData* NewWStrBlock(int length)
{
    const int size = ClassForLength(length);
    void* memory = nullptr;
    int capacity = length;
    if (size == kHeap) {
        memory = std::malloc(sizeof(CWStrData) + (static_cast<std::size_t>(length) + 1) * sizeof(unsigned short));
        if (!memory)
            AfxThrowMemoryException();
    } else {
        memory = AllocOfClass(size);
        capacity = kSizeClasses[static_cast<std::size_t>(size)].capacity;
    }

    const auto block = static_cast<CWStrData*>(memory);
    block->nRefCount = 1;
    block->nLength = length;
    block->nAllocLength = capacity;
    block->data()[length] = 0;
    return block;
}

void FreeWStrBlock(CWStrData* block) noexcept
{
    const int size = ClassOfCapacity(block->nAllocLength);
    if (size == kHeap)
        std::free(block);
    else
        FreeOfClass(block, size);
}

int AddLengths(long long left, long long right)
{
    if (left + right > INT_MAX)
        AfxThrowMemoryException();
    return static_cast<int>(left + right);
}

}  // namespace kelgen::detail

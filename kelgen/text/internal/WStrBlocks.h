// WStrBlocks.h: memory for string blocks by size class, with a few blocks for each thread in front of the pools. Not for hosts.
#pragma once

#include <kelgen/text/WStr.h>
#include <kelgen/text/internal/WStrPool.h>

#include <array>
#include <bit>
#include <cstring>
#include <new>

namespace kelgen::detail {

constexpr int kBlockClasses = 5;

struct BlockClass
{
    int capacity;           // units without the terminator
    std::size_t blockSize;  // bytes
    int kept;               // blocks that a thread keeps at most
};

// Where texts are copied in steps of vectors, all blocks of a class begin at the same place in one.
constexpr std::array<BlockClass, kBlockClasses> kBlockClass = {
    {{8, 32, 64}, {64, 144, 64}, {128, 288, 32}, {256, 544, 16}, {512, 1056, 16}}};

/// Free blocks that one thread keeps for itself.
struct ThreadBlocks
{
    struct Kept
    {
        CWStrBlockPool::FreeBlock* first = nullptr;
        int count = 0;
    };
    std::array<Kept, kBlockClasses> kept;
};

/// The calling thread's blocks: null before its first string and after its end.
extern constinit thread_local ThreadBlocks* threadBlocks [[gnu::tls_model("initial-exec")]];

/// A block when the thread keeps none of that class. Throws: the framework's memory exception.
void* TakeFromPool(std::size_t blockClass);
/// Takes back a block when the thread can keep no more of that class.
void ReturnToPool(void* block, std::size_t blockClass) noexcept;
/// A block of the general heap for @p length units and as many more as HeapRoom() says. Throws: the framework's memory exception.
void* TakeFromHeap(int length);
void ReturnToHeap(void* block) noexcept;

/// The longest text that has a block of a class.
constexpr int kLongestClass = 512;

/// The units, without the terminator, that lie behind a block of the general heap whose capacity is @p capacity: up to an eighth
/// more, so that a text which grows by single units is copied seldom. The capacity says nothing of them.
constexpr std::size_t HeapRoom(int capacity)
{
    const std::size_t units = static_cast<std::size_t>(capacity);
    const std::size_t step = std::bit_floor(units) / 8;
    return (units + step - 1) / step * step;
}

inline void* TakeBlock(std::size_t blockClass)
{
    if (ThreadBlocks* const blocks = threadBlocks) {
        ThreadBlocks::Kept& kept = blocks->kept[blockClass];
        if (CWStrBlockPool::FreeBlock* const block = kept.first) {
            kept.first = block->next;
            --kept.count;
            return block;
        }
    }
    return TakeFromPool(blockClass);
}

inline void ReturnBlock(void* memory, std::size_t blockClass) noexcept
{
    if (ThreadBlocks* const blocks = threadBlocks) {
        ThreadBlocks::Kept& kept = blocks->kept[blockClass];
        if (kept.count < kBlockClass[blockClass].kept) {
            kept.first = new (memory) CWStrBlockPool::FreeBlock{kept.first};
            ++kept.count;
            return;
        }
    }
    ReturnToPool(memory, blockClass);
}

/// A block for @p length units, which is at least 1: count 1, the length and its terminator set, the capacity that of the class.
/// Throws: the framework's memory exception.
inline CWStrData* NewWStrBlock(int length)
{
    void* memory;
    int capacity = length;
    if (length > kLongestClass) {
        memory = TakeFromHeap(length);
    } else {
        const std::size_t blockClass = length <= 8 ? 0 : length <= 64 ? 1 : length <= 128 ? 2 : length <= 256 ? 3 : 4;
        memory = TakeBlock(blockClass);
        capacity = kBlockClass[blockClass].capacity;
    }
    const auto block = static_cast<CWStrData*>(memory);
    block->nRefCount = 1;
    block->nLength = length;
    block->nAllocLength = capacity;
    block->data()[length] = 0;
    return block;
}

/// Takes back a block, into the pool that its capacity names or the general heap.
inline void FreeWStrBlock(CWStrData* block) noexcept
{
    switch (block->nAllocLength) {
    case 8:
        return ReturnBlock(block, 0);
    case 64:
        return ReturnBlock(block, 1);
    case 128:
        return ReturnBlock(block, 2);
    case 256:
        return ReturnBlock(block, 3);
    case 512:
        return ReturnBlock(block, 4);
    default:
        return ReturnToHeap(block);
    }
}

/// Copies @p n units between texts that do not overlap. Short ones go in two pieces, which may share units: half the time of a
/// call.
inline void CopyUnits(unsigned short* dest, const unsigned short* source, int n)
{
    const auto copy = [dest, source, n]<class PIECE>(PIECE) {
        constexpr int kUnits = sizeof(PIECE) / sizeof *dest;
        PIECE first, last;
        std::memcpy(&first, source, sizeof first);
        std::memcpy(&last, source + n - kUnits, sizeof last);
        std::memcpy(dest, &first, sizeof first);
        std::memcpy(dest + n - kUnits, &last, sizeof last);
    };
    struct Eight
    {
        std::uint64_t low, high;
    };
    if (n > 16)
        std::memcpy(dest, source, static_cast<std::size_t>(n) * sizeof *dest);
    else if (n >= 8)
        copy(Eight());
    else if (n >= 4)
        copy(std::uint64_t());
    else if (n >= 2)
        copy(std::uint32_t());
    else if (n == 1)
        *dest = *source;
}

/// Copies @p n units between texts that may overlap.
inline void MoveUnits(unsigned short* dest, const unsigned short* source, int n)
{
    if (n > 0)
        std::memmove(dest, source, static_cast<std::size_t>(n) * sizeof *dest);
}

/// The sum of two lengths. Throws: the framework's memory exception when it is beyond int.
int AddLengths(long long left, long long right);

}  // namespace kelgen::detail

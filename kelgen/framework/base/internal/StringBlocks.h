// StringBlocks.h: memory for the blocks of CString, of which each thread keeps a few free ones of each size. Internal to the framework.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdlib>
#include <new>

namespace kelgen::detail {

/// A block that nobody holds.
struct FreeStringBlock
{
    FreeStringBlock* next;
};

/// Free blocks that one thread keeps for itself: of 32, 64, 128, 256 and 512 bytes.
struct ThreadStringBlocks
{
    static constexpr std::size_t kClasses = 5;
    static constexpr std::array<int, kClasses> kMost = {64, 64, 32, 16, 16};

    struct Kept
    {
        FreeStringBlock* first = nullptr;
        int count = 0;
    };
    std::array<Kept, kClasses> kept;
};

/// The calling thread's blocks: null before the first one that it gives back and after its end.
extern constinit thread_local ThreadStringBlocks* threadStringBlocks [[gnu::tls_model("initial-exec")]];

/// Keeps a block for the thread's next strings, or gives it to the heap.
void ReturnFirstStringBlock(void* block, std::size_t blockClass) noexcept;

/// The class of blocks of @p size bytes, at least 1; beyond the last one the general heap serves.
constexpr std::size_t StringBlockClass(std::size_t size)
{
    return static_cast<std::size_t>(std::bit_width((size - 1) / 32));
}

/// The bytes that a block of @p size bytes really has.
constexpr std::size_t StringBlockRoom(std::size_t size)
{
    const std::size_t blockClass = StringBlockClass(size);
    return blockClass < ThreadStringBlocks::kClasses ? std::size_t{32} << blockClass : size;
}

/// A block with undefined content; null when memory ends.
inline void* TakeStringBlock(std::size_t size)
{
    const std::size_t blockClass = StringBlockClass(size);
    if (blockClass < ThreadStringBlocks::kClasses) {
        if (ThreadStringBlocks* const blocks = threadStringBlocks) {
            ThreadStringBlocks::Kept& kept = blocks->kept[blockClass];
            if (FreeStringBlock* const block = kept.first) {
                kept.first = block->next;
                --kept.count;
                return block;
            }
        }
    }
    return std::malloc(StringBlockRoom(size));
}

/// Takes back a block that was taken for @p size bytes.
inline void ReturnStringBlock(void* memory, std::size_t size) noexcept
{
    const std::size_t blockClass = StringBlockClass(size);
    if (blockClass >= ThreadStringBlocks::kClasses) {
        std::free(memory);
        return;
    }
    ThreadStringBlocks* const blocks = threadStringBlocks;
    if (!blocks) {
        ReturnFirstStringBlock(memory, blockClass);
        return;
    }
    ThreadStringBlocks::Kept& kept = blocks->kept[blockClass];
    if (kept.count == ThreadStringBlocks::kMost[blockClass]) {
        std::free(memory);
        return;
    }
    kept.first = new (memory) FreeStringBlock{kept.first};
    ++kept.count;
}

}  // namespace kelgen::detail

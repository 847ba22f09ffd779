// StringBlocks.cpp: the threads' free blocks, from a thread's first string to its end.
#include <kelgen/framework/base/internal/StringBlocks.h>

#include <kelgen/platform/support/ThreadSlot.h>

namespace kelgen::detail {

constinit thread_local ThreadStringBlocks* threadStringBlocks [[gnu::tls_model("initial-exec")]] = nullptr;

namespace {

/// The thread is ending, or has no place to keep blocks.
constinit thread_local bool threadKeepsNone [[gnu::tls_model("initial-exec")]] = false;

void WINAPI FreeThreadBlocks(void* blocks)
{
    const auto ended = static_cast<ThreadStringBlocks*>(blocks);
    if (threadStringBlocks == ended) {
        threadStringBlocks = nullptr;
        threadKeepsNone = true;
    }
    for (const ThreadStringBlocks::Kept& kept : ended->kept) {
        for (FreeStringBlock* block = kept.first; block != nullptr;) {
            FreeStringBlock* const next = block->next;
            std::free(block);
            block = next;
        }
    }
    delete ended;
}

// Made before the other static objects here and in hosts, so that strings among those find it alive at their end.
[[gnu::init_priority(101)]] ThreadSlot threads(FreeThreadBlocks);

}  // namespace

void ReturnFirstStringBlock(void* block, std::size_t blockClass) noexcept
{
    if (!threadKeepsNone) {
        const auto blocks = new (std::nothrow) ThreadStringBlocks;
        if (blocks && threads.Set(blocks)) {
            blocks->kept[blockClass] = {new (block) FreeStringBlock{nullptr}, 1};
            threadStringBlocks = blocks;
            return;
        }
        delete blocks;
        threadKeepsNone = true;
    }
    std::free(block);
}

}  // namespace kelgen::detail

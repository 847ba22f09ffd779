// WStrPoolTest.cpp: blocks are distinct, reused, and come 64 to a heap allocation.
#include <kelgen/text/internal/WStrPool.h>

#include <cstdint>
#include <cstring>
#include <set>

TEST(WStrPool, ChunksHoldSixtyFourBlocksThatDoNotOverlap)
{
    constexpr std::size_t kSize = 144;
    CWStrBlockPool pool(kSize);
    std::set<std::uintptr_t> blocks;
    for (int i = 0; i < 64; ++i) {
        void* const block = pool.Alloc();
        std::memset(block, i, kSize);
        blocks.insert(reinterpret_cast<std::uintptr_t>(block));
    }
    EXPECT_EQ(1, pool.GetChunkCount());
    std::uintptr_t end = 0;
    for (const std::uintptr_t block : blocks) {
        EXPECT_GE(block, end);
        EXPECT_EQ(0u, block % alignof(std::max_align_t));
        end = block + kSize;
    }

    void* const extra = pool.Alloc();
    EXPECT_EQ(2, pool.GetChunkCount());
    pool.Free(extra);
    for (const std::uintptr_t block : blocks)
        pool.Free(reinterpret_cast<void*>(block));
    EXPECT_EQ(*blocks.rbegin(), reinterpret_cast<std::uintptr_t>(pool.Alloc())) << "the last one freed comes first";
    for (int i = 1; i < 128; ++i)
        EXPECT_NE(nullptr, pool.Alloc());
    EXPECT_EQ(2, pool.GetChunkCount());
}

TEST(WStrPool, BlocksOfWholeVectorsBeginWithOne)
{
    CWStrBlockPool pool(544, 8);
    for (int i = 0; i < 24; ++i)
        EXPECT_EQ(0u, reinterpret_cast<std::uintptr_t>(pool.Alloc()) % 32) << "block " << i;
}

TEST(WStrPool, ChainsAreTakenAndReturnedWhole)
{
    CWStrBlockPool pool(32, 4);
    CWStrBlockPool::FreeBlock* const chain = pool.AllocMany(6);
    std::set<void*> blocks;
    CWStrBlockPool::FreeBlock* last = nullptr;
    for (auto* block = chain; block; last = block, block = block->next)
        blocks.insert(block);
    EXPECT_EQ(6u, blocks.size());
    EXPECT_EQ(2, pool.GetChunkCount());
    pool.FreeMany(chain, last);
    for (int i = 0; i < 8; ++i)
        blocks.insert(pool.Alloc());
    EXPECT_EQ(8u, blocks.size());
    EXPECT_EQ(2, pool.GetChunkCount());
}
